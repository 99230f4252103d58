#include "mainwindow/AssistNotes.h"

#include "view/UserAssist.h"

#include <memory>

void AssistNotes::install()
{
    setFactory([](const QString &file, QWidget *parent) -> AssistWindow * {
        auto notes = std::make_unique<AssistNotes>(file, parent);
        // Otherwise the next F1 would close what nobody sees.
        return notes->isEmpty() ? nullptr : notes.release();
    });
}

AssistNotes::AssistNotes(const QString &file, QWidget *parent)
    : m_notes(new UserAssist(file, parent))
{
    connect(m_notes, &UserAssist::UserAssistClose, this, &AssistNotes::closeRequested);
}

AssistNotes::~AssistNotes()
{
    delete m_notes.data();
}

bool AssistNotes::isEmpty() const
{
    return !m_notes || m_notes->windows().empty();
}
