#pragma once

#include "engine/PieceSource.h"

#include <QByteArray>

/// A file's content in memory, handed out in pieces of a given size as a reader
/// of files does: a piece that is asked for again is twice as long.
class CutContent : public PieceSource {
public:
    CutContent(const QByteArray &content, qint64 pieceSize)
        : m_content(content), m_size(qMin<qint64>(pieceSize, content.size())), m_room(pieceSize)
    {
    }

    const char *content() const override { return m_content.constData() + m_start; }
    qint64 size() const override { return m_size; }
    bool atEnd() const override { return m_start + m_size == m_content.size(); }
    void advance(qint64 used) override
    {
        if (used == 0)
            m_room *= 2;
        m_start += used;
        m_size = qMin(m_room, m_content.size() - m_start);
    }
    void readWhole() override
    {
        m_start = 0;
        m_size = m_content.size();
    }

private:
    const QByteArray m_content;
    qint64 m_start = 0;
    qint64 m_size;
    qint64 m_room;
};
