#pragma once

#include <QString>

class JapaneseTable;

/// Decodes single lines of a file to what they are in the decoded file: without
/// carriage returns, and with "?" for each half of a surrogate pair (see
/// searchableText). Where a line's text may depend on what is before it, or on
/// where the decoder cuts the file into pieces, it says so.
class LineDecoder {
public:
    /// False: only the whole file can be decoded, whatever its lines are.
    /// Known for UTF-8, UTF-16 and, as far as the toolkit's codecs were found to
    /// allow it, Shift-JIS and EUC-JP. bytes is the text behind its mark.
    bool begin(const char *bytes, qint64 size, int codeSet);

    /// bytes is a line of that text without its line feed. False: this line does
    /// not tell, the file must be decoded as a whole; *line is then unspecified.
    bool decode(const char *bytes, qint64 size, QString *line) const;

private:
    int m_codeSet = 0;
    const JapaneseTable *m_table = nullptr;
};
