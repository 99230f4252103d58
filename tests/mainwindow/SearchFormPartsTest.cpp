#include "mainwindow/SearchForm.h"

#include "icon/Icons.h"
#include "mainwindow/KeywordEdit.h"
#include "tests/mainwindow/SearchFormFixture.h"
#include "tests/support/Patience.h"

#include <QFile>
#include <QGroupBox>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSignalSpy>

/// What stands in the form, how it is reached and how it looks.
class SearchFormPartsTest : public SearchFormFixture {
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();
    void cleanupTestCase();

    void theButtonsHaveTheirNames_data();
    void theButtonsHaveTheirNames();
    void theTextsAreThose_data();
    void theTextsAreThose();
    void theToolTipsAreThose_data();
    void theToolTipsAreThose();
    void thePathEditorSaysWhatAPathIs();
    void anEmptyFieldSaysWhatItTakes();
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
    void aNarrowFormHasItsSwitchesInRows();
    void tabGoesThroughTheFormInAFixedCycle();
    void theToggleIconsAreTheirFiles_data();
    void theToggleIconsAreTheirFiles();
    void theOtherButtonsHaveIcons_data();
    void theOtherButtonsHaveIcons();
    void theInputFieldsHaveTheInputFont();
    void theKeywordFieldsHaveTheSettingsBackground();
    void thePathEditorShowsThreeLines();
    void theSearchButtonSaysWhatItDoes();
    void theSearchButtonIsEnabledAndDisabled();
};

namespace {

void addColumns(std::initializer_list<std::pair<const char *, const char *>> rows)
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("text");
    for (const auto &row : rows)
        QTest::newRow(row.first) << QString::fromLatin1(row.first) << QString::fromUtf8(row.second);
}

} // namespace

void SearchFormPartsTest::initTestCase()
{
    Icons::load();
}

void SearchFormPartsTest::init()
{
    makeForm();
}

void SearchFormPartsTest::cleanup()
{
    m_form.reset();
}

void SearchFormPartsTest::cleanupTestCase()
{
    // The fading of a clear button outlives its field and deletes itself in the
    // end; a leak checker would find it before.
    QTest::qWait(500);
}

void SearchFormPartsTest::theButtonsHaveTheirNames_data()
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

void SearchFormPartsTest::theButtonsHaveTheirNames()
{
    QFETCH(QString, name);
    QFETCH(bool, checkable);
    const auto *button = m_form->findChild<QPushButton *>(name);
    QVERIFY(button);
    QCOMPARE(button->isCheckable(), checkable);
}

void SearchFormPartsTest::theTextsAreThose_data()
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

void SearchFormPartsTest::theTextsAreThose()
{
    QFETCH(QString, name);
    QFETCH(QString, text);
    const auto *widget = m_form->findChild<QWidget *>(name);
    QVERIFY(widget);
    const bool isGroup = qobject_cast<const QGroupBox *>(widget) != nullptr;
    QCOMPARE(widget->property(isGroup ? "title" : "text").toString(), text);
}

void SearchFormPartsTest::theToolTipsAreThose_data()
{
    addColumns({{"keyword3Group", "例）　ABC|XYZ 　ABCかXYZを含んでいたら除外する"},
                {"btnPlus", "検索パスを追加します"},
                {"btnKeyword1", "キーワード１を入れ直します"},
                {"btnKeyword2", "追加条件を表示します"},
                {"btnCase", "大文字／小文字を同一視します (Ctrl+Shift+O)"},
                {"btnWord", "単語の場合のみをヒットさせます (Ctrl+Shift+W)"},
                {"btnRegexp", "正規表現を使って検索します (Ctrl+Shift+R)"}});
}

void SearchFormPartsTest::theToolTipsAreThose()
{
    QFETCH(QString, name);
    QFETCH(QString, text);
    QCOMPARE(m_form->findChild<QWidget *>(name)->toolTip(), text);
}

void SearchFormPartsTest::thePathEditorSaysWhatAPathIs()
{
    QCOMPARE(m_form->pathEdit()->toolTip(),
             QStringLiteral("検索パスにはパス＋マスク指定をしてください。\n"
                            "￥マークは、／に置換されます。\n"
                            "\n"
                            "例） d:/savik/log/*.log  検索結果ログを grep します。"));
}

void SearchFormPartsTest::anEmptyFieldSaysWhatItTakes()
{
    QVERIFY(m_form->findChild<QPlainTextEdit *>(QStringLiteral("pathEdit"))
                ->placeholderText()
                .contains(QStringLiteral("フォルダ")));
    QVERIFY(m_form->findChild<QComboBox *>(QStringLiteral("maskCombo"))
                ->lineEdit()
                ->placeholderText()
                .contains(QStringLiteral("*.txt *.cpp")));
    QVERIFY(!m_form->keyword1Edit()->placeholderText().isEmpty());
    // It is no text: nothing is searched for it.
    QCOMPARE(m_form->state().pathText, QString());
    QCOMPARE(m_form->state().mask, QString());
    QCOMPARE(m_form->state().keyword1, QString());
}

void SearchFormPartsTest::theTogglesHaveShortcuts_data()
{
    addColumns(
        {{"btnCase", "Ctrl+Shift+O"}, {"btnWord", "Ctrl+Shift+W"}, {"btnRegexp", "Ctrl+Shift+R"}});
}

void SearchFormPartsTest::theTogglesHaveShortcuts()
{
    QFETCH(QString, name);
    QFETCH(QString, text);
    QCOMPARE(m_form->findChild<QAbstractButton *>(name)->shortcut(), QKeySequence(text));
}

void SearchFormPartsTest::aTogglesShortcutClicksIt()
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
    QTRY_COMPARE_WITH_TIMEOUT(cases.count(), 1, kPatienceMilliseconds);
    press(Qt::Key_W);
    QTRY_COMPARE_WITH_TIMEOUT(words.count(), 1, kPatienceMilliseconds);
    press(Qt::Key_R);
    QTRY_COMPARE_WITH_TIMEOUT(patterns.count(), 1, kPatienceMilliseconds);
    QCOMPARE(cases.count() + words.count(), 2);
}

void SearchFormPartsTest::aPressedToggleIsMarked_data()
{
    theTogglesHaveShortcuts_data();
}

void SearchFormPartsTest::aPressedToggleIsMarked()
{
    QFETCH(QString, name);
    QCOMPARE(m_form->findChild<QWidget *>(name)->styleSheet(),
             QStringLiteral("QPushButton:checked{ background-color: #884444; }"));
}

void SearchFormPartsTest::labelsLeadToTheirFields_data()
{
    addColumns({{"pathLabel", "pathEdit"},
                {"maskLabel", "maskCombo"},
                {"keyword1Label", "keyword1Combo"}});
}

void SearchFormPartsTest::labelsLeadToTheirFields()
{
    QFETCH(QString, name);
    QFETCH(QString, text);
    const auto *label = m_form->findChild<QLabel *>(name);
    QVERIFY(label && label->buddy());
    QCOMPARE(label->buddy()->objectName(), text);
}

void SearchFormPartsTest::everyInputHasANameForReaders()
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

void SearchFormPartsTest::theComboBoxesInsertNothingByThemselves()
{
    for (const char *name : {"maskCombo", "keyword1Combo", "keyword2Combo", "keyword3Combo"}) {
        QVERIFY(combo(name)->isEditable());
        QCOMPARE(combo(name)->insertPolicy(), QComboBox::NoInsert);
        // Nothing is completed into what is typed.
        QVERIFY(!combo(name)->completer());
    }
}

void SearchFormPartsTest::theKeywordFieldIsTheSuitesLineEdit()
{
    QVERIFY(m_form->keyword1Edit());
    QCOMPARE(m_form->keyword1Combo()->lineEdit(), m_form->keyword1Edit());
    QCOMPARE(m_form->keyword1Combo(), combo("keyword1Combo"));
}

void SearchFormPartsTest::theInputFieldsStandInTheirOrder()
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

/// As on a small screen on which everything is twice as large.
void SearchFormPartsTest::aNarrowFormHasItsSwitchesInRows()
{
    const auto box = [this](const char *name) {
        return m_form->findChild<QWidget *>(QLatin1String(name));
    };
    const auto top = [this, box](const char *name) {
        return box(name)->mapTo(m_form.get(), QPoint()).y();
    };
    m_form->resize(1200, 400);
    show();
    QCOMPARE(top("skippedCheck"), top("subdirCheck"));
    const int together = box("subdirCheck")->sizeHint().width()
        + box("emptyFilesCheck")->sizeHint().width() + box("skippedCheck")->sizeHint().width();
    m_form->resize(together, 400);
    QCoreApplication::processEvents();
    QCOMPARE(m_form->width(), together);
    QVERIFY(top("skippedCheck") >= top("subdirCheck") + box("subdirCheck")->height());
    for (const char *name : {"subdirCheck", "emptyFilesCheck", "skippedCheck"}) {
        QVERIFY2(box(name)->width() >= box(name)->sizeHint().width(), name);
        QVERIFY2(m_form->rect().contains(
                     QRect(box(name)->mapTo(m_form.get(), QPoint()), box(name)->size())),
                 name);
    }
}

void SearchFormPartsTest::tabGoesThroughTheFormInAFixedCycle()
{
    const QStringList cycle{QStringLiteral("pathEdit"),      QStringLiteral("maskCombo"),
                            QStringLiteral("keyword1Combo"), QStringLiteral("btnKeyword1"),
                            QStringLiteral("btnCase"),       QStringLiteral("btnWord"),
                            QStringLiteral("btnRegexp"),     QStringLiteral("btnKeyword2"),
                            QStringLiteral("pushButton"),    QStringLiteral("btnPlus"),
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

void SearchFormPartsTest::theToggleIconsAreTheirFiles_data()
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

void SearchFormPartsTest::theToggleIconsAreTheirFiles()
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

void SearchFormPartsTest::theOtherButtonsHaveIcons_data()
{
    addColumns({{"btnPlus", ":/icon/plus.png"},
                {"btnKeyword1", ":/icon/reenter.png"},
                {"btnKeyword2", ":/icon/conditions.png"}});
}

void SearchFormPartsTest::theOtherButtonsHaveIcons()
{
    QFETCH(QString, name);
    QFETCH(QString, text);
    QVERIFY2(QFile::exists(text), qPrintable(text));
    QCOMPARE(iconOf(name), imageOf(text));
}

void SearchFormPartsTest::theInputFieldsHaveTheInputFont()
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

void SearchFormPartsTest::theKeywordFieldsHaveTheSettingsBackground()
{
    AppSettings::instance().paletteBase = QColor(0x12, 0x34, 0x56);
    m_form->applyLook();
    for (const char *name : {"keyword1Combo", "keyword2Combo", "keyword3Combo"})
        QCOMPARE(combo(name)->lineEdit()->styleSheet(),
                 QStringLiteral("QLineEdit{background-color:#123456;}"));
}

void SearchFormPartsTest::thePathEditorShowsThreeLines()
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

void SearchFormPartsTest::theSearchButtonSaysWhatItDoes()
{
    const auto *button = part<QPushButton>("pushButton");
    m_form->setButton(SearchForm::Button::Abort);
    QCOMPARE(button->text(), QStringLiteral("中止"));
    m_form->setButton(SearchForm::Button::Displaying);
    QCOMPARE(button->text(), QStringLiteral("表示中..."));
    m_form->setButton(SearchForm::Button::Start);
    QCOMPARE(button->text(), QStringLiteral("検索開始"));
}

void SearchFormPartsTest::theSearchButtonIsEnabledAndDisabled()
{
    const auto *button = part<QPushButton>("pushButton");
    QVERIFY(button->isEnabled());
    for (const bool enabled : {false, true}) {
        m_form->setButtonEnabled(enabled);
        QCOMPARE(button->isEnabled(), enabled);
    }
}

QTEST_MAIN(SearchFormPartsTest)

#include "SearchFormPartsTest.moc"
