#pragma once

#include <QFont>
#include <QSize>
#include <QString>
#include <QStringList>

#include <optional>

/// The small ini file in which the input dialog keeps the history of one
/// purpose, and how the dialog was left.
class InputHistoryFile {
public:
    struct Content {
        /// The dialog's size in pixels; valid after a read.
        QSize size{300, 300};
        /// Whether the cursor goes behind a text that is put in the field.
        bool cursorLast = true;
        /// Set when the file names a font. Typed by hand, never written.
        std::optional<QFont> font;
        /// Newest first; may hold duplicates when somebody typed them.
        QStringList history;
        bool learn = true;
        /// Entries that learning keeps, 1 or more. Typed by hand, never written.
        int max = 50;
        /// False when there is a file that could not be read: what it holds is
        /// then not to be replaced by these defaults.
        bool mayBeSaved = true;
    };

    /// directory ends in "/".
    InputHistoryFile(const QString &directory, const QString &purpose);

    const QString &path() const { return m_path; }

    /// A missing or unreadable file, a missing key, a size or font that no dialog
    /// could be shown with, and a max that is not a number or below 1, gives the
    /// default.
    Content read() const;

    /// Writes the size, cursorLast, the history and learn; other keys stay. False
    /// when the file was not replaced; it is then the old one, whole. So it is for
    /// a content that may not be saved.
    bool save(const Content &content) const;

private:
    QString m_path;
};
