#pragma once

#include "cli/ResultFormat.h"

#include <QString>

/// One JSON object a hit and line, with "path", "line", "column", "text" and
/// "encoding"; a file without hits is one object with null for line, column and
/// text.
///
/// JSON is UTF-8 and a file name is any bytes: in "path" each byte that is not
/// part of valid UTF-8 is U+FFFD, and such an object also has "pathBase64", the
/// name's bytes in Base64.
class JsonFormat : public ResultFormat {
public:
    QByteArray format(const FileResult &file) const override;

    /// text as a JSON string with its quotes. What Message::isUnsafe names is
    /// escaped, so that an object is one line to every reader and shows as it
    /// is; lone surrogates become U+FFFD.
    static QByteArray quote(const QString &text);
};
