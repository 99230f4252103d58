// Saves one kind of file again and again, for tests that stop it half-way, let
// two of it run at a time, or take the disk away from it:
//
//   SavingProcess KIND FOLDER TAG [TIMES [STEP]]
//
// KIND: settings, keywords, parameters, paths, chooser, note or starter.
// Everything that it saves carries TAG, one character, so that a mixture shows. At the STEPth
// step of saving (from 0) it ends on the spot, with exit code 77. Otherwise it
// ends with 0 when the last save succeeded and with 1 when it failed.

#include "settings/AppSettings.h"
#include "settings/KeywordHistory.h"
#include "settings/ParameterFile.h"
#include "settings/SaveSteps.h"
#include "settings/StarterSettings.h"
#include "settings/dialogs/InputHistoryFile.h"
#include "tests/support/EndAtOnce.h"
#include "view/AssistFile.h"
#include "view/LogChooserFile.h"

#include <QCoreApplication>
#include <QFile>

#include <cstdlib>

namespace {

bool saveSettings(const QString &folder, const QString &tag)
{
    AppSettings &settings = AppSettings::instance();
    settings.load(folder);
    settings.browser = tag;
    settings.editor = tag;
    // Long enough that no single write takes it all.
    settings.pathhistory = QStringList();
    for (int i = 0; i < 2000; ++i)
        settings.pathhistory.append(tag);
    return settings.save(folder);
}

bool saveKeywords(const QString &folder, const QString &tag)
{
    KeywordHistory history(KeywordHistory::kMostEntries, folder);
    for (int i = KeywordHistory::kMostEntries; i > 0; --i)
        history.add(tag + QStringLiteral("-%1").arg(i), true, false, true);
    return history.save();
}

bool savePaths(const QString &folder, const QString &tag)
{
    const InputHistoryFile file(folder, QStringLiteral("SearchPath"));
    InputHistoryFile::Content content = file.read();
    content.history = QStringList();
    for (int i = 0; i < 2000; ++i)
        content.history.append(tag);
    return file.save(content);
}

bool saveParameters(const QString &folder, const QString &tag)
{
    QStringList paths;
    for (int i = 0; i < 2000; ++i)
        paths.append(tag);
    return ParameterFile(folder).write({paths, tag, tag});
}

bool saveChooser(const QString &folder, const QString &tag)
{
    const QByteArray bytes = tag.toUtf8().repeated(2000);
    return LogChooserFile(folder).save({QPoint(), QSize(), bytes, bytes});
}

bool saveNote(const QString &folder, const QString &tag)
{
    const int number = tag.at(0).unicode();
    return AssistFile::writeGeometry(folder + QStringLiteral("note.ini"), QStringLiteral("note"),
                                     QRect(number, number, number, number));
}

bool startFirst(const QString &folder)
{
    StarterSettings::provide(folder);
    return QFile::exists(folder + QStringLiteral("sarvik.ini"));
}

bool save(const QString &kind, const QString &folder, const QString &tag)
{
    if (kind == QLatin1String("settings"))
        return saveSettings(folder, tag);
    if (kind == QLatin1String("keywords"))
        return saveKeywords(folder, tag);
    if (kind == QLatin1String("paths"))
        return savePaths(folder, tag);
    if (kind == QLatin1String("chooser"))
        return saveChooser(folder, tag);
    if (kind == QLatin1String("note"))
        return saveNote(folder, tag);
    if (kind == QLatin1String("starter"))
        return startFirst(folder);
    return saveParameters(folder, tag);
}

void endAtStep(int last)
{
    constexpr int kEnded = 77;
    SaveSteps::setObserver([last, step = 0](SaveSteps::Step) mutable {
        if (step++ == last)
            endAtOnce(kEnded);
        return true;
    });
}

int act(const QStringList &arguments)
{
    if (arguments.size() < 4)
        return 2;
    if (arguments.size() > 5)
        endAtStep(arguments.at(5).toInt());
    const int times = arguments.size() > 4 ? arguments.at(4).toInt() : 1;
    bool saved = false;
    for (int i = 0; i < times; ++i)
        saved = save(arguments.at(1), arguments.at(2), arguments.at(3));
    return saved ? 0 : 1;
}

} // namespace

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    return answer(act(QCoreApplication::arguments()));
}
