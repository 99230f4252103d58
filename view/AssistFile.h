#pragma once

#include <QColor>
#include <QRect>
#include <QString>
#include <QStringList>

#include <vector>

class AppSettings;

/// One note of an assist definition file.
struct AssistRecord {
    QString group;
    QStringList lines;
    QColor borderColor;
    QColor backColor;
    QColor textColor;
    /// In pixels; the position relative to the window that the notes belong to.
    QRect geometry;
};

/// The files that describe the notes beside a window: an ini file in UTF-8, one
/// group a note. Of a group, "window" is the geometry as four numbers (x, y,
/// width, height), "borderColor", "backColor" and "textColor" are colour names,
/// and every other key is a line of the text, in the sorted order of the keys.
namespace AssistFile {

/// Notes beyond these are left out, and sizes and distances kept within these:
/// no file may ask for more than a screen can take.
constexpr std::size_t kMostNotes = 50;
/// A larger file has no notes: nobody reads as much text in a note, and laying it
/// out would keep the user waiting.
constexpr qint64 kLargestFileBytes = 1 << 20;
constexpr int kSmallestWidth = 80;
constexpr int kSmallestHeight = 40;
constexpr int kLargestSize = 4096;
constexpr int kLargestDistance = 100000;

struct Notes {
    /// In the sorted order of their groups.
    std::vector<AssistRecord> records;
    /// A group has no "window" of four numbers; reading stopped at it, and the
    /// records are those before it.
    bool windowMissing = false;
};

/// A file that is missing or unreadable has no notes. A colour that is missing or
/// is none becomes the one of settings.
Notes read(const QString &path, const AppSettings &settings);

/// Writes "window" of a group; everything else in the file stays. False when the
/// file was not replaced, as in a folder that cannot be written.
bool writeGeometry(const QString &path, const QString &group, const QRect &geometry);

} // namespace AssistFile
