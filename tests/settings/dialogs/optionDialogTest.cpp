#include "settings/dialogs/optionDialog.h"

#include "tests/settings/dialogs/OptionDialogFixture.h"
#include "tests/support/AnsweringPrompt.h"
#include "tests/support/Patience.h"

#include <QApplication>
#include <QCheckBox>
#include <QDialogButtonBox>
#include <QFontComboBox>
#include <QGroupBox>
#include <QKeySequence>
#include <QLabel>
#include <QLineEdit>
#include <QMetaMethod>
#include <QPushButton>
#include <QSignalSpy>
#include <QSpinBox>
#include <QTabWidget>
#include <QTest>
#include <QTimer>

#include <algorithm>
#include <limits>

using namespace OptionDialogFixture;

class optionDialogTest : public QObject {
    Q_OBJECT

private slots:
    void init() { loadDefaults(); }

    void theSlotsAreDeclaredInTheirOrder();
    void everyTextOfTheFormIsThere_data();
    void everyTextOfTheFormIsThere();
    void theWindowIsTitledOptionWithoutAHelpButton();
    void everyFieldAndButtonHasAName();
    void everyPageFitsASmallScreenWithALargeFont();
    void tabVisitsEachPageFromTopToBottom();
    void aMnemonicTurnsToItsPage_data();
    void aMnemonicTurnsToItsPage();
    void mnemonicsAreUniqueOnEveryPage();
    void returnAcceptsFromAColourButton();

    void theFontsAreShown();
    void theNumbersAreShown();
    void theMarksAreShown_data();
    void theMarksAreShown();
    void theEditorIsShown();
    void theExclusionsAreShownJoined();

    void theEditorChooserAsksAsItShould();
    void aCancelledEditorChooserKeepsTheText();

    void theFontsAreStored();
    void theNumbersAreStored();
    void theFullWidthSpaceBoxIsStored();
    void theBoxOfTabAndLineEndSetsBoth_data();
    void theBoxOfTabAndLineEndSetsBoth();
    void theEditorIsStored();
    void theExclusionsAreSplit_data();
    void theExclusionsAreSplit();
    void acceptingWithoutAChangeChangesNothing();
    void numbersBeyondTheRangesSurvive();
    void cancelChangesNothing_data();
    void cancelChangesNothing();
    void theEntryCallTellsWhetherItWasAccepted_data();
    void theEntryCallTellsWhetherItWasAccepted();
    void aParentThatGoesTakesTheDialogWithIt();
};

void optionDialogTest::theSlotsAreDeclaredInTheirOrder()
{
    const QMetaObject &meta = optionDialog::staticMetaObject;
    QList<QByteArray> names;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i)
        names.append(meta.method(i).name());
    QList<QByteArray> expected;
    for (const char *widget :
         {"dark", "editor", "c01", "c02", "c03", "c04", "c05", "c06", "c07", "c08", "c09", "c10",
          "c11", "c13", "c14", "c15", "base", "text", "c17"})
        expected.append(QByteArray("on_pb_") + widget + "_clicked");
    QCOMPARE(names, expected);
}

void optionDialogTest::everyTextOfTheFormIsThere_data()
{
    QTest::addColumn<QString>("text");
    for (const char *text :
         {"ウインドウ背景と文字色", "エディタ背景と文字色", "選択時背景と文字色",
          "行番号欄背景と文字色", "カーソル行のアンダーライン色", "コメント文字色", "数値文字色",
          "キーワード文字色", "予約語文字色", "プリプロセッサ文字色", "文字列色",
          "改行コード文字色", "ファイル名文字色", "色", "Default", "Bold", "検索条件入力",
          "結果ウインドウ", "プレビューウインドウ"})
        QTest::newRow(text) << QString::fromUtf8(text);
}

void optionDialogTest::everyTextOfTheFormIsThere()
{
    QFETCH(QString, text);
    const Shown shown;
    QStringList texts;
    const auto labels = shown.dialog.findChildren<QLabel *>();
    for (const QLabel *label : labels)
        texts.append(label->text());
    const auto buttons = shown.dialog.findChildren<QAbstractButton *>();
    for (const QAbstractButton *button : buttons)
        texts.append(button->text());
    const auto groups = shown.dialog.findChildren<QGroupBox *>();
    for (const QGroupBox *group : groups)
        texts.append(group->title());
    QVERIFY(texts.contains(text));
}

void optionDialogTest::theWindowIsTitledOptionWithoutAHelpButton()
{
    const Shown shown;
    QCOMPARE(shown.dialog.windowTitle(), QStringLiteral("Option"));
    QVERIFY(!shown.dialog.windowFlags().testFlag(Qt::WindowContextHelpButtonHint));
}

void optionDialogTest::everyFieldAndButtonHasAName()
{
    const Shown shown;
    const auto widgets = shown.dialog.findChildren<QWidget *>();
    const auto labels = shown.dialog.findChildren<QLabel *>();
    for (const QWidget *widget : widgets) {
        const bool field = qobject_cast<const QComboBox *>(widget)
            || qobject_cast<const QSpinBox *>(widget)
            || (qobject_cast<const QLineEdit *>(widget)
                && !widget->objectName().startsWith(QStringLiteral("qt_")));
        const auto *button = qobject_cast<const QPushButton *>(widget);
        if (!field && !(button && button->text() == QStringLiteral("色")))
            continue;
        if (!widget->accessibleName().isEmpty() || widget->objectName().isEmpty())
            continue;
        const bool labelled = std::any_of(labels.begin(), labels.end(), [widget](QLabel *label) {
            return label->buddy() == widget;
        });
        QVERIFY2(labelled, qPrintable(widget->objectName()));
    }
}

void optionDialogTest::everyPageFitsASmallScreenWithALargeFont()
{
    const QFont former = QApplication::font();
    QApplication::setFont(QFont(QStringLiteral("IPAPGothic"), 14));
    const Shown shown;
    QVERIFY(shown.dialog.width() <= 800);
    QVERIFY(shown.dialog.height() <= 600);
    for (int page = 0; page < shown.pages()->count(); ++page) {
        shown.pages()->setCurrentIndex(page);
        const auto children = shown.pages()->widget(page)->findChildren<QWidget *>();
        for (const QWidget *widget : children) {
            const QWidget *parent = widget->parentWidget();
            const bool part =
                qobject_cast<const QComboBox *>(parent) || qobject_cast<const QSpinBox *>(parent);
            if (part || !widget->isVisible() || widget->minimumSizeHint().isEmpty())
                continue;
            QVERIFY2(widget->width() >= widget->minimumSizeHint().width()
                         && widget->height() >= widget->minimumSizeHint().height(),
                     qPrintable(widget->objectName()));
        }
    }
    QApplication::setFont(former);
}

void optionDialogTest::tabVisitsEachPageFromTopToBottom()
{
    const Shown shown;
    for (int page = 0; page < shown.pages()->count(); ++page) {
        shown.pages()->setCurrentIndex(page);
        const QWidget *area = shown.pages()->widget(page);
        QList<QPoint> visited;
        QWidget *start = shown.pages();
        start->setFocus();
        do {
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
            const QWidget *widget = QApplication::focusWidget();
            if (area->isAncestorOf(widget))
                visited.append(widget->mapTo(area, widget->rect().center()));
        } while (area->isAncestorOf(QApplication::focusWidget()));
        QVERIFY(visited.size() >= 3);
        for (int i = 1; i < visited.size(); ++i) {
            constexpr int kOneLine = 8;
            const QPoint step = visited.at(i) - visited.at(i - 1);
            QVERIFY2(step.y() > kOneLine || (step.y() > -kOneLine && step.x() > 0),
                     qPrintable(area->objectName() + QString::number(i)));
        }
    }
}

void optionDialogTest::aMnemonicTurnsToItsPage_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<QString>("page");
    QTest::newRow("F") << int(Qt::Key_F) << QStringLiteral("page_font");
    QTest::newRow("L") << int(Qt::Key_L) << QStringLiteral("page_colour");
    QTest::newRow("S") << int(Qt::Key_S) << QStringLiteral("page_search");
    QTest::newRow("E") << int(Qt::Key_E) << QStringLiteral("page_editor");
}

void optionDialogTest::aMnemonicTurnsToItsPage()
{
    QFETCH(int, key);
    QFETCH(QString, page);
    const Shown shown;
    shown.pages()->setCurrentIndex(key == Qt::Key_F ? 1 : 0);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key(key), Qt::AltModifier);
    QTRY_COMPARE_WITH_TIMEOUT(shown.pages()->currentWidget()->objectName(), page,
                              kPatienceMilliseconds);
}

void optionDialogTest::mnemonicsAreUniqueOnEveryPage()
{
    const Shown shown;
    const auto keyOf = [](const QString &text) {
        return QKeySequence::mnemonic(text).toString();
    };
    for (int page = 0; page < shown.pages()->count(); ++page) {
        QStringList keys;
        for (int tab = 0; tab < shown.pages()->count(); ++tab)
            keys.append(keyOf(shown.pages()->tabText(tab)));
        const QWidget *area = shown.pages()->widget(page);
        const auto labels = area->findChildren<QLabel *>();
        for (const QLabel *label : labels) {
            if (label->buddy())
                keys.append(keyOf(label->text()));
        }
        auto buttons = area->findChildren<QAbstractButton *>();
        buttons.append(shown.child<QDialogButtonBox>("buttonBox")->buttons());
        for (const QAbstractButton *button : qAsConst(buttons))
            keys.append(keyOf(button->text()));
        keys.removeAll(QString());
        QVERIFY(keys.size() >= shown.pages()->count());
        QCOMPARE(keys.removeDuplicates(), 0);
    }
}

void optionDialogTest::returnAcceptsFromAColourButton()
{
    const Shown shown;
    const AnsweringPrompt user;
    const QSignalSpy accepted(&shown.dialog, &QDialog::accepted);
    auto *button = shown.child<QPushButton>("pb_c01");
    shown.turnTo(button);
    button->setFocus();
    QTest::keyClick(button, Qt::Key_Return);
    QCOMPARE(accepted.count(), 1);
    QVERIFY(user.colourQuestions.isEmpty());
}

void optionDialogTest::theFontsAreShown()
{
    settings().inputFont = QFont(QStringLiteral("DejaVu Sans"), 11);
    settings().grepFont = QFont(QStringLiteral("DejaVu Sans Mono"), 12);
    settings().textFont = QFont(QStringLiteral("DejaVu Serif"), 13);
    settings().grepFont.setBold(true);
    const Shown shown;
    QCOMPARE(shown.child<QFontComboBox>("font1")->currentText(), QStringLiteral("DejaVu Sans"));
    QCOMPARE(shown.child<QFontComboBox>("font2")->currentText(),
             QStringLiteral("DejaVu Sans Mono"));
    QCOMPARE(shown.child<QFontComboBox>("font3")->currentText(), QStringLiteral("DejaVu Serif"));
    QCOMPARE(shown.child<QSpinBox>("fontsize1")->value(), 11);
    QCOMPARE(shown.child<QSpinBox>("fontsize2")->value(), 12);
    QCOMPARE(shown.child<QSpinBox>("fontsize3")->value(), 13);
    QVERIFY(!shown.child<QCheckBox>("ckbox1")->isChecked());
    QVERIFY(shown.child<QCheckBox>("ckbox2")->isChecked());
    QVERIFY(!shown.child<QCheckBox>("ckbox3")->isChecked());
}

void optionDialogTest::theNumbersAreShown()
{
    settings().tabcolm = 8;
    settings().bigsize = 3;
    settings().codechksize = 2048;
    const Shown shown;
    QCOMPARE(shown.child<QSpinBox>("prvtabpix")->value(), 8);
    QCOMPARE(shown.child<QSpinBox>("bigsize")->value(), 3);
    QCOMPARE(shown.child<QSpinBox>("codechksize")->value(), 2048);
}

void optionDialogTest::theMarksAreShown_data()
{
    QTest::addColumn<bool>("tab");
    QTest::addColumn<bool>("cr");
    QTest::addColumn<int>("state");
    QTest::newRow("both") << true << true << int(Qt::Checked);
    QTest::newRow("none") << false << false << int(Qt::Unchecked);
    QTest::newRow("tab only") << true << false << int(Qt::PartiallyChecked);
    QTest::newRow("line end only") << false << true << int(Qt::PartiallyChecked);
}

void optionDialogTest::theMarksAreShown()
{
    QFETCH(bool, tab);
    QFETCH(bool, cr);
    QFETCH(int, state);
    settings().tab = tab;
    settings().cr = cr;
    settings().zenspc = tab;
    const Shown shown;
    QCOMPARE(int(shown.child<QCheckBox>("chk_tabcr")->checkState()), state);
    QCOMPARE(shown.child<QCheckBox>("chk_zenspc")->isChecked(), tab);
}

void optionDialogTest::theEditorIsShown()
{
    settings().editor = QStringLiteral("C:/editor.exe");
    settings().editor_para = QStringLiteral("-l%l %f");
    const Shown shown;
    QCOMPARE(shown.child<QLineEdit>("le_editor")->text(), QStringLiteral("C:/editor.exe"));
    QCOMPARE(shown.child<QLineEdit>("le_editor_para")->text(), QStringLiteral("-l%l %f"));
    QVERIFY(shown.child<QLineEdit>("le_editor_para")
                ->toolTip()
                .contains(QStringLiteral("-l%l -c%c %f　→　-l3 -c5 \"C:\\src\\main.cpp\"")));
}

void optionDialogTest::theExclusionsAreShownJoined()
{
    settings().excusiondir = list(".git|build");
    settings().excusionfile = list(".bak|a,b");
    const Shown shown;
    QCOMPARE(shown.child<QLineEdit>("le_excusiondir")->text(), QStringLiteral(".git, build"));
    QCOMPARE(shown.child<QLineEdit>("le_excusionfile")->text(), QStringLiteral(".bak, a,b"));
}

void optionDialogTest::theEditorChooserAsksAsItShould()
{
    settings().editor = QStringLiteral("C:/old/editor.exe");
    const Shown shown;
    AnsweringPrompt user;
    user.files << QStringLiteral("C:/new/editor.exe");
    shown.click("pb_editor");
    QCOMPARE(user.fileQuestions.size(), 1);
    const auto &asked = user.fileQuestions.first();
    QCOMPARE(asked.title, QStringLiteral("エディタを選択してください"));
    QCOMPARE(asked.filter, QStringLiteral("Exe Files (*.exe);;All Files (*)"));
    QCOMPARE(asked.start, QStringLiteral("C:/old/editor.exe"));
    QCOMPARE(asked.parent, &shown.dialog);
    QCOMPARE(shown.child<QLineEdit>("le_editor")->text(), QStringLiteral("C:/new/editor.exe"));
    QCOMPARE(settings().editor, QStringLiteral("C:/old/editor.exe"));
}

void optionDialogTest::aCancelledEditorChooserKeepsTheText()
{
    settings().editor = QStringLiteral("C:/old/editor.exe");
    const Shown shown;
    const AnsweringPrompt user;
    shown.click("pb_editor");
    QCOMPARE(shown.child<QLineEdit>("le_editor")->text(), QStringLiteral("C:/old/editor.exe"));
}

void optionDialogTest::theFontsAreStored()
{
    const Shown shown;
    shown.child<QFontComboBox>("font1")->setCurrentFont(QFont(QStringLiteral("DejaVu Sans")));
    shown.child<QFontComboBox>("font2")->setCurrentFont(QFont(QStringLiteral("DejaVu Serif")));
    shown.child<QFontComboBox>("font3")->setCurrentFont(QFont(QStringLiteral("DejaVu Sans Mono")));
    shown.child<QSpinBox>("fontsize1")->setValue(21);
    shown.child<QSpinBox>("fontsize2")->setValue(22);
    shown.child<QSpinBox>("fontsize3")->setValue(23);
    QTest::keyClick(shown.child<QCheckBox>("ckbox2"), Qt::Key_Space);
    shown.ok();
    QCOMPARE(settings().inputFont.family(), QStringLiteral("DejaVu Sans"));
    QCOMPARE(settings().inputFont.pointSize(), 21);
    QCOMPARE(settings().inputFont.weight(), 50);
    QCOMPARE(settings().inputFontCopy, settings().inputFont);
    QCOMPARE(settings().grepFont.family(), QStringLiteral("DejaVu Serif"));
    QCOMPARE(settings().grepFont.pointSize(), 22);
    QCOMPARE(settings().grepFont.weight(), 75);
    QCOMPARE(settings().textFont.family(), QStringLiteral("DejaVu Sans Mono"));
    QCOMPARE(settings().textFont.pointSize(), 23);
    QCOMPARE(settings().textFont.weight(), 50);
}

void optionDialogTest::theNumbersAreStored()
{
    const Shown shown;
    shown.child<QSpinBox>("prvtabpix")->setValue(8);
    shown.child<QSpinBox>("bigsize")->setValue(20);
    shown.child<QSpinBox>("codechksize")->setValue(9000);
    shown.ok();
    QCOMPARE(settings().tabcolm, 8);
    QCOMPARE(settings().bigsize, 20);
    QCOMPARE(settings().codechksize, 9000);
}

void optionDialogTest::theFullWidthSpaceBoxIsStored()
{
    const Shown shown;
    QTest::keyClick(shown.child<QCheckBox>("chk_zenspc"), Qt::Key_Space);
    shown.ok();
    QCOMPARE(settings().zenspc, false);
    QCOMPARE(settings().tab, true);
}

void optionDialogTest::theBoxOfTabAndLineEndSetsBoth_data()
{
    QTest::addColumn<bool>("tab");
    QTest::addColumn<bool>("cr");
    QTest::addColumn<int>("state");
    QTest::addColumn<bool>("tabAfter");
    QTest::addColumn<bool>("crAfter");
    const int partly = Qt::PartiallyChecked;
    QTest::newRow("off") << true << true << int(Qt::Unchecked) << false << false;
    QTest::newRow("on") << false << false << int(Qt::Checked) << true << true;
    QTest::newRow("both on") << true << false << int(Qt::Checked) << true << true;
    QTest::newRow("both off") << true << false << int(Qt::Unchecked) << false << false;
    QTest::newRow("differ, and stay so") << false << true << partly << false << true;
}

void optionDialogTest::theBoxOfTabAndLineEndSetsBoth()
{
    QFETCH(bool, tab);
    QFETCH(bool, cr);
    QFETCH(int, state);
    QFETCH(bool, tabAfter);
    QFETCH(bool, crAfter);
    settings().tab = tab;
    settings().cr = cr;
    const Shown shown;
    auto *box = shown.child<QCheckBox>("chk_tabcr");
    for (int i = 0; i < 3 && int(box->checkState()) != state; ++i)
        QTest::keyClick(box, Qt::Key_Space);
    QCOMPARE(int(box->checkState()), state);
    shown.ok();
    QCOMPARE(settings().tab, tabAfter);
    QCOMPARE(settings().cr, crAfter);
}

void optionDialogTest::theEditorIsStored()
{
    const Shown shown;
    shown.enter("le_editor", "sarvedit.exe");
    shown.enter("le_editor_para", "+%l %f");
    shown.ok();
    QCOMPARE(settings().editor, QStringLiteral("sarvedit.exe"));
    QCOMPARE(settings().editor_para, QStringLiteral("+%l %f"));
}

void optionDialogTest::theExclusionsAreSplit_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QStringList>("entries");
    QTest::newRow("an empty part") << QStringLiteral("a, b, , c") << list("a|b|c");
    QTest::newRow("a comma without a blank") << QStringLiteral("a,b") << list("a,b");
    QTest::newRow("nothing") << QString() << QStringList();
    QTest::newRow("separators only") << QStringLiteral(", , ") << QStringList();
    QTest::newRow("two blanks") << QStringLiteral("a,  b") << list("a| b");
    QTest::newRow("Japanese") << QStringLiteral("資料, 検索") << list("資料|検索");
    const QString longText(10000, QLatin1Char('x'));
    QTest::newRow("10,000 characters") << longText << QStringList{longText};
    const QString longer(70000, QLatin1Char('x'));
    QTest::newRow("more than a field holds otherwise") << longer << QStringList{longer};
}

void optionDialogTest::theExclusionsAreSplit()
{
    QFETCH(QString, text);
    QFETCH(QStringList, entries);
    settings().excusiondir = list("former");
    settings().excusionfile = list("former");
    const Shown shown;
    shown.child<QLineEdit>("le_excusiondir")->setText(text);
    shown.child<QLineEdit>("le_excusionfile")->setText(text);
    shown.ok();
    QCOMPARE(settings().excusiondir, entries);
    QCOMPARE(settings().excusionfile, entries);
}

namespace {

/// What a save would write, as one text.
QByteArray saved()
{
    const ScratchFolder folder;
    if (!settings().save(folder.path()))
        qFatal("the settings cannot be saved");
    return folder.read(QStringLiteral("sarvik.ini"));
}

void changeEverything(const Shown &shown, AnsweringPrompt &user)
{
    for (int i = 0; i < 17; ++i)
        user.colours << QColor(i, 100, 200);
    const auto buttons = shown.dialog.findChildren<QPushButton *>();
    for (QPushButton *button : buttons) {
        if (button->text() == QStringLiteral("色"))
            shown.click(button->objectName().toLatin1().constData());
    }
    for (const char *field : {"le_editor", "le_editor_para", "le_excusiondir", "le_excusionfile"})
        shown.enter(field, "changed");
    const auto boxes = shown.dialog.findChildren<QCheckBox *>();
    for (QCheckBox *box : boxes)
        box->click();
    const auto numbers = shown.dialog.findChildren<QSpinBox *>();
    for (QSpinBox *number : numbers)
        number->setValue(number->value() + 1);
}

} // namespace

void optionDialogTest::acceptingWithoutAChangeChangesNothing()
{
    const QByteArray before = saved();
    const Shown shown;
    const AnsweringPrompt user;
    shown.ok();
    QVERIFY(user.messages.isEmpty());
    QCOMPARE(saved(), before);
}

void optionDialogTest::numbersBeyondTheRangesSurvive()
{
    settings().bigsize = 0;
    settings().codechksize = std::numeric_limits<int>::max();
    settings().tabcolm = 1000;
    settings().grepFont.setPointSize(1);
    const Shown shown;
    shown.ok();
    QCOMPARE(settings().bigsize, 0);
    QCOMPARE(settings().codechksize, std::numeric_limits<int>::max());
    QCOMPARE(settings().tabcolm, 1000);
    QCOMPARE(settings().grepFont.pointSize(), 1);
}

void optionDialogTest::cancelChangesNothing_data()
{
    QTest::addColumn<bool>("byKey");
    QTest::newRow("the button") << false;
    QTest::newRow("Escape") << true;
}

void optionDialogTest::cancelChangesNothing()
{
    QFETCH(bool, byKey);
    const QByteArray before = saved();
    {
        const Shown shown;
        AnsweringPrompt user;
        changeEverything(shown, user);
        QCOMPARE(user.colourQuestions.size(), 17);
        if (byKey)
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
        else
            shown.cancel();
        QVERIFY(!shown.dialog.isVisible());
    }
    QCOMPARE(saved(), before);
    // The same changes do change something when they are accepted.
    const Shown shown;
    AnsweringPrompt user;
    changeEverything(shown, user);
    shown.ok();
    QVERIFY(saved() != before);
}

void optionDialogTest::theEntryCallTellsWhetherItWasAccepted_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<bool>("accepted");
    QTest::newRow("Return") << int(Qt::Key_Return) << true;
    QTest::newRow("Escape") << int(Qt::Key_Escape) << false;
}

void optionDialogTest::theEntryCallTellsWhetherItWasAccepted()
{
    QFETCH(int, key);
    QFETCH(bool, accepted);
    QTimer::singleShot(0, qApp, [key] {
        auto *dialog = qobject_cast<optionDialog *>(QApplication::activeModalWidget());
        if (!dialog)
            qFatal("no dialog runs");
        QTest::keyClick(dialog->findChild<QCheckBox *>(QStringLiteral("chk_zenspc")),
                        Qt::Key_Space);
        QTest::keyClick(dialog, static_cast<Qt::Key>(key));
    });
    QCOMPARE(optionDialog::edit(nullptr), accepted);
    QCOMPARE(settings().zenspc, !accepted);
}

void optionDialogTest::aParentThatGoesTakesTheDialogWithIt()
{
    auto *parent = new QWidget;
    QTimer::singleShot(0, qApp, [parent] { delete parent; });
    QVERIFY(!optionDialog::edit(parent));
}

QTEST_MAIN(optionDialogTest)
#include "optionDialogTest.moc"
