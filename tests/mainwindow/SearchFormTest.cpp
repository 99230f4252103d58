#include "mainwindow/SearchForm.h"

#include "icon/Icons.h"
#include "mainwindow/KeywordEdit.h"
#include "settings/KeywordHistory.h"
#include "tests/mainwindow/SearchFormFixture.h"

#include <QCheckBox>
#include <QClipboard>
#include <QGroupBox>
#include <QPushButton>
#include <QSignalSpy>
#include <QSpinBox>

/// What is put into the form and taken from it.
class SearchFormTest : public SearchFormFixture {
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();
    void cleanupTestCase();

    void theStateIsWhatWasSet();
    void theStateOfANewFormSearchesPlainly();
    void keyword2TakesPartOnlyWithBothBoxes_data();
    void keyword2TakesPartOnlyWithBothBoxes();
    void theTogglesAreThoseOfTheSettings();
    void theTogglesShowTheSettings_data();
    void theTogglesShowTheSettings();
    void theSwitchesComeFromTheSettings();
    void aPathLineIsAdded();
    void keyword1IsSelectedForTyping();
    void aClickIntoKeyword1GivesItTheFocus();

    // Histories.
    void theDropDownsHoldTheHistories();
    void anEntryOfSeveralLinesIsLeftOut();
    void aPastedKeywordHasNoLineEnd_data();
    void aPastedKeywordHasNoLineEnd();
    void aRefilledDropDownKeepsWhatWasTyped();
    void aRefillLeavesCursorAndSelection_data();
    void aRefillLeavesCursorAndSelection();
    void downGoesOnFromTheTextInTheField_data();
    void downGoesOnFromTheTextInTheField();
    void aRefillIsNoChange();
    void aRefillDropsFormerItems();
    void aPastKeywordThatIsChosenIsTold();

    // Extra conditions.
    void theExtraConditionsAreHiddenAtFirst();
    void theExtraConditionsAreShownAndHidden();
    void hidingConditionsLeavesThemInForce();
    void hiddenConditionsInForceAreToldOnTheButton_data();
    void hiddenConditionsInForceAreToldOnTheButton();
    void keyword3StaysEnabledWithoutTheOtherConditions();
    void keyword3StaysEnabledWhenTheFormWasDisabled();
    void keyword2IsDisabledWithItsGroup();

    // Patterns.
    void anInvalidPatternIsShownWhileItIsTyped_data();
    void anInvalidPatternIsShownWhileItIsTyped();
    void withoutTheRegexpToggleNoPatternIsInvalid();
};

namespace {

QString plainConditionsTip()
{
    return QStringLiteral("追加条件を表示します");
}

} // namespace

void SearchFormTest::initTestCase()
{
    Icons::load();
}

void SearchFormTest::init()
{
    makeForm();
}

void SearchFormTest::cleanup()
{
    m_form.reset();
}

void SearchFormTest::cleanupTestCase()
{
    // The fading of a clear button outlives its field and deletes itself in the
    // end; a leak checker would find it before.
    QTest::qWait(500);
}

void SearchFormTest::theStateIsWhatWasSet()
{
    m_form->setPathLines({QStringLiteral("/a/"), QStringLiteral("@b")});
    m_form->setMask(QStringLiteral("*.c"));
    m_form->setKeyword1(QStringLiteral(" one "));
    m_form->setKeyword2(QStringLiteral("two"));
    m_form->setKeyword3(QStringLiteral("三"));
    m_form->setExtraGroup(true);
    m_form->setUseKeyword2(true);
    m_form->setKeyword3Group(true);
    m_form->setLineDistance(99999);
    m_form->setSubdir(false);
    part<QCheckBox>("emptyFilesCheck")->setChecked(true);
    part<QCheckBox>("skippedCheck")->setChecked(true);
    FormState state = m_form->state();
    QCOMPARE(state.pathText, QStringLiteral("/a/\n@b"));
    QCOMPARE(state.mask, QStringLiteral("*.c"));
    QCOMPARE(state.keyword1, QStringLiteral(" one "));
    QCOMPARE(state.keyword2, QStringLiteral("two"));
    QCOMPARE(state.keyword3, QStringLiteral("三"));
    QVERIFY(state.extraGroup);
    QVERIFY(state.useKeyword2);
    QVERIFY(state.keyword3Group);
    QCOMPARE(state.lineDistance, 99999);
    QVERIFY(!state.subdir);
    QVERIFY(state.emptyFiles);
    QVERIFY(state.skipped);

    m_form->setExtraGroup(false);
    m_form->setUseKeyword2(false);
    m_form->setKeyword3Group(false);
    m_form->setLineDistance(0);
    m_form->setSubdir(true);
    part<QCheckBox>("emptyFilesCheck")->setChecked(false);
    state = m_form->state();
    QVERIFY(!state.extraGroup);
    QVERIFY(!state.useKeyword2);
    QVERIFY(!state.keyword3Group);
    QCOMPARE(state.lineDistance, 0);
    QVERIFY(state.subdir);
    QVERIFY(!state.emptyFiles);
    QVERIFY(state.skipped);
}

void SearchFormTest::theStateOfANewFormSearchesPlainly()
{
    const FormState state = m_form->state();
    QCOMPARE(state.pathText, QString());
    QCOMPARE(state.mask, QString());
    QCOMPARE(state.keyword1, QString());
    QVERIFY(!state.extraGroup);
    QVERIFY(!state.useKeyword2);
    QVERIFY(!state.keyword3Group);
}

void SearchFormTest::keyword2TakesPartOnlyWithBothBoxes_data()
{
    QTest::addColumn<bool>("group");
    QTest::addColumn<bool>("box");
    QTest::addColumn<bool>("expected");
    QTest::newRow("neither") << false << false << false;
    QTest::newRow("the group") << true << false << false;
    QTest::newRow("the box") << false << true << false;
    QTest::newRow("both") << true << true << true;
}

void SearchFormTest::keyword2TakesPartOnlyWithBothBoxes()
{
    QFETCH(bool, group);
    QFETCH(bool, box);
    QFETCH(bool, expected);
    m_form->setExtraGroup(group);
    m_form->setUseKeyword2(box);
    QCOMPARE(m_form->state().usesKeyword2(), expected);
}

void SearchFormTest::theTogglesAreThoseOfTheSettings()
{
    AppSettings &settings = AppSettings::instance();
    settings.caseinsensitive = true;
    QVERIFY(m_form->state().ignoreCase);
    QVERIFY(!m_form->state().word);
    QVERIFY(!m_form->state().regexp);
    settings.caseinsensitive = false;
    settings.word = true;
    QVERIFY(!m_form->state().ignoreCase);
    QVERIFY(m_form->state().word);
    settings.word = false;
    settings.regexp = true;
    QVERIFY(!m_form->state().word);
    QVERIFY(m_form->state().regexp);
}

void SearchFormTest::theTogglesShowTheSettings_data()
{
    QTest::addColumn<bool>("ignoreCase");
    QTest::addColumn<bool>("word");
    QTest::addColumn<bool>("regexp");
    QTest::newRow("none") << false << false << false;
    QTest::newRow("ignore case") << true << false << false;
    QTest::newRow("whole word") << false << true << false;
    QTest::newRow("regular expression") << false << false << true;
    QTest::newRow("all") << true << true << true;
}

void SearchFormTest::theTogglesShowTheSettings()
{
    QFETCH(bool, ignoreCase);
    QFETCH(bool, word);
    QFETCH(bool, regexp);
    AppSettings &settings = AppSettings::instance();
    settings.caseinsensitive = ignoreCase;
    settings.word = word;
    settings.regexp = regexp;
    const QSignalSpy clicks(m_form->caseButton(), &QAbstractButton::clicked);
    m_form->showToggles();
    QCOMPARE(m_form->caseButton()->isChecked(), ignoreCase);
    QCOMPARE(m_form->wordButton()->isChecked(), word);
    QCOMPARE(m_form->regexpButton()->isChecked(), regexp);
    // Showing is no click.
    QCOMPARE(clicks.count(), 0);
}

void SearchFormTest::theSwitchesComeFromTheSettings()
{
    AppSettings &settings = AppSettings::instance();
    for (int set = 0; set < 3; ++set) {
        settings.subdir = set == 0;
        settings.fname = set == 1;
        settings.warningmsg = set == 2;
        m_form->loadSwitches();
        const FormState state = m_form->state();
        QCOMPARE(state.subdir, set == 0);
        QCOMPARE(state.emptyFiles, set == 1);
        QCOMPARE(state.skipped, set == 2);
    }
}

void SearchFormTest::aPathLineIsAdded()
{
    m_form->setPathLines({QStringLiteral("/a/")});
    m_form->addPathLine(QStringLiteral("/b/"));
    QCOMPARE(m_form->state().pathText, QStringLiteral("/a/\n/b/"));
}

void SearchFormTest::keyword1IsSelectedForTyping()
{
    show();
    m_form->setKeyword1(QStringLiteral("old"));
    m_form->pathEdit()->setFocus();
    m_form->selectKeyword1();
    QCOMPARE(QApplication::focusWidget(), m_form->keyword1Combo());
    QCOMPARE(m_form->keyword1Edit()->selectedText(), QStringLiteral("old"));
    QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("new"));
    QCOMPARE(m_form->state().keyword1, QStringLiteral("new"));
}

void SearchFormTest::aClickIntoKeyword1GivesItTheFocus()
{
    show();
    m_form->pathEdit()->setFocus();
    QTest::mouseClick(m_form->keyword1Edit(), Qt::LeftButton);
    QCOMPARE(QApplication::focusWidget(), m_form->keyword1Combo());
    QVERIFY(m_form->keyword1Edit()->hasFocus());
}

void SearchFormTest::theDropDownsHoldTheHistories()
{
    AppSettings &settings = AppSettings::instance();
    settings.maskhistory = QStringList{QStringLiteral("*.b"), QStringLiteral("*.a")};
    settings.history2 = QStringList{QStringLiteral("d"), QStringLiteral("c")};
    settings.keywordHistory->add(QStringLiteral("older"), false, false, false);
    settings.keywordHistory->add(QStringLiteral("newer"), false, false, false);
    m_form->fillMasks();
    m_form->fillKeywords1();
    m_form->fillKeywords2();
    const auto items = [](const QComboBox *box) {
        QStringList texts;
        for (int i = 0; i < box->count(); ++i)
            texts += box->itemText(i);
        return texts;
    };
    QCOMPARE(items(combo("maskCombo")), settings.maskhistory);
    QCOMPARE(items(combo("keyword2Combo")), settings.history2);
    QCOMPARE(items(combo("keyword1Combo")),
             (QStringList{QStringLiteral("newer"), QStringLiteral("older")}));
    // Keyword 3 has none.
    QCOMPARE(combo("keyword3Combo")->count(), 0);
}

void SearchFormTest::anEntryOfSeveralLinesIsLeftOut()
{
    AppSettings &settings = AppSettings::instance();
    settings.maskhistory = QStringList{QStringLiteral("*.b\n"), QStringLiteral("*.a")};
    settings.history2 = QStringList{QStringLiteral("d"), QStringLiteral("c\r\n")};
    settings.keywordHistory->add(QStringLiteral("plain"), false, false, false);
    settings.keywordHistory->add(QStringLiteral("a\nb"), false, false, false);
    m_form->fillMasks();
    m_form->fillKeywords1();
    m_form->fillKeywords2();
    for (const char *name : {"maskCombo", "keyword1Combo", "keyword2Combo"})
        QCOMPARE(combo(name)->count(), 1);
    QCOMPARE(combo("maskCombo")->itemText(0), QStringLiteral("*.a"));
    QCOMPARE(combo("keyword1Combo")->itemText(0), QStringLiteral("plain"));
    QCOMPARE(combo("keyword2Combo")->itemText(0), QStringLiteral("d"));
    // They are not lost.
    QCOMPARE(settings.maskhistory.size() + settings.history2.size(), 4);
}

void SearchFormTest::aPastedKeywordHasNoLineEnd_data()
{
    QTest::addColumn<QString>("name");
    for (const char *name : {"maskCombo", "keyword1Combo", "keyword2Combo", "keyword3Combo"})
        QTest::newRow(name) << QString::fromLatin1(name);
}

void SearchFormTest::aPastedKeywordHasNoLineEnd()
{
    QFETCH(QString, name);
    QApplication::clipboard()->setText(QStringLiteral("TODO\n"));
    QComboBox *field = combo(name.toLatin1().constData());
    field->lineEdit()->paste();
    QCOMPARE(field->currentText(), QStringLiteral("TODO"));
}

void SearchFormTest::aRefilledDropDownKeepsWhatWasTyped()
{
    AppSettings &settings = AppSettings::instance();
    m_form->setMask(QStringLiteral("*.typed"));
    m_form->setKeyword1(QStringLiteral("typed 1"));
    m_form->setKeyword2(QString());
    settings.maskhistory = QStringList(QStringLiteral("*.a"));
    settings.history2 = QStringList(QStringLiteral("c"));
    settings.keywordHistory->add(QStringLiteral("past"), false, false, false);
    m_form->fillMasks();
    m_form->fillKeywords1();
    m_form->fillKeywords2();
    QCOMPARE(m_form->state().mask, QStringLiteral("*.typed"));
    QCOMPARE(m_form->state().keyword1, QStringLiteral("typed 1"));
    QCOMPARE(m_form->state().keyword2, QString());
}

void SearchFormTest::aRefillLeavesCursorAndSelection_data()
{
    QTest::addColumn<int>("start");
    QTest::addColumn<int>("length");
    QTest::newRow("a cursor inside") << 2 << 0;
    QTest::newRow("a cursor at the end") << 5 << 0;
    QTest::newRow("a selection") << 1 << 3;
    QTest::newRow("a selection made backwards") << 4 << -3;
    QTest::newRow("everything") << 0 << 5;
}

void SearchFormTest::aRefillLeavesCursorAndSelection()
{
    QFETCH(int, start);
    QFETCH(int, length);
    AppSettings::instance().maskhistory = QStringList(QStringLiteral("*.a"));
    AppSettings::instance().keywordHistory->add(QStringLiteral("past"), false, false, false);
    for (const char *name : {"maskCombo", "keyword1Combo"}) {
        QLineEdit *edit = combo(name)->lineEdit();
        edit->setText(QStringLiteral("typed"));
        edit->setSelection(start, length);
        const QString selected = edit->selectedText();
        m_form->fillMasks();
        m_form->fillKeywords1();
        QCOMPARE(edit->text(), QStringLiteral("typed"));
        QCOMPARE(edit->selectedText(), selected);
        QCOMPARE(edit->cursorPosition(), start + length);
    }
}

void SearchFormTest::downGoesOnFromTheTextInTheField_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("next");
    for (const char *name : {"maskCombo", "keyword1Combo", "keyword2Combo"}) {
        const QString combo = QString::fromLatin1(name);
        QTest::addRow("%s, another text", name)
            << combo << QStringLiteral("typed") << QStringLiteral("newest");
        QTest::addRow("%s, no text", name) << combo << QString() << QStringLiteral("newest");
        QTest::addRow("%s, the newest", name)
            << combo << QStringLiteral("newest") << QStringLiteral("older");
        QTest::addRow("%s, an older one", name)
            << combo << QStringLiteral("older") << QStringLiteral("oldest");
        QTest::addRow("%s, in other letters", name)
            << combo << QStringLiteral("OLDER") << QStringLiteral("newest");
    }
}

void SearchFormTest::downGoesOnFromTheTextInTheField()
{
    QFETCH(QString, name);
    QFETCH(QString, typed);
    AppSettings &settings = AppSettings::instance();
    const QStringList history = {QStringLiteral("newest"), QStringLiteral("older"),
                                 QStringLiteral("oldest")};
    settings.maskhistory = history;
    settings.history2 = history;
    for (int i = history.size(); i > 0; --i)
        settings.keywordHistory->add(history.at(i - 1), false, false, false);
    m_form->showExtraConditions(true);
    m_form->setExtraGroup(true);
    m_form->setUseKeyword2(true);
    QComboBox *combo = this->combo(name.toLatin1().constData());
    const auto fill = [this] {
        m_form->fillMasks();
        m_form->fillKeywords1();
        m_form->fillKeywords2();
    };
    fill();
    combo->setEditText(typed);
    fill();
    QCOMPARE(combo->currentText(), typed);
    QTest::keyClick(combo, Qt::Key_Down);
    QTEST(combo->currentText(), "next");
    // A text that is put there is as good as one that was typed.
    m_form->setMask(typed);
    m_form->setKeyword1(typed);
    m_form->setKeyword2(typed);
    QTest::keyClick(combo, Qt::Key_Down);
    QTEST(combo->currentText(), "next");
}

void SearchFormTest::aRefillIsNoChange()
{
    AppSettings &settings = AppSettings::instance();
    settings.maskhistory = QStringList(QStringLiteral("*.a"));
    settings.keywordHistory->add(QStringLiteral("past"), false, false, false);
    const QSignalSpy masks(combo("maskCombo"), &QComboBox::editTextChanged);
    const QSignalSpy keywords(m_form->keyword1Combo(), &QComboBox::editTextChanged);
    const QSignalSpy chosen(m_form.get(), &SearchForm::pastKeywordChosen);
    m_form->fillMasks();
    m_form->fillKeywords1();
    QCOMPARE(masks.count() + keywords.count() + chosen.count(), 0);
}

void SearchFormTest::aRefillDropsFormerItems()
{
    AppSettings &settings = AppSettings::instance();
    settings.maskhistory = QStringList{QStringLiteral("*.a"), QStringLiteral("*.b")};
    m_form->fillMasks();
    settings.maskhistory = QStringList(QStringLiteral("*.c"));
    m_form->fillMasks();
    QCOMPARE(combo("maskCombo")->count(), 1);
}

void SearchFormTest::aPastKeywordThatIsChosenIsTold()
{
    AppSettings &settings = AppSettings::instance();
    settings.keywordHistory->add(QStringLiteral("older"), false, false, false);
    settings.keywordHistory->add(QStringLiteral("newer"), false, false, false);
    m_form->fillKeywords1();
    const QSignalSpy chosen(m_form.get(), &SearchForm::pastKeywordChosen);
    m_form->keyword1Combo()->setCurrentIndex(0);
    QCOMPARE(chosen.count(), 0);
    QTest::keyClick(m_form->keyword1Combo(), Qt::Key_Down);
    QCOMPARE(chosen.count(), 1);
    QCOMPARE(chosen.first().first().toString(), QStringLiteral("older"));
    QCOMPARE(m_form->state().keyword1, QStringLiteral("older"));
}

void SearchFormTest::theExtraConditionsAreHiddenAtFirst()
{
    show();
    QVERIFY(!part<QGroupBox>("extraGroup")->isVisible());
    QVERIFY(!part<QGroupBox>("keyword3Group")->isVisible());
    QVERIFY(!part<QPushButton>("btnKeyword2")->isChecked());
}

void SearchFormTest::theExtraConditionsAreShownAndHidden()
{
    show();
    for (const bool shown : {true, false, true}) {
        m_form->showExtraConditions(shown);
        QCOMPARE(part<QGroupBox>("extraGroup")->isVisible(), shown);
        QCOMPARE(part<QGroupBox>("keyword3Group")->isVisible(), shown);
        QCOMPARE(part<QPushButton>("btnKeyword2")->isChecked(), shown);
    }
}

void SearchFormTest::hidingConditionsLeavesThemInForce()
{
    m_form->showExtraConditions(true);
    m_form->setExtraGroup(true);
    m_form->setUseKeyword2(true);
    m_form->setKeyword3Group(true);
    m_form->showExtraConditions(false);
    QVERIFY(m_form->state().usesKeyword2());
    QVERIFY(m_form->state().keyword3Group);
}

void SearchFormTest::hiddenConditionsInForceAreToldOnTheButton_data()
{
    QTest::addColumn<bool>("extra");
    QTest::addColumn<bool>("keyword3");
    QTest::newRow("none") << false << false;
    QTest::newRow("extra group") << true << false;
    QTest::newRow("keyword 3") << false << true;
    QTest::newRow("both") << true << true;
}

void SearchFormTest::hiddenConditionsInForceAreToldOnTheButton()
{
    QFETCH(bool, extra);
    QFETCH(bool, keyword3);
    const QString hiddenTip = QStringLiteral("追加条件が有効です。クリックすると表示します");
    const QWidget *button = part<QPushButton>("btnKeyword2");
    // Whichever comes first, the condition or the hiding.
    m_form->setExtraGroup(extra);
    m_form->setKeyword3Group(keyword3);
    QCOMPARE(button->toolTip(), extra || keyword3 ? hiddenTip : plainConditionsTip());
    QCOMPARE(iconOf(button->objectName()),
             imageOf(extra || keyword3 ? QStringLiteral(":/icon/conditionsInForce.png")
                                       : QStringLiteral(":/icon/conditions.png")));
    m_form->showExtraConditions(true);
    QCOMPARE(button->toolTip(), QStringLiteral("追加条件を隠します"));
    QCOMPARE(iconOf(button->objectName()), imageOf(QStringLiteral(":/icon/conditions.png")));
    m_form->showExtraConditions(false);
    QCOMPARE(button->toolTip(), extra || keyword3 ? hiddenTip : plainConditionsTip());
    m_form->setExtraGroup(false);
    m_form->setKeyword3Group(false);
    QCOMPARE(button->toolTip(), plainConditionsTip());
}

void SearchFormTest::keyword3StaysEnabledWithoutTheOtherConditions()
{
    const QWidget *group = part<QGroupBox>("keyword3Group");
    QVERIFY(group->isEnabled());
    show();
    m_form->showExtraConditions(true);
    QCoreApplication::processEvents();
    QVERIFY(group->isEnabled());
    m_form->setExtraGroup(true);
    QVERIFY(group->isEnabled());
    m_form->setExtraGroup(false);
    QVERIFY(group->isEnabled());
    m_form->showExtraConditions(false);
    m_form->showExtraConditions(true);
    QVERIFY(group->isEnabled());
    m_form->setKeyword3Group(true);
    QVERIFY(combo("keyword3Combo")->isEnabled());
    m_form->setKeyword3Group(false);
    QVERIFY(!combo("keyword3Combo")->isEnabled());
    // And can be checked with the mouse.
    QTest::mouseClick(part<QGroupBox>("keyword3Group"), Qt::LeftButton, Qt::NoModifier,
                      QPoint(12, 8));
    QVERIFY(m_form->state().keyword3Group);
}

void SearchFormTest::keyword3StaysEnabledWhenTheFormWasDisabled()
{
    m_form->showExtraConditions(true);
    show();
    m_form->setEnabled(false);
    m_form->setEnabled(true);
    QVERIFY(part<QGroupBox>("keyword3Group")->isEnabled());
}

void SearchFormTest::keyword2IsDisabledWithItsGroup()
{
    m_form->showExtraConditions(true);
    show();
    for (const bool checked : {true, false}) {
        m_form->setExtraGroup(checked);
        QCOMPARE(combo("keyword2Combo")->isEnabled(), checked);
        QCOMPARE(part<QCheckBox>("useKeyword2")->isEnabled(), checked);
        QCOMPARE(part<QSpinBox>("lineDistance")->isEnabled(), checked);
    }
}

void SearchFormTest::anInvalidPatternIsShownWhileItIsTyped_data()
{
    QTest::addColumn<QString>("name");
    for (const char *name : {"keyword1Combo", "keyword2Combo", "keyword3Combo"})
        QTest::newRow(name) << QString::fromLatin1(name);
}

void SearchFormTest::anInvalidPatternIsShownWhileItIsTyped()
{
    QFETCH(QString, name);
    AppSettings::instance().regexp = true;
    m_form->applyLook();
    m_form->setExtraGroup(true);
    m_form->setKeyword3Group(true);
    auto *box = m_form->findChild<QComboBox *>(name);
    const QString plain = box->lineEdit()->styleSheet();
    QTest::keyClicks(box->lineEdit(), QStringLiteral("a("));
    QVERIFY(box->lineEdit()->styleSheet() != plain);
    QVERIFY(!box->lineEdit()->toolTip().isEmpty());
    QTest::keyClicks(box->lineEdit(), QStringLiteral(")"));
    QCOMPARE(box->lineEdit()->styleSheet(), plain);
    QCOMPARE(box->lineEdit()->toolTip(), QString());
}

void SearchFormTest::withoutTheRegexpToggleNoPatternIsInvalid()
{
    m_form->applyLook();
    const QString plain = m_form->keyword1Edit()->styleSheet();
    m_form->setKeyword1(QStringLiteral("a("));
    QCOMPARE(m_form->keyword1Edit()->styleSheet(), plain);
    AppSettings::instance().regexp = true;
    m_form->showToggles();
    QVERIFY(m_form->keyword1Edit()->styleSheet() != plain);
    AppSettings::instance().regexp = false;
    m_form->showToggles();
    QCOMPARE(m_form->keyword1Edit()->styleSheet(), plain);
}

QTEST_MAIN(SearchFormTest)

#include "SearchFormTest.moc"
