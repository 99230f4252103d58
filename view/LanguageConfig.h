#pragma once

#include "view/LanguageDefinition.h"

#include <QString>
#include <QStringList>

#include <memory>
#include <vector>

/// The language definitions of the program: finds the one for a file's suffix
/// and reads it from the folder "list" of the application directory when it is
/// asked for first, or has changed since.
///
/// Languages and directory are those of AppSettings at the time of each lookup.
/// User interface thread only.
class LanguageConfig {
public:
    using Definition = std::shared_ptr<const LanguageDefinition>;

    /// A definition file of more bytes than this is treated as unreadable.
    static constexpr qint64 kLargestFileBytes = 64LL * 1024 * 1024;

    /// The process-wide one, made on the first call.
    static LanguageConfig &instance();

    /// The definition for languageName or, when that is empty, for the language
    /// that suffix belongs to. Null when there is no such language, when its file
    /// is missing, or when it cannot be read; nobody is told. What was answered
    /// stays valid and unchanged when the file is read again later.
    Definition definition(const QString &suffix, const QString &languageName = QString());

    /// Name of the first language in the settings that lists suffix (exact,
    /// case-sensitive), or an empty text.
    static QString languageOf(const QString &suffix);

    /// What a file is looked up by: the text after the last dot of its name. A
    /// name without a dot ("Makefile") stands for itself where a language lists it;
    /// otherwise the file has no suffix and the answer is empty.
    static QString suffixOf(const QString &path);

    /// Names of the definitions that are held, in the order they were read.
    const QStringList &loadedNames() const { return m_names; }

private:
    void drop(int index);

    // Parallel: the name and the definition of each language loaded.
    QStringList m_names;
    std::vector<Definition> m_definitions;
};
