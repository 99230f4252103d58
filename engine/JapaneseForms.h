#pragma once

#include <QByteArray>
#include <QVector>

#include <bitset>
#include <vector>

/// Which bytes the toolkit's codec of a Japanese code set decodes to a
/// character. Found by decoding every possible sequence, never assumed: the
/// codecs differ between platforms, and many characters have two or three forms
/// (those of the NEC and IBM extensions).
class JapaneseForms {
public:
    /// An escape sequence of ISO-2022-JP that this codec understands.
    struct Designation {
        QByteArray escape;
        bool twoBytes = false; ///< a character has two bytes after it, else one
    };

    /// One way to write a character: the first length of the bytes.
    struct Form {
        char16_t character;
        uchar length;
        char bytes[3];

        bool operator<(const Form &other) const { return character < other.character; }
    };

    /// The forms for CodeSet::ShiftJis, EucJp or Iso2022Jp, found at the first
    /// call for the number (a few milliseconds). May be called from any thread.
    static const JapaneseForms &of(int codeSet);

    /// False when the codec is missing, is another one than the name says, or
    /// behaves in a way that forms cannot describe; then nothing is known.
    bool known() const { return m_known; }

    /// The character also comes from bytes that forms() does not tell.
    bool isAmbiguous(char16_t character) const { return m_ambiguous.test(character); }

    /// One to three bytes each; empty when no bytes decode to the character. In
    /// ISO-2022-JP they are as Iso2022Stream normalises them.
    QVector<QByteArray> forms(char16_t character) const;

    /// Of all characters, in the order of these.
    const std::vector<Form> &all() const { return m_forms; }

    /// Empty but for ISO-2022-JP.
    const QVector<Designation> &designations() const { return m_designations; }

private:
    friend class JapaneseFormCollector;

    bool m_known = false;
    std::vector<Form> m_forms; // see all()
    std::bitset<0x10000> m_ambiguous;
    QVector<Designation> m_designations;
};
