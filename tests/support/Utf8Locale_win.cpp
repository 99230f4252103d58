#include <QCoreApplication>
#include <QTextCodec>

// A part of every test program here. The tests are written for a locale in
// UTF-8, which no system language has.
static void useUtf8Locale()
{
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("UTF-8"));
}
Q_COREAPP_STARTUP_FUNCTION(useUtf8Locale)
