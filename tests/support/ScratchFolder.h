#pragma once

#include <QByteArray>
#include <QString>
#include <QTemporaryDir>

/// A folder that lives as long as the object: stands in for the application
/// directory or for a tree to search. Every path ends in "/" where a folder is
/// meant. A failed operation fails the test's process with a message: a test
/// on a tree that is not there would mean nothing.
class ScratchFolder {
public:
    ScratchFolder();

    /// Absolute path, ending in "/".
    QString path() const;
    /// Absolute path of relativePath inside the folder.
    QString filePath(const QString &relativePath) const;

    /// Writes bytes to relativePath, making the folders on the way; returns
    /// the absolute path.
    QString write(const QString &relativePath, const QByteArray &bytes) const;
    /// Makes the folder relativePath; returns its absolute path ending in "/".
    QString makeFolder(const QString &relativePath) const;
    QByteArray read(const QString &relativePath) const;
    bool exists(const QString &relativePath) const;
    void remove(const QString &relativePath) const;

private:
    QTemporaryDir m_folder;
};
