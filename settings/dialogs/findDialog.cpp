#include "settings/dialogs/findDialog.h"

#include "settings/AppSettings.h"
#include "settings/HistoryList.h"
#include "settings/ShownFont.h"
#include "settings/dialogs/ClickThrough.h"
#include "settings/dialogs/LongEntries.h"
#include "ui_findDialog.h"

#include <QCompleter>
#include <QLineEdit>
#include <QPointer>

bool findDialog::ask(int mode, QString &text, QWidget *parent)
{
    // A parent that goes while the dialog runs takes the dialog with it.
    const QPointer<findDialog> dialog = new findDialog(mode, parent);
    const bool accepted = dialog->exec() == QDialog::Accepted && dialog;
    if (accepted)
        text = dialog->text();
    delete dialog.data();
    return accepted;
}

findDialog::findDialog(int mode, QWidget *parent)
    : QDialog(parent), m_ui(std::make_unique<Ui::findDialog>())
{
    m_ui->setupUi(this);
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
    if (mode == kGrepMode)
        setWindowTitle(QStringLiteral("Grep"));

    const AppSettings &settings = AppSettings::instance();
    m_ui->chk_fcase->setChecked(settings.findcase);
    m_ui->chk_fword->setChecked(settings.findword);
    m_ui->chk_fregexp->setChecked(settings.findregexp);
    setUpKeyword();
    // A large font needs more room than the form's own minimum.
    setMinimumSize(minimumSize().expandedTo(layout()->minimumSize()));
}

findDialog::~findDialog() = default;

void findDialog::setUpKeyword()
{
    const AppSettings &settings = AppSettings::instance();
    QComboBox *combo = m_ui->le_keyword;
    combo->clear();
    combo->addItems(settings.keyhistory);
    combo->setFocus();

    auto *completer = new QCompleter(settings.keyhistory, this);
    completer->setCompletionMode(QCompleter::PopupCompletion);
    completer->setCaseSensitivity(Qt::CaseInsensitive);
    QLineEdit *field = combo->lineEdit();
    field->setCompleter(completer);
    new ClickThrough(completer);
    LongEntries::shortenIn(combo);
    LongEntries::shortenIn(completer);
    field->selectAll();
    // The box as well, so that it is high enough for its field.
    const QFont font = ShownFont::bounded(settings.inputFont);
    combo->setFont(font);
    field->setFont(font);
    keepTypedCase();
    // While completions are shown, Return closes them and goes no further. Without
    // them it comes twice: the box gives its field every key that the field left.
    connect(field, &QLineEdit::returnPressed, this, [this] {
        if (isVisible())
            accept();
    });
}

/// With a completer that ignores case, a combo box replaces a text by an entry
/// that differs from it in case only, when editing ends. The text is to be found
/// as it was typed.
void findDialog::keepTypedCase()
{
    QComboBox *combo = m_ui->le_keyword;
    disconnect(combo->lineEdit(), &QLineEdit::editingFinished, combo, nullptr);
    disconnect(combo->lineEdit(), &QLineEdit::returnPressed, combo, nullptr);
}

QString findDialog::text() const
{
    return m_ui->le_keyword->currentText();
}

void findDialog::accept()
{
    AppSettings &settings = AppSettings::instance();
    settings.findcase = m_ui->chk_fcase->isChecked();
    settings.findword = m_ui->chk_fword->isChecked();
    settings.findregexp = m_ui->chk_fregexp->isChecked();
    HistoryList::insert(settings.keyhistory, text());
    QDialog::accept();
}
