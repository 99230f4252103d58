#include "mainwindow/FormKeys.h"

#include "mainwindow/PathEdit.h"
#include "tests/support/Patience.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QInputMethodEvent>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QSpinBox>
#include <QToolButton>
#include <QVBoxLayout>
#include <QtTest>

#include <memory>

/// A form of the same kinds of widgets as the window's, in a window that is
/// active, so that keys go where the focus is.
class FormKeysTest : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void returnInAnInputFieldSearches_data();
    void returnInAnInputFieldSearches();
    void returnDoesNothingElse();
    void returnInTheResultViewIsTheViews();
    void shiftOrCtrlAndReturnAreANewLineInThePathEditor_data();
    void shiftOrCtrlAndReturnAreANewLineInThePathEditor();
    void shiftAndReturnSearchInTheOtherFields();
    void returnWhileBusyAsksToo();

    void theReturnThatCommitsAConversionIsNoSearch_data();
    void theReturnThatCommitsAConversionIsNoSearch();
    void theReturnAfterTheCommitSearches_data();
    void theReturnAfterTheCommitSearches();
    void aCancelledConversionIsOver();
    void aConversionInOneFieldIsNoneInAnother();
    void aFieldThatLostTheFocusHasNoConversion();
    void theEscapeThatCancelsAConversionIsNothingElse_data();
    void theEscapeThatCancelsAConversionIsNothingElse();

    void escapeWhileBusyAborts_data();
    void escapeWhileBusyAborts();
    void escapeWhenIdleQuitsFromKeyword1Only_data();
    void escapeWhenIdleQuitsFromKeyword1Only();
    void escapeWhenIdleReachesTheResultView();
    void afterARunEscapeQuitsAgain();
    void escapeWhileBusyAbortsFromWidgetsThatDoNotTakeIt_data();
    void escapeWhileBusyAbortsFromWidgetsThatDoNotTakeIt();
    void onlyEscapeIsTakenFromTheRestOfTheWindow();
    void aKeyHeldDownIsTakenButDoesNothing_data();
    void aKeyHeldDownIsTakenButDoesNothing();

    void ctrlKGoesFromAFieldToTheResultViewAndBack_data();
    void ctrlKGoesFromAFieldToTheResultViewAndBack();
    void ctrlKGoesToKeyword1AtFirst();
    void ctrlKGoesToKeyword1WhenTheLastFieldIsHidden();
    void ctrlKGoesToKeyword1WhenTheLastFieldIsDisabled();
    void ctrlKLeavesTheTextAsItIs();
    void otherKeysWithKAreTyped_data();
    void otherKeysWithKAreTyped();
    void otherKeysPassOn();

private:
    void addFields();
    void focus(QWidget *field);
    void searchesAre(int expected);

    std::unique_ptr<QWidget> m_window;
    PathEdit *m_path = nullptr;
    QComboBox *m_mask = nullptr;
    QComboBox *m_keyword1 = nullptr;
    QComboBox *m_keyword2 = nullptr;
    QComboBox *m_keyword3 = nullptr;
    QPlainTextEdit *m_resultView = nullptr;
    FormKeys *m_keys = nullptr;
    std::unique_ptr<QSignalSpy> m_searches;
    std::unique_ptr<QSignalSpy> m_aborts;
    std::unique_ptr<QSignalSpy> m_quits;
};

namespace {

/// To the widget that has the focus, as a keyboard does.
void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
{
    QVERIFY(QApplication::focusWidget());
    QTest::keyClick(QApplication::focusWidget(), key, modifiers);
}

void compose(const QString &preedit, const QString &commit = QString())
{
    QInputMethodEvent event(preedit, {});
    event.setCommitString(commit);
    QApplication::sendEvent(QApplication::focusObject(), &event);
}

QString keyName(Qt::Key key)
{
    return QKeySequence(key).toString();
}

/// Rows for widgets that take keys: a combo box and its line edit both do.
void addTargetRows(std::initializer_list<const char *> names)
{
    QTest::addColumn<QString>("name");
    for (const char *name : names)
        QTest::newRow(name) << QString::fromLatin1(name);
}

void addAllFields()
{
    addTargetRows({"path", "mask", "keyword1", "keyword2", "keyword3"});
}

} // namespace

void FormKeysTest::init()
{
    m_window = std::make_unique<QWidget>();
    addFields();
    FormKeys::Widgets widgets;
    widgets.inputFields = {m_path, m_mask, m_keyword1, m_keyword2, m_keyword3};
    widgets.pathEdit = m_path;
    widgets.keyword1 = m_keyword1;
    widgets.resultView = m_resultView;
    widgets.window = m_window.get();
    m_keys = new FormKeys(widgets, m_window.get());
    m_searches = std::make_unique<QSignalSpy>(m_keys, &FormKeys::searchRequested);
    m_aborts = std::make_unique<QSignalSpy>(m_keys, &FormKeys::abortRequested);
    m_quits = std::make_unique<QSignalSpy>(m_keys, &FormKeys::quitRequested);
    m_window->show();
    QApplication::setActiveWindow(m_window.get());
    QVERIFY(QTest::qWaitForWindowActive(m_window.get(), kPatienceMilliseconds));
}

void FormKeysTest::cleanup()
{
    m_window.reset();
}

void FormKeysTest::addFields()
{
    auto *layout = new QVBoxLayout(m_window.get());
    const auto addCombo = [this, layout](const char *name) {
        auto *combo = new QComboBox(m_window.get());
        combo->setObjectName(QLatin1String(name));
        combo->setEditable(true);
        combo->setCompleter(nullptr);
        layout->addWidget(combo);
        return combo;
    };
    m_path = new PathEdit(m_window.get());
    m_path->setObjectName(QStringLiteral("path"));
    layout->addWidget(m_path);
    m_mask = addCombo("mask");
    m_keyword1 = addCombo("keyword1");
    m_keyword2 = addCombo("keyword2");
    m_keyword3 = addCombo("keyword3");
    m_resultView = new QPlainTextEdit(m_window.get());
    m_resultView->setObjectName(QStringLiteral("result view"));
    layout->addWidget(m_resultView);
    const auto add = [layout](QWidget *widget, const char *name) {
        widget->setObjectName(QLatin1String(name));
        widget->setFocusPolicy(Qt::StrongFocus);
        layout->addWidget(widget);
    };
    add(new QCheckBox(m_window.get()), "check box");
    auto *toggle = new QPushButton(m_window.get());
    toggle->setCheckable(true);
    add(toggle, "toggle");
    add(new QToolButton(m_window.get()), "tool button");
    add(new QSpinBox(m_window.get()), "spin box");
    auto *group = new QGroupBox(m_window.get());
    group->setCheckable(true);
    add(group, "group box");
}

void FormKeysTest::focus(QWidget *field)
{
    field->setFocus();
    QCOMPARE(QApplication::focusWidget(), field);
}

void FormKeysTest::searchesAre(int expected)
{
    QCOMPARE(m_searches->count(), expected);
    QCOMPARE(m_aborts->count(), 0);
    QCOMPARE(m_quits->count(), 0);
}

// Return and Enter

void FormKeysTest::returnInAnInputFieldSearches_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<Qt::Key>("key");
    QTest::addColumn<bool>("toLineEdit");
    for (const char *name : {"path", "mask", "keyword1", "keyword2", "keyword3"}) {
        for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter}) {
            for (const bool toLineEdit : {false, true}) {
                if (toLineEdit && qstrcmp(name, "path") == 0)
                    continue;
                QTest::addRow("%s, %s%s", name, qPrintable(keyName(key)),
                              toLineEdit ? ", to its line edit" : "")
                    << QString::fromLatin1(name) << key << toLineEdit;
            }
        }
    }
}

void FormKeysTest::returnInAnInputFieldSearches()
{
    QFETCH(QString, name);
    QFETCH(Qt::Key, key);
    QFETCH(bool, toLineEdit);
    auto *field = m_window->findChild<QWidget *>(name);
    focus(field);
    // A completer's list hands keys to the line edit itself.
    if (toLineEdit)
        QTest::keyClick(qobject_cast<QComboBox *>(field)->lineEdit(), key);
    else
        press(key);
    searchesAre(1);
}

void FormKeysTest::returnDoesNothingElse()
{
    m_path->setPlainText(QStringLiteral("/a/"));
    focus(m_path);
    press(Qt::Key_Return);
    QCOMPARE(m_path->toPlainText(), QStringLiteral("/a/"));
    m_keyword1->setEditText(QStringLiteral("new"));
    focus(m_keyword1);
    press(Qt::Key_Return);
    QCOMPARE(m_keyword1->count(), 0);
    QCOMPARE(m_keyword1->currentText(), QStringLiteral("new"));
    searchesAre(2);
}

void FormKeysTest::returnInTheResultViewIsTheViews()
{
    focus(m_resultView);
    press(Qt::Key_Return);
    searchesAre(0);
    QCOMPARE(m_resultView->blockCount(), 2);
}

void FormKeysTest::shiftOrCtrlAndReturnAreANewLineInThePathEditor_data()
{
    QTest::addColumn<Qt::Key>("key");
    QTest::addColumn<Qt::KeyboardModifiers>("modifier");
    QTest::newRow("Shift and Return") << Qt::Key_Return << Qt::KeyboardModifiers(Qt::ShiftModifier);
    QTest::newRow("Ctrl and Return")
        << Qt::Key_Return << Qt::KeyboardModifiers(Qt::ControlModifier);
    QTest::newRow("Shift and Enter") << Qt::Key_Enter << Qt::KeyboardModifiers(Qt::ShiftModifier);
    QTest::newRow("Ctrl and Enter") << Qt::Key_Enter << Qt::KeyboardModifiers(Qt::ControlModifier);
}

void FormKeysTest::shiftOrCtrlAndReturnAreANewLineInThePathEditor()
{
    QFETCH(Qt::Key, key);
    QFETCH(Qt::KeyboardModifiers, modifier);
    focus(m_path);
    press(key, modifier);
    searchesAre(0);
    QCOMPARE(m_path->toPlainText(), QStringLiteral("\n"));
}

void FormKeysTest::shiftAndReturnSearchInTheOtherFields()
{
    focus(m_mask);
    press(Qt::Key_Return, Qt::ShiftModifier);
    searchesAre(1);
}

void FormKeysTest::returnWhileBusyAsksToo()
{
    // The search button aborts then; which it is decides who is asked.
    m_keys->setBusy(true);
    focus(m_keyword1);
    press(Qt::Key_Return);
    searchesAre(1);
}

// Input methods

void FormKeysTest::theReturnThatCommitsAConversionIsNoSearch_data()
{
    addAllFields();
}

void FormKeysTest::theReturnThatCommitsAConversionIsNoSearch()
{
    QFETCH(QString, name);
    focus(m_window->findChild<QWidget *>(name));
    compose(QStringLiteral("け"));
    compose(QStringLiteral("けんさく"));
    press(Qt::Key_Return);
    press(Qt::Key_Enter);
    searchesAre(0);
}

void FormKeysTest::theReturnAfterTheCommitSearches_data()
{
    addAllFields();
}

void FormKeysTest::theReturnAfterTheCommitSearches()
{
    QFETCH(QString, name);
    focus(m_window->findChild<QWidget *>(name));
    compose(QStringLiteral("けんさく"));
    compose(QString(), QStringLiteral("検索"));
    searchesAre(0);
    press(Qt::Key_Return);
    searchesAre(1);
    // What was committed is in the field.
    auto *combo = qobject_cast<QComboBox *>(QApplication::focusWidget());
    QCOMPARE(combo ? combo->currentText() : m_path->toPlainText(), QStringLiteral("検索"));
}

void FormKeysTest::aCancelledConversionIsOver()
{
    focus(m_keyword1);
    compose(QStringLiteral("けんさく"));
    compose(QString());
    press(Qt::Key_Return);
    searchesAre(1);
}

void FormKeysTest::aConversionInOneFieldIsNoneInAnother()
{
    focus(m_keyword1);
    compose(QStringLiteral("けんさく"));
    focus(m_mask);
    press(Qt::Key_Return);
    searchesAre(1);
}

void FormKeysTest::aFieldThatLostTheFocusHasNoConversion()
{
    // Leaving a field ends the conversion, not always with an event of its own.
    focus(m_keyword1);
    compose(QStringLiteral("けんさく"));
    focus(m_mask);
    focus(m_keyword1);
    press(Qt::Key_Return);
    searchesAre(1);
}

void FormKeysTest::theEscapeThatCancelsAConversionIsNothingElse_data()
{
    QTest::addColumn<bool>("busy");
    QTest::newRow("idle") << false;
    QTest::newRow("busy") << true;
}

void FormKeysTest::theEscapeThatCancelsAConversionIsNothingElse()
{
    QFETCH(bool, busy);
    m_keys->setBusy(busy);
    focus(m_keyword1);
    compose(QStringLiteral("けんさく"));
    press(Qt::Key_Escape);
    searchesAre(0);
}

// Escape

void FormKeysTest::escapeWhileBusyAborts_data()
{
    addTargetRows({"path", "mask", "keyword1", "keyword2", "keyword3", "result view"});
}

void FormKeysTest::escapeWhileBusyAborts()
{
    QFETCH(QString, name);
    m_keys->setBusy(true);
    focus(m_window->findChild<QWidget *>(name));
    press(Qt::Key_Escape);
    QCOMPARE(m_aborts->count(), 1);
    QCOMPARE(m_quits->count(), 0);
}

void FormKeysTest::escapeWhenIdleQuitsFromKeyword1Only_data()
{
    escapeWhileBusyAborts_data();
}

void FormKeysTest::escapeWhenIdleQuitsFromKeyword1Only()
{
    QFETCH(QString, name);
    focus(m_window->findChild<QWidget *>(name));
    press(Qt::Key_Escape);
    QCOMPARE(m_quits->count(), name == QLatin1String("keyword1") ? 1 : 0);
    QCOMPARE(m_aborts->count(), 0);
}

void FormKeysTest::escapeWhenIdleReachesTheResultView()
{
    class KeyWatch : public QObject {
    public:
        int escapes = 0;
        bool eventFilter(QObject *watched, QEvent *event) override
        {
            if (event->type() == QEvent::KeyPress
                && static_cast<QKeyEvent *>(event)->key() == Qt::Key_Escape)
                ++escapes;
            return QObject::eventFilter(watched, event);
        }
    };
    // The window gets what the view did not want, so it must have had it.
    KeyWatch watch;
    m_window->installEventFilter(&watch);
    focus(m_resultView);
    press(Qt::Key_Escape);
    QCOMPARE(watch.escapes, 1);
    m_keys->setBusy(true);
    press(Qt::Key_Escape);
    QCOMPARE(watch.escapes, 1);
}

void FormKeysTest::afterARunEscapeQuitsAgain()
{
    focus(m_keyword1);
    m_keys->setBusy(true);
    m_keys->setBusy(false);
    press(Qt::Key_Escape);
    QCOMPARE(m_aborts->count(), 0);
    QCOMPARE(m_quits->count(), 1);
}

void FormKeysTest::escapeWhileBusyAbortsFromWidgetsThatDoNotTakeIt_data()
{
    addTargetRows({"check box", "toggle", "tool button", "spin box", "group box"});
}

void FormKeysTest::escapeWhileBusyAbortsFromWidgetsThatDoNotTakeIt()
{
    QFETCH(QString, name);
    auto *widget = m_window->findChild<QWidget *>(name);
    focus(widget);
    press(Qt::Key_Escape);
    QCOMPARE(m_aborts->count(), 0);
    m_keys->setBusy(true);
    press(Qt::Key_Escape);
    QCOMPARE(m_aborts->count(), 1);
    // Nor when the focus is gone, as from a button that was disabled.
    widget->setEnabled(false);
    widget->clearFocus();
    QTest::keyClick(m_window.get(), Qt::Key_Escape);
    QCOMPARE(m_aborts->count(), 2);
    QCOMPARE(m_quits->count(), 0);
}

void FormKeysTest::onlyEscapeIsTakenFromTheRestOfTheWindow()
{
    m_keys->setBusy(true);
    auto *box = m_window->findChild<QCheckBox *>();
    focus(box);
    press(Qt::Key_Return);
    press(Qt::Key_K, Qt::ControlModifier);
    searchesAre(0);
    QCOMPARE(QApplication::focusWidget(), box);
    press(Qt::Key_Space);
    QVERIFY(box->isChecked());
}

void FormKeysTest::aKeyHeldDownIsTakenButDoesNothing_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<Qt::Key>("key");
    QTest::newRow("Return, keyword 1") << QStringLiteral("keyword1") << Qt::Key_Return;
    QTest::newRow("Enter, mask") << QStringLiteral("mask") << Qt::Key_Enter;
    QTest::newRow("Return, paths") << QStringLiteral("path") << Qt::Key_Return;
    QTest::newRow("Escape, keyword 1") << QStringLiteral("keyword1") << Qt::Key_Escape;
}

void FormKeysTest::aKeyHeldDownIsTakenButDoesNothing()
{
    QFETCH(QString, name);
    QFETCH(Qt::Key, key);
    auto *field = m_window->findChild<QWidget *>(name);
    focus(field);
    QKeyEvent repeat(QEvent::KeyPress, key, Qt::NoModifier, QString(), true);
    QApplication::sendEvent(field, &repeat);
    searchesAre(0);
    QCOMPARE(m_path->toPlainText(), QString());
}

// Ctrl+K

void FormKeysTest::ctrlKGoesFromAFieldToTheResultViewAndBack_data()
{
    addAllFields();
}

void FormKeysTest::ctrlKGoesFromAFieldToTheResultViewAndBack()
{
    QFETCH(QString, name);
    auto *field = m_window->findChild<QWidget *>(name);
    focus(field);
    for (int round = 0; round < 2; ++round) {
        press(Qt::Key_K, Qt::ControlModifier);
        QCOMPARE(QApplication::focusWidget(), m_resultView);
        press(Qt::Key_K, Qt::ControlModifier);
        QCOMPARE(QApplication::focusWidget(), field);
    }
}

void FormKeysTest::ctrlKGoesToKeyword1AtFirst()
{
    // Before any input field had the focus: the window may have given it to one.
    FormKeys::Widgets widgets;
    QWidget window;
    QVBoxLayout layout(&window);
    QComboBox keyword1;
    keyword1.setEditable(true);
    QPlainTextEdit view;
    layout.addWidget(&view);
    layout.addWidget(&keyword1);
    widgets.inputFields = {&keyword1};
    widgets.keyword1 = &keyword1;
    widgets.resultView = &view;
    const FormKeys keys(widgets, &window);
    view.setFocus();
    window.show();
    QApplication::setActiveWindow(&window);
    QCOMPARE(QApplication::focusWidget(), &view);
    press(Qt::Key_K, Qt::ControlModifier);
    QCOMPARE(QApplication::focusWidget(), &keyword1);
}

void FormKeysTest::ctrlKGoesToKeyword1WhenTheLastFieldIsHidden()
{
    focus(m_keyword2);
    press(Qt::Key_K, Qt::ControlModifier);
    m_keyword2->hide();
    press(Qt::Key_K, Qt::ControlModifier);
    QCOMPARE(QApplication::focusWidget(), m_keyword1);
}

void FormKeysTest::ctrlKGoesToKeyword1WhenTheLastFieldIsDisabled()
{
    focus(m_keyword2);
    press(Qt::Key_K, Qt::ControlModifier);
    m_keyword2->setEnabled(false);
    press(Qt::Key_K, Qt::ControlModifier);
    QCOMPARE(QApplication::focusWidget(), m_keyword1);
}

void FormKeysTest::ctrlKLeavesTheTextAsItIs()
{
    m_keyword1->setEditText(QStringLiteral("abc"));
    focus(m_keyword1);
    m_keyword1->lineEdit()->setCursorPosition(1);
    press(Qt::Key_K, Qt::ControlModifier);
    QCOMPARE(m_keyword1->currentText(), QStringLiteral("abc"));
}

void FormKeysTest::otherKeysWithKAreTyped_data()
{
    QTest::addColumn<Qt::KeyboardModifiers>("modifiers");
    QTest::newRow("no modifier") << Qt::KeyboardModifiers(Qt::NoModifier);
    QTest::newRow("Shift") << Qt::KeyboardModifiers(Qt::ShiftModifier);
    QTest::newRow("Ctrl and Shift")
        << Qt::KeyboardModifiers(Qt::ControlModifier | Qt::ShiftModifier);
}

void FormKeysTest::otherKeysWithKAreTyped()
{
    QFETCH(Qt::KeyboardModifiers, modifiers);
    focus(m_keyword1);
    press(Qt::Key_K, modifiers);
    QCOMPARE(QApplication::focusWidget(), m_keyword1);
    if (modifiers == Qt::NoModifier)
        QCOMPARE(m_keyword1->currentText(), QStringLiteral("k"));
}

void FormKeysTest::otherKeysPassOn()
{
    focus(m_mask);
    QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("*.txt"));
    QCOMPARE(m_mask->currentText(), QStringLiteral("*.txt"));
    press(Qt::Key_Backspace);
    QCOMPARE(m_mask->currentText(), QStringLiteral("*.tx"));
    searchesAre(0);
}

QTEST_MAIN(FormKeysTest)

#include "FormKeysTest.moc"
