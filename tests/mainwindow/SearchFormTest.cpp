#include "mainwindow/SearchForm.h"

#include "icon/Icons.h"
#include "settings/AppSettings.h"
#include "settings/KeywordHistory.h"
#include "settings/dialogs/LineEdit.h"
#include "tests/support/ScratchFolder.h"

#include <QAbstractButton>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QFile>
#include <QGroupBox>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QSpinBox>
#include <QtTest>

#include <memory>

/// The form alone, in no window but its own.
class SearchFormTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();
    void cleanupTestCase();

    // What stands in it.
    void theButtonsHaveTheirNames_data();
    void theButtonsHaveTheirNames();
    void theTextsAreThose_data();
    void theTextsAreThose();
    void theToolTipsAreThose_data();
    void theToolTipsAreThose();
    void thePathEditorSaysWhatAPathIs();
    void theTogglesHaveShortcuts_data();
    void theTogglesHaveShortcuts();
    void aTogglesShortcutClicksIt();
    void aPressedToggleIsMarked_data();
    void aPressedToggleIsMarked();
    void labelsLeadToTheirFields_data();
    void labelsLeadToTheirFields();
    void everyInputHasANameForReaders();
    void theComboBoxesInsertNothingByThemselves();
    void theKeywordFieldIsTheSuitesLineEdit();
    void theInputFieldsStandInTheirOrder();
    void tabGoesThroughTheFormInAFixedCycle();

    // State.
    void theStateIsWhatWasSet();
    void theStateOfANewFormSearchesPlainly();
    void keyword2TakesPartOnlyWithBothBoxes_data();
    void keyword2TakesPartOnlyWithBothBoxes();
    void theTogglesAreThoseOfTheSettings();
    void theTogglesShowTheSettings_data();
    void theTogglesShowTheSettings();
    void theToggleIconsAreTheirFiles_data();
    void theToggleIconsAreTheirFiles();
    void theOtherButtonsHaveIcons_data();
    void theOtherButtonsHaveIcons();
    void theSwitchesComeFromTheSettings();
    void aPathLineIsAdded();
    void keyword1IsSelectedForTyping();
    void aClickIntoKeyword1GivesItTheFocus();

    // Histories.
    void theDropDownsHoldTheHistories();
    void aRefilledDropDownKeepsWhatWasTyped();
    void aRefillLeavesCursorAndSelection_data();
    void aRefillLeavesCursorAndSelection();
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

    // Looks.
    void theInputFieldsHaveTheInputFont();
    void theKeywordFieldsHaveTheSettingsBackground();
    void anInvalidPatternIsShownWhileItIsTyped_data();
    void anInvalidPatternIsShownWhileItIsTyped();
    void withoutTheRegexpToggleNoPatternIsInvalid();
    void thePathEditorShowsThreeLines();

    // The search button.
    void theSearchButtonSaysWhatItDoes();
    void theSearchButtonIsEnabledAndDisabled();

private:
    template <typename Widget> Widget *part(const char *name) const
    {
        return m_form->findChild<Widget *>(QLatin1String(name));
    }
    QComboBox *combo(const char *name) const { return part<QComboBox>(name); }
    void show();
    QImage iconOf(const QString &button) const;

    const ScratchFolder m_folder;
    std::unique_ptr<SearchForm> m_form;
};

namespace {

void addColumns(std::initializer_list<std::pair<const char *, const char *>> rows)
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("text");
    for (const auto &row : rows)
        QTest::newRow(row.first) << QString::fromLatin1(row.first) << QString::fromUtf8(row.second);
}

QImage imageOf(const QString &file)
{
    return QIcon(file).pixmap(16, 16).toImage();
}

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
    AppSettings::instance().load(m_folder.path());
    AppSettings &settings = AppSettings::instance();
    settings.caseinsensitive = false;
    settings.word = false;
    settings.regexp = false;
    m_form = std::make_unique<SearchForm>();
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

void SearchFormTest::show()
{
    m_form->show();
    QApplication::setActiveWindow(m_form.get());
    QVERIFY(QTest::qWaitForWindowActive(m_form.get()));
}

QImage SearchFormTest::iconOf(const QString &button) const
{
    return m_form->findChild<QAbstractButton *>(button)->icon().pixmap(16, 16).toImage();
}

void SearchFormTest::theButtonsHaveTheirNames_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("checkable");
    QTest::newRow("btnPlus") << QStringLiteral("btnPlus") << false;
    QTest::newRow("btnKeyword1") << QStringLiteral("btnKeyword1") << false;
    QTest::newRow("btnKeyword2") << QStringLiteral("btnKeyword2") << true;
    QTest::newRow("pushButton") << QStringLiteral("pushButton") << false;
    QTest::newRow("btnCase") << QStringLiteral("btnCase") << true;
    QTest::newRow("btnWord") << QStringLiteral("btnWord") << true;
    QTest::newRow("btnRegexp") << QStringLiteral("btnRegexp") << true;
}

void SearchFormTest::theButtonsHaveTheirNames()
{
    QFETCH(QString, name);
    QFETCH(bool, checkable);
    const auto *button = m_form->findChild<QPushButton *>(name);
    QVERIFY(button);
    QCOMPARE(button->isCheckable(), checkable);
}

void SearchFormTest::theTextsAreThose_data()
{
    addColumns({{"pathLabel", "検索パス(&P)"},
                {"maskLabel", "マスク(&M)"},
                {"keyword1Label", "キーワード１(&K)"},
                {"pushButton", "検索開始"},
                {"useKeyword2", "キーワード２を使う"},
                {"distanceLabel", "が"},
                {"distanceUnitLabel", "行以内にある場合だけ表示する"},
                {"subdirCheck", "サブディレクトリを検索する"},
                {"emptyFilesCheck", "見つからない場合でもファイル名は表示する"},
                {"skippedCheck", "スキップしたフォルダ・ファイルを表示する"}});
    QTest::newRow("extraGroup") << QStringLiteral("extraGroup") << QStringLiteral("追加条件");
    QTest::newRow("keyword3Group")
        << QStringLiteral("keyword3Group") << QStringLiteral("キーワード３を含まない行のみ");
}

void SearchFormTest::theTextsAreThose()
{
    QFETCH(QString, name);
    QFETCH(QString, text);
    const auto *widget = m_form->findChild<QWidget *>(name);
    QVERIFY(widget);
    const bool isGroup = qobject_cast<const QGroupBox *>(widget) != nullptr;
    QCOMPARE(widget->property(isGroup ? "title" : "text").toString(), text);
}

void SearchFormTest::theToolTipsAreThose_data()
{
    addColumns({{"keyword3Group", "例）　ABC|XYZ 　ABCかXYZを含んでいたら除外する"},
                {"btnPlus", "検索パスを追加します"},
                {"btnKeyword1", "キーワード１を入れ直します"},
                {"btnKeyword2", "追加条件を表示します"},
                {"btnCase", "大文字／小文字を同一視します (Ctrl+Shift+O)"},
                {"btnWord", "単語の場合のみをヒットさせます (Ctrl+Shift+W)"},
                {"btnRegexp", "正規表現を使って検索します (Ctrl+Shift+R)"}});
}

void SearchFormTest::theToolTipsAreThose()
{
    QFETCH(QString, name);
    QFETCH(QString, text);
    QCOMPARE(m_form->findChild<QWidget *>(name)->toolTip(), text);
}

void SearchFormTest::thePathEditorSaysWhatAPathIs()
{
    QCOMPARE(m_form->pathEdit()->toolTip(),
             QStringLiteral("検索パスにはパス＋マスク指定をしてください。\n"
                            "￥マークは、／に置換されます。\n"
                            "\n"
                            "例） d:/savik/log/*.log  検索結果ログを grep します。"));
}

void SearchFormTest::theTogglesHaveShortcuts_data()
{
    addColumns(
        {{"btnCase", "Ctrl+Shift+O"}, {"btnWord", "Ctrl+Shift+W"}, {"btnRegexp", "Ctrl+Shift+R"}});
}

void SearchFormTest::theTogglesHaveShortcuts()
{
    QFETCH(QString, name);
    QFETCH(QString, text);
    QCOMPARE(m_form->findChild<QAbstractButton *>(name)->shortcut(), QKeySequence(text));
}

void SearchFormTest::aTogglesShortcutClicksIt()
{
    show();
    const QSignalSpy cases(m_form->caseButton(), &QAbstractButton::clicked);
    const QSignalSpy words(m_form->wordButton(), &QAbstractButton::clicked);
    const QSignalSpy patterns(m_form->regexpButton(), &QAbstractButton::clicked);
    m_form->selectKeyword1();
    const auto press = [](Qt::Key key) {
        QTest::keyClick(QApplication::focusWidget(), key, Qt::ControlModifier | Qt::ShiftModifier);
    };
    // A button is seen to go down before it clicks.
    press(Qt::Key_O);
    QTRY_COMPARE(cases.count(), 1);
    press(Qt::Key_W);
    QTRY_COMPARE(words.count(), 1);
    press(Qt::Key_R);
    QTRY_COMPARE(patterns.count(), 1);
    QCOMPARE(cases.count() + words.count(), 2);
}

void SearchFormTest::aPressedToggleIsMarked_data()
{
    theTogglesHaveShortcuts_data();
}

void SearchFormTest::aPressedToggleIsMarked()
{
    QFETCH(QString, name);
    QCOMPARE(m_form->findChild<QWidget *>(name)->styleSheet(),
             QStringLiteral("QPushButton:checked{ background-color: #884444; }"));
}

void SearchFormTest::labelsLeadToTheirFields_data()
{
    addColumns({{"pathLabel", "pathEdit"},
                {"maskLabel", "maskCombo"},
                {"keyword1Label", "keyword1Combo"}});
}

void SearchFormTest::labelsLeadToTheirFields()
{
    QFETCH(QString, name);
    QFETCH(QString, text);
    const auto *label = m_form->findChild<QLabel *>(name);
    QVERIFY(label && label->buddy());
    QCOMPARE(label->buddy()->objectName(), text);
}

void SearchFormTest::everyInputHasANameForReaders()
{
    int inputs = 0;
    const QList<QWidget *> widgets = m_form->findChildren<QWidget *>();
    for (const QWidget *widget : widgets) {
        // Parts of a widget are read with it.
        const bool isPart =
            widget->objectName().isEmpty() || widget->objectName().startsWith(QLatin1String("qt_"));
        if (isPart || widget->focusPolicy() == Qt::NoFocus)
            continue;
        ++inputs;
        const auto *button = qobject_cast<const QAbstractButton *>(widget);
        const auto *group = qobject_cast<const QGroupBox *>(widget);
        const QString read = !widget->accessibleName().isEmpty() ? widget->accessibleName()
            : button                                             ? button->text()
            : group                                              ? group->title()
                                                                 : QString();
        QVERIFY2(!read.isEmpty(), qPrintable(widget->objectName()));
    }
    QCOMPARE(inputs, 19);
}

void SearchFormTest::theComboBoxesInsertNothingByThemselves()
{
    for (const char *name : {"maskCombo", "keyword1Combo", "keyword2Combo", "keyword3Combo"}) {
        QVERIFY(combo(name)->isEditable());
        QCOMPARE(combo(name)->insertPolicy(), QComboBox::NoInsert);
        // Nothing is completed into what is typed.
        QVERIFY(!combo(name)->completer());
    }
}

void SearchFormTest::theKeywordFieldIsTheSuitesLineEdit()
{
    QVERIFY(m_form->keyword1Edit());
    QCOMPARE(m_form->keyword1Combo()->lineEdit(), m_form->keyword1Edit());
    QCOMPARE(m_form->keyword1Combo(), combo("keyword1Combo"));
}

void SearchFormTest::theInputFieldsStandInTheirOrder()
{
    QStringList names;
    const QList<QWidget *> fields = m_form->inputFields();
    for (const QWidget *field : fields)
        names += field->objectName();
    QCOMPARE(names,
             (QStringList{QStringLiteral("pathEdit"), QStringLiteral("maskCombo"),
                          QStringLiteral("keyword1Combo"), QStringLiteral("keyword2Combo"),
                          QStringLiteral("keyword3Combo")}));
}

void SearchFormTest::tabGoesThroughTheFormInAFixedCycle()
{
    const QStringList cycle{QStringLiteral("pathEdit"),      QStringLiteral("btnPlus"),
                            QStringLiteral("maskCombo"),     QStringLiteral("keyword1Combo"),
                            QStringLiteral("btnKeyword1"),   QStringLiteral("btnCase"),
                            QStringLiteral("btnWord"),       QStringLiteral("btnRegexp"),
                            QStringLiteral("btnKeyword2"),   QStringLiteral("pushButton"),
                            QStringLiteral("extraGroup"),    QStringLiteral("useKeyword2"),
                            QStringLiteral("keyword2Combo"), QStringLiteral("lineDistance"),
                            QStringLiteral("keyword3Group"), QStringLiteral("keyword3Combo"),
                            QStringLiteral("subdirCheck"),   QStringLiteral("emptyFilesCheck"),
                            QStringLiteral("skippedCheck")};
    m_form->showExtraConditions(true);
    m_form->setExtraGroup(true);
    m_form->setKeyword3Group(true);
    show();
    m_form->pathEdit()->setFocus();
    const auto walk = [&cycle](Qt::Key key) {
        QStringList visited;
        for (int i = 0; i < cycle.size(); ++i) {
            visited += QApplication::focusWidget()->objectName();
            QTest::keyClick(QApplication::focusWidget(), key);
        }
        return visited;
    };
    const QStringList visited = walk(Qt::Key_Tab);
    QVERIFY2(visited == cycle, qPrintable(visited.join(QLatin1Char(' '))));
    QCOMPARE(QApplication::focusWidget(), m_form->pathEdit());
    QStringList back = walk(Qt::Key_Backtab);
    QCOMPARE(back.takeFirst(), QStringLiteral("pathEdit"));
    std::reverse(back.begin(), back.end());
    QVERIFY2(back == cycle.mid(1), qPrintable(back.join(QLatin1Char(' '))));
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

void SearchFormTest::theToggleIconsAreTheirFiles_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("on");
    QTest::addColumn<QString>("file");
    const auto row = [](const char *name, bool on, const char *file) {
        QTest::newRow(file) << QString::fromLatin1(name) << on << QString::fromLatin1(file);
    };
    row("btnCase", true, ":icon/AaOn.png");
    row("btnCase", false, ":icon/AaOff.png");
    row("btnWord", true, ":icon/WordOn.png");
    row("btnWord", false, ":icon/WordOff.png");
    row("btnRegexp", true, ":icon/[A-Z]On.png");
    row("btnRegexp", false, ":icon/[A-Z]Off.png");
}

void SearchFormTest::theToggleIconsAreTheirFiles()
{
    QFETCH(QString, name);
    QFETCH(bool, on);
    QFETCH(QString, file);
    QVERIFY2(QFile::exists(file), qPrintable(file));
    AppSettings &settings = AppSettings::instance();
    settings.caseinsensitive = settings.word = settings.regexp = on;
    m_form->showToggles();
    QCOMPARE(iconOf(name), imageOf(file));
}

void SearchFormTest::theOtherButtonsHaveIcons_data()
{
    addColumns({{"btnPlus", ":/icon/plus.png"},
                {"btnKeyword1", ":/icon/reenter.png"},
                {"btnKeyword2", ":/icon/conditions.png"}});
}

void SearchFormTest::theOtherButtonsHaveIcons()
{
    QFETCH(QString, name);
    QFETCH(QString, text);
    QVERIFY2(QFile::exists(text), qPrintable(text));
    QCOMPARE(iconOf(name), imageOf(text));
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
    QCOMPARE(button->toolTip(), plainConditionsTip());
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

void SearchFormTest::theInputFieldsHaveTheInputFont()
{
    const QFont font(QStringLiteral("DejaVu Sans Mono"), 17);
    AppSettings::instance().inputFont = font;
    m_form->applyLook();
    show();
    const QList<QWidget *> fields = m_form->inputFields();
    for (const QWidget *field : fields) {
        QCOMPARE(field->font().family(), font.family());
        QCOMPARE(field->font().pointSize(), 17);
        if (const auto *box = qobject_cast<const QComboBox *>(field)) {
            QCOMPARE(box->lineEdit()->font().family(), font.family());
            QCOMPARE(box->lineEdit()->font().pointSize(), 17);
        }
    }
}

void SearchFormTest::theKeywordFieldsHaveTheSettingsBackground()
{
    AppSettings::instance().paletteBase = QColor(0x12, 0x34, 0x56);
    m_form->applyLook();
    for (const char *name : {"keyword1Combo", "keyword2Combo", "keyword3Combo"})
        QCOMPARE(combo(name)->lineEdit()->styleSheet(),
                 QStringLiteral("QLineEdit{background-color:#123456;}"));
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

void SearchFormTest::thePathEditorShowsThreeLines()
{
    for (const int size : {9, 24}) {
        AppSettings::instance().inputFont = QFont(QStringLiteral("DejaVu Sans Mono"), size);
        m_form->applyLook();
        const auto *edit = part<QPlainTextEdit>("pathEdit");
        const int line = edit->fontMetrics().lineSpacing();
        QVERIFY(edit->maximumHeight() >= 3 * line);
        QVERIFY(edit->maximumHeight() < 4 * line);
    }
}

void SearchFormTest::theSearchButtonSaysWhatItDoes()
{
    const auto *button = part<QPushButton>("pushButton");
    m_form->setButton(SearchForm::Button::Abort);
    QCOMPARE(button->text(), QStringLiteral("中止"));
    m_form->setButton(SearchForm::Button::Displaying);
    QCOMPARE(button->text(), QStringLiteral("表示中..."));
    m_form->setButton(SearchForm::Button::Start);
    QCOMPARE(button->text(), QStringLiteral("検索開始"));
}

void SearchFormTest::theSearchButtonIsEnabledAndDisabled()
{
    const auto *button = part<QPushButton>("pushButton");
    QVERIFY(button->isEnabled());
    for (const bool enabled : {false, true}) {
        m_form->setButtonEnabled(enabled);
        QCOMPARE(button->isEnabled(), enabled);
    }
}

QTEST_MAIN(SearchFormTest)

#include "SearchFormTest.moc"
