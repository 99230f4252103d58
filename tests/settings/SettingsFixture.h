#pragma once

#include "settings/AppSettings.h"
#include "settings/IniDocument.h"
#include "tests/support/ScratchFolder.h"

#include <QObject>

#include <memory>

/// Settings of their own in a folder of their own.
class SettingsFixture : public QObject {
protected:
    void makeSettings()
    {
        m_folder = std::make_unique<ScratchFolder>();
        m_settings = std::make_unique<AppSettings>();
    }

    static QString fileName() { return QStringLiteral("sarvik.ini"); }

    /// Makes the file with this content and loads it.
    void load(const QByteArray &content)
    {
        m_folder->write(fileName(), content);
        m_settings->load(m_folder->path());
    }

    /// The file's bytes after a save.
    QByteArray saved()
    {
        return m_settings->save(m_folder->path()) ? m_folder->read(fileName())
                                                  : QByteArray("(not saved)");
    }

    static QString valueIn(const QByteArray &file, const char *key)
    {
        return IniDocument(file, IniDocument::Form::Utf8)
            .text(QString::fromLatin1(key), QStringLiteral("(none)"));
    }

    std::unique_ptr<ScratchFolder> m_folder;
    std::unique_ptr<AppSettings> m_settings;
};
