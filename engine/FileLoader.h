#pragma once

#include "engine/EngineOptions.h"
#include "engine/FileReader.h"

#include <QString>

/// Reads one file after another and tells the code set of each. One object a
/// thread.
class FileLoader {
public:
    enum class Outcome {
        Loaded,
        Skipped, ///< cannot be opened
        Refused ///< too large or binary
    };

    FileLoader(const SearchLimits &limits, FileReader::TypeCheck typeCheck);

    Outcome load(const QString &path);

    // Of the file that was loaded last; of one that was refused only codeSet(),
    // the negative number that refused it.
    const char *content() const { return m_reader.content(); }
    qint64 size() const { return m_reader.size(); }
    int codeSet() const { return m_codeSet; }
    int lineEnd() const { return m_lineEnd; } ///< 0 CR, 1 LF, 2 CR LF
    bool hasMark() const { return m_hasMark; } ///< begins with a byte-order mark

private:
    SearchLimits m_limits;
    FileReader::TypeCheck m_typeCheck;
    FileReader m_reader;
    int m_codeSet = 0;
    int m_lineEnd = 2;
    bool m_hasMark = false;
};
