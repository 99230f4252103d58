#pragma once

#include <QString>
#include <QStringList>

#include <vector>

QT_BEGIN_NAMESPACE
class QComboBox;
QT_END_NAMESPACE

/// The keywords of past searches, newest first, each with the switches it was
/// searched with, kept in "keywordhistory.ini" in the application directory.
/// Every running instance shares that file; a save writes this instance's list
/// over the first positions and merges nothing.
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

    /// Writes the entries to positions 1, 2, …; what stands in the file at
    /// later positions stays. Without an entry there is nothing to write. False
    /// when the file was not replaced; it is then the old one, whole.
    bool save() const;

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

    int m_capacity;
    QString m_appDir;
    /// False when there is a file and load() could not read it even once.
    bool m_mayBeSaved = true;
    bool m_wasRead = false;
    std::vector<Entry> m_entries;
};
