#pragma once

#include <QColor>
#include <QMessageBox>
#include <QString>

/// The toolkit's ready-made questions: message boxes, file choosers and the
/// colour chooser. Everything that asks the user goes through current(), so that
/// a test can answer in the user's place; every call blocks until the answer is
/// there. User interface thread only.
class UserPrompt {
public:
    struct Message {
        QMessageBox::Icon icon = QMessageBox::NoIcon;
        QString title;
        QString text;
        QMessageBox::StandardButtons buttons = QMessageBox::Ok;
        QMessageBox::StandardButton defaultButton = QMessageBox::NoButton;
    };

    UserPrompt() = default;
    virtual ~UserPrompt();
    UserPrompt(const UserPrompt &) = delete;
    UserPrompt &operator=(const UserPrompt &) = delete;

    /// The one that replace() named last, or the toolkit's own.
    static UserPrompt &current();

    /// For tests: from now on this one answers, or the toolkit's own when it is
    /// null. It belongs to the caller. Returns the one that answered before.
    static UserPrompt *replace(UserPrompt *prompt);

    /// The button that was pressed, or the one that Escape stands for. A key that
    /// was held down before, as the Return that led to the question, answers nothing.
    virtual QMessageBox::StandardButton message(QWidget *parent, const Message &message);

    /// An existing file, or an empty text when nothing was chosen. The filter has
    /// the form of QFileDialog's ("Name (*.a *.b);;Other (*)").
    virtual QString chooseFile(QWidget *parent, const QString &title, const QString &start,
                               const QString &filter);

    /// An existing folder, of which only folders were shown; or an empty text.
    virtual QString chooseFolder(QWidget *parent, const QString &title, const QString &start);

    /// An invalid colour when nothing was chosen. The title tells which colour it
    /// is; an empty one is the toolkit's.
    virtual QColor chooseColour(QWidget *parent, const QString &title, const QColor &initial);
};
