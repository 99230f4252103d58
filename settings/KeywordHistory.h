#pragma once

#include <QString>
#include <QStringList>

#include <vector>

QT_BEGIN_NAMESPACE
class QComboBox;
QT_END_NAMESPACE

class IniDocument;

/// The keywords of past searches, newest first, each with the switches it was
/// searched with, kept in "keywordhistory.ini" in the application directory.
/// Every running instance shares that file: a save writes this instance's list over
/// the first positions or, when another one has changed the file in the meantime,
/// the other's list with the keywords that were added here in front.
///
/// Used on one thread only.
class KeywordHistory {
public:
    /// More entries than these are never held, whatever the capacity is.
    static constexpr int kMostEntries = 100;

    struct Entry {
        /// What the main window passes: ignore case, whole word, regular
        /// expression.
        bool flagA = false;
        bool flagB = false;
        bool flagC = false;
        QString keyword;
    };

    /// capacity limits the positions that load() reads and nothing else. An
    /// empty appDir means the directory that AppSettings was loaded from, asked
    /// for at each load and save; otherwise appDir ends in "/".
    explicit KeywordHistory(int capacity, const QString &appDir = QString());

    /// Replaces the entries by those of the file: positions from 1 on until
    /// one is missing or empty, or the capacity is reached. A missing file
    /// gives no entry. One that cannot be read, as while another program replaces
    /// it, leaves the entries as they are; when none was ever read, they are not
    /// saved over it.
    void load();

    /// As load(), but what was added here since the last load or save, and is
    /// not in the file yet, is added again.
    void reload();

    /// Writes the entries to positions 1, 2, …; what stands in the file at
    /// later positions stays. When the first positions are no longer those of the
    /// last load or save, the entries are first replaced as by reload(); a file without
    /// any is written as it is here. Without an entry there is nothing to write. False
    /// when the file was not replaced; it is then the old one, whole.
    bool save();

    /// Records a search at position (0 is the newest; a position outside the
    /// list is moved to its nearer end). An entry with the same keyword goes,
    /// whatever its flags; beyond kMostEntries the last one goes.
    void add(QString keyword, bool flagA, bool flagB, bool flagC, int position = 0);

    /// Clears combo and appends the keywords in list order. Defined in the
    /// dialogs' library, so that this one needs no widget.
    void fillCombo(QComboBox *combo) const;

    /// The keywords in list order.
    QStringList keywords() const;

    /// Index of the entry whose keyword equals this one exactly (case-sensitive),
    /// or -1.
    int find(const QString &keyword) const;

    int capacity() const { return m_capacity; }
    const std::vector<Entry> &entries() const { return m_entries; }

private:
    QString filePath() const;
    std::vector<Entry> entriesIn(const IniDocument &file) const;
    /// The entries that are not in the file yet, newest first.
    std::vector<Entry> added() const;
    void addAll(const std::vector<Entry> &added);
    void writeInto(IniDocument &file);

    int m_capacity;
    QString m_appDir;
    /// False when there is a file and load() could not read it even once.
    bool m_mayBeSaved = true;
    bool m_wasRead = false;
    std::vector<Entry> m_entries;
    /// When they were last in step: what a load would have read of the file, and the
    /// entries here, both as values of the file.
    QStringList m_inFile;
    QStringList m_own;
};
