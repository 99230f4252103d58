#include "view/UserAssist.h"

#include "settings/AppSettings.h"
#include "settings/dialogs/prompts/UserPrompt.h"
#include "view/AssistFile.h"
#include "view/UserAssistWindow.h"

UserAssist::UserAssist(const QString &path, QWidget *parent) : QWidget(parent)
{
    // A child that nobody hid would be shown with its parent.
    hide();
    const QString file = path.trimmed();
    const AssistFile::Notes notes = AssistFile::read(file, AppSettings::instance());
    for (const AssistRecord &record : notes.records) {
        auto *window = new UserAssistWindow(record, file, parent);
        connect(window, &UserAssistWindow::UserAssistWindowAllClose, this,
                &UserAssist::UserAssistClose);
        m_windows.emplace_back(window);
    }
    if (notes.windowMissing) {
        AllClose();
        UserPrompt::current().message(parent,
                                      {QMessageBox::Critical, QStringLiteral("UserAssistWindow"),
                                       QStringLiteral("window設定が見つかりません")});
    }
    for (UserAssistWindow *window : windows())
        window->show();
}

UserAssist::~UserAssist()
{
    // Not at once: this may be deleted because a note has just asked for it.
    AllClose();
}

void UserAssist::AllClose()
{
    for (UserAssistWindow *window : windows()) {
        disconnect(window, nullptr, this, nullptr);
        window->close();
        window->deleteLater();
    }
    m_windows.clear();
}

std::vector<UserAssistWindow *> UserAssist::windows() const
{
    std::vector<UserAssistWindow *> windows;
    for (const QPointer<UserAssistWindow> &window : m_windows) {
        if (window)
            windows.push_back(window);
    }
    return windows;
}
