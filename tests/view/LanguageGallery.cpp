#include "settings/AppSettings.h"
#include "settings/ApplicationPalette.h"
#include "settings/KeywordHistory.h"
#include "tests/support/ScratchFolder.h"
#include "view/GrepEditor.h"
#include "view/Highlighter.h"
#include "view/LanguageConfig.h"

#include <QApplication>
#include <QDir>
#include <QFontDatabase>
#include <QFontMetrics>
#include <QStyleFactory>
#include <QTextStream>

/// Draws the samples of the languages as the preview shows them, one picture a
/// language: what a test of single places does not see, a person does.
///
///     LanguageGallery LIST_FOLDER SAMPLE_FOLDER PICTURE_FOLDER

namespace {

QByteArray bytesOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// A program as new: the shipped languages and no settings of anybody.
void loadSettings(const QString &listFolder, const ScratchFolder &folder)
{
    for (const QString &file : QDir(listFolder).entryList(QDir::Files))
        folder.write(QStringLiteral("list/") + file, bytesOf(listFolder + file));
    AppSettings::instance().load(folder.path());
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    QApplication::setPalette(ApplicationPalette::fromSettings(AppSettings::instance()));
}

QFont textFont()
{
    const QString japanese = QStringLiteral("IPAGothic");
    const bool known = QFontDatabase().families(QFontDatabase::Japanese).contains(japanese);
    QFont font = known ? QFont(japanese) : QFontDatabase::systemFont(QFontDatabase::FixedFont);
    font.setPointSize(11);
    return font;
}

bool draw(const QString &sample, const QString &picture)
{
    const QString text = QString::fromUtf8(bytesOf(sample));
    GrepEditor view(false);
    view.applyColours();
    view.setViewFont(textFont(), false);
    view.highlighter().setLanguage(LanguageConfig::suffixOf(sample));
    view.setPlainText(text);

    constexpr int kMargin = 24;
    const QFontMetrics metrics(view.font());
    int width = 0;
    const QStringList lines = text.split(QLatin1Char('\n'));
    for (QString line : lines)
        width = std::max(
            width,
            metrics.horizontalAdvance(line.replace(QLatin1Char('\t'), QStringLiteral("        "))));
    view.resize(width + 2 * kMargin, lines.size() * metrics.lineSpacing() + 2 * kMargin);
    view.setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    view.setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    view.show();
    return view.grab().save(picture);
}

} // namespace

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    const QStringList arguments = QApplication::arguments();
    if (arguments.size() != 4)
        qFatal("usage: LanguageGallery LIST_FOLDER SAMPLE_FOLDER PICTURE_FOLDER");
    const ScratchFolder folder;
    loadSettings(arguments.at(1) + QLatin1Char('/'), folder);
    int drawn = 0;
    const QDir samples(arguments.at(2));
    for (const QString &file : samples.entryList(QDir::Files)) {
        const QString language = file.section(QLatin1Char('.'), 0, 0);
        if (LanguageConfig::languageOf(LanguageConfig::suffixOf(file)) != language)
            continue;
        const QString picture =
            arguments.at(3) + QLatin1Char('/') + language + QStringLiteral(".png");
        if (!draw(samples.filePath(file), picture))
            qFatal("cannot write %s", qPrintable(picture));
        ++drawn;
    }
    QTextStream(stdout) << drawn << " pictures\n";
    return drawn > 0 ? 0 : 1;
}
