#include "cli/ReportFactory.h"

#include "cli/EncodingReport.h"
#include "cli/GrepFormat.h"
#include "cli/Interrupt.h"
#include "cli/JsonFormat.h"
#include "cli/LineCountOutput.h"
#include "cli/PlainFormat.h"
#include "cli/SearchReport.h"
#include "engine/CodeSet.h"
#include "engine/FileLoader.h"

namespace {

/// The search does not tell in which code set it read a file, so a file with
/// hits is looked at once more. Null when it can no longer be read, and once
/// Ctrl+C asks for the end: what is still to be written should not wait for it.
JsonFormat::EncodingOf encodingsOfFiles(const SearchLimits &limits)
{
    const auto loader = std::make_shared<FileLoader>(limits, FileReader::TypeCheck::BeforeOpen);
    return [loader](const QString &path) {
        if (Interrupt::isPending())
            return QString();
        const bool loaded = loader->load(path) == FileLoader::Outcome::Loaded;
        return loaded ? CodeSet::name(loader->codeSet()) : QString();
    };
}

std::unique_ptr<ResultFormat> makeFormat(const Options &options, const SearchCondition &condition,
                                         const SearchLimits &limits, bool color)
{
    const HitPainter painter = color ? HitPainter(condition) : HitPainter();
    switch (options.format) {
    case Options::Format::Grep:
        return std::make_unique<GrepFormat>(painter);
    case Options::Format::Json:
        return std::make_unique<JsonFormat>(encodingsOfFiles(limits));
    case Options::Format::Result:
        break;
    }
    return std::make_unique<PlainFormat>(painter);
}

} // namespace

std::unique_ptr<RunReport> makeReport(const Options &options, const SearchCondition &condition,
                                      const SearchLimits &limits, bool color, LineOutput &output)
{
    if (options.mode == Options::Mode::LineCount)
        return std::make_unique<LineCountOutput>(output, options.sort);
    if (options.mode == Options::Mode::Encodings)
        return std::make_unique<EncodingReport>(output, options.sort);
    return std::make_unique<SearchReport>(output, makeFormat(options, condition, limits, color),
                                          options.sort);
}
