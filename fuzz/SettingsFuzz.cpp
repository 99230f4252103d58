#include "fuzz/FuzzInput.h"
#include "settings/AppSettings.h"
#include "settings/KeywordHistory.h"
#include "settings/ParameterFile.h"
#include "settings/dialogs/InputHistoryFile.h"
#include "tests/support/ScratchFolder.h"
#include "view/LogChooserFile.h"

namespace {

void readSettings(const QString &folder)
{
    AppSettings settings;
    settings.load(folder);
    require(settings.tabcolm >= 1, "a tab has a width");
    require(settings.langlist.size() == settings.langlistValues.size(),
            "each language has its suffixes");
    settings.keywordHistory->add(QStringLiteral("検索"), true, false, true);
    require(settings.save(folder), "settings can be saved");
    AppSettings again;
    again.load(folder);
    require(again.tabcolm == settings.tabcolm && again.size == settings.size
                && again.pathhistory == settings.pathhistory && again.editor == settings.editor
                && again.geometry == settings.geometry,
            "settings are read as they were saved");
    require(again.keywordHistory->capacity() < 1
                || again.keywordHistory->keywords().value(0) == QStringLiteral("検索"),
            "the newest keyword is the first");
}

void readParameters(const QString &folder)
{
    const ParameterFile file(folder);
    ParameterFile::Content content = file.read();
    require(file.write(content), "parameters can be saved");
    const ParameterFile::Content again = file.read();
    require(again.pathlist == content.pathlist && again.mask == content.mask
                && again.findword == content.findword,
            "parameters are read as they were saved");
}

void readInputHistory(const QString &folder)
{
    const InputHistoryFile file(folder, QStringLiteral("fuzz"));
    const InputHistoryFile::Content content = file.read();
    require(content.size.isValid() && content.max >= 1, "a dialog can be shown with it");
    require(file.save(content), "an input history can be saved");
    require(file.read().history == content.history, "an input history is read as it was saved");
}

void readLogChooser(const QString &folder)
{
    const LogChooserFile file(folder);
    const LogChooserFile::Geometry geometry = file.read();
    require(file.save(geometry), "a geometry can be saved");
    require(file.read().splitterV == geometry.splitterV, "a geometry is read as it was saved");
}

} // namespace

/// Any bytes as each of the files that the program keeps, read and saved.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static const ScratchFolder scratch;
    FuzzInput input(data, size);
    const int file = input.number(5);
    const QByteArray bytes = input.rest();
    const QString folder = scratch.path();
    switch (file) {
    case 0:
    case 1:
        scratch.write(QStringLiteral("sarvik.ini"), bytes);
        scratch.write(QStringLiteral("sarvedit.ini"), file == 0 ? QByteArray() : bytes);
        scratch.write(QStringLiteral("keywordhistory.ini"), bytes);
        readSettings(folder);
        break;
    case 2:
        scratch.write(QStringLiteral("sarvikpara.ini"), bytes);
        readParameters(folder);
        break;
    case 3:
        scratch.write(QStringLiteral("inputfuzz.ini"), bytes);
        readInputHistory(folder);
        break;
    default:
        scratch.write(QStringLiteral("fileDialog.ini"), bytes);
        readLogChooser(folder);
    }
    return 0;
}
