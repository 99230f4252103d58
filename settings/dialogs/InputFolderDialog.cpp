#include "settings/dialogs/InputFolderDialog.h"

#include "settings/AppSettings.h"
#include "settings/KeywordHistory.h"
#include "settings/ShownFont.h"
#include "settings/dialogs/AssistWindow.h"
#include "settings/dialogs/InputHistory.h"
#include "settings/dialogs/InputTableModel.h"
#include "settings/dialogs/prompts/UserPrompt.h"
#include "ui_InputFolderDialog.h"

#include <QFileInfo>
#include <QKeyEvent>
#include <QScopedValueRollback>
#include <QScreen>

const QString InputFolderDialog::kKeywordPurpose = QStringLiteral("Insert-Word");

bool InputFolderDialog::edit(QWidget *parent, QString &text, const QString &title,
                             const QString &purpose, const QString &directory)
{
    // A parent that goes while the dialog runs takes the dialog with it.
    const QPointer<InputFolderDialog> dialog =
        new InputFolderDialog(text, title, purpose, directory, parent);
    const bool accepted = dialog->exec() == QDialog::Accepted && dialog;
    if (accepted)
        text = dialog->finish();
    delete dialog.data();
    return accepted;
}

InputFolderDialog::InputFolderDialog(const QString &text, const QString &title,
                                     const QString &purpose, const QString &directory,
                                     QWidget *parent)
    : QDialog(parent)
    , m_ui(std::make_unique<Ui::InputFolderDialog>())
    , m_directory(directory)
    , m_helpName(title)
    , m_file(directory, purpose)
    , m_keywordMode(purpose == kKeywordPurpose)
{
    m_ui->setupUi(this);
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
    setWindowTitle(title);
    loadHistory();
    setUpTable();
    applyFont();
    applySize();
    m_ui->btnUp->setEnabled(false);
    m_ui->btnDown->setEnabled(false);
    m_ui->btnDel->setEnabled(false);
    startWith(text);
}

InputFolderDialog::~InputFolderDialog()
{
    delete m_help.data();
}

void InputFolderDialog::loadHistory()
{
    m_content = m_file.read();
    m_ui->chkCursorLast->setChecked(m_content.cursorLast);
    if (!m_keywordMode)
        m_content.history.removeDuplicates();
    else if (const auto &keywords = AppSettings::instance().keywordHistory)
        m_content.history = keywords->keywords();
    else
        m_content.history.clear();
}

void InputFolderDialog::setUpTable()
{
    m_model = std::make_unique<InputTableModel>(m_content.history);
    m_ui->tableView->setModel(m_model.get());
    connect(m_ui->tableView, &TableView::CurrentChanged, this,
            &InputFolderDialog::onCurrentChanged);
}

void InputFolderDialog::applyFont()
{
    const QFont font =
        ShownFont::bounded(m_content.font.value_or(AppSettings::instance().inputFont));
    setFont(font);
    m_ui->lineEdit->setFont(font);
    m_ui->tableView->setFont(font);

    constexpr int kRowSpacing = 4;
    QHeaderView *rows = m_ui->tableView->verticalHeader();
    const int rowHeight = QFontMetrics(font).lineSpacing() + kRowSpacing;
    rows->setMinimumSectionSize(rowHeight);
    rows->setDefaultSectionSize(rowHeight);
    rows->setSectionResizeMode(QHeaderView::Fixed);
}

void InputFolderDialog::applySize()
{
    // A large font needs more room than the form's own minimum.
    setMinimumSize(minimumSize().expandedTo(layout()->minimumSize()));
    QSize size = m_content.size;
    // The file may name a size that no memory holds.
    if (const QScreen *display = screen())
        size = size.boundedTo(display->availableSize());
    resize(size);
}

void InputFolderDialog::startWith(const QString &text)
{
    m_ui->lineEdit->setFocus();
    m_ui->lineEdit->installEventFilter(this);
    {
        const QSignalBlocker noFiltering(m_ui->lineEdit);
        m_ui->lineEdit->setText(text);
    }
    // There is no slot for a moved cursor; it filters like a changed text.
    connect(m_ui->lineEdit, &QLineEdit::cursorPositionChanged, this, [this] {
        if (!m_programmaticChange)
            filterRows();
    });
}

void InputFolderDialog::setVisible(bool visible)
{
    QDialog::setVisible(visible);
    if (!visible || m_cursorPlaced)
        return;
    // Not before: a dialog that comes up selects the whole text of its field.
    m_cursorPlaced = true;
    sendToField(Qt::Key_Right);
    if (!m_content.cursorLast)
        sendToField(Qt::Key_Home);
}

void InputFolderDialog::sendToField(int key)
{
    QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier);
    QCoreApplication::sendEvent(m_ui->lineEdit, &press);
}

QString InputFolderDialog::finish()
{
    QString text = m_ui->lineEdit->text();
    text.replace(QLatin1Char('\\'), QLatin1Char('/'));
    if (!m_keepOutOfHistory)
        learn(text);
    m_content.size = size();
    m_content.cursorLast = m_ui->chkCursorLast->isChecked();
    m_file.save(m_content);
    return text;
}

void InputFolderDialog::learn(const QString &text)
{
    if (text.trimmed().isEmpty())
        return;
    m_content.learn = true;
    m_content.history = InputHistory::learned(m_content.history, text, m_content.max);
    showAllRows();
    makeRowCurrent(0);
}

bool InputFolderDialog::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_ui->lineEdit && event->type() == QEvent::KeyPress)
        return handleFieldKey(*static_cast<QKeyEvent *>(event));
    return QDialog::eventFilter(watched, event);
}

bool InputFolderDialog::handleFieldKey(QKeyEvent &event)
{
    const Qt::KeyboardModifiers modifiers = event.modifiers() & ~Qt::KeypadModifier;
    switch (event.key()) {
    case Qt::Key_Escape:
        reject();
        return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        m_keepOutOfHistory = modifiers.testFlag(Qt::ShiftModifier);
        accept();
        return true;
    case Qt::Key_Delete:
        if (modifiers != Qt::ShiftModifier)
            return false;
        on_btnDel_clicked();
        return true;
    case Qt::Key_Up:
    case Qt::Key_Down:
        navigate(event);
        return true;
    default:
        return false;
    }
}

void InputFolderDialog::navigate(QKeyEvent &event)
{
    if (m_navigationStarted) {
        QCoreApplication::sendEvent(m_ui->tableView, &event);
        return;
    }
    m_navigationStarted = true;
    makeRowCurrent(0);
    // A row that was current already gives no notice.
    showRowInField(0);
}

void InputFolderDialog::onCurrentChanged(const QModelIndex &current, const QModelIndex &)
{
    if (!current.isValid())
        return;
    // Asked before the row's text comes in: the text moves the cursor.
    const bool unfiltered = m_ui->lineEdit->cursorPosition() == 0;
    showRowInField(current.row());
    if (unfiltered) {
        m_ui->btnUp->setEnabled(true);
        m_ui->btnDown->setEnabled(true);
    }
    if (!m_content.history.isEmpty())
        m_ui->btnDel->setEnabled(true);
}

void InputFolderDialog::showRowInField(int row)
{
    const QModelIndex index = m_model->index(row, 0);
    if (!index.isValid())
        return;
    const QScopedValueRollback<bool> guard(m_programmaticChange, true);
    const int cursor = m_ui->lineEdit->cursorPosition();
    m_ui->lineEdit->setText(index.data().toString());
    if (!m_ui->chkCursorLast->isChecked())
        m_ui->lineEdit->setCursorPosition(cursor);
}

void InputFolderDialog::makeRowCurrent(int row)
{
    const QModelIndex index = m_model->index(row, 0);
    if (index.isValid())
        m_ui->tableView->setCurrentIndex(index);
}

void InputFolderDialog::resetCurrentRow()
{
    const QSignalBlocker blocker(m_ui->tableView);
    m_ui->tableView->setCurrentIndex(QModelIndex());
}

void InputFolderDialog::showAllRows()
{
    resetCurrentRow();
    m_model->showAll();
}

void InputFolderDialog::filterRows()
{
    const int cursor = m_ui->lineEdit->cursorPosition();
    if (cursor == 0) {
        showAllRows();
        return;
    }
    resetCurrentRow();
    m_ui->btnUp->setEnabled(false);
    m_ui->btnDown->setEnabled(false);
    const InputHistory::Filter filter{m_ui->chkInstr->isChecked(), m_ui->chkCase->isChecked()};
    const QString key = m_ui->lineEdit->text().left(cursor);
    m_model->setRows(InputHistory::matchingRows(m_content.history, key, filter));
}

void InputFolderDialog::on_lineEdit_textChanged(const QString &)
{
    if (!m_programmaticChange)
        filterRows();
}

void InputFolderDialog::on_chkCase_clicked()
{
    filterRows();
}

void InputFolderDialog::on_chkInstr_clicked()
{
    filterRows();
}

void InputFolderDialog::on_okButton_accepted()
{
    accept();
}

void InputFolderDialog::on_tableView_doubleClicked(const QModelIndex &index)
{
    m_ui->tableView->setCurrentIndex(index);
    showRowInField(index.row());
    accept();
}

void InputFolderDialog::on_btnDel_clicked()
{
    const int entry = m_content.history.indexOf(m_ui->lineEdit->text());
    if (entry < 0)
        return;
    const int row = m_ui->tableView->currentIndex().row();
    m_content.history.removeAt(entry);
    showAllRows();
    makeRowCurrent(row);
    if (m_content.history.isEmpty())
        m_ui->btnDel->setEnabled(false);
}

int InputFolderDialog::currentEntry() const
{
    const QModelIndex current = m_ui->tableView->currentIndex();
    return current.isValid() ? m_content.history.indexOf(current.data().toString()) : -1;
}

void InputFolderDialog::on_btnUp_clicked()
{
    const int entry = currentEntry();
    if (!InputHistory::moveUp(m_content.history, entry))
        return;
    showAllRows();
    makeRowCurrent(entry - 1);
}

void InputFolderDialog::on_btnDown_clicked()
{
    const int entry = currentEntry();
    if (!InputHistory::moveDown(m_content.history, entry))
        return;
    showAllRows();
    makeRowCurrent(entry + 1);
}

void InputFolderDialog::on_btnClear_clicked()
{
    const QString text = m_ui->lineEdit->text();
    const QString start = text.isEmpty() ? QFileInfo(m_directory).path() : text;
    QString folder = UserPrompt::current().chooseFolder(
        this, QStringLiteral("フォルダを選択してください"), start);
    if (folder.isEmpty())
        return;
    if (!folder.endsWith(QLatin1Char('/')))
        folder.append(QLatin1Char('/'));
    m_ui->lineEdit->setText(folder);
}

void InputFolderDialog::on_btnHelp_clicked()
{
    if (m_help) {
        onAssistClose();
        return;
    }
    const QString file = AppSettings::instance().applicationDirectory() + QStringLiteral("input_")
        + m_helpName + QStringLiteral(".help");
    m_help = AssistWindow::open(file, this);
    if (m_help)
        connect(m_help, &AssistWindow::closeRequested, this, &InputFolderDialog::onAssistClose);
}

void InputFolderDialog::onAssistClose()
{
    if (m_help)
        m_help->deleteLater();
    m_help.clear();
}
