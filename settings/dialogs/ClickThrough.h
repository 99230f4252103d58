#pragma once

#include <QObject>

QT_BEGIN_NAMESPACE
class QCompleter;
class QMouseEvent;
QT_END_NAMESPACE

/// Lets a click beside a completer's list act on what is clicked, as beside a list
/// that is no window of its own: the list closes, and the button, the field or the
/// menu under the mouse in the same window gets the press. The toolkit leaves that
/// to the platform, and on some the click would only close the list.
///
/// User interface thread only.
class ClickThrough : public QObject {
    Q_OBJECT

public:
    /// Belongs to the completer, whose list it takes as it is now.
    explicit ClickThrough(QCompleter *completer);

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void passOn(const QMouseEvent &press);

    QCompleter *const m_completer;
};
