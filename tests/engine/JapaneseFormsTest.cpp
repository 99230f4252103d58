#include "engine/JapaneseForms.h"

#include "engine/CodeSet.h"

#include <QTest>
#include <QTextCodec>

#include <thread>
#include <vector>

class JapaneseFormsTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void theCodecsAreKnown_data();
    void theCodecsAreKnown();
    void everyFormDecodesToItsCharacter_data();
    void everyFormDecodesToItsCharacter();
    void asciiHasItself();
    void otherCodeSetsAreNotKnown();
    void theUsualFormIsFirst();
    void iso2022JpHasItsEscapeSequences();
    void fewCharactersAreAmbiguous_data();
    void fewCharactersAreAmbiguous();
    void manyThreadsMayAskFirst();
};

namespace {

void addRows()
{
    QTest::addColumn<int>("codeSet");
    QTest::newRow("Shift-JIS") << int(CodeSet::ShiftJis);
    QTest::newRow("EUC-JP") << int(CodeSet::EucJp);
    QTest::newRow("ISO 2022-JP") << int(CodeSet::Iso2022Jp);
}

} // namespace

void JapaneseFormsTest::initTestCase()
{
    qputenv("UNICODEMAP_JP", "cp932"); // as the programs do before they use a codec
}

void JapaneseFormsTest::theCodecsAreKnown_data()
{
    addRows();
}

void JapaneseFormsTest::theCodecsAreKnown()
{
    QFETCH(int, codeSet);
    QVERIFY(JapaneseForms::of(codeSet).known());
}

void JapaneseFormsTest::everyFormDecodesToItsCharacter_data()
{
    addRows();
}

void JapaneseFormsTest::everyFormDecodesToItsCharacter()
{
    QFETCH(int, codeSet);
    const JapaneseForms &forms = JapaneseForms::of(codeSet);
    int count = 0;
    for (int character = 0x20; character < 0x10000; ++character) {
        for (const QByteArray &form : forms.forms(static_cast<char16_t>(character))) {
            ++count;
            if (codeSet != CodeSet::Iso2022Jp)
                QCOMPARE(CodeSet::codec(codeSet)->toUnicode(form + "\n").at(0).unicode(),
                         static_cast<ushort>(character));
        }
    }
    QVERIFY(count > 6879); // the characters of JIS X 0208
}

void JapaneseFormsTest::asciiHasItself()
{
    for (const int codeSet : {CodeSet::ShiftJis, CodeSet::EucJp, CodeSet::Iso2022Jp}) {
        for (char letter = 'a'; letter <= 'z'; ++letter)
            QVERIFY(JapaneseForms::of(codeSet)
                        .forms(static_cast<char16_t>(letter))
                        .contains(QByteArray(1, letter)));
    }
}

void JapaneseFormsTest::otherCodeSetsAreNotKnown()
{
    for (const int codeSet : {CodeSet::Default, CodeSet::Utf8, CodeSet::Utf16Le})
        QVERIFY(!JapaneseForms::of(codeSet).known());
    QVERIFY(!JapaneseForms::of(-1).known());
}

void JapaneseFormsTest::theUsualFormIsFirst()
{
    const QVector<QByteArray> forms = JapaneseForms::of(CodeSet::ShiftJis).forms(u'\u2252');
    QVERIFY(!forms.isEmpty());
    QCOMPARE(forms.first(), QByteArray("\x81\xE0"));
}

void JapaneseFormsTest::iso2022JpHasItsEscapeSequences()
{
    QList<QByteArray> escapes;
    for (const auto &designation : JapaneseForms::of(CodeSet::Iso2022Jp).designations()) {
        escapes.append(designation.escape);
        QCOMPARE(designation.twoBytes, designation.escape.at(1) == '$');
    }
    for (const char *usual : {"\x1B(B", "\x1B(J", "\x1B$@", "\x1B$B"})
        QVERIFY(escapes.contains(usual));
    QVERIFY(JapaneseForms::of(CodeSet::ShiftJis).designations().isEmpty());
}

void JapaneseFormsTest::fewCharactersAreAmbiguous_data()
{
    addRows();
}

/// A character that is said to be ambiguous without need lets every file pass.
void JapaneseFormsTest::fewCharactersAreAmbiguous()
{
    QFETCH(int, codeSet);
    for (int character = 0; character < 0x10000; ++character)
        QVERIFY2(!JapaneseForms::of(codeSet).isAmbiguous(static_cast<char16_t>(character)),
                 qPrintable(QString::number(character, 16)));
}

void JapaneseFormsTest::manyThreadsMayAskFirst()
{
    std::vector<std::thread> threads;
    std::vector<const JapaneseForms *> answers(4);
    for (size_t i = 0; i < answers.size(); ++i)
        threads.emplace_back([&answers, i] { answers[i] = &JapaneseForms::of(CodeSet::EucJp); });
    for (std::thread &thread : threads)
        thread.join();
    for (const JapaneseForms *const answer : answers)
        QCOMPARE(answer, answers.front());
}

QTEST_GUILESS_MAIN(JapaneseFormsTest)
#include "JapaneseFormsTest.moc"
