#pragma once

#include <QDialog>

#include <memory>

QT_BEGIN_NAMESPACE
namespace Ui {
class findDialog;
}
QT_END_NAMESPACE

/// Asks for a text to find and for the three switches of finding. The texts of
/// before and the switches are those of AppSettings; an accepted dialog puts
/// both back there, in memory.
class findDialog : public QDialog {
    Q_OBJECT

public:
    /// A request for a find in the files is titled "Grep", every other "Find".
    static constexpr int kGrepMode = 1;

    /// Runs the dialog. True when it was accepted: text is then what was entered,
    /// blanks and all. Otherwise neither text nor a setting changes.
    static bool ask(int mode, QString &text, QWidget *parent);

    explicit findDialog(int mode, QWidget *parent = nullptr);
    ~findDialog() override;

    /// What stands in the field.
    QString text() const;

    /// Stores the switches and the text in AppSettings.
    void accept() override;

private:
    void setUpKeyword();
    void keepTypedCase();

    std::unique_ptr<Ui::findDialog> m_ui;
};
