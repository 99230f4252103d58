#pragma once

#include "mainwindow/FormState.h"

#include <QList>
#include <QWidget>

#include <memory>

class DropDown;
class KeywordEdit;
class PathEdit;

QT_BEGIN_NAMESPACE
class QAbstractButton;
class QComboBox;
namespace Ui {
class SearchForm;
}
QT_END_NAMESPACE

/// The upper part of the window: search paths, mask, keywords, switches and the
/// search button. Shows and gives back what is searched; what a click does is
/// decided by the window. The three matching toggles and the histories are those
/// of AppSettings.
class SearchForm : public QWidget {
    Q_OBJECT

signals:
    /// A past keyword was chosen from the drop-down of keyword 1 or from its
    /// completions.
    void pastKeywordChosen(const QString &keyword);

public:
    /// What the search button says.
    enum class Button { Start, Abort, Displaying };

    explicit SearchForm(QWidget *parent = nullptr);
    ~SearchForm() override;

    FormState state() const;

    void setPathLines(const QStringList &lines);
    void addPathLine(const QString &path);
    void setMask(const QString &mask);
    void setKeyword1(const QString &keyword);
    void setKeyword2(const QString &keyword);
    void setKeyword3(const QString &keyword);
    void setUseKeyword2(bool use);
    void setExtraGroup(bool checked);
    void setKeyword3Group(bool checked);
    void setLineDistance(int lines);
    void setSubdir(bool checked);

    /// Takes the check boxes' states from AppSettings.
    void loadSwitches();
    /// Shows the three toggles as AppSettings has them.
    void showToggles();
    /// Fill the drop-downs from the histories, but for entries of several lines; the
    /// texts in the fields stay, with their cursors and selections. A list that is shown
    /// is filled when it is closed.
    void fillMasks();
    void fillKeywords1();
    void fillKeywords2();
    /// Gives the input fields the input font and colours of AppSettings.
    void applyLook();

    /// Shows or hides the extra conditions.
    void showExtraConditions(bool shown);
    void setButton(Button button);
    bool isButtonFocused() const;
    void setButtonEnabled(bool enabled);
    /// Puts the focus there, with all of the text selected.
    void selectKeyword1();

    /// The five input fields, top to bottom: the widgets that have the focus
    /// when one types there.
    QList<QWidget *> inputFields() const;
    QComboBox *keyword1Combo() const;
    KeywordEdit *keyword1Edit() const { return m_keyword1; }
    PathEdit *pathEdit() const;
    QAbstractButton *caseButton() const;
    QAbstractButton *wordButton() const;
    QAbstractButton *regexpButton() const;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void buildKeywordFields();
    void buildExamples();
    void buildButtons();
    void buildSwitches();
    void setUpPathEdit();
    void colourExamples();
    void showValidity();
    void showHiddenConditions();
    QList<QComboBox *> combos() const;

    std::unique_ptr<Ui::SearchForm> m_ui;
    KeywordEdit *m_keyword1 = nullptr;
    DropDown *m_maskList = nullptr;
    DropDown *m_keyword1List = nullptr;
    DropDown *m_keyword2List = nullptr;
    DropDown *m_keyword3List = nullptr;
};
