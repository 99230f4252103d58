#include "engine/NativePath.h"
#include "fuzz/FuzzInput.h"
#include "mainwindow/history/LogRestore.h"
#include "mainwindow/history/ResultLogFile.h"
#include "tests/support/ScratchFolder.h"

namespace {

QString readLog(const QString &path)
{
    const std::optional<QString> content = ResultLogFile::read(path);
    require(content.has_value(), "a regular file is read");
    return *content;
}

/// Halves of surrogate pairs are what a log loses, but for those that stand for
/// the bytes of a name.
QString asLogged(const QString &text)
{
    return NativePath::fromNative(NativePath::toNative(text));
}

} // namespace

/// Any bytes as a result log: read, shown in the menu, restored, written again.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static const ScratchFolder folder;
    FuzzInput input(data, size);
    const QString path = folder.write(QStringLiteral("a.log"), input.rest());
    ResultLogFile::label(path);
    const QString content = readLog(path);
    require(!content.contains(QLatin1Char('\r')), "carriage returns are dropped");

    const LogRestore all = LogRestore::fromContent(content, path, LogRestore::Extent::Everything);
    const LogRestore header =
        LogRestore::fromContent(content, path, LogRestore::Extent::HeaderOnly);
    require(all.text == header.text && all.keyword1 == header.keyword1,
            "both extents restore keyword 1 and the text alike");
    require(content.endsWith(all.text), "the text is the end of the log");

    ResultLog log;
    log.keyword1 = all.keyword1.value_or(QString());
    log.paths = all.pathLines.value_or(QStringList());
    log.mask = all.mask.value_or(QString());
    log.text = all.text;
    require(ResultLogFile::write(path, log), "a log can be written");
    const LogRestore again =
        LogRestore::fromContent(readLog(path), path, LogRestore::Extent::Everything);
    require(again.text == asLogged(all.text), "the text comes back letter by letter");
    require(again.keyword1.value_or(QString()) == asLogged(log.keyword1), "keyword 1 comes back");
    return 0;
}
