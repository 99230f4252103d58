#pragma once

#include "engine/JapaneseForms.h"

#include <QString>

#include <functional>

class QTextCodec;

/// Fills JapaneseForms by trying the codec: decodes all sequences of one and two
/// bytes, in EUC-JP also those of three, in ISO-2022-JP after each escape
/// sequence, each followed by line feeds that bring the codec back to its first
/// state.
class JapaneseFormCollector {
public:
    explicit JapaneseFormCollector(int codeSet);

    JapaneseForms collect();

private:
    /// Up to three bytes without a detour over the heap: there are many.
    struct Sequence {
        char bytes[3];
        int length;
    };
    /// Takes what the index-th record was decoded to.
    using Visitor = std::function<void(int index, QStringView text)>;

    bool collectStateless();
    bool collectSingles(const QByteArray &bytes);
    bool collectPairs(const QByteArray &bytes);
    bool collectTriples();
    bool collectDesignations();
    bool collectAfter(const JapaneseForms::Designation &designation);

    bool decodeRecords(const QByteArray &records, int count, const Visitor &visit) const;
    void take(QStringView text, const Sequence &sequence);
    void addForm(QChar character, const Sequence &sequence);
    void addAmbiguous(QStringView text, const Sequence &sequence);
    bool hasForm(QChar character, const Sequence &sequence) const;

    const QTextCodec *m_codec;
    int m_codeSet;
    JapaneseForms m_forms;
    std::vector<char16_t> m_ofSingle; // what each byte decodes to, 0 when to no character
    std::vector<char16_t> m_ofPair; // the same for each two bytes
};
