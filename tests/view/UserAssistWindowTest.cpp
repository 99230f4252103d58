#include "view/UserAssistWindow.h"

#include "settings/AppSettings.h"
#include "settings/KeywordHistory.h"
#include "tests/support/Patience.h"
#include "tests/support/ScratchFolder.h"
#include "view/AssistTextEdit.h"

#include <QApplication>
#include <QClipboard>
#include <QCloseEvent>
#include <QContextMenuEvent>
#include <QLayout>
#include <QMenu>
#include <QMouseEvent>
#include <QScreen>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>
#include <QTextBlock>
#include <QToolButton>
#include <QWindow>

#include <memory>

class UserAssistWindowTest : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void itIsAFramelessDialog();
    void thePanelHasTheColoursOfTheNote();
    void theTextIsReadOnlyHtml();
    void theTextHasTheFontOfTheSettings();
    void theCornersAreRound();
    void itStandsBesideItsParent();
    void aChildAsParentMeansItsWindow();
    void withoutAParentItStandsOnTheScreen();
    void itFollowsItsParent();
    void whereItWasMovedToIsKeptToo();
    void itHidesAndShowsWithItsParent();
    void itTakesNoFocus();
    void aResizeIsSaved();
    void resizesInARowEndWithTheLast();
    void openingSavesNothing();
    void aNoteBesideTheScreenIsMovedIntoItUnsaved();
    void aMoveOfTheParentSavesNothing();
    void aResizeBehindAMoveIsRelativeToTheParent();
    void theMouseMovesIt();
    void onlyTheLeftButtonMovesIt();
    void aDoubleClickSelectsNothing();
    void theUserAsksToClose_data();
    void theUserAsksToClose();
    void theCloseButtonIsThereUnderTheMouseOnly();
    void closingByProgramAsksNobody();
    void theMenuCopiesTheText();
    void aLongTextScrolls();
    void aFileThatCannotBeWrittenDoesNotMatter();

private:
    std::unique_ptr<ScratchFolder> m_folder;
    std::unique_ptr<QWidget> m_parent;
    AssistRecord m_record;

    UserAssistWindow *show(QWidget *parent);
    UserAssistWindow *show() { return show(m_parent.get()); }
    QByteArray windowInFile() const;
};

namespace {

QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

/// QTest's own moves the pointer, and the offscreen platform then tells nobody.
void moveMouse(QWidget *widget, Qt::MouseButtons buttons, const QPoint &position)
{
    QMouseEvent event(QEvent::MouseMove, position, widget->mapToGlobal(position), Qt::NoButton,
                      buttons, Qt::NoModifier);
    QApplication::sendEvent(widget, &event);
}

const QByteArray kContent = "[note]\nwindow=30, 40, 300, 200\n1=x\n";

} // namespace

void UserAssistWindowTest::init()
{
    m_folder = std::make_unique<ScratchFolder>();
    AppSettings::instance().load(m_folder->path());
    m_folder->write(text("a.help"), kContent);
    m_parent = std::make_unique<QWidget>();
    m_parent->setGeometry(100, 120, 200, 200);
    m_parent->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_parent.get(), kPatienceMilliseconds));
    m_record = {text("note"),       {text("<b>one</b>"), text("two<br>"), text("three")},
                QColor(0xff, 0, 0), QColor(0, 0, 0x80),
                QColor(0, 0xff, 0), QRect(30, 40, 300, 200)};
}

void UserAssistWindowTest::cleanup()
{
    m_parent.reset();
}

UserAssistWindow *UserAssistWindowTest::show(QWidget *parent)
{
    auto *window = new UserAssistWindow(m_record, m_folder->filePath(text("a.help")), parent);
    window->show();
    QCoreApplication::processEvents();
    return window;
}

QByteArray UserAssistWindowTest::windowInFile() const
{
    for (const QByteArray &line : m_folder->read(text("a.help")).split('\n')) {
        if (line.startsWith("window="))
            return line.mid(7).trimmed();
    }
    return QByteArray();
}

void UserAssistWindowTest::itIsAFramelessDialog()
{
    const UserAssistWindow *window = show();
    QCOMPARE(window->windowFlags() & Qt::WindowType_Mask, Qt::Dialog);
    QVERIFY(window->windowFlags() & Qt::FramelessWindowHint);
    QVERIFY(window->hasMouseTracking());
    QVERIFY(window->isSizeGripEnabled());
    QVERIFY(window->testAttribute(Qt::WA_TranslucentBackground));
    QVERIFY(window->autoFillBackground());
    QCOMPARE(window->layout()->contentsMargins(), QMargins());
    QVERIFY(!window->isModal());
}

void UserAssistWindowTest::thePanelHasTheColoursOfTheNote()
{
    const UserAssistWindow *window = show();
    const QWidget *panel = window->textEdit()->parentWidget();
    QCOMPARE(panel->styleSheet(),
             text("QWidget{border-color: #ff0000;background-color: #000080;border-style: "
                  "solid;border-width: 1px;border-radius: 6px;}"));
    QCOMPARE(panel->geometry(), window->rect());
    QCOMPARE(panel->layout()->contentsMargins(), QMargins(6, 6, 6, 1));
    QCOMPARE(window->textEdit()->styleSheet(),
             text("QWidget{background-color: #000080;color: #00ff00; font:bold;"
                  "border-width: 0px;}"));
}

void UserAssistWindowTest::theTextIsReadOnlyHtml()
{
    const AssistTextEdit *edit = show()->textEdit();
    QVERIFY(edit->isReadOnly());
    QCOMPARE(edit->toPlainText(), text("onetwo\nthree"));
    QCOMPARE(edit->document()->begin().blockFormat().lineHeight(), 130.0);
    QCOMPARE(edit->document()->begin().blockFormat().lineHeightType(),
             int(QTextBlockFormat::ProportionalHeight));
}

void UserAssistWindowTest::theTextHasTheFontOfTheSettings()
{
    QFont font;
    font.setPointSize(21);
    AppSettings::instance().assistFont = font;
    const AssistTextEdit *edit = show()->textEdit();
    QCOMPARE(edit->font().pointSize(), 21);
    QCOMPARE(edit->document()->defaultFont().pointSize(), 21);
    QVERIFY(edit->font().bold());
}

void UserAssistWindowTest::theCornersAreRound()
{
    UserAssistWindow *window = show();
    QImage image(window->size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    window->render(&image, QPoint(), QRegion(),
                   QWidget::DrawWindowBackground | QWidget::DrawChildren);
    QCOMPARE(qAlpha(image.pixel(0, 0)), 0);
    QCOMPARE(qAlpha(image.pixel(image.width() - 1, 0)), 0);
    QCOMPARE(image.pixel(image.width() / 2, 0), QColor(0xff, 0, 0).rgb());
    QCOMPARE(image.pixel(image.width() / 2, 3), QColor(0, 0, 0x80).rgb());
}

void UserAssistWindowTest::itStandsBesideItsParent()
{
    const UserAssistWindow *window = show();
    QCOMPARE(window->pos(), m_parent->pos() + QPoint(30, 40));
    QCOMPARE(window->size(), QSize(300, 200));
}

void UserAssistWindowTest::aChildAsParentMeansItsWindow()
{
    auto *child = new QWidget(m_parent.get());
    child->setGeometry(50, 60, 20, 20);
    const UserAssistWindow *window = show(child);
    QCOMPARE(window->pos(), m_parent->pos() + QPoint(30, 40));
    m_parent->move(m_parent->pos() + QPoint(5, 6));
    QCoreApplication::processEvents();
    QCOMPARE(window->pos(), m_parent->pos() + QPoint(30, 40));
}

void UserAssistWindowTest::withoutAParentItStandsOnTheScreen()
{
    const std::unique_ptr<UserAssistWindow> window(show(nullptr));
    QCOMPARE(window->pos(), QPoint(30, 40));
}

void UserAssistWindowTest::itFollowsItsParent()
{
    const UserAssistWindow *window = show();
    const QPoint before = window->pos();
    m_parent->move(m_parent->pos() + QPoint(17, -9));
    QCoreApplication::processEvents();
    QCOMPARE(window->pos(), before + QPoint(17, -9));
    m_parent->move(m_parent->pos() + QPoint(-30, 25));
    QCoreApplication::processEvents();
    QCOMPARE(window->pos(), before + QPoint(-13, 16));
}

void UserAssistWindowTest::whereItWasMovedToIsKeptToo()
{
    UserAssistWindow *window = show();
    window->move(window->pos() + QPoint(100, 0));
    const QPoint before = window->pos();
    m_parent->move(m_parent->pos() + QPoint(1, 2));
    QCoreApplication::processEvents();
    QCOMPARE(window->pos(), before + QPoint(1, 2));
}

void UserAssistWindowTest::itHidesAndShowsWithItsParent()
{
    const UserAssistWindow *window = show();
    QVERIFY(window->isVisible());
    m_parent->hide();
    QVERIFY(!window->isVisible());
    m_parent->show();
    QVERIFY(window->isVisible());
    QCoreApplication::processEvents();
    QCOMPARE(window->pos(), m_parent->pos() + QPoint(30, 40));
}

void UserAssistWindowTest::itTakesNoFocus()
{
    // The attribute is all that can be seen here: the offscreen platform
    // activates every window that it shows, whatever that asks for.
    QVERIFY(show()->testAttribute(Qt::WA_ShowWithoutActivating));
}

void UserAssistWindowTest::aResizeIsSaved()
{
    UserAssistWindow *window = show();
    window->resize(310, 220);
    QCoreApplication::processEvents();
    QCOMPARE(windowInFile(), QByteArray("30, 40, 310, 220"));
    QCOMPARE(window->textEdit()->parentWidget()->size(), QSize(310, 220));
}

void UserAssistWindowTest::resizesInARowEndWithTheLast()
{
    UserAssistWindow *window = show();
    for (int width = 301; width <= 340; ++width)
        window->resize(width, 200);
    QTRY_COMPARE_WITH_TIMEOUT(windowInFile(), QByteArray("30, 40, 340, 200"),
                              kPatienceMilliseconds);

    window->resize(350, 200);
    window->resize(360, 200);
    delete window;
    QCOMPARE(windowInFile(), QByteArray("30, 40, 360, 200"));
}

void UserAssistWindowTest::openingSavesNothing()
{
    delete show();
    QCOMPARE(m_folder->read(text("a.help")), kContent);
}

void UserAssistWindowTest::aNoteBesideTheScreenIsMovedIntoItUnsaved()
{
    const QRect screen = m_parent->screen()->availableGeometry();
    m_record.geometry.moveLeft(screen.width());
    UserAssistWindow *window = show();
    QVERIFY(screen.contains(window->geometry()));
    QVERIFY(!window->geometry().intersects(m_parent->frameGeometry()));
    m_record.geometry.moveTop(60);
    const UserAssistWindow *second = show();
    QVERIFY(!window->geometry().intersects(second->geometry()));
    QCOMPARE(windowInFile(), QByteArray("30, 40, 300, 200"));
    // What the user makes of it is kept.
    window->resize(310, 210);
    QCOMPARE(windowInFile().right(8), QByteArray("310, 210"));
}

void UserAssistWindowTest::aMoveOfTheParentSavesNothing()
{
    UserAssistWindow *window = show();
    m_parent->move(m_parent->pos() + QPoint(50, 50));
    QCoreApplication::processEvents();
    delete window;
    QCOMPARE(m_folder->read(text("a.help")), kContent);
}

void UserAssistWindowTest::aResizeBehindAMoveIsRelativeToTheParent()
{
    UserAssistWindow *window = show();
    m_parent->move(m_parent->pos() + QPoint(50, 50));
    QCoreApplication::processEvents();
    window->resize(301, 201);
    QCoreApplication::processEvents();
    QCOMPARE(windowInFile(), QByteArray("30, 40, 301, 201"));
}

void UserAssistWindowTest::theMouseMovesIt()
{
    UserAssistWindow *window = show();
    QWidget *viewport = window->textEdit()->viewport();
    const QPoint start = window->pos();
    QTest::mousePress(viewport, Qt::LeftButton, Qt::NoModifier, QPoint(20, 20));
    moveMouse(viewport, Qt::LeftButton, QPoint(50, 60));
    QCOMPARE(window->pos(), start + QPoint(30, 40));
    QCOMPARE(m_folder->read(text("a.help")), kContent);
    QTest::mouseRelease(viewport, Qt::LeftButton, Qt::NoModifier, QPoint(20, 20));
    QCOMPARE(windowInFile(), QByteArray("60, 80, 300, 200"));
    moveMouse(viewport, Qt::NoButton, QPoint(90, 90));
    QCOMPARE(window->pos(), start + QPoint(30, 40));
}

void UserAssistWindowTest::onlyTheLeftButtonMovesIt()
{
    UserAssistWindow *window = show();
    QWidget *viewport = window->textEdit()->viewport();
    const QPoint start = window->pos();
    QTest::mousePress(viewport, Qt::MiddleButton, Qt::NoModifier, QPoint(20, 20));
    moveMouse(viewport, Qt::MiddleButton, QPoint(50, 60));
    QTest::mouseRelease(viewport, Qt::MiddleButton, Qt::NoModifier, QPoint(50, 60));
    QCOMPARE(window->pos(), start);
}

void UserAssistWindowTest::aDoubleClickSelectsNothing()
{
    UserAssistWindow *window = show();
    QTest::mouseDClick(window->textEdit()->viewport(), Qt::LeftButton, Qt::NoModifier,
                       window->textEdit()->cursorRect().center());
    QVERIFY(!window->textEdit()->textCursor().hasSelection());
}

void UserAssistWindowTest::theUserAsksToClose_data()
{
    QTest::addColumn<QString>("by");
    for (const char *by : {"Escape", "F1", "button", "system", "menu"})
        QTest::newRow(by) << text(by);
}

void UserAssistWindowTest::theUserAsksToClose()
{
    QFETCH(QString, by);
    UserAssistWindow *window = show();
    QSignalSpy asked(window, &UserAssistWindow::UserAssistWindowAllClose);
    if (by == text("Escape")) {
        QTest::keyClick(window->textEdit(), Qt::Key_Escape);
    } else if (by == text("F1")) {
        QTest::keyClick(window->textEdit(), Qt::Key_F1);
    } else if (by == text("button")) {
        window->findChild<QToolButton *>()->click();
    } else if (by == text("system")) {
        // As a window manager does it; QWidget::close() would be the program's.
        QCloseEvent event;
        QApplication::sendEvent(window->windowHandle(), &event);
        QVERIFY(!event.isAccepted());
    } else {
        QContextMenuEvent event(QContextMenuEvent::Mouse, QPoint(5, 5),
                                window->mapToGlobal({5, 5}));
        QApplication::sendEvent(window, &event);
        window->findChild<QMenu *>()->actions().last()->trigger();
    }
    QCOMPARE(asked.count(), 1);
    QVERIFY(window->isVisible());
}

void UserAssistWindowTest::theCloseButtonIsThereUnderTheMouseOnly()
{
    UserAssistWindow *window = show();
    const QToolButton *button = window->findChild<QToolButton *>();
    QVERIFY(!button->isVisible());
    QEvent enter(QEvent::Enter);
    QApplication::sendEvent(window, &enter);
    QVERIFY(button->isVisible());
    QVERIFY(window->rect().contains(button->geometry()));
    QVERIFY(button->geometry().left() > window->width() / 2);
    QEvent leave(QEvent::Leave);
    QApplication::sendEvent(window, &leave);
    QVERIFY(!button->isVisible());
}

void UserAssistWindowTest::closingByProgramAsksNobody()
{
    UserAssistWindow *window = show();
    QSignalSpy asked(window, &UserAssistWindow::UserAssistWindowAllClose);
    QVERIFY(window->close());
    QVERIFY(!window->isVisible());
    QCOMPARE(asked.count(), 0);
}

void UserAssistWindowTest::theMenuCopiesTheText()
{
    UserAssistWindow *window = show();
    QContextMenuEvent event(QContextMenuEvent::Mouse, QPoint(5, 5), window->mapToGlobal({5, 5}));
    QApplication::sendEvent(window->textEdit()->viewport(), &event);
    const QMenu *menu = window->findChild<QMenu *>();
    QVERIFY(menu);
    QCOMPARE(menu->actions().size(), 2);
    QCOMPARE(menu->actions().first()->text(), text("(&C)コピー"));
    QCOMPARE(menu->actions().last()->text(), text("(&X)閉じる"));
    menu->actions().first()->trigger();
    QCOMPARE(QApplication::clipboard()->text(), text("onetwo\nthree"));
}

void UserAssistWindowTest::aLongTextScrolls()
{
    m_record.lines = QStringList{text("long<br>").repeated(100)};
    const UserAssistWindow *window = show();
    QVERIFY(window->textEdit()->verticalScrollBar()->maximum() > 0);
    QVERIFY(window->textEdit()->verticalScrollBar()->isVisible());
    QVERIFY(!window->textEdit()->horizontalScrollBar()->isVisible());
}

void UserAssistWindowTest::aFileThatCannotBeWrittenDoesNotMatter()
{
    const std::unique_ptr<UserAssistWindow> window = std::make_unique<UserAssistWindow>(
        m_record, m_folder->filePath(text("none/a.help")), m_parent.get());
    window->show();
    QCoreApplication::processEvents();
    window->resize(320, 200);
    QCoreApplication::processEvents();
    QCOMPARE(window->size(), QSize(320, 200));
}

QTEST_MAIN(UserAssistWindowTest)
#include "UserAssistWindowTest.moc"
