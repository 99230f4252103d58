#include "engine/KeywordPrefilter.h"

#include "tests/support/FileText.h"
#include "tests/support/TestLength.h"

#include <QHash>
#include <QRandomGenerator>
#include <QRegExp>
#include <QTest>
#include <QTextCodec>

#include <algorithm>

/// Compares the prefilter's answers on generated files with what decoding and
/// matching every line says.
class KeywordPrefilterRandomTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void noMatchingFileIsRefused_data();
    void noMatchingFileIsRefused();
    void everyByteSequenceOfACharacterIsFound_data();
    void everyByteSequenceOfACharacterIsFound();
    void noFileOfRandomBytesIsRefusedForItsOwnText_data();
    void noFileOfRandomBytesIsRefusedForItsOwnText();
};

namespace {

const QStringList &keywords()
{
    static const QStringList list = {QStringLiteral("foo"),
                                     QStringLiteral("Key"),
                                     QStringLiteral("k"),
                                     QStringLiteral("sks"),
                                     QStringLiteral("task"),
                                     QStringLiteral("des\u212A"),
                                     QStringLiteral("\u017Ftruct"),
                                     QStringLiteral("stra\u00DFe"),
                                     QStringLiteral("\u1E9E"),
                                     QStringLiteral("\u0130stanbul"),
                                     QStringLiteral("\u0131i"),
                                     QStringLiteral("かな"),
                                     QStringLiteral("カタカナ"),
                                     QStringLiteral("漢字"),
                                     QStringLiteral("表示"),
                                     QStringLiteral("ソース"),
                                     QStringLiteral("①"),
                                     QStringLiteral("a≒b"),
                                     QStringLiteral("纊"),
                                     QStringLiteral("∪∩"),
                                     QStringLiteral("￢x"),
                                     QStringLiteral("ＡＢｃ"),
                                     QStringLiteral("ﾊﾝｶｸ"),
                                     QStringLiteral("αβΓς"),
                                     QStringLiteral("Яблоко"),
                                     QStringLiteral("дом"),
                                     QStringLiteral("\U0001F600"),
                                     QStringLiteral("a\U0001F600b"),
                                     QStringLiteral("\U00010400\U00010428"),
                                     QStringLiteral("\u00B5m"),
                                     QStringLiteral("?"),
                                     QStringLiteral("a?b"),
                                     QStringLiteral("\uFFFD"),
                                     QStringLiteral("b\uFFFD"),
                                     QStringLiteral("\uFEFF"),
                                     QStringLiteral("a\uFEFFb"),
                                     QStringLiteral("foo\tbar"),
                                     QStringLiteral("~"),
                                     QStringLiteral("\\"),
                                     QStringLiteral("\u00A5"),
                                     QStringLiteral("\u203E"),
                                     QStringLiteral("\u2015\u2014"),
                                     QStringLiteral("\u2225\u2016"),
                                     QStringLiteral("\uFF0D\u2212"),
                                     QStringLiteral("\uFF5E\u301C"),
                                     QStringLiteral("\u00E9"),
                                     QStringLiteral("\u00FF"),
                                     QStringLiteral("\u0001"),
                                     QStringLiteral("a\u001A"),
                                     QStringLiteral("\u007F"),
                                     QStringLiteral("\u0080"),
                                     QStringLiteral("\uFFFE"),
                                     QStringLiteral("\uE000"),
                                     QStringLiteral("\u212B"),
                                     QStringLiteral("\u2126"),
                                     QStringLiteral("日本語text混在"),
                                     QStringLiteral("\u13A0\u13F8"),
                                     QStringLiteral("丂丄"),
                                     QStringLiteral("キーワード k"),
                                     QStringLiteral("\u300D\u0D0A"),
                                     QStringLiteral("\n")};
    return list;
}

QByteArray plainEncoded(const QString &text, int codeSet)
{
    QTextCodec::ConverterState state(QTextCodec::IgnoreHeader);
    return CodeSet::codec(codeSet)->fromUnicode(text.constData(), text.size(), &state);
}

/// All byte sequences that a codec decodes to one character, found one by one.
QHash<QChar, QList<QByteArray>> allForms(int codeSet)
{
    QHash<QChar, QList<QByteArray>> forms;
    const QTextCodec *const codec = CodeSet::codec(codeSet);
    const auto add = [&](const QByteArray &bytes) {
        const QString text = codec->toUnicode(bytes + "\n");
        if (text.size() == 2 && text.at(1) == QLatin1Char('\n'))
            forms[text.at(0)].append(bytes);
    };
    for (int first = 0; first < 256; ++first) {
        add(QByteArray(1, static_cast<char>(first)));
        for (int second = 0; second < 256 && first >= 0x80; ++second) {
            const QByteArray two = {QByteArray(1, static_cast<char>(first))
                                    + static_cast<char>(second)};
            add(two);
            for (int third = 0x80; third < 256 && first == 0x8F && codeSet == CodeSet::EucJp;
                 ++third)
                add(two + static_cast<char>(third));
        }
    }
    return forms;
}

/// Makes the files.
class FileSource {
public:
    FileSource(int codeSet, quint32 seed) : m_codeSet(codeSet), m_random(seed)
    {
        if (codeSet == CodeSet::ShiftJis || codeSet == CodeSet::EucJp)
            m_forms = allForms(codeSet);
    }

    int below(int end) { return m_random.bounded(end); }
    bool chance(int oneIn) { return below(oneIn) == 0; }

    QByteArray file(const QString &keyword)
    {
        QByteArray bytes = chance(12) ? randomBytes(below(80)) : encoded(text(keyword));
        if (chance(3))
            mutate(&bytes);
        if (chance(8))
            bytes.truncate(below(bytes.size() + 1));
        if (chance(8))
            bytes.prepend(mark());
        if (chance(30))
            bytes.prepend(QByteArray(16384 - below(12), 'x'));
        return bytes;
    }

    QByteArray randomBytes(int count)
    {
        static const char common[] =
            "\x00\x0D\x0A\x1B\x80\x81\x87\x8E\x8F\xA4\xFA\xFF\xFE\xEF\xBB\xBF\xC5\xE2\x84\xAA"
            "\xD8\xDC$(BJI@ksoa\x5C\x7E\x0E\x0F\x30\x21\x46\x7C";
        constexpr int CommonCount = sizeof common - 1;
        QByteArray bytes;
        while (bytes.size() < count)
            bytes.append(chance(3) ? static_cast<char>(below(256)) : common[below(CommonCount)]);
        return bytes;
    }

private:
    QString text(const QString &keyword)
    {
        QString result;
        for (int i = below(8); i >= 0; --i) {
            if (chance(3))
                result += mangled(keyword);
            else if (chance(2))
                result += mangled(keywords().at(below(keywords().size())));
            else
                result += QStringLiteral("foo bar 仮名 ").mid(below(6));
            static const char *const ends[] = {"", " ", "\n", "\r\n", "\r", "\n\n"};
            result += QLatin1String(ends[below(6)]);
        }
        return result;
    }
    /// In some other case, or with something inside that the decoder drops.
    QString mangled(QString text)
    {
        if (chance(3))
            text = chance(2) ? text.toUpper() : text.toLower();
        for (int i = 0; i < text.size() && chance(2); ++i)
            text[i] = otherCase(text.at(i));
        if (chance(6))
            text.insert(below(text.size() + 1),
                        chance(4) ? QChar(QChar::ByteOrderMark) : QChar(QLatin1Char('\r')));
        return text;
    }
    QChar otherCase(QChar character)
    {
        switch (character.unicode()) {
        case 'k':
            return QChar(0x212A);
        case 's':
            return QChar(0x017F);
        case 0x03C3:
            return QChar(0x03C2);
        default:
            return chance(2) ? character.toUpper() : character.toCaseFolded();
        }
    }
    QByteArray encoded(const QString &text)
    {
        if (m_codeSet == CodeSet::Iso2022Jp)
            return encodedInPieces(text);
        if (m_forms.isEmpty())
            return plainEncoded(text, m_codeSet);
        QByteArray bytes;
        for (const QChar character : text) {
            const QList<QByteArray> forms = m_forms.value(character);
            if (!forms.isEmpty())
                bytes += forms.at(below(forms.size()));
        }
        return bytes;
    }
    /// Every piece returns to ASCII at its end, or does not.
    QByteArray encodedInPieces(const QString &text)
    {
        QByteArray bytes;
        for (int at = 0; at < text.size();) {
            const int length = chance(3) ? 1 : 1 + below(8);
            QByteArray piece = plainEncoded(text.mid(at, length), m_codeSet);
            if (chance(2) && piece.endsWith("\x1B(B"))
                piece.chop(3);
            else if (chance(3) && piece.contains("\x1B$B"))
                piece.replace("\x1B$B", "\x1B$@");
            const ushort unit = text.at(at).unicode();
            if (unit > 0xFF60 && unit < 0xFFA0) // the codec would write it in full width
                piece = QByteArray("\x1B(I") + static_cast<char>(unit - 0xFF40) + "\x1B(B"
                    + plainEncoded(text.mid(at + 1, length - 1), m_codeSet);
            bytes += piece;
            at += length;
        }
        return bytes;
    }
    QByteArray mark()
    {
        static const QList<QByteArray> marks = {"\xEF\xBB\xBF", "\xFE\xFF", "\xFF\xFE",
                                                QByteArray("\x00\x00\xFE\xFF", 4),
                                                QByteArray("\xFF\xFE\x00\x00", 4)};
        return marks.at(below(marks.size()));
    }
    void mutate(QByteArray *bytes)
    {
        for (int i = below(4); i >= 0; --i) {
            const int at = below(bytes->size() + 1);
            switch (below(3)) {
            case 0:
                bytes->insert(at, randomBytes(1 + below(3)));
                break;
            case 1:
                bytes->remove(at, 1 + below(3));
                break;
            default:
                bytes->replace(at, 1, randomBytes(1));
            }
        }
    }

    int m_codeSet;
    QRandomGenerator m_random;
    QHash<QChar, QList<QByteArray>> m_forms;
};

/// A keyword with the way to search for it.
struct Search {
    QString keyword;
    bool regExp = false;
    Qt::CaseSensitivity sensitivity = Qt::CaseSensitive;

    bool matches(const QString &text) const
    {
        const QRegExp pattern(keyword, sensitivity);
        const QStringList lines = FileText::lines(text);
        return std::any_of(lines.cbegin(), lines.cend(), [&](const QString &line) {
            return regExp ? pattern.indexIn(line) >= 0 : line.indexOf(keyword, 0, sensitivity) >= 0;
        });
    }
};

Search randomSearch(FileSource *source)
{
    Search search;
    search.keyword = keywords().at(source->below(keywords().size()));
    search.regExp = source->chance(3);
    search.sensitivity = source->chance(2) ? Qt::CaseSensitive : Qt::CaseInsensitive;
    if (search.regExp) {
        static const char *const frames[] = {"%1",  "^%1",    "%1$",      "(%1|zz)",  "(%1)+",
                                             ".%1", "x?%1.*", "\\b%1\\b", "[a-f]*%1", "%1?"};
        search.keyword =
            QString(QLatin1String(frames[source->below(10)])).arg(QRegExp::escape(search.keyword));
    }
    return search;
}

void addCodeSetRows()
{
    QTest::addColumn<int>("codeSet");
    for (int codeSet = CodeSet::ShiftJis; codeSet < CodeSet::kCount; ++codeSet)
        QTest::newRow(qPrintable(CodeSet::name(codeSet))) << codeSet;
}

QString failure(const Search &search, const QByteArray &bytes, int codeSet)
{
    return QStringLiteral("refused: %1 <%2> regExp %3 case %4 bytes %5")
        .arg(CodeSet::name(codeSet), search.keyword, QString::number(search.regExp),
             QString::number(search.sensitivity), QString::fromLatin1(bytes.right(300).toHex(' ')));
}

} // namespace

void KeywordPrefilterRandomTest::initTestCase()
{
    qputenv("UNICODEMAP_JP", "cp932"); // as the programs do before they use a codec
}

void KeywordPrefilterRandomTest::noMatchingFileIsRefused_data()
{
    addCodeSetRows();
}

void KeywordPrefilterRandomTest::noMatchingFileIsRefused()
{
    QFETCH(int, codeSet);
    const int Searches = TestLength::rounds(1500, 15000);
    constexpr int FilesPerSearch = 12;
    FileSource source(codeSet, 4711);
    int matching = 0;
    int refused = 0;
    for (int i = 0; i < Searches; ++i) {
        const Search search = randomSearch(&source);
        const KeywordPrefilter prefilter(search.keyword, search.regExp, search.sensitivity);
        for (int j = 0; j < FilesPerSearch; ++j) {
            const int readAs = source.chance(8) ? source.below(CodeSet::kCount) : codeSet;
            const QByteArray bytes =
                source.file(search.regExp ? QStringLiteral("foo") : search.keyword);
            const bool matches = search.matches(FileText::read(bytes, CodeSet::codec(readAs)));
            const bool mayMatch = prefilter.mayMatch(bytes.constData(), bytes.size(), readAs);
            if (matches && !mayMatch)
                QFAIL(qPrintable(failure(search, bytes, readAs)));
            matching += matches ? 1 : 0;
            refused += mayMatch ? 0 : 1;
        }
    }
    QVERIFY2(matching > Searches, qPrintable(QString::number(matching)));
    QVERIFY2(refused > Searches, qPrintable(QString::number(refused)));
}

void KeywordPrefilterRandomTest::everyByteSequenceOfACharacterIsFound_data()
{
    QTest::addColumn<int>("codeSet");
    QTest::newRow("Shift-JIS") << int(CodeSet::ShiftJis);
    QTest::newRow("EUC-JP") << int(CodeSet::EucJp);
}

void KeywordPrefilterRandomTest::everyByteSequenceOfACharacterIsFound()
{
    QFETCH(int, codeSet);
    const QHash<QChar, QList<QByteArray>> forms = allForms(codeSet);
    QVERIFY(forms.size() > 6000);
    for (auto form = forms.cbegin(); form != forms.cend(); ++form) {
        const KeywordPrefilter prefilter(form.key(), false, Qt::CaseInsensitive);
        for (const QByteArray &bytes : form.value()) {
            if (!prefilter.mayMatch(bytes.constData(), bytes.size(), codeSet))
                QFAIL(qPrintable(failure({form.key()}, bytes, codeSet)));
        }
    }
}

void KeywordPrefilterRandomTest::noFileOfRandomBytesIsRefusedForItsOwnText_data()
{
    addCodeSetRows();
}

/// Any stretch of what a file decodes to is a keyword that it matches.
void KeywordPrefilterRandomTest::noFileOfRandomBytesIsRefusedForItsOwnText()
{
    QFETCH(int, codeSet);
    constexpr int Files = 4000;
    FileSource source(codeSet, 815);
    int tried = 0;
    for (int i = 0; i < Files; ++i) {
        const QByteArray bytes = source.chance(2) ? source.randomBytes(1 + source.below(60))
                                                  : source.file(QStringLiteral("表示foo"));
        const QString text = FileText::read(bytes, CodeSet::codec(codeSet));
        for (int j = 0; j < 4 && !text.isEmpty(); ++j) {
            Search search;
            search.keyword = text.mid(source.below(text.size()), 1 + source.below(5));
            search.sensitivity = source.chance(2) ? Qt::CaseSensitive : Qt::CaseInsensitive;
            if (!search.matches(text))
                continue; // a line feed inside, or half a pair
            const KeywordPrefilter prefilter(search.keyword, false, search.sensitivity);
            if (!prefilter.mayMatch(bytes.constData(), bytes.size(), codeSet))
                QFAIL(qPrintable(failure(search, bytes, codeSet)));
            ++tried;
        }
    }
    QVERIFY2(tried > Files, qPrintable(QString::number(tried)));
}

QTEST_GUILESS_MAIN(KeywordPrefilterRandomTest)
#include "KeywordPrefilterRandomTest.moc"
