#pragma once

#include "settings/dialogs/FontFields.h"
#include "settings/dialogs/OptionColours.h"

#include <QDialog>

#include <memory>
#include <vector>

QT_BEGIN_NAMESPACE
class QFrame;
class QPushButton;
namespace Ui {
class optionDialog;
}
QT_END_NAMESPACE

/// Edits the settings of AppSettings that a user changes: fonts, colours, marks,
/// limits, exclusions and the editor. Nothing is written back before the dialog
/// is accepted; saving and applying are the caller's. A changed palette is for
/// the next start, and the user is told so.
class optionDialog : public QDialog {
    Q_OBJECT

public slots:
    void on_pb_dark_clicked();
    void on_pb_editor_clicked();
    void on_pb_c01_clicked();
    void on_pb_c02_clicked();
    void on_pb_c03_clicked();
    void on_pb_c04_clicked();
    void on_pb_c05_clicked();
    void on_pb_c06_clicked();
    void on_pb_c07_clicked();
    void on_pb_c08_clicked();
    void on_pb_c09_clicked();
    void on_pb_c10_clicked();
    void on_pb_c11_clicked();
    void on_pb_c13_clicked();
    void on_pb_c14_clicked();
    void on_pb_c15_clicked();
    void on_pb_base_clicked();
    void on_pb_text_clicked();
    void on_pb_c17_clicked();

public:
    /// Runs the dialog; true when it was accepted. Not while a search runs: the
    /// engine's threads read some of the settings.
    static bool edit(QWidget *parent);

    explicit optionDialog(QWidget *parent = nullptr);
    ~optionDialog() override;

    /// Writes everything into AppSettings.
    void accept() override;

private:
    /// One colour on the form.
    struct ColourRow {
        OptionColours::Index index;
        QFrame *sample;
        QPushButton *button;
        /// What the label does not tell; may be null.
        const char *note;
    };

    std::vector<ColourRow> colourRows() const;
    void showMarks();
    void showEditorAndExclusions();
    void showColours();
    /// Invalid when nothing was chosen.
    QColor askForColour(OptionColours::Index index);
    void chooseColour(OptionColours::Index index);
    void storeFonts() const;
    void storeMarks() const;
    void storeEditorAndExclusions() const;

    std::unique_ptr<Ui::optionDialog> m_ui;
    OptionColours m_colours;
    // Of the search form, the result view and the preview.
    std::vector<FontFields> m_fonts;
};
