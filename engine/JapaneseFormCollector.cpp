#include "engine/JapaneseFormCollector.h"

#include "engine/CodeSet.h"
#include "engine/Iso2022Stream.h"

#include <QTextCodec>

#include <algorithm>
#include <numeric>

namespace {

constexpr char kEscape = '\x1B';
constexpr char kShiftOut = '\x0E';
constexpr char kShiftIn = '\x0F';
// Longer than any sequence can be, so that one that takes a line feed along
// leaves another.
const char kLineFeeds[] = "\n\n\n";
const char kToAscii[] = "\x1B(B";

/// IANA's MIBenum of the code sets' codecs; another codec is not what is asked
/// for.
int mibOf(int codeSet)
{
    switch (codeSet) {
    case CodeSet::ShiftJis:
        return 17;
    case CodeSet::EucJp:
        return 18;
    default:
        return 39;
    }
}

QByteArray byteRange(int first, int last)
{
    QByteArray bytes(last - first + 1, '\0');
    std::iota(bytes.begin(), bytes.end(), static_cast<char>(first));
    return bytes;
}

QByteArray without(QByteArray bytes, const QByteArray &unwanted)
{
    const auto isUnwanted = [&unwanted](char byte) {
        return unwanted.contains(byte);
    };
    const auto end = std::remove_if(bytes.begin(), bytes.end(), isUnwanted);
    bytes.truncate(static_cast<int>(end - bytes.begin()));
    return bytes;
}

/// before, each of firsts, each of seconds, after: one record for every pair, or
/// for each of firsts when there are no seconds.
QByteArray recordsOf(const QByteArray &before, const QByteArray &firsts, const QByteArray &seconds,
                     const QByteArray &after)
{
    const int variableSize = seconds.isEmpty() ? 1 : 2;
    const int count = firsts.size() * qMax(seconds.size(), 1);
    QByteArray result(count * (before.size() + variableSize + after.size()), Qt::Uninitialized);
    char *out = result.data();
    for (int i = 0; i < count; ++i) {
        out = std::copy(before.cbegin(), before.cend(), out);
        *out++ = firsts.at(i / qMax(seconds.size(), 1));
        if (!seconds.isEmpty())
            *out++ = seconds.at(i % seconds.size());
        out = std::copy(after.cbegin(), after.cend(), out);
    }
    return result;
}

uint pairIndex(char first, char second)
{
    return static_cast<uint>(static_cast<uchar>(first)) << 8 | static_cast<uchar>(second);
}

} // namespace

JapaneseFormCollector::JapaneseFormCollector(int codeSet)
    : m_codec(CodeSet::codec(codeSet)), m_codeSet(codeSet), m_ofSingle(0x100), m_ofPair(0x10000)
{
}

JapaneseForms JapaneseFormCollector::collect()
{
    if (m_codec == nullptr || m_codec->mibEnum() != mibOf(m_codeSet))
        return {};
    const bool complete =
        m_codeSet == CodeSet::Iso2022Jp ? collectDesignations() : collectStateless();
    if (!complete)
        return {};
    // Stable: the form with the smallest bytes, the usual one, stays first.
    std::stable_sort(m_forms.m_forms.begin(), m_forms.m_forms.end());
    m_forms.m_known = true;
    return m_forms;
}

bool JapaneseFormCollector::collectStateless()
{
    const QByteArray bytes = without(byteRange(0x00, 0xFF), "\n");
    return collectSingles(bytes) && collectPairs(bytes)
        && (m_codeSet != CodeSet::EucJp || collectTriples());
}

bool JapaneseFormCollector::collectSingles(const QByteArray &bytes)
{
    QByteArray records;
    for (const char byte : bytes)
        records.append(byte).append(kLineFeeds);
    return decodeRecords(records, bytes.size(), [&](int index, QStringView text) {
        take(text, {{bytes.at(index)}, 1});
    });
}

bool JapaneseFormCollector::collectPairs(const QByteArray &bytes)
{
    const int count = bytes.size() * bytes.size();
    return decodeRecords(recordsOf(QByteArray(), bytes, bytes, kLineFeeds), count,
                         [&](int index, QStringView text) {
                             const char first = bytes.at(index / bytes.size());
                             take(text, {{first, bytes.at(index % bytes.size())}, 2});
                         });
}

/// The characters of JIS X 0212, behind a single shift.
bool JapaneseFormCollector::collectTriples()
{
    constexpr char SingleShiftThree = '\x8F';
    const QByteArray bytes = byteRange(0x80, 0xFF);
    const int count = bytes.size() * bytes.size();
    const QByteArray shift(1, SingleShiftThree);
    return decodeRecords(recordsOf(shift, bytes, bytes, kLineFeeds), count,
                         [&](int index, QStringView text) {
                             const char second = bytes.at(index / bytes.size());
                             const char third = bytes.at(index % bytes.size());
                             take(text, {{SingleShiftThree, second, third}, 3});
                         });
}

bool JapaneseFormCollector::collectDesignations()
{
    for (const char *code : {"(B", "(J", "(H", "(I", "$@", "$B", "$(@", "$(B", "$(D"}) {
        JapaneseForms::Designation designation;
        designation.escape = kEscape + QByteArray(code);
        // Two characters after it, or one of two bytes; nothing else is left of
        // a sequence that the codec understands.
        const QByteArray probe = designation.escape + "0!" + kToAscii + '\n';
        const QString text = m_codec->toUnicode(probe);
        const bool understood = text.endsWith(QLatin1Char('\n')) && text.size() <= 3
            && text.size() >= 2 && !text.contains(QChar(QChar::ReplacementCharacter));
        if (!understood)
            continue;
        designation.twoBytes = text.size() == 2;
        if (!collectAfter(designation))
            return false;
        m_forms.m_designations.append(designation);
    }
    return !m_forms.m_designations.isEmpty() && m_forms.m_designations.first().escape == kToAscii;
}

bool JapaneseFormCollector::collectAfter(const JapaneseForms::Designation &designation)
{
    const bool twoBytes = designation.twoBytes;
    const QByteArray unwanted = {QByteArray("\n") + kEscape + kShiftOut + kShiftIn};
    const QByteArray bytes = twoBytes ? byteRange(0x21, 0x7E) + byteRange(0xA1, 0xFE)
                                      : without(byteRange(0x00, 0xFF), unwanted);
    // Empty: recordsOf() then leaves the second byte out.
    const QByteArray seconds = twoBytes ? bytes : QByteArray();
    const QByteArray records =
        recordsOf(designation.escape, bytes, seconds, QByteArray(kToAscii) + '\n');
    const int perFirst = twoBytes ? seconds.size() : 1;
    return decodeRecords(records, bytes.size() * perFirst, [&](int index, QStringView text) {
        using Iso2022Stream::normalised;
        const char first = normalised(bytes.at(index / perFirst), twoBytes);
        if (twoBytes)
            take(text, {{first, normalised(seconds.at(index % perFirst), twoBytes)}, 2});
        else
            take(text, {{first}, 1});
    });
}

/// Decodes records that end in line feeds and visits what is between line feeds.
/// False when that is not one text for each record, which also happens when a
/// sequence decodes to nothing: such bytes could stand unseen inside a keyword.
bool JapaneseFormCollector::decodeRecords(const QByteArray &records, int count,
                                          const Visitor &visit) const
{
    const QString decoded = m_codec->toUnicode(records);
    const QChar *const end = decoded.cend();
    const QChar *at = decoded.cbegin();
    int index = 0;
    for (;;) {
        at = std::find_if(at, end, [](QChar c) { return c != QLatin1Char('\n'); });
        if (at == end)
            return index == count;
        if (index == count)
            return false;
        const QChar *const from = at;
        at = std::find(from, end, QLatin1Char('\n'));
        visit(index++, QStringView(from, at));
    }
}

void JapaneseFormCollector::take(QStringView text, const Sequence &sequence)
{
    if (text.size() == 1)
        addForm(text.front(), sequence);
    else
        addAmbiguous(text, sequence);
}

void JapaneseFormCollector::addForm(QChar character, const Sequence &sequence)
{
    if (character == QChar(QChar::ReplacementCharacter))
        return;
    JapaneseForms::Form form = {character.unicode(), static_cast<uchar>(sequence.length), {}};
    std::copy(sequence.bytes, sequence.bytes + sequence.length, form.bytes);
    m_forms.m_forms.push_back(form);
    if (sequence.length == 1)
        m_ofSingle[static_cast<uchar>(sequence.bytes[0])] = character.unicode();
    else if (sequence.length == 2)
        m_ofPair[pairIndex(sequence.bytes[0], sequence.bytes[1])] = character.unicode();
}

/// A sequence that gives several characters is a broken one, which leaves some
/// of its bytes to be read again, or one that forms cannot describe.
void JapaneseFormCollector::addAmbiguous(QStringView text, const Sequence &sequence)
{
    for (const QChar character : text) {
        if (character != QChar(QChar::ReplacementCharacter) && !hasForm(character, sequence))
            m_forms.m_ambiguous.set(character.unicode());
    }
}

bool JapaneseFormCollector::hasForm(QChar character, const Sequence &sequence) const
{
    for (int i = 0; i < sequence.length; ++i) {
        if (m_ofSingle[static_cast<uchar>(sequence.bytes[i])] == character.unicode())
            return true;
        if (i > 0
            && m_ofPair[pairIndex(sequence.bytes[i - 1], sequence.bytes[i])] == character.unicode())
            return true;
    }
    return false;
}
