#pragma once

#include "settings/dialogs/prompts/UserPrompt.h"

#include <QList>
#include <QStringList>

/// Stands in for the user as long as it lives: records what was asked and gives
/// the prepared answers. Without one, a message gets its default button or OK,
/// and a chooser is cancelled.
class AnsweringPrompt : public UserPrompt {
public:
    struct Asked {
        QWidget *parent = nullptr;
        QString title;
        QString start;
        QString filter;
    };

    AnsweringPrompt();
    ~AnsweringPrompt() override;

    QMessageBox::StandardButton message(QWidget *parent, const Message &message) override;
    QString chooseFile(QWidget *parent, const QString &title, const QString &start,
                       const QString &filter) override;
    QString chooseFolder(QWidget *parent, const QString &title, const QString &start) override;
    QColor chooseColour(QWidget *parent, const QString &title, const QColor &initial) override;

    // Answers, used up from the front.
    QList<QMessageBox::StandardButton> buttons;
    QStringList files;
    QStringList folders;
    QList<QColor> colours;

    // What was asked, in order.
    QList<Message> messages;
    QList<Asked> fileQuestions;
    QList<Asked> folderQuestions;
    QList<QColor> colourQuestions;
    QStringList colourTitles;

private:
    UserPrompt *m_former;
};
