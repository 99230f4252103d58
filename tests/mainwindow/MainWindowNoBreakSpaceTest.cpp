#include "mainwindow/PathEdit.h"
#include "settings/ParameterFile.h"
#include "tests/mainwindow/WindowTest.h"

#include <QAction>
#include <QApplication>
#include <QLineEdit>
#include <QMenu>
#include <QTest>
#include <QTextBlock>
#include <QTimer>
#include <QToolButton>

namespace {

QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

} // namespace

/// A no-break space looks like a blank and is another character: in a folder's name
/// and in a keyword it stays what it is.
class MainWindowNoBreakSpaceTest : public WindowTest {
    Q_OBJECT

private slots:
    void init();

    void suchAFolderIsSearchedUnderItsName();
    void theParameterFileKeepsTheName();
    void theLogBringsTheNameBack();
    void theRememberedFormBringsTheNameBack();
    void theWindowKnowsThePathsByTheName();
    void suchAFolderIsFoundAmongThoseListed();
    void suchAKeywordFindsItsLineOnly_data();
    void suchAKeywordFindsItsLineOnly();

private:
    PathEdit *pathEdit() const { return m_fixture->child<PathEdit>("pathEdit"); }
    bool searchFolder() { return m_fixture->search(m_folder, text("*.txt"), text("apple")); }

    QString m_folder;
};

void MainWindowNoBreakSpaceTest::init()
{
    m_fixture = std::make_unique<WindowFixture>();
    m_folder = m_fixture->tree.makeFolder(text("a\u00A0b"));
    m_fixture->tree.write(text("a\u00A0b/a.txt"), "one apple\n");
    m_fixture->tree.write(text("a\u00A0b/b.txt"), "nothing\n");
    m_fixture->tree.write(text("a b/other.txt"), "another apple\n");
    m_fixture->open();
}

void MainWindowNoBreakSpaceTest::suchAFolderIsSearchedUnderItsName()
{
    QVERIFY(searchFolder());
    QCOMPARE(m_fixture->resultView()->document()->firstBlock().text(),
             text("::%1a.txt").arg(m_folder));
    QVERIFY(m_fixture->resultText().contains(text("該当行数 1\n")));
}

void MainWindowNoBreakSpaceTest::theParameterFileKeepsTheName()
{
    QVERIFY(searchFolder());
    QCOMPARE(ParameterFile(WindowFixture::applicationFile(QString())).read().pathlist,
             QStringList(m_folder));
}

void MainWindowNoBreakSpaceTest::theLogBringsTheNameBack()
{
    QVERIFY(searchFolder());
    m_fixture->fill(QString(), QString(), QString());
    m_fixture->child<QToolButton>("arrowBackBtn")->menu()->actions().at(0)->trigger();
    QCOMPARE(pathEdit()->text(), m_folder);
}

void MainWindowNoBreakSpaceTest::theRememberedFormBringsTheNameBack()
{
    QVERIFY(searchFolder());
    m_fixture->fill(QString(), QString(), QString());
    m_fixture->window().arrowForward();
    QCOMPARE(pathEdit()->text(), m_folder);
}

void MainWindowNoBreakSpaceTest::theWindowKnowsThePathsByTheName()
{
    m_fixture->fill(m_folder, QString(), QString());
    QCOMPARE(m_fixture->window().searchPaths(), QStringList(m_folder));
}

void MainWindowNoBreakSpaceTest::suchAFolderIsFoundAmongThoseListed()
{
    m_fixture->fill(m_folder, QString(), QString());
    QTimer::singleShot(0, this, [this] {
        auto *field = QApplication::activeModalWidget()->findChild<QLineEdit *>(text("lineEdit"));
        field->setText(m_folder);
        QTest::keyClick(field, Qt::Key_Return);
    });
    m_fixture->child<QAbstractButton>("btnPlus")->click();
    QCOMPARE(pathEdit()->text(), m_folder);
    QCOMPARE(m_fixture->statusText(), text("既に登録されています"));
}

void MainWindowNoBreakSpaceTest::suchAKeywordFindsItsLineOnly_data()
{
    QTest::addColumn<QString>("keyword");
    QTest::addColumn<QString>("line");
    QTest::newRow("a no-break space") << text("x\u00A0y") << text("      1:    1:x\u00A0y");
    QTest::newRow("a blank") << text("x y") << text("      2:    1:x y");
}

void MainWindowNoBreakSpaceTest::suchAKeywordFindsItsLineOnly()
{
    QFETCH(QString, keyword);
    QFETCH(QString, line);
    m_fixture->tree.write(text("c.txt"), text("x\u00A0y\nx y\n").toUtf8());
    QVERIFY(m_fixture->search(m_fixture->tree.path(), text("*.txt"), keyword));
    QVERIFY(m_fixture->resultText().contains(text("該当行数 1\n")));
    QCOMPARE(m_fixture->resultView()->document()->findBlockByNumber(1).text(), line);
}

QTEST_MAIN(MainWindowNoBreakSpaceTest)
#include "MainWindowNoBreakSpaceTest.moc"
