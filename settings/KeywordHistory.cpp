#include "settings/KeywordHistory.h"

#include "settings/AppSettings.h"
#include "settings/HistoryList.h"
#include "settings/IniFile.h"

#include <algorithm>
#include <utility>

namespace {

QString keyOf(int position)
{
    return QStringLiteral("keyword/%1").arg(position, 3, 10, QLatin1Char('0'));
}

// The first three characters are the flags, whatever they are.
KeywordHistory::Entry parsed(const QString &value)
{
    const auto flag = [&value](int index) {
        return value.size() > index && value.at(index) == QLatin1Char('1');
    };
    return {flag(0), flag(1), flag(2), value.mid(3)};
}

QString valueOf(const KeywordHistory::Entry &entry)
{
    const auto digit = [](bool flag) {
        return QLatin1Char(flag ? '1' : '0');
    };
    return digit(entry.flagA) + QString(digit(entry.flagB)) + digit(entry.flagC) + entry.keyword;
}

QStringList valuesOf(const std::vector<KeywordHistory::Entry> &entries)
{
    QStringList values;
    for (const KeywordHistory::Entry &entry : entries)
        values.append(valueOf(entry));
    return values;
}

} // namespace

KeywordHistory::KeywordHistory(int capacity, const QString &appDir)
    : m_capacity(capacity), m_appDir(appDir)
{
}

QString KeywordHistory::filePath() const
{
    const QString &folder =
        m_appDir.isEmpty() ? AppSettings::instance().applicationDirectory() : m_appDir;
    return folder + QStringLiteral("keywordhistory.ini");
}

void KeywordHistory::load()
{
    const auto file = IniFile(filePath(), IniDocument::Form::Escaped).tryRead();
    if (!file) {
        m_mayBeSaved = m_wasRead;
        return;
    }
    m_wasRead = true;
    m_mayBeSaved = true;
    m_entries = entriesIn(*file);
    m_inFile = valuesOf(m_entries);
    m_own = m_inFile;
}

std::vector<KeywordHistory::Entry> KeywordHistory::entriesIn(const IniDocument &file) const
{
    std::vector<Entry> entries;
    for (int position = 1; position <= m_capacity; ++position) {
        const QString value = file.text(keyOf(position));
        if (value.isEmpty())
            break;
        Entry entry = parsed(value);
        if (!entry.keyword.isEmpty())
            entries.push_back(std::move(entry));
    }
    return entries;
}

void KeywordHistory::reload()
{
    const std::vector<Entry> mine = added();
    load();
    addAll(mine);
}

std::vector<KeywordHistory::Entry> KeywordHistory::added() const
{
    const int count = HistoryList::added(m_own, valuesOf(m_entries)).size();
    return {m_entries.begin(), m_entries.begin() + count};
}

void KeywordHistory::addAll(const std::vector<Entry> &added)
{
    for (auto entry = added.crbegin(); entry != added.crend(); ++entry)
        add(entry->keyword, entry->flagA, entry->flagB, entry->flagC);
}

bool KeywordHistory::save()
{
    if (!m_mayBeSaved)
        return false;
    if (m_entries.empty())
        return true;
    // What did not reach the file is not known to be there.
    KeywordHistory after = *this;
    const bool saved =
        IniFile(filePath(), IniDocument::Form::Escaped).update([&after](IniDocument &file) {
            after.writeInto(file);
        });
    if (saved)
        *this = std::move(after);
    return saved;
}

void KeywordHistory::writeInto(IniDocument &file)
{
    std::vector<Entry> others = entriesIn(file);
    const bool changed = m_wasRead && !others.empty() && valuesOf(others) != m_inFile;
    const std::vector<Entry> mine = added();
    if (changed) {
        m_entries = std::move(others);
        addAll(mine);
    }
    // A file of another program is left as it spells it when there is nothing to add.
    if (!changed || !mine.empty()) {
        int position = 0;
        for (const Entry &entry : m_entries)
            file.setValue(keyOf(++position), valueOf(entry));
    }
    m_wasRead = true;
    m_inFile = valuesOf(entriesIn(file));
    m_own = valuesOf(m_entries);
}

void KeywordHistory::add(QString keyword, bool flagA, bool flagB, bool flagC, int position)
{
    const int known = find(keyword);
    if (known >= 0)
        m_entries.erase(m_entries.begin() + known);
    position = std::clamp(position, 0, static_cast<int>(m_entries.size()));
    m_entries.insert(m_entries.begin() + position, Entry{flagA, flagB, flagC, std::move(keyword)});
    if (m_entries.size() > kMostEntries)
        m_entries.pop_back();
}

QStringList KeywordHistory::keywords() const
{
    QStringList result;
    for (const Entry &entry : m_entries)
        result.append(entry.keyword);
    return result;
}

int KeywordHistory::find(const QString &keyword) const
{
    const auto found = std::find_if(m_entries.begin(), m_entries.end(),
                                    [&](const Entry &entry) { return entry.keyword == keyword; });
    return found == m_entries.end() ? -1 : static_cast<int>(found - m_entries.begin());
}
