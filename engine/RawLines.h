#pragma once

#include "engine/LineDecoder.h"

#include <QStringList>

#include <optional>

class LineMatcher;
class RawLineCursor;
class SearchPlan;

/// Finds the hits of a file without decoding it: the lines that can matter are
/// found in its bytes, and only these are decoded. One object a thread; the plan
/// and the matcher must outlive it.
///
/// 1. A literal that every match needs is looked for as in KeywordPrefilter,
///    unless a carriage return may stand inside it.
/// 2. Without a literal the LineAutomaton reads what is ASCII or UTF-8.
/// 3. Where neither is possible, or a line cannot be decoded by itself, there is
///    no answer: then the file is decoded.
class RawLines {
public:
    RawLines(const SearchPlan &plan, LineMatcher &matcher);

    /// The hit strings in line order; nothing when the file must be decoded.
    std::optional<QStringList> search(const char *content, qint64 size, int codeSet);

private:
    struct Text {
        const char *bytes;
        qint64 size;
        int codeSet;
        int unitSize; // 1, or 2 for UTF-16
        bool bigEndian;
        bool highBytes;
        bool loneCarriageReturn;
    };

    static Text surveyed(const char *bytes, qint64 size, int codeSet);
    bool canRead(const Text &text) const;
    template <typename Next>
    std::optional<QStringList> visitLines(const Text &text, const Next &next);
    bool visit(const RawLineCursor &cursor, bool candidate);

    const SearchPlan &m_plan;
    LineMatcher &m_matcher;
    LineDecoder m_decoder;
    QString m_line;
    QString m_pendingLine; // the matcher's pending hit may refer to it
};
