#include "settings/dialogs/ClickThrough.h"

#include "tests/support/Patience.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QCompleter>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QVBoxLayout>
#include <QWindow>

#include <memory>

/// A field with an open list of completions, above a button.
class ClickThroughTest : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup() { m_window.reset(); }

    void aClickBesideTheListClosesItAndActs();
    void aClickIntoTheFieldMovesTheCursor();
    void aClickOnAnEntryChoosesIt();
    void aClickOnAnotherWindowOnlyClosesTheList();

private:
    /// To the list's window, which gets the presses wherever the mouse is.
    void click(const QWidget *target, const QPoint &place);
    QAbstractItemView *list() const { return m_field->completer()->popup(); }

    std::unique_ptr<QWidget> m_window;
    QLineEdit *m_field = nullptr;
    QPushButton *m_button = nullptr;
};

void ClickThroughTest::init()
{
    m_window = std::make_unique<QWidget>();
    auto *layout = new QVBoxLayout(m_window.get());
    m_field = new QLineEdit;
    m_button = new QPushButton(QStringLiteral("search"));
    layout->addWidget(m_button);
    layout->addWidget(m_field);
    layout->addSpacing(200);
    auto *completer = new QCompleter({QStringLiteral("apple"), QStringLiteral("apply")}, m_field);
    m_field->setCompleter(completer);
    new ClickThrough(completer);
    m_window->show();
    QApplication::setActiveWindow(m_window.get());
    QVERIFY(QTest::qWaitForWindowActive(m_window.get(), kPatienceMilliseconds));
    m_field->setFocus();
    QTest::keyClicks(m_field, QStringLiteral("appl"));
    QTRY_VERIFY_WITH_TIMEOUT(list()->isVisible(), kPatienceMilliseconds);
}

void ClickThroughTest::click(const QWidget *target, const QPoint &place)
{
    const QPoint screen = target->mapToGlobal(place);
    for (const auto type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
        // When the list is closed the release comes to the window below.
        QWindow *window = (list()->isVisible() ? list() : m_window.get())->windowHandle();
        const QPoint position = window->mapFromGlobal(screen);
        const Qt::MouseButtons held =
            type == QEvent::MouseButtonPress ? Qt::LeftButton : Qt::NoButton;
        QMouseEvent event(type, position, position, screen, Qt::LeftButton, held, Qt::NoModifier);
        QCoreApplication::sendEvent(window, &event);
    }
    QCoreApplication::processEvents();
}

void ClickThroughTest::aClickBesideTheListClosesItAndActs()
{
    const QSignalSpy presses(m_button, &QPushButton::pressed);
    const QSignalSpy clicks(m_button, &QPushButton::clicked);
    click(m_button, m_button->rect().center());
    QVERIFY(!list()->isVisible());
    QCOMPARE(presses.count(), 1);
    QCOMPARE(clicks.count(), 1);
    QVERIFY(!m_button->isDown());
    QCOMPARE(m_field->text(), QStringLiteral("appl"));
}

void ClickThroughTest::aClickIntoTheFieldMovesTheCursor()
{
    QCOMPARE(m_field->cursorPosition(), 4);
    click(m_field, QPoint(3, m_field->height() / 2));
    QVERIFY(!list()->isVisible());
    QCOMPARE(m_field->cursorPosition(), 0);
    QVERIFY(m_field->hasFocus());
}

void ClickThroughTest::aClickOnAnEntryChoosesIt()
{
    const QSignalSpy clicks(m_button, &QPushButton::clicked);
    const QRect entry = list()->visualRect(list()->model()->index(1, 0));
    click(list()->viewport(), entry.center());
    QVERIFY(!list()->isVisible());
    QCOMPARE(m_field->text(), QStringLiteral("apply"));
    QCOMPARE(clicks.count(), 0);
}

void ClickThroughTest::aClickOnAnotherWindowOnlyClosesTheList()
{
    QPushButton other(QStringLiteral("other"));
    other.setGeometry(m_window->geometry().translated(m_window->width() + 50, 0));
    other.setAttribute(Qt::WA_ShowWithoutActivating);
    other.show();
    QVERIFY(QTest::qWaitForWindowExposed(&other, kPatienceMilliseconds));
    const QSignalSpy presses(&other, &QPushButton::pressed);
    click(&other, other.rect().center());
    QVERIFY(!list()->isVisible());
    QCOMPARE(presses.count(), 0);
}

QTEST_MAIN(ClickThroughTest)
#include "ClickThroughTest.moc"
