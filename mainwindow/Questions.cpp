#include "mainwindow/Questions.h"

#include "settings/dialogs/prompts/UserPrompt.h"

namespace Questions {

namespace {

bool askYesNo(QWidget *parent, const QString &text)
{
    UserPrompt::Message question;
    question.icon = QMessageBox::Question;
    question.title = QStringLiteral("sarvik");
    question.text = text;
    question.buttons = QMessageBox::Yes | QMessageBox::No;
    question.defaultButton = QMessageBox::Yes;
    return UserPrompt::current().message(parent, question) == QMessageBox::Yes;
}

} // namespace

bool quit(QWidget *parent)
{
    return askYesNo(parent, QStringLiteral("終了します。よろしいですか？。"));
}

bool searchAllFiles(QWidget *parent)
{
    return askYesNo(
        parent,
        QStringLiteral("マスクが(*.*)で指定されると、テキストファイル以外も対象になります。\n"
                       "よろしいですか？。"));
}

} // namespace Questions
