#pragma once

#include "engine/CandidateWalk.h"
#include "engine/LineDecoder.h"
#include "engine/PieceSource.h"

#include <QStringList>

#include <optional>

class RawLineCursor;
class SearchPlan;

/// Finds the hits of a file without decoding it: the lines that can matter are
/// found in its bytes, and only these are decoded. One object a thread; the plan
/// and the matcher must outlive it.
///
/// 1. A literal that every match needs is looked for as in KeywordPrefilter,
///    unless a carriage return may stand inside it.
/// 2. Without a literal the LineAutomaton reads what is ASCII or UTF-8.
/// 3. The file is read in pieces, each cut behind its last line feed.
/// 4. Where neither is possible, or a line cannot be decoded by itself, there is
///    no answer: then the file is decoded.
class RawLines {
public:
    RawLines(const SearchPlan &plan, LineMatcher &matcher);

    /// The hit strings in line order; nothing when the file must be decoded.
    std::optional<QStringList> search(PieceSource &pieces, int codeSet);

private:
    /// Whole lines of the file; no line feed stands behind the last one.
    struct Text {
        const char *bytes;
        qint64 size;
        bool highBytes;
        bool loneCarriageReturn;
    };

    void begin(int codeSet);
    bool searchPieces(PieceSource &pieces, qint64 markSize);
    Text surveyed(const char *bytes, qint64 size) const;
    qint64 lastLineFeed(const char *bytes, qint64 size) const;
    bool searchText(const Text &text);
    bool canRead(const Text &text) const;
    template <typename Next> bool visitLines(const Text &text, const Next &next);
    bool visit(const Text &text, const RawLineCursor &cursor, LineRole role);

    const SearchPlan &m_plan;
    LineMatcher &m_matcher;
    // Of the present file.
    int m_codeSet = 0;
    int m_unitSize = 1; // 2 for UTF-16
    bool m_bigEndian = false;
    qint64 m_nextNumber = 1; // of the present piece's first line
    // Of the present piece.
    bool m_decoderIsReady = false;
    LineDecoder m_decoder;

    QString m_line;
    QString m_pendingLine; // the matcher's pending hit may refer to it
};
