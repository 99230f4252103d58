#include "mainwindow/Questions.h"

#include "settings/dialogs/prompts/UserPrompt.h"

namespace Questions {

namespace {

QMessageBox::StandardButton ask(QWidget *parent, QMessageBox::Icon icon, const QString &text,
                                QMessageBox::StandardButtons buttons,
                                QMessageBox::StandardButton defaultButton)
{
    UserPrompt::Message question;
    question.icon = icon;
    question.title = QStringLiteral("sarvik");
    question.text = text;
    question.buttons = buttons;
    question.defaultButton = defaultButton;
    return UserPrompt::current().message(parent, question);
}

bool askYesNo(QWidget *parent, const QString &text)
{
    return ask(parent, QMessageBox::Question, text, QMessageBox::Yes | QMessageBox::No,
               QMessageBox::Yes)
        == QMessageBox::Yes;
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

QMessageBox::StandardButton saveModified(QWidget *parent, const QString &path)
{
    return ask(parent, QMessageBox::Question,
               QStringLiteral("%1 \nは修正されています。保存しますか？").arg(path),
               QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel, QMessageBox::Yes);
}

bool saveAllTheSame(QWidget *parent, const QString &path, const QString &why)
{
    return ask(parent, QMessageBox::Warning,
               QStringLiteral("%1\n%2\nそれでも保存しますか？").arg(path, why),
               QMessageBox::Yes | QMessageBox::No, QMessageBox::No)
        == QMessageBox::Yes;
}

void tellFailure(QWidget *parent, const QString &text)
{
    ask(parent, QMessageBox::Critical, text, QMessageBox::Ok, QMessageBox::Ok);
}

} // namespace Questions
