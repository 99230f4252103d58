#include "cli/ReportFactory.h"

#include "cli/EncodingReport.h"
#include "cli/GrepFormat.h"
#include "cli/JsonFormat.h"
#include "cli/LineCountOutput.h"
#include "cli/LineOutput.h"
#include "cli/PlainFormat.h"
#include "cli/SearchReport.h"

namespace {

std::unique_ptr<ResultFormat> makeFormat(const Options &options, const SearchCondition &condition,
                                         bool color)
{
    const HitPainter painter = color ? HitPainter(condition) : HitPainter();
    switch (options.format) {
    case Options::Format::Grep:
        return std::make_unique<GrepFormat>(painter);
    case Options::Format::Json:
        return std::make_unique<JsonFormat>();
    case Options::Format::Result:
        break;
    }
    return std::make_unique<PlainFormat>(painter);
}

} // namespace

std::unique_ptr<RunReport> makeReport(const Options &options, const SearchCondition &condition,
                                      bool color, LineOutput &output)
{
    if (options.mode == Options::Mode::LineCount)
        return std::make_unique<LineCountOutput>(output, options.sort);
    if (options.mode == Options::Mode::Encodings)
        return std::make_unique<EncodingReport>(output, options.sort);
    const auto write = [&output](const QByteArray &lines) {
        output.add(lines);
    };
    return std::make_unique<SearchReport>(write, makeFormat(options, condition, color),
                                          options.sort);
}
