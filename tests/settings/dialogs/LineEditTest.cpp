#include "settings/dialogs/LineEdit.h"

#include "tests/support/Patience.h"

#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QMetaMethod>
#include <QSignalSpy>
#include <QTest>
#include <QToolButton>
#include <QVBoxLayout>

namespace {

/// Counts the key presses that its children let through, but not those of the
/// modifiers, which the test's keys come with.
class Parent : public QWidget {
public:
    int keys = 0;

protected:
    void keyPressEvent(QKeyEvent *event) override
    {
        keys += event->key() == Qt::Key_Alt ? 0 : 1;
        event->accept();
    }
};

struct Form {
    Parent parent;
    LineEdit *field = new LineEdit(&parent);
    QLineEdit *other = new QLineEdit(&parent);

    Form()
    {
        auto *layout = new QVBoxLayout(&parent);
        layout->addWidget(other);
        layout->addWidget(field);
        parent.show();
        parent.activateWindow();
        other->setFocus();
    }
};

} // namespace

class LineEditTest : public QObject {
    Q_OBJECT

private slots:
    void cleanupTestCase();

    void theSignalsAreDeclaredInTheirOrder();
    void returnEmitsItsOwnSignalAndGoesNoFurther();
    void theKeypadsEnterIsHandledAsInAnyLineEdit();
    void aSwitchKeyEmitsItsSignalAndTravelsOn_data();
    void aSwitchKeyEmitsItsSignalAndTravelsOn();
    void aSwitchKeyWithAnotherModifierIsNone_data();
    void aSwitchKeyWithAnotherModifierIsNone();
    void upAndDownTellTheirDirectionAndTravelOn();
    void upWithAModifierTellsNothing();
    void otherKeysEditTheText();
    void gettingTheFocusIsTold();
    void theClearButtonHasItsToolTip();
    void theClearButtonClearsAndThenActsAsReturn();
    void theReturnOfAConversionIsNoReturn();
};

void LineEditTest::cleanupTestCase()
{
    // The toolkit frees the animations of the clear buttons, which fade in with
    // the text, when they would have ended.
    QTest::qWait(300);
}

void LineEditTest::theSignalsAreDeclaredInTheirOrder()
{
    const QMetaObject &meta = LineEdit::staticMetaObject;
    QList<QByteArray> names;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i)
        names.append(meta.method(i).name());
    const QList<QByteArray> expected{"receivedFocus", "lineEditReturn", "CaseChange",
                                     "WordChange",    "RegexpChange",   "lineEditUpDown"};
    QCOMPARE(names, expected);
}

void LineEditTest::returnEmitsItsOwnSignalAndGoesNoFurther()
{
    Form form;
    const QSignalSpy lineEditReturn(form.field, &LineEdit::lineEditReturn);
    const QSignalSpy returnPressed(form.field, &LineEdit::returnPressed);
    QTest::keyClick(form.field, Qt::Key_Return);
    QCOMPARE(lineEditReturn.count(), 1);
    QCOMPARE(returnPressed.count(), 0);
    QCOMPARE(form.parent.keys, 0);
}

void LineEditTest::theKeypadsEnterIsHandledAsInAnyLineEdit()
{
    Form form;
    const QSignalSpy lineEditReturn(form.field, &LineEdit::lineEditReturn);
    const QSignalSpy returnPressed(form.field, &LineEdit::returnPressed);
    QTest::keyClick(form.field, Qt::Key_Enter, Qt::KeypadModifier);
    QCOMPARE(lineEditReturn.count(), 0);
    QCOMPARE(returnPressed.count(), 1);
}

void LineEditTest::aSwitchKeyEmitsItsSignalAndTravelsOn_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<QByteArray>("signal");
    QTest::newRow("Alt+O") << int(Qt::Key_O) << QByteArray(SIGNAL(CaseChange()));
    QTest::newRow("Alt+W") << int(Qt::Key_W) << QByteArray(SIGNAL(WordChange()));
    QTest::newRow("Alt+[") << int(Qt::Key_BracketLeft) << QByteArray(SIGNAL(RegexpChange()));
}

void LineEditTest::aSwitchKeyEmitsItsSignalAndTravelsOn()
{
    QFETCH(int, key);
    QFETCH(QByteArray, signal);
    Form form;
    const QSignalSpy spy(form.field, signal.constData());
    QTest::keyClick(form.field, static_cast<Qt::Key>(key), Qt::AltModifier);
    QCOMPARE(spy.count(), 1);
    QCOMPARE(form.parent.keys, 1);
    QCOMPARE(form.field->text(), QString());
}

void LineEditTest::aSwitchKeyWithAnotherModifierIsNone_data()
{
    QTest::addColumn<int>("modifiers");
    QTest::newRow("no modifier") << int(Qt::NoModifier);
    QTest::newRow("Alt+Shift") << int(Qt::AltModifier | Qt::ShiftModifier);
    QTest::newRow("Alt+Ctrl") << int(Qt::AltModifier | Qt::ControlModifier);
    QTest::newRow("Ctrl") << int(Qt::ControlModifier);
}

void LineEditTest::aSwitchKeyWithAnotherModifierIsNone()
{
    QFETCH(int, modifiers);
    Form form;
    const QSignalSpy caseChange(form.field, &LineEdit::CaseChange);
    const QSignalSpy wordChange(form.field, &LineEdit::WordChange);
    const QSignalSpy regexpChange(form.field, &LineEdit::RegexpChange);
    for (const Qt::Key key : {Qt::Key_O, Qt::Key_W, Qt::Key_BracketLeft})
        QTest::keyClick(form.field, key, Qt::KeyboardModifiers(modifiers));
    QCOMPARE(caseChange.count() + wordChange.count() + regexpChange.count(), 0);
}

void LineEditTest::upAndDownTellTheirDirectionAndTravelOn()
{
    Form form;
    QSignalSpy spy(form.field, &LineEdit::lineEditUpDown);
    QTest::keyClick(form.field, Qt::Key_Up);
    QTest::keyClick(form.field, Qt::Key_Down);
    QCOMPARE(spy.count(), 2);
    QCOMPARE(spy.at(0).at(0).toInt(), -1);
    QCOMPARE(spy.at(1).at(0).toInt(), 1);
    QCOMPARE(form.parent.keys, 2);
}

void LineEditTest::upWithAModifierTellsNothing()
{
    Form form;
    const QSignalSpy spy(form.field, &LineEdit::lineEditUpDown);
    QTest::keyClick(form.field, Qt::Key_Up, Qt::ControlModifier);
    QTest::keyClick(form.field, Qt::Key_Down, Qt::ControlModifier);
    QCOMPARE(spy.count(), 0);
}

void LineEditTest::otherKeysEditTheText()
{
    Form form;
    QTest::keyClicks(form.field, QStringLiteral("oW["));
    QTest::keyClick(form.field, Qt::Key_Backspace);
    QCOMPARE(form.field->text(), QStringLiteral("oW"));
}

void LineEditTest::gettingTheFocusIsTold()
{
    Form form;
    QVERIFY(QTest::qWaitForWindowActive(&form.parent, kPatienceMilliseconds));
    const QSignalSpy spy(form.field, &LineEdit::receivedFocus);
    form.field->setFocus();
    QCOMPARE(spy.count(), 1);
    QVERIFY(form.field->hasFocus());
}

void LineEditTest::theClearButtonHasItsToolTip()
{
    Form form;
    QVERIFY(form.field->isClearButtonEnabled());
    QCOMPARE(form.field->findChild<QToolButton *>()->toolTip(), QStringLiteral("入力欄クリア"));
}

void LineEditTest::theClearButtonClearsAndThenActsAsReturn()
{
    Form form;
    form.field->setText(QStringLiteral("abc"));
    QStringList textsAtReturn;
    connect(form.field, &LineEdit::returnPressed, this,
            [&] { textsAtReturn.append(form.field->text()); });
    QTest::mouseClick(form.field->findChild<QToolButton *>(), Qt::LeftButton);
    QCOMPARE(textsAtReturn, QStringList{QString()});
}

void LineEditTest::theReturnOfAConversionIsNoReturn()
{
    Form form;
    const QSignalSpy lineEditReturn(form.field, &LineEdit::lineEditReturn);
    const QSignalSpy returnPressed(form.field, &LineEdit::returnPressed);
    QInputMethodEvent typing(QStringLiteral("けんさく"), {});
    QCoreApplication::sendEvent(form.field, &typing);
    QInputMethodEvent commit;
    commit.setCommitString(QStringLiteral("検索"));
    QCoreApplication::sendEvent(form.field, &commit);
    QCOMPARE(form.field->text(), QStringLiteral("検索"));
    QCOMPARE(lineEditReturn.count() + returnPressed.count(), 0);
}

QTEST_MAIN(LineEditTest)
#include "LineEditTest.moc"
