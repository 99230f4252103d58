#include "mainwindow/DropDown.h"

#include "tests/support/Patience.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QSignalSpy>
#include <QWheelEvent>
#include <QtTest>

#include <memory>

namespace {

/// Whether the widget keeps the turn to itself; its parent gets it otherwise.
bool turnWheel(QWidget *widget)
{
    const QPointF position = widget->rect().center();
    QWheelEvent event(position, widget->mapToGlobal(position.toPoint()), QPoint(), QPoint(0, -120),
                      Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(widget, &event);
    return event.isAccepted();
}

const QStringList kPast{QStringLiteral("newest"), QStringLiteral("older"),
                        QStringLiteral("oldest")};

} // namespace

class DropDownTest : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void aVeryLongEntryIsNotLaidOutWhole();
    void theWheelPassesByAClosedList();
    void theWheelScrollsAnOpenList();
    void theWheelBringsNoFocus();
    void itemsAreReplaced_data();
    void itemsAreReplaced();
    void afterNewItemsWhatWasTypedCanBeUndone_data();
    void afterNewItemsWhatWasTypedCanBeUndone();
    void aTextThatIsThereAlreadyLeavesItsUndoing();
    void anotherTextIsShown();
    void anOpenListIsFilledWhenItIsClosed();
    void theLastOfTheWaitingItemsAreTaken();
    void upAndDownGoOnFromTheText_data();
    void upAndDownGoOnFromTheText();

private:
    QStringList items() const;
    QLineEdit *edit() const { return m_combo->lineEdit(); }

    std::unique_ptr<QWidget> m_parent;
    QComboBox *m_combo = nullptr;
    DropDown *m_list = nullptr;
};

void DropDownTest::init()
{
    m_parent = std::make_unique<QWidget>();
    m_combo = new QComboBox(m_parent.get());
    m_combo->setEditable(true);
    m_combo->setInsertPolicy(QComboBox::NoInsert);
    m_combo->setCompleter(nullptr);
    m_list = new DropDown(m_combo);
    m_parent->resize(300, 100);
    m_parent->show();
}

void DropDownTest::cleanup()
{
    m_parent.reset();
}

QStringList DropDownTest::items() const
{
    QStringList texts;
    for (int i = 0; i < m_combo->count(); ++i)
        texts += m_combo->itemText(i);
    return texts;
}

void DropDownTest::aVeryLongEntryIsNotLaidOutWhole()
{
    const auto widthOf = [this](int length) {
        m_list->setItems({QString(length, QLatin1Char('x'))});
        return m_combo->view()->sizeHintForIndex(m_combo->model()->index(0, 0)).width();
    };
    const int width = widthOf(10000);
    QVERIFY(width > widthOf(100));
    QCOMPARE(widthOf(20000), width);
}

void DropDownTest::theWheelPassesByAClosedList()
{
    m_list->setItems(kPast);
    m_combo->setEditText(QStringLiteral("typed"));
    QVERIFY(!turnWheel(edit()));
    QVERIFY(!turnWheel(m_combo));
    QCOMPARE(m_combo->currentText(), QStringLiteral("typed"));
}

void DropDownTest::theWheelScrollsAnOpenList()
{
    QStringList many;
    for (int i = 0; i < 100; ++i)
        many += QString::number(i);
    m_list->setItems(many);
    m_combo->showPopup();
    QVERIFY(m_combo->view()->isVisible());
    const int before = m_combo->view()->indexAt(QPoint(2, 2)).row();
    QVERIFY(turnWheel(m_combo->view()->viewport()));
    QVERIFY(m_combo->view()->indexAt(QPoint(2, 2)).row() > before);
}

void DropDownTest::theWheelBringsNoFocus()
{
    QCOMPARE(m_combo->focusPolicy(), Qt::StrongFocus);
}

void DropDownTest::itemsAreReplaced_data()
{
    QTest::addColumn<QStringList>("before");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QStringList>("after");
    const QString texts[] = {QString(), QStringLiteral("typed"), QStringLiteral("b")};
    const QStringList lists[] = {{},
                                 {QStringLiteral("a")},
                                 {QStringLiteral("b")},
                                 {QStringLiteral("b"), QStringLiteral("a")},
                                 {QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c")}};
    for (const QStringList &before : lists) {
        for (const QString &typed : texts) {
            for (const QStringList &after : lists) {
                QTest::addRow("[%s] to [%s] below '%s'", qPrintable(before.join(QLatin1Char(' '))),
                              qPrintable(after.join(QLatin1Char(' '))), qPrintable(typed))
                    << before << typed << after;
            }
        }
    }
}

void DropDownTest::itemsAreReplaced()
{
    QFETCH(QStringList, before);
    QFETCH(QString, typed);
    QFETCH(QStringList, after);
    m_list->setItems(before);
    QCOMPARE(items(), before);
    for (int chosen = -1; chosen < before.size(); ++chosen) {
        m_list->setItems(before);
        m_combo->setCurrentIndex(chosen);
        m_combo->setEditText(typed);
        const QSignalSpy edits(m_combo, &QComboBox::editTextChanged);
        const QSignalSpy choices(m_combo, QOverload<int>::of(&QComboBox::currentIndexChanged));
        m_list->setItems(after);
        QCOMPARE(items(), after);
        QCOMPARE(m_combo->currentText(), typed);
        QCOMPARE(edits.count() + choices.count(), 0);
    }
}

void DropDownTest::afterNewItemsWhatWasTypedCanBeUndone_data()
{
    QTest::addColumn<QStringList>("before");
    QTest::addColumn<int>("chosen");
    QTest::addColumn<QStringList>("after");
    const QStringList withTyped = QStringList{QStringLiteral("typed")} + kPast;
    QTest::newRow("the same") << kPast << 0 << kPast;
    QTest::newRow("the text is added") << kPast << -1 << withTyped;
    QTest::newRow("the text is added, over a choice") << kPast << 1 << withTyped;
    QTest::newRow("the text is the first of all")
        << QStringList() << -1 << QStringList{QStringLiteral("typed")};
    QTest::newRow("the text moves up")
        << kPast + QStringList{QStringLiteral("typed")} << 3 << withTyped;
    QTest::newRow("others are added") << kPast << -1 << QStringList{QStringLiteral("x")} + kPast;
    QTest::newRow("what was chosen goes") << kPast << 2 << QStringList{QStringLiteral("x")};
    QTest::newRow("others are added, over a choice")
        << kPast << 2 << QStringList{QStringLiteral("x")} + kPast;
}

void DropDownTest::afterNewItemsWhatWasTypedCanBeUndone()
{
    QFETCH(QStringList, before);
    QFETCH(int, chosen);
    QFETCH(QStringList, after);
    m_list->setItems(before);
    m_combo->setCurrentIndex(chosen);
    edit()->selectAll();
    QTest::keyClicks(edit(), QStringLiteral("typed"));
    m_list->setItems(after);
    QCOMPARE(items(), after);
    QCOMPARE(edit()->text(), QStringLiteral("typed"));
    QTest::keyClick(edit(), Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(edit()->text(), before.value(chosen));
}

void DropDownTest::aTextThatIsThereAlreadyLeavesItsUndoing()
{
    m_list->setItems(kPast);
    m_list->showText(QStringLiteral("before"));
    edit()->selectAll();
    QTest::keyClicks(edit(), QStringLiteral("typed"));
    m_list->showText(QStringLiteral("typed"));
    QTest::keyClick(edit(), Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(edit()->text(), QStringLiteral("before"));
}

void DropDownTest::anotherTextIsShown()
{
    m_list->setItems(kPast);
    m_list->showText(QStringLiteral("older"));
    QCOMPARE(m_combo->currentText(), QStringLiteral("older"));
    QCOMPARE(m_combo->currentIndex(), 1);
    m_list->showText(QStringLiteral("OLDER"));
    QCOMPARE(m_combo->currentText(), QStringLiteral("OLDER"));
    QCOMPARE(m_combo->currentIndex(), -1);
}

void DropDownTest::anOpenListIsFilledWhenItIsClosed()
{
    m_list->setItems(kPast);
    m_combo->setCurrentIndex(2);
    m_combo->showPopup();
    m_list->setItems(QStringList{QStringLiteral("x")} + kPast);
    QCOMPARE(items(), kPast);
    m_combo->hidePopup();
    QTRY_COMPARE_WITH_TIMEOUT(items(), QStringList{QStringLiteral("x")} + kPast,
                              kPatienceMilliseconds);
    QCOMPARE(m_combo->currentText(), QStringLiteral("oldest"));
}

void DropDownTest::theLastOfTheWaitingItemsAreTaken()
{
    m_list->setItems(kPast);
    m_combo->showPopup();
    m_list->setItems({QStringLiteral("x")});
    m_list->setItems(kPast);
    m_combo->hidePopup();
    // A list that is opened again at once is not refilled either.
    m_combo->showPopup();
    m_list->setItems({QStringLiteral("y")});
    QCoreApplication::processEvents();
    QCOMPARE(items(), kPast);
    m_combo->hidePopup();
    QTRY_COMPARE_WITH_TIMEOUT(items(), QStringList{QStringLiteral("y")}, kPatienceMilliseconds);
}

void DropDownTest::upAndDownGoOnFromTheText_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<int>("key");
    QTest::addColumn<QString>("next");
    QTest::newRow("Down from another text")
        << QStringLiteral("typed") << int(Qt::Key_Down) << QStringLiteral("newest");
    QTest::newRow("Up from another text")
        << QStringLiteral("typed") << int(Qt::Key_Up) << QStringLiteral("typed");
    QTest::newRow("Down from an item")
        << QStringLiteral("older") << int(Qt::Key_Down) << QStringLiteral("oldest");
    QTest::newRow("Up from an item")
        << QStringLiteral("older") << int(Qt::Key_Up) << QStringLiteral("newest");
}

void DropDownTest::upAndDownGoOnFromTheText()
{
    QFETCH(QString, typed);
    QFETCH(int, key);
    QFETCH(QString, next);
    m_list->setItems(kPast);
    m_combo->setCurrentIndex(2);
    edit()->selectAll();
    QTest::keyClicks(edit(), typed);
    QTest::keyClick(edit(), Qt::Key(key));
    QCOMPARE(edit()->text(), next);
}

QTEST_MAIN(DropDownTest)
#include "DropDownTest.moc"
