#pragma once

#include "cli/Options.h"

#include <QString>
#include <QStringList>

/// Reads the command line. The rules, in their order of precedence:
///
/// 1. "--" ends the options; what follows is KEYWORD and PATH.
/// 2. "--name=value", "--name value", "-mvalue", "-m value"; a value may begin
///    with "-". Short switches may be joined ("-iw"). Options may stand between
///    and after KEYWORD and PATH. Where an option is repeated the last one
///    counts, except --exclude-dir and --exclude-file, which add up.
/// 3. -h and -V end the reading: what follows them is not looked at.
/// 4. The first thing that is wrong is reported, and nothing else.
///
/// All functions are pure.
namespace OptionParser {

struct Result {
    Options options; ///< meaningful only without an error
    QString error; ///< one line that names the value; empty when all is well

    bool ok() const { return error.isEmpty(); }
};

/// arguments are those after the program's name; bytes that are no valid text
/// stand as in NativePath.
Result parse(const QStringList &arguments);

} // namespace OptionParser
