#include "tests/support/AnsweringPrompt.h"

AnsweringPrompt::AnsweringPrompt() : m_former(UserPrompt::replace(this))
{
}

AnsweringPrompt::~AnsweringPrompt()
{
    UserPrompt::replace(m_former);
}

QMessageBox::StandardButton AnsweringPrompt::message(QWidget *, const Message &message)
{
    messages.append(message);
    if (!buttons.isEmpty())
        return buttons.takeFirst();
    return message.defaultButton == QMessageBox::NoButton ? QMessageBox::Ok : message.defaultButton;
}

QString AnsweringPrompt::chooseFile(QWidget *parent, const QString &title, const QString &start,
                                    const QString &filter)
{
    fileQuestions.append({parent, title, start, filter});
    return files.isEmpty() ? QString() : files.takeFirst();
}

QString AnsweringPrompt::chooseFolder(QWidget *parent, const QString &title, const QString &start)
{
    folderQuestions.append({parent, title, start, QString()});
    return folders.isEmpty() ? QString() : folders.takeFirst();
}

QColor AnsweringPrompt::chooseColour(QWidget *, const QString &title, const QColor &initial)
{
    colourTitles.append(title);
    colourQuestions.append(initial);
    return colours.isEmpty() ? QColor() : colours.takeFirst();
}
