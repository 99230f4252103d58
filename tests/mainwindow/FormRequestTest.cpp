#include "mainwindow/FormRequest.h"

#include <QtTest>

using FormRequest::Mode;

class FormRequestTest : public QObject {
    Q_OBJECT

private slots:
    void aSearchIsRefusedForTheFirstThingMissing_data();
    void aSearchIsRefusedForTheFirstThingMissing();
    void aLineCountNeedsNoKeyword();
    void blanksAreSomething();

    void thePathsAreThoseOfTheText();
    void textsArePassedOnAsTheyAre();
    void keyword2NeedsItsGroupAndItsCheckBox_data();
    void keyword2NeedsItsGroupAndItsCheckBox();
    void keyword3NeedsItsGroup_data();
    void keyword3NeedsItsGroup();
    void theTogglesArePacked_data();
    void theTogglesArePacked();
    void theSwitchesArePassedOn();
    void theModeIsPassedOn();
};

namespace {

FormState filled()
{
    FormState form;
    form.pathText = QStringLiteral("/a/");
    form.mask = QStringLiteral("*.c");
    form.keyword1 = QStringLiteral("one");
    return form;
}

QString refusal(Mode mode, const FormState &form)
{
    return FormRequest::refusal(FormRequest::missing(mode, form));
}

} // namespace

void FormRequestTest::aSearchIsRefusedForTheFirstThingMissing_data()
{
    QTest::addColumn<QString>("missing");
    QTest::addColumn<QString>("refusal");
    const QString keyword = QStringLiteral("キーワード１を指定してください");
    const QString path = QStringLiteral("検索パスを指定してください");
    const QString mask = QStringLiteral("マスクを指定してください");
    // k: keyword 1, p: paths, m: mask
    QTest::newRow("nothing") << QString() << QString();
    QTest::newRow("keyword 1") << QStringLiteral("k") << keyword;
    QTest::newRow("paths") << QStringLiteral("p") << path;
    QTest::newRow("mask") << QStringLiteral("m") << mask;
    QTest::newRow("keyword 1 and paths") << QStringLiteral("kp") << keyword;
    QTest::newRow("keyword 1 and mask") << QStringLiteral("km") << keyword;
    QTest::newRow("paths and mask") << QStringLiteral("pm") << path;
    QTest::newRow("everything") << QStringLiteral("kpm") << keyword;
}

void FormRequestTest::aSearchIsRefusedForTheFirstThingMissing()
{
    QFETCH(QString, missing);
    FormState form = filled();
    if (missing.contains(QLatin1Char('k')))
        form.keyword1.clear();
    if (missing.contains(QLatin1Char('p')))
        form.pathText.clear();
    if (missing.contains(QLatin1Char('m')))
        form.mask.clear();
    QTEST(refusal(Mode::Search, form), "refusal");
}

void FormRequestTest::aLineCountNeedsNoKeyword()
{
    FormState form = filled();
    form.keyword1.clear();
    QCOMPARE(refusal(Mode::LineCount, form), QString());
    form.mask.clear();
    QCOMPARE(refusal(Mode::LineCount, form), QStringLiteral("マスクを指定してください"));
    form.pathText.clear();
    QCOMPARE(refusal(Mode::LineCount, form), QStringLiteral("検索パスを指定してください"));
}

void FormRequestTest::blanksAreSomething()
{
    FormState form;
    form.keyword1 = form.pathText = form.mask = QStringLiteral(" ");
    QCOMPARE(refusal(Mode::Search, form), QString());
}

void FormRequestTest::thePathsAreThoseOfTheText()
{
    FormState form = filled();
    form.pathText = QStringLiteral("c:/src\n\n/a/\nc:/src/\n@list\n/after");
    QCOMPARE(
        FormRequest::condition(Mode::Search, form).pathlist,
        (QStringList{QStringLiteral("c:/src/"), QStringLiteral("/a/"), QStringLiteral("@list")}));
}

void FormRequestTest::textsArePassedOnAsTheyAre()
{
    FormState form = filled();
    form.mask = QStringLiteral(" *.c ");
    form.keyword1 = QStringLiteral(" \"one\" ");
    const SearchCondition condition = FormRequest::condition(Mode::Search, form);
    QCOMPARE(condition.mask, form.mask);
    QCOMPARE(condition.keyword1, form.keyword1);
    QCOMPARE(condition.keyword2, QString());
    QCOMPARE(condition.keyword3, QString());
}

void FormRequestTest::keyword2NeedsItsGroupAndItsCheckBox_data()
{
    QTest::addColumn<bool>("group");
    QTest::addColumn<bool>("box");
    QTest::addColumn<QString>("expected");
    QTest::newRow("neither") << false << false << QString();
    QTest::newRow("the group") << true << false << QString();
    QTest::newRow("the box") << false << true << QString();
    QTest::newRow("both") << true << true << QStringLiteral("two");
}

void FormRequestTest::keyword2NeedsItsGroupAndItsCheckBox()
{
    QFETCH(bool, group);
    QFETCH(bool, box);
    QFETCH(QString, expected);
    FormState form = filled();
    form.extraGroup = group;
    form.useKeyword2 = box;
    form.keyword2 = QStringLiteral("two");
    form.lineDistance = 7;
    const SearchCondition condition = FormRequest::condition(Mode::Search, form);
    QCOMPARE(condition.keyword2, expected);
    QCOMPARE(condition.plusline, 7);
}

void FormRequestTest::keyword3NeedsItsGroup_data()
{
    QTest::addColumn<bool>("extraGroup");
    QTest::addColumn<bool>("group");
    QTest::addColumn<QString>("expected");
    QTest::newRow("neither") << false << false << QString();
    QTest::newRow("only the extra group") << true << false << QString();
    QTest::newRow("its own alone") << false << true << QStringLiteral("three");
    QTest::newRow("both") << true << true << QStringLiteral("three");
}

void FormRequestTest::keyword3NeedsItsGroup()
{
    QFETCH(bool, extraGroup);
    QFETCH(bool, group);
    QFETCH(QString, expected);
    FormState form = filled();
    form.extraGroup = extraGroup;
    form.keyword3Group = group;
    form.keyword3 = QStringLiteral("three");
    QCOMPARE(FormRequest::condition(Mode::Search, form).keyword3, expected);
}

void FormRequestTest::theTogglesArePacked_data()
{
    QTest::addColumn<bool>("ignoreCase");
    QTest::addColumn<bool>("word");
    QTest::addColumn<bool>("regexp");
    QTest::addColumn<int>("flags");
    QTest::newRow("none") << false << false << false << 0;
    QTest::newRow("ignore case") << true << false << false << 256;
    QTest::newRow("whole word") << false << true << false << 16;
    QTest::newRow("regular expression") << false << false << true << 1;
    QTest::newRow("all") << true << true << true << 273;
}

void FormRequestTest::theTogglesArePacked()
{
    QFETCH(bool, ignoreCase);
    QFETCH(bool, word);
    QFETCH(bool, regexp);
    QFETCH(int, flags);
    FormState form = filled();
    form.ignoreCase = ignoreCase;
    form.word = word;
    form.regexp = regexp;
    QCOMPARE(FormRequest::condition(Mode::Search, form).flg, flags);
}

void FormRequestTest::theSwitchesArePassedOn()
{
    FormState form = filled();
    form.subdir = false;
    form.emptyFiles = true;
    SearchCondition condition = FormRequest::condition(Mode::Search, form);
    QVERIFY(!condition.subdir);
    QVERIFY(condition.fnameflg);
    form.subdir = true;
    form.emptyFiles = false;
    condition = FormRequest::condition(Mode::Search, form);
    QVERIFY(condition.subdir);
    QVERIFY(!condition.fnameflg);
}

void FormRequestTest::theModeIsPassedOn()
{
    QVERIFY(!FormRequest::condition(Mode::Search, filled()).linecount);
    QVERIFY(FormRequest::condition(Mode::LineCount, filled()).linecount);
}

QTEST_GUILESS_MAIN(FormRequestTest)

#include "FormRequestTest.moc"
