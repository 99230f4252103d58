#pragma once

#include <QString>
#include <QStringList>

/// "sarvikpara.ini" in the application directory: the last search request. The
/// main window rewrites it at every search; another program may write it before
/// it starts this one, to hand over a request.
class ParameterFile {
public:
    struct Content {
        /// One entry a search path.
        QStringList pathlist;
        QString mask;
        QString findword;
    };

    /// appDir ends in "/".
    explicit ParameterFile(const QString &appDir);

    /// What is missing, or the whole when the file is missing or unreadable, is
    /// empty. A single path is a list of one; a mask or keyword that was written
    /// with bare commas is read as it stands.
    Content read() const;

    /// Replaces the three values and leaves the rest of the file alone. False
    /// when the file was not replaced; it is then the old one, whole.
    bool write(const Content &content) const;

private:
    QString m_path;
};
