#pragma once

#include "engine/LineFinder.h"
#include "engine/SearchCondition.h"

#include <QByteArray>
#include <QString>
#include <QStringView>

/// Colours the parts of the output with the terminal's escape sequences, or
/// hands them through as UTF-8.
class HitPainter {
public:
    /// Without colour.
    HitPainter() = default;
    /// Colours what keyword1 of condition matches.
    explicit HitPainter(const SearchCondition &condition);

    bool isOn() const { return m_on; }

    QByteArray path(const QString &path) const;
    void appendNumber(QByteArray *line, QStringView number) const;
    /// The text of a hit line, every match of the keyword coloured.
    QByteArray text(const QString &text) const;
    /// The same at the end of line.
    void appendText(QByteArray *line, QStringView text) const;

private:
    bool m_on = false;
    LineFinder m_finder; // of every match of the keyword
};
