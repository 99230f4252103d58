#pragma once

#include "settings/dialogs/AssistWindow.h"

#include <QPointer>

class UserAssist;

/// The help that dialogs open, shown as notes beside them (see UserAssist). The
/// dialogs stand below the notes and cannot name them: install() brings the two
/// together.
class AssistNotes : public AssistWindow {
    Q_OBJECT

public:
    /// Makes these notes what AssistWindow::open() shows. A file that is missing
    /// or has no notes opens nothing, without a word; a broken one tells the user
    /// so and opens nothing either.
    static void install();

    /// The notes of a definition file beside parent, for as long as this object
    /// and parent live.
    AssistNotes(const QString &file, QWidget *parent);
    ~AssistNotes() override;

    /// Whether there is no note to be seen.
    bool isEmpty() const;

private:
    /// Belongs to the window that it stands beside, which may go first.
    QPointer<UserAssist> m_notes;
};
