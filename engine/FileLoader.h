#pragma once

#include "engine/EngineOptions.h"
#include "engine/FileCodeSet.h"
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

    /// Reads the file as a whole.
    Outcome load(const QString &path);
    /// Reads its first piece, which is enough to detect the code set; pieces()
    /// gives the others.
    Outcome open(const QString &path);
    PieceSource &pieces() { return m_reader; }
    /// See FileReader.
    void stopWhen(const std::function<bool()> &stop) { m_reader.stopWhen(stop); }
    bool wasStopped() const { return m_reader.wasStopped(); }
    bool hasFailed() const { return m_reader.hasFailed(); }

    // Of the file that was loaded last; of one that was refused only codeSet(),
    // the negative number that refused it.
    const char *content() const { return m_reader.content(); }
    qint64 size() const { return m_reader.size(); }
    int codeSet() const { return m_codeSet; }
    int lineEnd() const { return m_lineEnd; } ///< 0 CR, 1 LF, 2 CR LF
    bool hasMark() const { return m_hasMark; } ///< begins with a byte-order mark

private:
    Outcome detect(FileReader::Status status);

    DetectionSettings m_settings;
    FileReader::TypeCheck m_typeCheck;
    FileReader m_reader;
    int m_codeSet = 0;
    int m_lineEnd = 2;
    bool m_hasMark = false;
};
