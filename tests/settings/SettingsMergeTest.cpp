#include "settings/SettingsMerge.h"

#include "settings/IniDocument.h"

#include <QPoint>
#include <QTest>

class SettingsMergeTest : public QObject {
    Q_OBJECT

private slots:
    void withoutKnowledgeEverythingIsWritten();
    void anUnchangedFileIsWrittenAsBefore();
    void aValueThatOnlyTheOtherChangedIsKept_data();
    void aValueThatOnlyTheOtherChangedIsKept();
    void aValueThatBothChangedIsWritten();
    void aKeyThatWasTakenOutIsWritten();
    void aKeyThatTheOtherPutInIsKept();
    void anotherSpellingOfTheSameValueIsNoChange();
    void whatWasKeptIsKeptByTheNextSaveToo();
    void whatWasKeptIsWrittenWhenItIsChangedHere();
    void whatWasWrittenHereIsNotTheOthers();
    void aFailedSaveChangesNoKnowledge();
    void addedTextsGoInFrontOfTheOthersHistory();
    void aHistoryWithoutAddedTextsIsTheOthers();
    void aHistoryOfTheSecondSaveHasEachTextOnce();
    void aHistoryThatTheOtherEmptiedHasWhatWasAdded();
    void aHistoryOfOneTextIsMergedToo();
    void aMergedHistoryKeepsTheLimit();
    void aListThatIsNoHistoryIsNotMerged();
};

namespace {

const QString kKey = QStringLiteral("key");

QStringList texts(std::initializer_list<const char *> list)
{
    QStringList result;
    for (const char *item : list)
        result.append(QString::fromUtf8(item));
    return result;
}

IniDocument fileOf(const QByteArray &content)
{
    return IniDocument(content, IniDocument::Form::Utf8);
}

IniDocument fileWith(const QVariant &value)
{
    IniDocument file(IniDocument::Form::Utf8);
    file.setValue(kKey, value);
    return file;
}

SettingsMerge::Values own(const QVariant &value)
{
    return {{kKey, value, false}};
}

SettingsMerge::Values history(const QStringList &list)
{
    return {{kKey, list, true}};
}

} // namespace

void SettingsMergeTest::withoutKnowledgeEverythingIsWritten()
{
    IniDocument file = fileOf("key=1\nmine=2\n");
    SettingsMerge().write({{kKey, 3, false}, {QStringLiteral("new"), texts({"a"}), true}}, file);
    QCOMPARE(file.toBytes(), fileOf("key=3\nmine=2\nnew=a\n").toBytes());
}

void SettingsMergeTest::anUnchangedFileIsWrittenAsBefore()
{
    // The own value need not be the file's: it may have been out of range there.
    IniDocument file = fileWith(-1);
    const SettingsMerge merge(own(1), file);
    merge.write(own(1), file);
    QCOMPARE(file.text(kKey), QStringLiteral("1"));
    merge.write(own(2), file);
    QCOMPARE(file.text(kKey), QStringLiteral("2"));
}

void SettingsMergeTest::aValueThatOnlyTheOtherChangedIsKept_data()
{
    QTest::addColumn<QVariant>("before");
    QTest::addColumn<QVariant>("others");
    QTest::newRow("number") << QVariant(4) << QVariant(8);
    QTest::newRow("flag") << QVariant(true) << QVariant(false);
    QTest::newRow("text") << QVariant(QStringLiteral("a")) << QVariant(QStringLiteral("検索, b"));
    QTest::newRow("list") << QVariant(texts({"a", "b"})) << QVariant(texts({"b", "a"}));
    QTest::newRow("emptied list") << QVariant(texts({"a", "b"})) << QVariant(QStringList());
    QTest::newRow("bytes") << QVariant(QByteArray("\1\2")) << QVariant(QByteArray("\1\3"));
    QTest::newRow("point") << QVariant(QPoint(1, 2)) << QVariant(QPoint(1, 3));
}

void SettingsMergeTest::aValueThatOnlyTheOtherChangedIsKept()
{
    QFETCH(QVariant, before);
    QFETCH(QVariant, others);
    const SettingsMerge merge(own(before), fileWith(before));
    IniDocument file = fileWith(others);
    merge.write(own(before), file);
    QCOMPARE(file.toBytes(), fileWith(others).toBytes());
}

void SettingsMergeTest::aValueThatBothChangedIsWritten()
{
    const SettingsMerge merge(own(1), fileWith(1));
    IniDocument file = fileWith(2);
    merge.write(own(3), file);
    QCOMPARE(file.text(kKey), QStringLiteral("3"));
}

void SettingsMergeTest::aKeyThatWasTakenOutIsWritten()
{
    const SettingsMerge merge(own(1), fileWith(1));
    IniDocument file = fileOf("other=1\n");
    merge.write(own(1), file);
    QCOMPARE(file.text(kKey), QStringLiteral("1"));
}

void SettingsMergeTest::aKeyThatTheOtherPutInIsKept()
{
    const SettingsMerge merge(own(1), fileOf(""));
    IniDocument file = fileWith(2);
    merge.write(own(1), file);
    QCOMPARE(file.text(kKey), QStringLiteral("2"));
}

void SettingsMergeTest::anotherSpellingOfTheSameValueIsNoChange()
{
    const SettingsMerge merge(own(QStringLiteral("a")), fileOf("key=b\n"));
    IniDocument file = fileOf("key=\"b\"\n");
    merge.write(own(QStringLiteral("a")), file);
    QCOMPARE(file.text(kKey), QStringLiteral("a"));
}

void SettingsMergeTest::whatWasKeptIsKeptByTheNextSaveToo()
{
    const SettingsMerge merge(own(1), fileWith(1));
    IniDocument file = fileWith(2);
    merge.write(own(1), file).write(own(1), file).write(own(1), file);
    QCOMPARE(file.text(kKey), QStringLiteral("2"));
}

void SettingsMergeTest::whatWasKeptIsWrittenWhenItIsChangedHere()
{
    const SettingsMerge merge(own(1), fileWith(1));
    IniDocument file = fileWith(2);
    const SettingsMerge kept = merge.write(own(1), file);
    kept.write(own(3), file);
    QCOMPARE(file.text(kKey), QStringLiteral("3"));
}

void SettingsMergeTest::whatWasWrittenHereIsNotTheOthers()
{
    const SettingsMerge merge(own(1), fileWith(1));
    IniDocument file = fileWith(2);
    const SettingsMerge written = merge.write(own(3), file);
    written.write(own(4), file);
    QCOMPARE(file.text(kKey), QStringLiteral("4"));
    IniDocument changedAgain = fileWith(5);
    written.write(own(3), changedAgain);
    QCOMPARE(changedAgain.text(kKey), QStringLiteral("5"));
}

void SettingsMergeTest::aFailedSaveChangesNoKnowledge()
{
    const SettingsMerge merge(own(1), fileWith(1));
    IniDocument lost = fileWith(1);
    merge.write(own(2), lost);
    IniDocument file = fileWith(3);
    merge.write(own(2), file);
    QCOMPARE(file.text(kKey), QStringLiteral("2"));
}

void SettingsMergeTest::addedTextsGoInFrontOfTheOthersHistory()
{
    const QStringList before = texts({"a", "b", "c"});
    const SettingsMerge merge(history(before), fileWith(before));
    IniDocument file = fileWith(texts({"others", "a", "b", "c"}));
    merge.write(history(texts({"c", "mine", "a", "b"})), file);
    QCOMPARE(file.list(kKey), texts({"c", "mine", "others", "a", "b"}));
}

void SettingsMergeTest::aHistoryWithoutAddedTextsIsTheOthers()
{
    const QStringList before = texts({"a", "b"});
    const SettingsMerge merge(history(before), fileWith(before));
    IniDocument file = fileWith(texts({"b", "b", " "}));
    merge.write(history(before), file);
    QCOMPARE(file.list(kKey), texts({"b", "b", " "}));
}

void SettingsMergeTest::aHistoryOfTheSecondSaveHasEachTextOnce()
{
    const SettingsMerge merge(history(texts({"a"})), fileWith(texts({"a"})));
    IniDocument file = fileWith(texts({"others", "a"}));
    const SettingsMerge once = merge.write(history(texts({"mine", "a"})), file);
    const SettingsMerge twice = once.write(history(texts({"mine", "a"})), file);
    QCOMPARE(file.list(kKey), texts({"mine", "others", "a"}));
    file = fileWith(texts({"newest", "mine", "others", "a"}));
    twice.write(history(texts({"last", "mine", "a"})), file);
    QCOMPARE(file.list(kKey), texts({"last", "newest", "mine", "others", "a"}));
}

void SettingsMergeTest::aHistoryThatTheOtherEmptiedHasWhatWasAdded()
{
    const SettingsMerge merge(history(texts({"a", "b"})), fileWith(texts({"a", "b"})));
    IniDocument file = fileWith(QStringList());
    merge.write(history(texts({"mine", "a", "b"})), file);
    QCOMPARE(file.list(kKey), texts({"mine"}));
}

void SettingsMergeTest::aHistoryOfOneTextIsMergedToo()
{
    const SettingsMerge merge(history(QStringList()), fileWith(QStringList()));
    IniDocument file = fileOf("key=others\n");
    merge.write(history(texts({"mine"})), file);
    QCOMPARE(file.list(kKey), texts({"mine", "others"}));
}

void SettingsMergeTest::aMergedHistoryKeepsTheLimit()
{
    QStringList full;
    for (int i = 0; i < 50; ++i)
        full.append(QString::number(i));
    const SettingsMerge merge(history(QStringList()), fileOf(""));
    IniDocument file = fileWith(full);
    merge.write(history(texts({"x", "y"})), file);
    QCOMPARE(file.list(kKey).size(), 50);
    QCOMPARE(file.list(kKey).mid(0, 3), texts({"x", "y", "0"}));
    QCOMPARE(file.list(kKey).last(), QStringLiteral("47"));
}

void SettingsMergeTest::aListThatIsNoHistoryIsNotMerged()
{
    const SettingsMerge merge(own(texts({"a"})), fileWith(texts({"a"})));
    IniDocument file = fileWith(texts({"others"}));
    merge.write(own(texts({"mine", "a"})), file);
    QCOMPARE(file.list(kKey), texts({"mine", "a"}));
}

QTEST_GUILESS_MAIN(SettingsMergeTest)
#include "SettingsMergeTest.moc"
