#include "settings/dialogs/ToolkitTexts.h"

#include "settings/dialogs/verupdialog.h"
#include "tests/support/ScratchFolder.h"

#include <QApplication>
#include <QColorDialog>
#include <QFile>
#include <QFileSystemModel>
#include <QLibraryInfo>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTranslator>

namespace {

const QString kName = QStringLiteral("qtbase_ja.qm");

QString toolkitsFile()
{
    return QLibraryInfo::location(QLibraryInfo::TranslationsPath) + QLatin1Char('/') + kName;
}

QString buttonText(QMessageBox::StandardButton button)
{
    QMessageBox box(QMessageBox::Question, QString(), QString(), button);
    return box.button(button)->text();
}

QString cancelText()
{
    return buttonText(QMessageBox::Cancel);
}

} // namespace

class ToolkitTextsTest : public QObject {
    Q_OBJECT

private slots:
    void cleanup();

    void withTheFileTheTextsAreJapanese();
    void theFixedTextsStay();
    void withoutAFileTheTextsStay();
    void aFileThatCannotBeReadIsPassedOver_data();
    void aFileThatCannotBeReadIsPassedOver();
    void aFileOfASimilarNameIsNotTaken();
    void theFirstFolderWithTheFileCounts();
    void installingTwiceDoesNoHarm();
    void theProgramsFolderComesFirst();
};

void ToolkitTextsTest::cleanup()
{
    // Deleting a translator takes it out of use.
    qDeleteAll(qApp->findChildren<QTranslator *>());
    QVERIFY(cancelText().contains(QStringLiteral("Cancel")));
}

void ToolkitTextsTest::withTheFileTheTextsAreJapanese()
{
    if (!QFile::exists(toolkitsFile()))
        QSKIP("the toolkit's translations are not installed");
    QVERIFY(ToolkitTexts::install(*qApp));
    QCOMPARE(cancelText(), QStringLiteral("キャンセル"));
    QVERIFY(buttonText(QMessageBox::Yes).startsWith(QStringLiteral("はい")));
    QVERIFY(buttonText(QMessageBox::No).startsWith(QStringLiteral("いいえ")));
    QCOMPARE(QFileSystemModel().headerData(3, Qt::Horizontal).toString(), QStringLiteral("更新日"));
    QCOMPARE(QColorDialog().windowTitle(), QStringLiteral("色を選択"));
}

void ToolkitTextsTest::theFixedTextsStay()
{
    if (!QFile::exists(toolkitsFile()))
        QSKIP("the toolkit's translations are not installed");
    QVERIFY(ToolkitTexts::install(*qApp));
    QCOMPARE(buttonText(QMessageBox::Ok).remove(QLatin1Char('&')), QStringLiteral("OK"));
    const verupdialog version(QStringLiteral("sarvik"), QStringLiteral("1"), QPixmap());
    QStringList texts;
    const auto buttons = version.findChildren<QPushButton *>();
    for (const QPushButton *button : buttons)
        texts.append(button->text());
    QVERIFY(texts.contains(QStringLiteral("OK")));
}

void ToolkitTextsTest::withoutAFileTheTextsStay()
{
    const ScratchFolder empty;
    QVERIFY(!ToolkitTexts::installFrom({}, *qApp));
    QVERIFY(!ToolkitTexts::installFrom({empty.path(), QStringLiteral("/no/such/folder")}, *qApp));
    QVERIFY(cancelText().contains(QStringLiteral("Cancel")));
}

void ToolkitTextsTest::aFileThatCannotBeReadIsPassedOver_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("an empty one") << QByteArray();
    QTest::newRow("another form") << QByteArray(5000, 'x');
}

void ToolkitTextsTest::aFileThatCannotBeReadIsPassedOver()
{
    QFETCH(QByteArray, bytes);
    const ScratchFolder folder;
    folder.write(kName, bytes);
    QVERIFY(!ToolkitTexts::installFrom({folder.path()}, *qApp));
    QVERIFY(qApp->findChildren<QTranslator *>().isEmpty());
    if (!QFile::exists(toolkitsFile()))
        QSKIP("the toolkit's translations are not installed");
    QVERIFY(ToolkitTexts::installFrom(
        {folder.path(), QLibraryInfo::location(QLibraryInfo::TranslationsPath)}, *qApp));
    QCOMPARE(cancelText(), QStringLiteral("キャンセル"));
}

void ToolkitTextsTest::aFileOfASimilarNameIsNotTaken()
{
    if (!QFile::exists(toolkitsFile()))
        QSKIP("the toolkit's translations are not installed");
    const ScratchFolder folder;
    QVERIFY(QFile::copy(toolkitsFile(), folder.filePath(QStringLiteral("qtbase.qm"))));
    QVERIFY(!ToolkitTexts::installFrom({folder.path()}, *qApp));
}

void ToolkitTextsTest::theFirstFolderWithTheFileCounts()
{
    if (!QFile::exists(toolkitsFile()))
        QSKIP("the toolkit's translations are not installed");
    const ScratchFolder empty;
    const ScratchFolder folder;
    QVERIFY(QFile::copy(toolkitsFile(), folder.filePath(kName)));
    QVERIFY(ToolkitTexts::installFrom({empty.path(), folder.path()}, *qApp));
    QCOMPARE(cancelText(), QStringLiteral("キャンセル"));
}

void ToolkitTextsTest::installingTwiceDoesNoHarm()
{
    if (!QFile::exists(toolkitsFile()))
        QSKIP("the toolkit's translations are not installed");
    QVERIFY(ToolkitTexts::install(*qApp));
    QVERIFY(ToolkitTexts::install(*qApp));
    QCOMPARE(cancelText(), QStringLiteral("キャンセル"));
}

void ToolkitTextsTest::theProgramsFolderComesFirst()
{
    const QStringList folders = ToolkitTexts::folders();
    QCOMPARE(folders.size(), 2);
    QCOMPARE(folders.first(),
             QCoreApplication::applicationDirPath() + QStringLiteral("/translations"));
    QCOMPARE(folders.last(), QLibraryInfo::location(QLibraryInfo::TranslationsPath));
}

QTEST_MAIN(ToolkitTextsTest)
#include "ToolkitTextsTest.moc"
