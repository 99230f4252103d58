#include <QCoreApplication>
#include <QTextCodec>

// A part of every test program here; what the environment says elsewhere.

// Wine hands no variable on whose name begins as this one's.
static const bool s_offscreen = qputenv("QT_QPA_PLATFORM", "offscreen");

// The tests are written for a locale in UTF-8, which no system language has.
static void useUtf8Locale()
{
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("UTF-8"));
}
Q_COREAPP_STARTUP_FUNCTION(useUtf8Locale)
