#include "settings/dialogs/prompts/UserPrompt.h"

#include <QAbstractButton>
#include <QColorDialog>
#include <QFileDialog>
#include <QKeyEvent>

namespace {

UserPrompt *&replacement()
{
    static UserPrompt *prompt = nullptr;
    return prompt;
}

/// Drops what a key that is held down repeats.
class NoRepeats : public QObject {
public:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::KeyPress && static_cast<QKeyEvent *>(event)->isAutoRepeat())
            return true;
        return QObject::eventFilter(watched, event);
    }
};

} // namespace

UserPrompt::~UserPrompt() = default;

UserPrompt &UserPrompt::current()
{
    static UserPrompt toolkits;
    return replacement() ? *replacement() : toolkits;
}

UserPrompt *UserPrompt::replace(UserPrompt *prompt)
{
    UserPrompt *former = replacement();
    replacement() = prompt;
    return former;
}

QMessageBox::StandardButton UserPrompt::message(QWidget *parent, const Message &message)
{
    QMessageBox box(message.icon, message.title, message.text, message.buttons, parent);
    box.setDefaultButton(message.defaultButton);
    NoRepeats noRepeats;
    box.installEventFilter(&noRepeats);
    const QList<QAbstractButton *> buttons = box.buttons();
    for (QAbstractButton *button : buttons)
        button->installEventFilter(&noRepeats);
    return static_cast<QMessageBox::StandardButton>(box.exec());
}

QString UserPrompt::chooseFile(QWidget *parent, const QString &title, const QString &start,
                               const QString &filter)
{
    return QFileDialog::getOpenFileName(parent, title, start, filter);
}

QString UserPrompt::chooseFolder(QWidget *parent, const QString &title, const QString &start)
{
    return QFileDialog::getExistingDirectory(parent, title, start, QFileDialog::ShowDirsOnly);
}

QColor UserPrompt::chooseColour(QWidget *parent, const QString &title, const QColor &initial)
{
    return QColorDialog::getColor(initial, parent, title);
}
