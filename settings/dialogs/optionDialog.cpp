#include "settings/dialogs/optionDialog.h"

#include "settings/AppSettings.h"
#include "settings/dialogs/NumberField.h"
#include "settings/dialogs/prompts/UserPrompt.h"
#include "ui_optionDialog.h"

#include <QPointer>

#include <algorithm>

namespace {

const QString kSeparator = QStringLiteral(", ");

QStringList entriesOf(const QLineEdit &field)
{
    return field.text().split(kSeparator, Qt::SkipEmptyParts);
}

} // namespace

bool optionDialog::edit(QWidget *parent)
{
    // A parent that goes while the dialog runs takes the dialog with it.
    const QPointer<optionDialog> dialog = new optionDialog(parent);
    const bool accepted = dialog->exec() == QDialog::Accepted && dialog;
    delete dialog.data();
    return accepted;
}

optionDialog::optionDialog(QWidget *parent)
    : QDialog(parent)
    , m_ui(std::make_unique<Ui::optionDialog>())
    , m_colours(AppSettings::instance())
{
    m_ui->setupUi(this);
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
    const AppSettings &settings = AppSettings::instance();
    m_fonts = {{m_ui->font1, m_ui->fontsize1, m_ui->ckbox1, settings.inputFont},
               {m_ui->font2, m_ui->fontsize2, m_ui->ckbox2, settings.grepFont},
               {m_ui->font3, m_ui->fontsize3, m_ui->ckbox3, settings.textFont}};
    showColours();
    showEditorAndExclusions();
    showMarks();
}

optionDialog::~optionDialog() = default;

void optionDialog::showEditorAndExclusions()
{
    const AppSettings &settings = AppSettings::instance();
    m_ui->le_editor->setText(settings.editor);
    m_ui->le_editor_para->setText(settings.editor_para);
    m_ui->le_excusiondir->setText(settings.excusiondir.join(kSeparator));
    m_ui->le_excusionfile->setText(settings.excusionfile.join(kSeparator));
}

void optionDialog::showMarks()
{
    const AppSettings &settings = AppSettings::instance();
    NumberField::show(*m_ui->prvtabpix, settings.tabcolm);
    NumberField::show(*m_ui->bigsize, settings.bigsize);
    NumberField::show(*m_ui->codechksize, settings.codechksize);
    m_ui->chk_zenspc->setChecked(settings.zenspc);
    // One box for two settings: the third state stands for "differ, and stay so".
    m_ui->chk_tabcr->setTristate(settings.tab != settings.cr);
    m_ui->chk_tabcr->setCheckState(settings.tab != settings.cr ? Qt::PartiallyChecked
                                       : settings.tab          ? Qt::Checked
                                                               : Qt::Unchecked);
}

std::vector<optionDialog::ColourRow> optionDialog::colourRows() const
{
    const char *const thisRunOnly = "次回起動時に元に戻ります";
    const char *const unused = "このプログラムでは表示に使いません";
    return {
        {OptionColours::PaletteWindow, m_ui->sample_base, m_ui->pb_base, nullptr},
        {OptionColours::PaletteWindowText, m_ui->sample_text, m_ui->pb_text, nullptr},
        {OptionColours::Background, m_ui->sample_c01, m_ui->pb_c01, nullptr},
        {OptionColours::Text, m_ui->sample_c02, m_ui->pb_c02, nullptr},
        {OptionColours::Cursor, m_ui->sample_c03, m_ui->pb_c03, nullptr},
        {OptionColours::SelectionBackground, m_ui->sample_c04, m_ui->pb_c04, nullptr},
        {OptionColours::SelectionText, m_ui->sample_c05, m_ui->pb_c05, nullptr},
        {OptionColours::Comment, m_ui->sample_c06, m_ui->pb_c06, nullptr},
        {OptionColours::Find1, m_ui->sample_c07, m_ui->pb_c07, "検索したキーワードの目印の色です"},
        {OptionColours::ReservedWord, m_ui->sample_c08, m_ui->pb_c08, nullptr},
        {OptionColours::Literal, m_ui->sample_c09, m_ui->pb_c09, nullptr},
        {OptionColours::LineNumberText, m_ui->sample_c10, m_ui->pb_c10, unused},
        {OptionColours::Value, m_ui->sample_c11, m_ui->pb_c11, nullptr},
        {OptionColours::Class, m_ui->sample_c13, m_ui->pb_c13,
         "このプログラムでは表示に使わず、次回起動時に元に戻ります"},
        {OptionColours::Control, m_ui->sample_c14, m_ui->pb_c14, nullptr},
        {OptionColours::FileName, m_ui->sample_c15, m_ui->pb_c15, thisRunOnly},
        {OptionColours::LineNumberBackground, m_ui->sample_c17, m_ui->pb_c17, unused},
    };
}

void optionDialog::showColours()
{
    for (const ColourRow &row : colourRows()) {
        const QString name = m_colours[row.index].name();
        row.sample->setStyleSheet(QStringLiteral("QWidget {background-color: %1;}").arg(name));
        QStringList tip{name};
        if (row.note)
            tip.append(QString::fromUtf8(row.note));
        if (AppSettings::instance().coloursAreEditors())
            tip.append(QStringLiteral("sarvedit の色が優先され、次回起動時に元に戻ります"));
        row.button->setToolTip(tip.join(QLatin1Char('\n')));
        // A sample says nothing to those who do not see it.
        row.button->setAccessibleDescription(tip.join(QLatin1Char(' ')));
    }
}

QColor optionDialog::askForColour(OptionColours::Index index)
{
    const auto rows = colourRows();
    const auto row = std::find_if(rows.begin(), rows.end(),
                                  [index](const ColourRow &each) { return each.index == index; });
    // The button's own text is the same on every row.
    const QString title = row == rows.end() ? QString() : row->button->accessibleName();
    return UserPrompt::current().chooseColour(this, title, m_colours[index]);
}

void optionDialog::chooseColour(OptionColours::Index index)
{
    const QColor chosen = askForColour(index);
    if (!chosen.isValid())
        return;
    m_colours[index] = chosen;
    showColours();
}

void optionDialog::on_pb_dark_clicked()
{
    m_colours.setDark();
    showColours();
}

void optionDialog::on_pb_editor_clicked()
{
    const QString file = UserPrompt::current().chooseFile(
        this, QStringLiteral("エディタを選択してください"), m_ui->le_editor->text(),
        QStringLiteral("Exe Files (*.exe);;All Files (*)"));
    if (!file.isEmpty())
        m_ui->le_editor->setText(file);
}

void optionDialog::on_pb_c01_clicked()
{
    chooseColour(OptionColours::Background);
}

void optionDialog::on_pb_c02_clicked()
{
    chooseColour(OptionColours::Text);
}

void optionDialog::on_pb_c03_clicked()
{
    chooseColour(OptionColours::Cursor);
}

void optionDialog::on_pb_c04_clicked()
{
    chooseColour(OptionColours::SelectionBackground);
}

void optionDialog::on_pb_c05_clicked()
{
    chooseColour(OptionColours::SelectionText);
}

void optionDialog::on_pb_c06_clicked()
{
    chooseColour(OptionColours::Comment);
}

void optionDialog::on_pb_c07_clicked()
{
    chooseColour(OptionColours::Find1);
}

void optionDialog::on_pb_c08_clicked()
{
    chooseColour(OptionColours::ReservedWord);
}

void optionDialog::on_pb_c09_clicked()
{
    chooseColour(OptionColours::Literal);
}

void optionDialog::on_pb_c10_clicked()
{
    chooseColour(OptionColours::LineNumberText);
}

void optionDialog::on_pb_c11_clicked()
{
    chooseColour(OptionColours::Value);
}

void optionDialog::on_pb_c13_clicked()
{
    chooseColour(OptionColours::Class);
}

void optionDialog::on_pb_c14_clicked()
{
    chooseColour(OptionColours::Control);
}

void optionDialog::on_pb_c15_clicked()
{
    chooseColour(OptionColours::FileName);
}

void optionDialog::on_pb_base_clicked()
{
    const QColor chosen = askForColour(OptionColours::PaletteWindow);
    if (!chosen.isValid())
        return;
    m_colours.setPaletteBackground(chosen);
    showColours();
}

void optionDialog::on_pb_text_clicked()
{
    const QColor chosen = askForColour(OptionColours::PaletteWindowText);
    if (!chosen.isValid())
        return;
    m_colours.setPaletteText(chosen);
    showColours();
}

void optionDialog::on_pb_c17_clicked()
{
    chooseColour(OptionColours::LineNumberBackground);
}

void optionDialog::accept()
{
    AppSettings &settings = AppSettings::instance();
    m_colours.storeEditorColours(settings);
    if (m_colours.storePaletteColours(settings)) {
        UserPrompt::current().message(this,
                                      {QMessageBox::Information, QStringLiteral("Palette Change"),
                                       QStringLiteral("色の変更は次回プログラム起動で有効です")});
    }
    storeFonts();
    storeMarks();
    storeEditorAndExclusions();
    QDialog::accept();
}

void optionDialog::storeFonts() const
{
    AppSettings &settings = AppSettings::instance();
    settings.inputFont = m_fonts[0].font();
    settings.inputFontCopy = settings.inputFont;
    settings.grepFont = m_fonts[1].font();
    settings.textFont = m_fonts[2].font();
}

void optionDialog::storeMarks() const
{
    AppSettings &settings = AppSettings::instance();
    settings.tabcolm = m_ui->prvtabpix->value();
    settings.zenspc = m_ui->chk_zenspc->isChecked();
    settings.bigsize = m_ui->bigsize->value();
    settings.codechksize = m_ui->codechksize->value();
    if (m_ui->chk_tabcr->checkState() != Qt::PartiallyChecked) {
        settings.tab = m_ui->chk_tabcr->isChecked();
        settings.cr = settings.tab;
    }
}

void optionDialog::storeEditorAndExclusions() const
{
    AppSettings &settings = AppSettings::instance();
    settings.editor = m_ui->le_editor->text();
    settings.editor_para = m_ui->le_editor_para->text();
    settings.excusiondir = entriesOf(*m_ui->le_excusiondir);
    settings.excusionfile = entriesOf(*m_ui->le_excusionfile);
}
