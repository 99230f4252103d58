#pragma once

#include "engine/ByteSearch.h"
#include "engine/CodeSet.h"
#include "engine/RequiredLiteral.h"

#include <array>
#include <mutex>

/// Decides on a file's raw bytes whether decoding it can give any line that
/// matches keyword1. It may say yes too often, never no too often:
///
///  1. A byte-order mark overrides the code set, as it does for the decoder.
///  2. What a match needs is encoded into the code set (EncodedLiteral) and
///     searched for in the bytes.
///  3. Where bytes that decode to nothing may stand inside the literal, the file
///     passes: a carriage return that no line feed follows, a mark inside the
///     file, an unusual escape sequence in ISO-2022-JP.
///  4. Where nothing can be known (no literal, the default code set, a codec
///     that the toolkit lacks), every file passes.
///
/// Made once a search; any number of threads may use it. What a code set needs
/// is prepared when the first file of that code set comes.
class KeywordPrefilter {
    Q_DISABLE_COPY(KeywordPrefilter)

public:
    /// keyword1 as it is matched, see RequiredLiteral.
    KeywordPrefilter(const QString &keyword1, bool regExp, Qt::CaseSensitivity sensitivity);
    explicit KeywordPrefilter(const RequiredLiteral &required);

    /// False only if no line of the file's decoded text can match. size in
    /// bytes; codeSet is the number that the file would be decoded with.
    bool mayMatch(const char *bytes, qint64 size, int codeSet) const;

    /// Finds, in the bytes of a text of codeSet behind its mark, something on
    /// every line that can match, as long as rule 3 does not apply; null where
    /// nothing can be known. highBytes: whether there is a byte of 128 or above
    /// (always true for UTF-16 and UTF-32).
    const ByteSearch *lineSearch(int codeSet, bool highBytes) const;

private:
    /// How the files of one code set are searched.
    struct Plan {
        enum Answer { PassAll, PassNone, Search };

        std::once_flag prepared;
        Answer answer = PassAll;
        ByteSearch needles;
        ByteSearch all; // needles and strays
        ByteSearch strays; // what lets a file pass although no needle was found
        bool straysAreHigh = false; // no stray occurs in a file of pure ASCII
    };

    const Plan &plan(int codeSet) const;
    void prepare(Plan *plan, int codeSet) const;
    bool mayMatchBytes(const Plan &plan, const char *bytes, qint64 size) const;
    bool mayMatchUnits(const Plan &plan, const char *bytes, qint64 size, int codeSet) const;
    bool mayMatchIso2022(const Plan &plan, const char *bytes, qint64 size) const;

    RequiredLiteral m_required;
    mutable std::array<Plan, CodeSet::kCount> m_plans;
};
