#include "settings/dialogs/findDialog.h"

#include "settings/AppSettings.h"
#include "tests/support/Patience.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QCompleter>
#include <QDialogButtonBox>
#include <QInputMethodEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>

namespace {

QStringList list(const char *texts)
{
    return QString::fromUtf8(texts).split(QLatin1Char('|'));
}

/// The dialog on the screen.
class Shown {
public:
    explicit Shown(int mode = 0) : dialog(mode)
    {
        dialog.show();
        dialog.activateWindow();
        if (!QTest::qWaitForWindowActive(&dialog, kPatienceMilliseconds))
            qFatal("the dialog is not on the screen");
    }

    QComboBox *combo() const { return dialog.findChild<QComboBox *>(QStringLiteral("le_keyword")); }
    QLineEdit *field() const { return combo()->lineEdit(); }
    QCheckBox *box(const char *name) const
    {
        return dialog.findChild<QCheckBox *>(QLatin1String(name));
    }
    QPushButton *button(QDialogButtonBox::StandardButton which) const
    {
        return dialog.findChild<QDialogButtonBox *>(QStringLiteral("buttonBox"))->button(which);
    }

    findDialog dialog;
};

} // namespace

class findDialogTest : public QObject {
    Q_OBJECT

private slots:
    void init();

    void everyWidgetHasItsText();
    void theModeSetsTheTitle_data();
    void theModeSetsTheTitle();
    void theMinimumSizeIsThatOfTheForm();
    void theWindowHasNoHelpButton();
    void tabVisitsTheFormFromTopToBottom();
    void nothingIsCutWithALargeFont();
    void longEntriesDoNotWidenTheDialog();

    void theListShowsThePastTexts();
    void theSwitchesShowTheSettings_data();
    void theSwitchesShowTheSettings();
    void theNewestTextIsSelectedAndHasTheFocus();
    void theFieldHasTheInputFont();
    void completionsPopUpWithoutRegardToCase();

    void okStoresTheSwitches_data();
    void okStoresTheSwitches();
    void okPutsTheTextInFront();
    void aKnownTextMovesToTheTop();
    void aBlankTextIsReturnedButNotStored();
    void theTextIsReturnedAndStoredWithItsBlanks();
    void theOldestOfFiftyEntriesGoes();
    void oneEntryTooManyGoesAndNoMore();
    void cancelChangesNothing_data();
    void cancelChangesNothing();
    void aTextKeepsTheCaseItWasTypedIn_data();
    void aTextKeepsTheCaseItWasTypedIn();
    void returnAcceptsOnce();
    void returnAcceptsWhileCompletionsAreShown();
    void aChosenCompletionIsReturned();
    void theReturnOfAConversionDoesNotAccept();
    void aParentThatGoesTakesTheDialogWithIt();
};

void findDialogTest::init()
{
    AppSettings &settings = AppSettings::instance();
    settings.keyhistory = list("newest|older");
    settings.findcase = true;
    settings.findword = false;
    settings.findregexp = false;
    settings.inputFont = QFont(QStringLiteral("DejaVu Sans"), 9);
}

void findDialogTest::everyWidgetHasItsText()
{
    const Shown shown;
    QCOMPARE(shown.dialog.findChild<QLabel *>(QStringLiteral("label"))->text(),
             QStringLiteral("キーワード"));
    QCOMPARE(shown.box("chk_fcase")->text(), QStringLiteral("大文字／小文字を同一視する"));
    QCOMPARE(shown.box("chk_fword")->text(), QStringLiteral("単語の場合のみをヒットさせる"));
    QCOMPARE(shown.box("chk_fregexp")->text(), QStringLiteral("正規表現を使って検索する"));
    const auto *buttons = shown.dialog.findChild<QDialogButtonBox *>(QStringLiteral("buttonBox"));
    QCOMPARE(buttons->standardButtons(), QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    QCOMPARE(shown.combo()->accessibleName(), QStringLiteral("キーワード"));
}

void findDialogTest::theModeSetsTheTitle_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<QString>("title");
    QTest::newRow("0") << 0 << QStringLiteral("Find");
    QTest::newRow("1") << 1 << QStringLiteral("Grep");
    QTest::newRow("2") << 2 << QStringLiteral("Find");
}

void findDialogTest::theModeSetsTheTitle()
{
    QFETCH(int, mode);
    QFETCH(QString, title);
    QCOMPARE(findDialog(mode).windowTitle(), title);
}

void findDialogTest::theMinimumSizeIsThatOfTheForm()
{
    QCOMPARE(findDialog(0).minimumSize(), QSize(424, 139));
}

void findDialogTest::theWindowHasNoHelpButton()
{
    QVERIFY(!findDialog(0).windowFlags().testFlag(Qt::WindowContextHelpButtonHint));
}

void findDialogTest::tabVisitsTheFormFromTopToBottom()
{
    const Shown shown;
    const QList<QWidget *> order{shown.box("chk_fcase"),
                                 shown.box("chk_fword"),
                                 shown.box("chk_fregexp"),
                                 shown.button(QDialogButtonBox::Ok),
                                 shown.button(QDialogButtonBox::Cancel),
                                 shown.combo()};
    for (const QWidget *expected : order) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        const QWidget *focused = QApplication::focusWidget();
        QVERIFY2(focused == expected || focused->parentWidget() == expected,
                 qPrintable(expected->objectName()));
    }
}

void findDialogTest::nothingIsCutWithALargeFont()
{
    const QFont former = QApplication::font();
    QApplication::setFont(QFont(QStringLiteral("IPAGothic"), 14));
    AppSettings::instance().inputFont = QFont(QStringLiteral("IPAGothic"), 14);
    const Shown shown;
    const auto children = shown.dialog.findChildren<QWidget *>();
    for (const QWidget *widget : children) {
        const bool partOfTheBox = widget->parentWidget() == shown.combo();
        if (widget->isVisible() && !partOfTheBox && !widget->minimumSizeHint().isEmpty()) {
            QVERIFY2(widget->width() >= widget->minimumSizeHint().width(),
                     qPrintable(widget->objectName()));
            QVERIFY2(widget->height() >= widget->minimumSizeHint().height(),
                     qPrintable(widget->objectName()));
        }
    }
    QApplication::setFont(former);
}

void findDialogTest::longEntriesDoNotWidenTheDialog()
{
    AppSettings::instance().keyhistory = QStringList{QString(5000, QLatin1Char('w'))};
    const Shown shown;
    QVERIFY(shown.dialog.width() < 600);
}

void findDialogTest::theListShowsThePastTexts()
{
    const Shown shown;
    QCOMPARE(shown.combo()->count(), 2);
    QCOMPARE(shown.combo()->itemText(0), QStringLiteral("newest"));
    QCOMPARE(shown.combo()->itemText(1), QStringLiteral("older"));
}

void findDialogTest::theSwitchesShowTheSettings_data()
{
    QTest::addColumn<bool>("ignoreCase");
    QTest::addColumn<bool>("word");
    QTest::addColumn<bool>("regexp");
    QTest::newRow("case") << true << false << false;
    QTest::newRow("word") << false << true << false;
    QTest::newRow("regexp") << false << false << true;
}

void findDialogTest::theSwitchesShowTheSettings()
{
    QFETCH(bool, ignoreCase);
    QFETCH(bool, word);
    QFETCH(bool, regexp);
    AppSettings &settings = AppSettings::instance();
    settings.findcase = ignoreCase;
    settings.findword = word;
    settings.findregexp = regexp;
    const Shown shown;
    QCOMPARE(shown.box("chk_fcase")->isChecked(), ignoreCase);
    QCOMPARE(shown.box("chk_fword")->isChecked(), word);
    QCOMPARE(shown.box("chk_fregexp")->isChecked(), regexp);
}

void findDialogTest::theNewestTextIsSelectedAndHasTheFocus()
{
    const Shown shown;
    QVERIFY(shown.field()->hasFocus());
    QCOMPARE(shown.field()->selectedText(), QStringLiteral("newest"));
}

void findDialogTest::theFieldHasTheInputFont()
{
    QFont font(QStringLiteral("IPAGothic"), 17);
    font.setBold(true);
    AppSettings::instance().inputFont = font;
    const Shown shown;
    QCOMPARE(shown.field()->font().family(), font.family());
    QCOMPARE(shown.field()->font().pointSize(), 17);
    QVERIFY(shown.field()->font().bold());
}

void findDialogTest::completionsPopUpWithoutRegardToCase()
{
    const Shown shown;
    const QCompleter *completer = shown.field()->completer();
    QCOMPARE(completer->completionMode(), QCompleter::PopupCompletion);
    QCOMPARE(completer->caseSensitivity(), Qt::CaseInsensitive);
    QTest::keyClicks(shown.field(), QStringLiteral("OL"));
    QCOMPARE(completer->completionCount(), 1);
    QCOMPARE(completer->currentCompletion(), QStringLiteral("older"));
    QTRY_VERIFY_WITH_TIMEOUT(completer->popup()->isVisible(), kPatienceMilliseconds);
}

void findDialogTest::okStoresTheSwitches_data()
{
    QTest::addColumn<QByteArray>("box");
    QTest::addColumn<bool>("ignoreCase");
    QTest::addColumn<bool>("word");
    QTest::addColumn<bool>("regexp");
    QTest::newRow("case") << QByteArray("chk_fcase") << false << false << false;
    QTest::newRow("word") << QByteArray("chk_fword") << true << true << false;
    QTest::newRow("regexp") << QByteArray("chk_fregexp") << true << false << true;
}

void findDialogTest::okStoresTheSwitches()
{
    QFETCH(QByteArray, box);
    QFETCH(bool, ignoreCase);
    QFETCH(bool, word);
    QFETCH(bool, regexp);
    const Shown shown;
    QTest::keyClick(shown.box(box.constData()), Qt::Key_Space);
    QTest::mouseClick(shown.button(QDialogButtonBox::Ok), Qt::LeftButton);
    const AppSettings &settings = AppSettings::instance();
    QCOMPARE(settings.findcase, ignoreCase);
    QCOMPARE(settings.findword, word);
    QCOMPARE(settings.findregexp, regexp);
}

namespace {

/// Runs the dialog as a caller does: types text, unless it is null, and presses
/// key.
class Run {
public:
    explicit Run(const QString &typed, Qt::Key key = Qt::Key_Return)
    {
        QTimer::singleShot(0, qApp, [typed, key] {
            auto *dialog = qobject_cast<findDialog *>(QApplication::activeModalWidget());
            if (!dialog)
                qFatal("no dialog runs");
            QLineEdit *field = dialog->findChild<QComboBox *>()->lineEdit();
            if (!typed.isNull())
                field->setText(typed);
            QTest::keyClick(field, key);
        });
        accepted = findDialog::ask(0, text, nullptr);
    }

    QString text = QStringLiteral("untouched");
    bool accepted = false;
};

} // namespace

void findDialogTest::okPutsTheTextInFront()
{
    const Run run(QStringLiteral("検索"));
    QVERIFY(run.accepted);
    QCOMPARE(run.text, QStringLiteral("検索"));
    QCOMPARE(AppSettings::instance().keyhistory, list("検索|newest|older"));
}

void findDialogTest::aKnownTextMovesToTheTop()
{
    const Run run(QStringLiteral("older"));
    QVERIFY(run.accepted);
    QCOMPARE(AppSettings::instance().keyhistory, list("older|newest"));
}

void findDialogTest::aBlankTextIsReturnedButNotStored()
{
    const Run run(QStringLiteral("   "));
    QVERIFY(run.accepted);
    QCOMPARE(run.text, QStringLiteral("   "));
    QCOMPARE(AppSettings::instance().keyhistory, list("newest|older"));
}

void findDialogTest::theTextIsReturnedAndStoredWithItsBlanks()
{
    const Run run(QStringLiteral(" a "));
    QCOMPARE(run.text, QStringLiteral(" a "));
    QCOMPARE(AppSettings::instance().keyhistory, list(" a |newest|older"));
}

void findDialogTest::theOldestOfFiftyEntriesGoes()
{
    QStringList &history = AppSettings::instance().keyhistory;
    history.clear();
    for (int i = 1; i <= 50; ++i)
        history.append(QString::number(i));
    const Run run(QStringLiteral("new"));
    QVERIFY(run.accepted);
    QCOMPARE(history.size(), 50);
    QCOMPARE(history.first(), QStringLiteral("new"));
    QCOMPARE(history.last(), QStringLiteral("49"));
}

void findDialogTest::oneEntryTooManyGoesAndNoMore()
{
    QStringList &history = AppSettings::instance().keyhistory;
    history.clear();
    for (int i = 1; i <= 60; ++i)
        history.append(QString::number(i));
    const Run run(QStringLiteral("new"));
    QVERIFY(run.accepted);
    QCOMPARE(history.size(), 60);
    QCOMPARE(history.last(), QStringLiteral("59"));
}

void findDialogTest::cancelChangesNothing_data()
{
    QTest::addColumn<bool>("byKey");
    QTest::newRow("the button") << false;
    QTest::newRow("Escape") << true;
}

void findDialogTest::cancelChangesNothing()
{
    QFETCH(bool, byKey);
    QTimer::singleShot(0, qApp, [byKey] {
        auto *dialog = QApplication::activeModalWidget();
        QLineEdit *field = dialog->findChild<QComboBox *>()->lineEdit();
        QTest::keyClicks(field, QStringLiteral("typed"));
        const auto boxes = dialog->findChildren<QCheckBox *>();
        for (QCheckBox *box : boxes)
            box->click();
        auto *buttons = dialog->findChild<QDialogButtonBox *>();
        if (byKey)
            QTest::keyClick(field, Qt::Key_Escape);
        else
            QTest::mouseClick(buttons->button(QDialogButtonBox::Cancel), Qt::LeftButton);
    });
    QString text = QStringLiteral("untouched");
    QVERIFY(!findDialog::ask(0, text, nullptr));
    QCOMPARE(text, QStringLiteral("untouched"));
    const AppSettings &settings = AppSettings::instance();
    QCOMPARE(settings.findcase, true);
    QCOMPARE(settings.findword, false);
    QCOMPARE(settings.findregexp, false);
    QCOMPARE(settings.keyhistory, list("newest|older"));
}

void findDialogTest::aTextKeepsTheCaseItWasTypedIn_data()
{
    QTest::addColumn<bool>("byKey");
    QTest::newRow("the button") << false;
    QTest::newRow("Return") << true;
}

void findDialogTest::aTextKeepsTheCaseItWasTypedIn()
{
    QFETCH(bool, byKey);
    const Shown shown;
    QTest::keyClicks(shown.field(), QStringLiteral("OLDER"));
    if (byKey) {
        QTest::keyClick(shown.field(), Qt::Key_Return);
    } else {
        shown.button(QDialogButtonBox::Ok)->setFocus();
        QTest::mouseClick(shown.button(QDialogButtonBox::Ok), Qt::LeftButton);
    }
    QVERIFY(!shown.dialog.isVisible());
    QCOMPARE(shown.dialog.text(), QStringLiteral("OLDER"));
    QCOMPARE(AppSettings::instance().keyhistory, list("OLDER|newest|older"));
}

void findDialogTest::returnAcceptsOnce()
{
    const Shown shown;
    const QSignalSpy accepted(&shown.dialog, &QDialog::accepted);
    QTest::keyClick(shown.field(), Qt::Key_Return);
    QCOMPARE(accepted.count(), 1);
}

void findDialogTest::returnAcceptsWhileCompletionsAreShown()
{
    const Shown shown;
    const QSignalSpy accepted(&shown.dialog, &QDialog::accepted);
    QTest::keyClicks(shown.field(), QStringLiteral("ol"));
    QTRY_VERIFY_WITH_TIMEOUT(shown.field()->completer()->popup()->isVisible(),
                             kPatienceMilliseconds);
    QTest::keyClick(shown.field()->completer()->popup(), Qt::Key_Return);
    QCOMPARE(accepted.count(), 1);
    QCOMPARE(shown.dialog.text(), QStringLiteral("ol"));
    QCOMPARE(AppSettings::instance().keyhistory, list("ol|newest|older"));
}

void findDialogTest::aChosenCompletionIsReturned()
{
    const Shown shown;
    const QSignalSpy accepted(&shown.dialog, &QDialog::accepted);
    QTest::keyClicks(shown.field(), QStringLiteral("ol"));
    QAbstractItemView *popup = shown.field()->completer()->popup();
    QTRY_VERIFY_WITH_TIMEOUT(popup->isVisible(), kPatienceMilliseconds);
    QTest::keyClick(popup, Qt::Key_Down);
    QTest::keyClick(popup, Qt::Key_Return);
    QCOMPARE(accepted.count(), 1);
    QCOMPARE(shown.dialog.text(), QStringLiteral("older"));
    QCOMPARE(AppSettings::instance().keyhistory, list("older|newest"));
}

void findDialogTest::theReturnOfAConversionDoesNotAccept()
{
    const Shown shown;
    QInputMethodEvent typing(QStringLiteral("けんさく"), {});
    QCoreApplication::sendEvent(shown.field(), &typing);
    QInputMethodEvent commit;
    commit.setCommitString(QStringLiteral("検索"));
    QCoreApplication::sendEvent(shown.field(), &commit);
    QVERIFY(shown.dialog.isVisible());
    QCOMPARE(shown.dialog.text(), QStringLiteral("検索"));
}

void findDialogTest::aParentThatGoesTakesTheDialogWithIt()
{
    auto *parent = new QWidget;
    QTimer::singleShot(0, qApp, [parent] { delete parent; });
    QString text = QStringLiteral("given");
    QVERIFY(!findDialog::ask(0, text, parent));
    QCOMPARE(text, QStringLiteral("given"));
}

QTEST_MAIN(findDialogTest)
#include "findDialogTest.moc"
