#pragma once

#include "cli/FileResult.h"

#include <QByteArray>

/// How a file's hits are written. Several threads may use one.
class ResultFormat {
public:
    virtual ~ResultFormat() = default;

    /// Whole lines, each ended by a line feed; text in UTF-8, paths in the bytes
    /// of the platform.
    virtual QByteArray format(const FileResult &file) const = 0;
};
