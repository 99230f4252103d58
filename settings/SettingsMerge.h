#pragma once

#include <QHash>
#include <QString>
#include <QVariant>

#include <vector>

class IniDocument;

/// What a program knew of the settings file when the two were last in step, so that
/// of several programs on one file each saves what it has changed, and no other's
/// change is lost to a value that nobody touched here:
///
/// 1. A key that the file lacks, or whose value there is still the known one, is
///    written.
/// 2. Of a key that was changed in the file, a history gets the entries that were
///    added here put in front of those of the file, by HistoryList's rule.
/// 3. Any other such key is written when its value was changed here too, and
///    otherwise keeps what is in the file.
///
/// What was kept stays the other program's, and is kept by later saves as well,
/// until it is changed here. A plain value; without knowledge everything is written.
class SettingsMerge {
public:
    struct Value {
        QString key;
        QVariant value;
        /// Value is a list of texts that HistoryList keeps.
        bool isHistory = false;
    };
    using Values = std::vector<Value>;

    SettingsMerge() = default;

    /// After a load: own is what would be written now.
    SettingsMerge(const Values &own, const IniDocument &file);

    /// Changes file, in the order of own. Returns what is known when that becomes the
    /// file's content; should it not, this knowledge still holds.
    SettingsMerge write(const Values &own, IniDocument &file) const;

private:
    struct Known {
        QVariant own;
        QVariant inFile;
        /// What is in the file was kept there for another program.
        bool isOthers = false;
    };

    bool isOthers(const QString &key, const IniDocument &file) const;
    Known writeOne(const Value &value, IniDocument &file) const;

    QHash<QString, Known> m_known;
};
