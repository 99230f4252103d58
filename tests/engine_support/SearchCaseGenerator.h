#pragma once

#include "engine/SearchCondition.h"

#include <QByteArray>
#include <QString>

#include <random>

/// One generated search: a request, and the bytes of a file with the code set
/// that it is taken for.
struct SearchCase {
    SearchCondition condition;
    QByteArray content;
    int codeSet = 0;

    /// The hits in the file on the plain path, which decodes everything and visits
    /// every line.
    QStringList plainHits() const;
    /// The hits as a search finds them that reads pieces of so many bytes; a
    /// byte-order mark must be in the first one.
    QStringList hits(qint64 pieceSize) const;
    /// The file in one piece.
    QStringList hits() const { return hits(content.size()); }

    /// For the message of a failed comparison.
    QString describe() const;
};

/// Makes searches that are likely to hit, nearly hit, or be broken in the ways
/// that decoding and matching can go wrong: texts and keywords from the same
/// small alphabets, every code set and line end, marks, lone carriage returns,
/// mutated and cut bytes, patterns of every kind. The same seed gives the same
/// cases.
class SearchCaseGenerator {
public:
    explicit SearchCaseGenerator(quint32 seed);

    SearchCase next();
    /// The same with a pattern of many words as keyword1.
    SearchCase nextWithList();

private:
    SearchCase withKeyword1(const QString &keyword1, int flags);
    int below(int bound);
    bool oneIn(int chances);
    const QString &pick(const QStringList &texts);

    QString word();
    QString keyword(bool pattern);
    QString patternAtom(int depth);
    QString pattern(int depth);
    QString listedWord();
    QString list();
    QString line();
    QString text();
    QByteArray encode(const QString &text, int codeSet);
    void damage(QByteArray *bytes);

    std::mt19937 m_random;
    QStringList m_alphabet;
    bool m_isList = false;
};
