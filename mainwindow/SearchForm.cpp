#include "mainwindow/SearchForm.h"

#include "mainwindow/DropDown.h"
#include "mainwindow/FlowLayout.h"
#include "mainwindow/KeywordEdit.h"
#include "mainwindow/KeywordValidity.h"
#include "mainwindow/PastedLine.h"
#include "settings/AppSettings.h"
#include "settings/KeywordHistory.h"
#include "settings/ShownFont.h"

#include "ui_SearchForm.h"

#include <QEvent>
#include <QLineEdit>

namespace {

constexpr int kPathLines = 3;
constexpr int kExampleOpacity = 160; // of 255

QIcon toggleIcon(const char *name, bool on)
{
    return QIcon(QStringLiteral(":icon/%1%2.png")
                     .arg(QLatin1String(name), on ? QLatin1String("On") : QLatin1String("Off")));
}

void showToggle(QAbstractButton *button, const char *name, bool on)
{
    button->setChecked(on);
    button->setIcon(toggleIcon(name, on));
}

} // namespace

SearchForm::SearchForm(QWidget *parent) : QWidget(parent), m_ui(std::make_unique<Ui::SearchForm>())
{
    m_ui->setupUi(this);
    buildKeywordFields();
    buildExamples();
    buildButtons();
    buildSwitches();
    showExtraConditions(false);
}

SearchForm::~SearchForm() = default;

void SearchForm::buildKeywordFields()
{
    m_keyword1 = new KeywordEdit(m_ui->keyword1Combo);
    // A new widget stands last in the chain of the focus: Shift+Tab would come here
    // from the first field and go round the upper half of the form for ever. Done before
    // the combo box becomes its proxy, which would be moved in its place.
    setTabOrder(m_ui->keyword1Combo, m_keyword1);
    m_ui->keyword1Combo->setLineEdit(m_keyword1);
    // The field's own completion would fight with the one over the history.
    for (QComboBox *combo : combos()) {
        combo->setCompleter(nullptr);
        new PastedLine(combo->lineEdit());
        connect(combo, &QComboBox::editTextChanged, this, &SearchForm::showValidity);
    }
    m_maskList = new DropDown(m_ui->maskCombo);
    m_keyword1List = new DropDown(m_ui->keyword1Combo);
    m_keyword2List = new DropDown(m_ui->keyword2Combo);
    m_keyword3List = new DropDown(m_ui->keyword3Combo);
    // It would put a past keyword in the place of one that differs in case only.
    disconnect(m_keyword1, &QLineEdit::editingFinished, m_ui->keyword1Combo, nullptr);
    disconnect(m_keyword1, &QLineEdit::returnPressed, m_ui->keyword1Combo, nullptr);
    connect(m_keyword1, &KeywordEdit::completionChosen, this, &SearchForm::pastKeywordChosen);
    connect(m_ui->keyword1Combo, QOverload<int>::of(&QComboBox::activated), this,
            [this](int index) { emit pastKeywordChosen(m_ui->keyword1Combo->itemText(index)); });
    m_ui->keyword3Group->setEnabled(true);
    m_ui->keyword3Group->installEventFilter(this);
    connect(m_ui->extraGroup, &QGroupBox::toggled, this, &SearchForm::showHiddenConditions);
    connect(m_ui->keyword3Group, &QGroupBox::toggled, this, &SearchForm::showHiddenConditions);
}

/// Keyword 3 has a switch of its own and stays in force without the others. A
/// group that is not checked disables what is in it on several occasions, as when
/// it is shown for the first time.
bool SearchForm::eventFilter(QObject *watched, QEvent *event)
{
    QGroupBox *group = m_ui->keyword3Group;
    if (watched == group && event->type() == QEvent::EnabledChange && !group->isEnabled()
        && m_ui->extraGroup->isEnabled())
        group->setEnabled(true);
    return QWidget::eventFilter(watched, event);
}

void SearchForm::buildButtons()
{
    m_ui->btnPlus->setIcon(QIcon(QStringLiteral(":/icon/plus.png")));
    m_ui->btnKeyword1->setIcon(QIcon(QStringLiteral(":/icon/reenter.png")));
    m_ui->btnKeyword2->setIcon(QIcon(QStringLiteral(":/icon/conditions.png")));
}

/// In one row where there is room: their texts are long.
void SearchForm::buildSwitches()
{
    constexpr int kGap = 12;
    auto *row = new FlowLayout(kGap, m_ui->formLayout->verticalSpacing(), m_ui->switchRow);
    for (QCheckBox *box : {m_ui->subdirCheck, m_ui->emptyFilesCheck, m_ui->skippedCheck})
        row->addWidget(box);
}

QList<QComboBox *> SearchForm::combos() const
{
    return {m_ui->maskCombo, m_ui->keyword1Combo, m_ui->keyword2Combo, m_ui->keyword3Combo};
}

FormState SearchForm::state() const
{
    const AppSettings &settings = AppSettings::instance();
    FormState state;
    state.pathText = m_ui->pathEdit->text();
    state.mask = m_ui->maskCombo->currentText();
    state.keyword1 = m_ui->keyword1Combo->currentText();
    state.extraGroup = m_ui->extraGroup->isChecked();
    state.useKeyword2 = m_ui->useKeyword2->isChecked();
    state.keyword2 = m_ui->keyword2Combo->currentText();
    state.lineDistance = m_ui->lineDistance->value();
    state.keyword3Group = m_ui->keyword3Group->isChecked();
    state.keyword3 = m_ui->keyword3Combo->currentText();
    state.subdir = m_ui->subdirCheck->isChecked();
    state.emptyFiles = m_ui->emptyFilesCheck->isChecked();
    state.skipped = m_ui->skippedCheck->isChecked();
    state.ignoreCase = settings.caseinsensitive;
    state.word = settings.word;
    state.regexp = settings.regexp;
    return state;
}

void SearchForm::setPathLines(const QStringList &lines)
{
    m_ui->pathEdit->setLines(lines);
}

void SearchForm::addPathLine(const QString &path)
{
    m_ui->pathEdit->addLine(path);
}

void SearchForm::setMask(const QString &mask)
{
    m_maskList->showText(mask);
}

void SearchForm::setKeyword1(const QString &keyword)
{
    m_keyword1List->showText(keyword);
}

void SearchForm::setKeyword2(const QString &keyword)
{
    m_keyword2List->showText(keyword);
}

void SearchForm::setKeyword3(const QString &keyword)
{
    m_keyword3List->showText(keyword);
}

void SearchForm::setUseKeyword2(bool use)
{
    m_ui->useKeyword2->setChecked(use);
}

void SearchForm::setExtraGroup(bool checked)
{
    m_ui->extraGroup->setChecked(checked);
}

void SearchForm::setKeyword3Group(bool checked)
{
    m_ui->keyword3Group->setChecked(checked);
}

void SearchForm::setLineDistance(int lines)
{
    m_ui->lineDistance->setValue(lines);
}

void SearchForm::setSubdir(bool checked)
{
    m_ui->subdirCheck->setChecked(checked);
}

void SearchForm::loadSwitches()
{
    const AppSettings &settings = AppSettings::instance();
    m_ui->subdirCheck->setChecked(settings.subdir);
    m_ui->emptyFilesCheck->setChecked(settings.fname);
    m_ui->skippedCheck->setChecked(settings.warningmsg);
}

void SearchForm::showToggles()
{
    const AppSettings &settings = AppSettings::instance();
    showToggle(m_ui->btnCase, "Aa", settings.caseinsensitive);
    showToggle(m_ui->btnWord, "Word", settings.word);
    showToggle(m_ui->btnRegexp, "[A-Z]", settings.regexp);
    showValidity();
}

void SearchForm::fillMasks()
{
    m_maskList->setItems(PastedLine::singleLines(AppSettings::instance().maskhistory));
}

void SearchForm::fillKeywords1()
{
    const QStringList keywords = AppSettings::instance().keywordHistory->keywords();
    m_keyword1List->setItems(PastedLine::singleLines(keywords));
}

void SearchForm::fillKeywords2()
{
    m_keyword2List->setItems(PastedLine::singleLines(AppSettings::instance().history2));
}

void SearchForm::applyLook()
{
    const QFont font = ShownFont::bounded(AppSettings::instance().inputFont);
    m_ui->pathEdit->setFont(font);
    for (QComboBox *combo : combos()) {
        combo->setFont(font);
        combo->lineEdit()->setFont(font);
    }
    setUpPathEdit();
    colourExamples();
    showValidity();
}

void SearchForm::buildExamples()
{
    m_ui->pathEdit->setPlaceholderText(
        QStringLiteral("検索するフォルダを１行に１つ（ここへドロップもできます）"));
    m_ui->maskCombo->lineEdit()->setPlaceholderText(QStringLiteral("例: *.txt *.cpp"));
    m_keyword1->setPlaceholderText(QStringLiteral("探す文字列"));
}

/// Fainter than a text, but to be read. The toolkit's own colour is that of the
/// palette it was started with, which nobody sees on another.
void SearchForm::colourExamples()
{
    const QList<QWidget *> fields{m_ui->pathEdit, m_ui->maskCombo->lineEdit(), m_keyword1};
    for (QWidget *field : fields) {
        QColor faint = field->palette().color(QPalette::Text);
        faint.setAlpha(kExampleOpacity);
        // This colour alone; the others go on following the program's.
        QPalette colours;
        colours.setColor(QPalette::PlaceholderText, faint);
        field->setPalette(colours);
    }
}

void SearchForm::setUpPathEdit()
{
    const QPlainTextEdit *edit = m_ui->pathEdit;
    const int lines = kPathLines * edit->fontMetrics().lineSpacing();
    const int margins = 2 * (edit->frameWidth() + qRound(edit->document()->documentMargin()));
    m_ui->pathEdit->setFixedHeight(lines + margins);
}

void SearchForm::showValidity()
{
    const AppSettings &settings = AppSettings::instance();
    const KeywordValidity::Look look{settings.paletteBase, settings.regexp};
    KeywordValidity::show(m_keyword1, look);
    KeywordValidity::show(m_ui->keyword2Combo->lineEdit(), look);
    KeywordValidity::show(m_ui->keyword3Combo->lineEdit(), look);
}

void SearchForm::showExtraConditions(bool shown)
{
    m_ui->btnKeyword2->setChecked(shown);
    m_ui->extraGroup->setVisible(shown);
    m_ui->keyword3Group->setVisible(shown);
    showHiddenConditions();
}

/// A condition that is in force and out of sight would puzzle whoever misses a
/// hit.
void SearchForm::showHiddenConditions()
{
    const bool inForce = m_ui->extraGroup->isChecked() || m_ui->keyword3Group->isChecked();
    const bool hidden = !m_ui->btnKeyword2->isChecked();
    m_ui->btnKeyword2->setIcon(QIcon(inForce && hidden
                                         ? QStringLiteral(":/icon/conditionsInForce.png")
                                         : QStringLiteral(":/icon/conditions.png")));
    if (hidden && inForce)
        m_ui->btnKeyword2->setToolTip(
            QStringLiteral("追加条件が有効です。クリックすると表示します"));
    else if (hidden)
        m_ui->btnKeyword2->setToolTip(QStringLiteral("追加条件を表示します"));
    else
        m_ui->btnKeyword2->setToolTip(QStringLiteral("追加条件を隠します"));
}

void SearchForm::setButton(Button button)
{
    switch (button) {
    case Button::Start:
        m_ui->pushButton->setText(QStringLiteral("検索開始"));
        break;
    case Button::Abort:
        m_ui->pushButton->setText(QStringLiteral("中止"));
        break;
    case Button::Displaying:
        m_ui->pushButton->setText(QStringLiteral("表示中..."));
        break;
    }
}

bool SearchForm::isButtonFocused() const
{
    return m_ui->pushButton->hasFocus();
}

void SearchForm::setButtonEnabled(bool enabled)
{
    m_ui->pushButton->setEnabled(enabled);
}

void SearchForm::selectKeyword1()
{
    m_keyword1->selectAll();
    m_keyword1->setFocus();
}

QList<QWidget *> SearchForm::inputFields() const
{
    return {m_ui->pathEdit, m_ui->maskCombo, m_ui->keyword1Combo, m_ui->keyword2Combo,
            m_ui->keyword3Combo};
}

QComboBox *SearchForm::keyword1Combo() const
{
    return m_ui->keyword1Combo;
}

PathEdit *SearchForm::pathEdit() const
{
    return m_ui->pathEdit;
}

QAbstractButton *SearchForm::caseButton() const
{
    return m_ui->btnCase;
}

QAbstractButton *SearchForm::wordButton() const
{
    return m_ui->btnWord;
}

QAbstractButton *SearchForm::regexpButton() const
{
    return m_ui->btnRegexp;
}
