#pragma once

#include <QTextBlockUserData>
#include <QTextLayout>
#include <QVector>

/// What the highlighter remembers of a line.
class BlockData : public QTextBlockUserData {
public:
    bool valid = true;

    // The comment last coloured in the line, in UTF-16 code units from its start;
    // -1 without one.
    qint32 commentStart = -1;
    qint32 commentEnd = -1;

    /// Which colouring of the document the line's colours belong to; 0 for none.
    quint32 colouring = 0;
    /// How many UTF-16 code units of the line have their colours.
    qint32 colouredUnits = 0;
    /// Block comments that were open before the line when it was coloured.
    qint32 openBefore = 0;

    /// The line's colours when they are kept apart from its layout (see
    /// Highlighter::keepLongLinesApart): later ones cover earlier ones.
    QVector<QTextLayout::FormatRange> colours;
};
