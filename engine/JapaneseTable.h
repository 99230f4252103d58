#pragma once

#include <QString>

#include <array>

/// The characters of one or two bytes of a Japanese code set, those of
/// JapaneseForms: decoding by this table is several times as fast as by the
/// toolkit's codec. Both code sets that have a table are without shift states, so a
/// text of nothing but such characters means the same wherever it is cut.
class JapaneseTable {
public:
    /// The table for CodeSet::ShiftJis or EucJp; null for any other number and
    /// where the toolkit lacks the codec. Made at the first call for the
    /// number, which takes some milliseconds. May be called from any thread.
    static const JapaneseTable *of(int codeSet);

    /// Decodes bytes that hold no ASCII but what ByteScan::Ascii calls steady.
    /// Returns false, with *text unspecified, when there is anything else that
    /// the table does not know: three-byte, broken or cut characters. Nothing is
    /// dropped, U+000D neither.
    bool decode(const char *bytes, int size, QString *text) const;

private:
    explicit JapaneseTable(int codeSet);
    template <int codeSet> static const JapaneseTable *tableOf();

    void clear();
    bool fill(int codeSet);

    static constexpr ushort kUnknown = 0xFFFD; // stands for broken bytes, so for no character
    static constexpr ushort kLead = 0xFFFE; // a noncharacter
    static constexpr int kFirstHigh = 0x80;

    // By byte, and by lead byte (from 80 on) and trail byte.
    std::array<ushort, 0x100> m_single;
    std::array<std::array<ushort, 0x100>, 0x80> m_pairs;
};
