#pragma once

#include <QPointer>
#include <QString>
#include <QWidget>

#include <vector>

class UserAssistWindow;

/// The notes that an assist definition file describes (see AssistFile), shown
/// beside a window for as long as this object lives. Never visible itself.
class UserAssist : public QWidget {
    Q_OBJECT

signals:
    /// The user asked, in one of the notes, to close them all. Whoever made this
    /// deletes it then, by deleteLater().
    void UserAssistClose();

public slots:
    /// Closes and deletes every note; their signals arrive no more.
    void AllClose();

public:
    /// Belongs to parent. Blanks around path do not count. A file without notes
    /// shows none. One that has a group without a geometry shows none either, but
    /// a message box, which is answered when the constructor returns.
    UserAssist(const QString &path, QWidget *parent);
    ~UserAssist() override;

    /// In the order of the groups.
    std::vector<UserAssistWindow *> windows() const;

private:
    std::vector<QPointer<UserAssistWindow>> m_windows;
};
