#include "tests/mainwindow/WindowTest.h"

#include "settings/AppSettings.h"
#include "tests/view/ColouredText.h"
#include "view/Highlighter.h"

#include <QApplication>
#include <QCheckBox>
#include <QDialogButtonBox>
#include <QDir>
#include <QFile>
#include <QGroupBox>
#include <QMap>
#include <QPushButton>
#include <QSpinBox>
#include <QTest>
#include <QTextBlock>
#include <QTimer>
#include <QToolButton>

namespace {

QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

/// The letters of ColouredText for the first line of view that contains part.
QString coloursOf(const GrepEditor &view, const QString &part)
{
    const QStringList lines = view.toPlainText().split(QLatin1Char('\n'));
    const QStringList letters = ColouredText::lettersOf(view.highlighter().syntax(), lines);
    for (int i = 0; i < lines.size(); ++i) {
        if (lines.at(i).contains(part))
            return letters.at(i);
    }
    return text("no such line");
}

} // namespace

/// What the two views colour and mark in the window.
class MainWindowColoursTest : public WindowTest {
    Q_OBJECT

private slots:
    void init();

    void theSuffixDecidesThePreviewsLanguage();
    void theResultViewKnowsNoLanguage();
    void oneKeywordIsMarkedInBothViews();
    void twoKeywordsAreMarkedWhenBothBoxesAreChecked_data();
    void twoKeywordsAreMarkedWhenBothBoxesAreChecked();
    void anotherSearchMarksItsOwnKeyword();
    void thePreviewMarksWhatTheFormSaysNow();
    void acceptedOptionsAreSeenAtOnce_data();
    void acceptedOptionsAreSeenAtOnce();
    void theKeywordOfTheLastSearchIsMarkedAtTheStart();
    void theKeywordOfALoadedLogIsMarked();

private:
    void select(const QString &line);
};

void MainWindowColoursTest::init()
{
    m_fixture = std::make_unique<WindowFixture>();
    m_fixture->tree.write(QStringLiteral("a.c"), "int apple;\nint pears;\n");
    m_fixture->tree.write(QStringLiteral("b.none"), "int apple pie\n");
    QVERIFY(QDir().mkpath(WindowFixture::applicationFile(text("list"))));
    QFile language(WindowFixture::applicationFile(text("list/c.lst")));
    QVERIFY(language.open(QIODevice::WriteOnly));
    language.write("[langoption]\nsuffix=c\n\n[WordReserve]\nint\n\n");
    language.close();
    m_fixture->open();
    AppSettings::instance().langlist = QStringList(text("c"));
    AppSettings::instance().langlistValues = QStringList(text("c"));
}

void MainWindowColoursTest::select(const QString &line)
{
    GrepEditor *view = m_fixture->resultView();
    view->setFocus();
    const QTextCursor found = view->document()->find(line);
    QVERIFY(!found.isNull());
    view->setTextCursor(QTextCursor(found.block()));
}

void MainWindowColoursTest::theSuffixDecidesThePreviewsLanguage()
{
    QVERIFY(m_fixture->search(m_fixture->tree.path(), text("*.c *.none"), text("apple")));
    select(text("int apple;"));
    QCOMPARE(coloursOf(*m_fixture->preview(), text("int apple")), text("rrr.11111."));
    // As it is painted: the highlighter of the view's own document.
    Highlighter &highlighter = m_fixture->preview()->highlighter();
    highlighter.colourLines(0, 0);
    const auto formats = m_fixture->preview()->document()->firstBlock().layout()->formats();
    QVERIFY(!formats.isEmpty());
    QCOMPARE(formats.first().length, 3);
    QCOMPARE(formats.first().format.foreground().color(), AppSettings::instance().reservecolor);
    // Nothing of it is left for a file that no language is known of.
    select(text("int apple pie"));
    QCOMPARE(coloursOf(*m_fixture->preview(), text("int apple")), text("....11111...."));
    select(text("int apple;"));
    QCOMPARE(coloursOf(*m_fixture->preview(), text("int pears")), text("rrr......."));
}

void MainWindowColoursTest::theResultViewKnowsNoLanguage()
{
    QVERIFY(m_fixture->search(m_fixture->tree.path(), text("*.c *.none"), text("apple")));
    QCOMPARE(coloursOf(*m_fixture->resultView(), text("int apple;")),
             text("......v.....v.....11111."));
    const QString fileLine = text("::%1a.c").arg(m_fixture->tree.path());
    QCOMPARE(coloursOf(*m_fixture->resultView(), fileLine),
             QString(fileLine.size(), QLatin1Char('f')));
}

void MainWindowColoursTest::oneKeywordIsMarkedInBothViews()
{
    QVERIFY(m_fixture->search(m_fixture->tree.path(), text("*.c *.none"), text("apple")));
    select(text("int apple pie"));
    for (const GrepEditor *view : {m_fixture->resultView(), m_fixture->preview()})
        QVERIFY(coloursOf(*view, text("int apple pie")).endsWith(text("....11111....")));
}

void MainWindowColoursTest::twoKeywordsAreMarkedWhenBothBoxesAreChecked_data()
{
    QTest::addColumn<bool>("group");
    QTest::addColumn<bool>("checkBox");
    QTest::addColumn<QString>("colours");
    QTest::newRow("both") << true << true << text("....11111.222");
    QTest::newRow("the group alone") << true << false << text("....11111....");
    QTest::newRow("the check box alone") << false << true << text("....11111....");
    QTest::newRow("neither") << false << false << text("....11111....");
}

void MainWindowColoursTest::twoKeywordsAreMarkedWhenBothBoxesAreChecked()
{
    QFETCH(bool, group);
    QFETCH(bool, checkBox);
    QFETCH(QString, colours);
    m_fixture->child<QGroupBox>("extraGroup")->setChecked(group);
    m_fixture->child<QCheckBox>("useKeyword2")->setChecked(checkBox);
    m_fixture->keyword2()->setEditText(text("pie"));
    QVERIFY(m_fixture->search(m_fixture->tree.path(), text("*.c *.none"), text("apple")));
    select(text("int apple pie"));
    for (const GrepEditor *view : {m_fixture->resultView(), m_fixture->preview()})
        QCOMPARE(coloursOf(*view, text("int apple pie")).right(colours.size()), colours);
}

void MainWindowColoursTest::anotherSearchMarksItsOwnKeyword()
{
    QVERIFY(m_fixture->search(m_fixture->tree.path(), text("*.c *.none"), text("apple")));
    select(text("int apple pie"));
    QVERIFY(m_fixture->search(m_fixture->tree.path(), text("*.c *.none"), text("pie")));
    select(text("int apple pie"));
    for (const GrepEditor *view : {m_fixture->resultView(), m_fixture->preview()})
        QVERIFY(coloursOf(*view, text("int apple pie")).endsWith(text("..........111")));
}

void MainWindowColoursTest::thePreviewMarksWhatTheFormSaysNow()
{
    QVERIFY(m_fixture->search(m_fixture->tree.path(), text("*.c *.none"), text("apple")));
    m_fixture->keyword1()->setEditText(text("pie"));
    select(text("int apple pie"));
    QCOMPARE(coloursOf(*m_fixture->preview(), text("int apple pie")), text("..........111"));
    QVERIFY(coloursOf(*m_fixture->resultView(), text("int apple pie")).endsWith(text("11111....")));
    // At the moment of the selection, and with the second one in use.
    m_fixture->child<QGroupBox>("extraGroup")->setChecked(true);
    m_fixture->child<QCheckBox>("useKeyword2")->setChecked(true);
    m_fixture->keyword2()->setEditText(text("int"));
    QCOMPARE(coloursOf(*m_fixture->preview(), text("int apple pie")), text("..........111"));
    select(text("b.none"));
    QCOMPARE(coloursOf(*m_fixture->preview(), text("int apple pie")), text("222.......111"));
}

void MainWindowColoursTest::acceptedOptionsAreSeenAtOnce_data()
{
    QTest::addColumn<bool>("inPreview");
    QTest::newRow("the result view") << false;
    QTest::newRow("the preview") << true;
}

void MainWindowColoursTest::acceptedOptionsAreSeenAtOnce()
{
    QFETCH(bool, inPreview);
    AppSettings &settings = AppSettings::instance();
    settings.zenspc = settings.tab = settings.cr = false;
    settings.cursorback = true;
    settings.tabcolor = QColor(1, 201, 101);
    // Wide enough for the line in large letters, whatever the font.
    m_fixture->window().resize(2000, 800);
    m_fixture->tree.write(text("b.none"),
                          "MMM\tapple\xE3\x80\x80"
                          "WWW\n");
    QVERIFY(m_fixture->search(m_fixture->tree.path(), text("*.c *.none"), text("apple")));
    select(text("MMM"));
    GrepEditor *view = inPreview ? m_fixture->preview() : m_fixture->resultView();
    view->setFocus();
    view->setTextCursor(view->document()->find(text("WWW")));
    const QMap<QByteArray, QColor> chosen = {
        {"pb_c01", QColor(10, 20, 30)},  {"pb_c02", QColor(251, 2, 3)},
        {"pb_c03", QColor(4, 252, 5)},   {"pb_c04", QColor(6, 7, 153)},
        {"pb_c05", QColor(254, 253, 8)}, {"pb_c07", QColor(9, 155, 254)},
        {"pb_c14", QColor(200, 11, 201)}};
    const auto isSeen = [view](const QColor &colour) {
        const QImage picture = view->viewport()->grab().toImage();
        for (int y = 0; y < picture.height(); ++y) {
            for (int x = 0; x < picture.width(); ++x) {
                if (picture.pixelColor(x, y) == colour)
                    return true;
            }
        }
        return false;
    };
    for (auto button = chosen.begin(); button != chosen.end(); ++button) {
        QVERIFY(!isSeen(*button));
        m_fixture->prompt.colours += *button;
    }
    QVERIFY(!isSeen(settings.tabcolor));
    bool accepted = false;
    QTimer::singleShot(0, this, [&] {
        QWidget *dialog = QApplication::activeModalWidget();
        // In the order of the map, which the answers have too.
        for (auto button = chosen.begin(); button != chosen.end(); ++button)
            dialog->findChild<QPushButton *>(QLatin1String(button.key()))->click();
        for (const char *size : {"fontsize2", "fontsize3"})
            dialog->findChild<QSpinBox *>(QLatin1String(size))->setValue(24);
        dialog->findChild<QCheckBox *>(text("chk_zenspc"))->setCheckState(Qt::Checked);
        dialog->findChild<QCheckBox *>(text("chk_tabcr"))->setCheckState(Qt::Checked);
        accepted = true;
        dialog->findChild<QDialogButtonBox *>()->button(QDialogButtonBox::Ok)->click();
    });
    m_fixture->child<QToolButton>("optionBtn")->click();
    QVERIFY(accepted);
    QVERIFY(settings.zenspc && settings.tab && settings.cr);
    for (auto button = chosen.begin(); button != chosen.end(); ++button)
        QVERIFY2(isSeen(*button), button.key().constData());
    QVERIFY(isSeen(settings.tabcolor));
}

void MainWindowColoursTest::theKeywordOfTheLastSearchIsMarkedAtTheStart()
{
    QVERIFY(m_fixture->search(m_fixture->tree.path(), text("*.c *.none"), text("apple")));
    m_fixture->open();
    QVERIFY(coloursOf(*m_fixture->resultView(), text("int apple pie")).endsWith(text("11111....")));
}

void MainWindowColoursTest::theKeywordOfALoadedLogIsMarked()
{
    QVERIFY(m_fixture->search(m_fixture->tree.path(), text("*.c *.none"), text("apple")));
    const QDir logs(WindowFixture::applicationFile(text("sarviklog")));
    const QString log = logs.filePath(logs.entryList(QDir::Files).first());
    QVERIFY(m_fixture->search(m_fixture->tree.path(), text("*.c *.none"), text("pie")));
    // The older one, whatever the clock of the file system tells apart.
    QFile file(log);
    QVERIFY(file.open(QIODevice::ReadWrite));
    QVERIFY(file.setFileTime(QDateTime::currentDateTime().addSecs(-60),
                             QFileDevice::FileModificationTime));
    file.close();
    m_fixture->window().makeBackMenu();
    m_fixture->window().arrowBack();
    QCOMPARE(m_fixture->keyword1()->currentText(), text("apple"));
    QVERIFY(coloursOf(*m_fixture->resultView(), text("int apple pie")).endsWith(text("11111....")));
}

QTEST_MAIN(MainWindowColoursTest)
#include "MainWindowColoursTest.moc"
