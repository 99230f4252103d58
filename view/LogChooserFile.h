#pragma once

#include <QByteArray>
#include <QPoint>
#include <QSize>
#include <QString>

/// The file "fileDialog.ini", where the log chooser keeps its geometry.
class LogChooserFile {
public:
    struct Geometry {
        /// Only ever saved: the dialog opens over its parent.
        QPoint position;
        /// Invalid when the file has none that a dialog can have.
        QSize size;
        // As QSplitter::saveState() gives them. The names are the file's:
        // between tree and list, and between those and the preview.
        QByteArray splitterV;
        QByteArray splitterH;
    };

    /// directory ends in "/".
    explicit LogChooserFile(const QString &directory);

    /// Whatever the file holds; the position stays what it is by default.
    Geometry read() const;

    /// Replaces the four values; what else the file holds stays. False when that
    /// was not possible; the file is then as it was.
    bool save(const Geometry &geometry) const;

private:
    QString m_path;
};
