#pragma once

#include <QByteArray>
#include <QRandomGenerator>
#include <QString>

class QTextCodec;

/// Makes file contents for comparing a fast path with a plain one: texts in all
/// code sets, whole, broken or cut, and sequences that codecs find difficult.
/// The same seed gives the same contents on every machine.
class EncodedTextGenerator {
public:
    explicit EncodedTextGenerator(quint32 seed) : m_random(seed) { }

    /// From 0 up to, but not including, limit.
    int number(int limit) { return m_random.bounded(limit); }
    bool oneIn(int limit) { return number(limit) == 0; }

    /// Characters of many scripts, pairs of surrogates among them, in lines
    /// that end in CR, LF, CR LF, all of them or none.
    QString text(int length);
    /// Any UTF-16 units, so halves of surrogate pairs without the other too.
    QString units(int length);

    /// The text in the codec's code set without a mark.
    QByteArray encoded(const QString &text, QTextCodec *codec) const;
    QByteArray randomBytes(int size);
    /// Some bytes of content replaced, removed or inserted.
    QByteArray broken(QByteArray content);
    /// Shifts, marks, line ends, whole and cut characters of all code sets, in
    /// any order.
    QByteArray fragments(int count);
    /// One of the five byte-order marks.
    QByteArray mark();

private:
    QChar character();
    QString lineEnd(int style);

    QRandomGenerator m_random;
};
