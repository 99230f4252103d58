#include "settings/KeywordHistory.h"

#include "settings/AppSettings.h"
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
    m_entries.clear();
    for (int position = 1; position <= m_capacity; ++position) {
        const QString value = file->text(keyOf(position));
        if (value.isEmpty())
            break;
        Entry entry = parsed(value);
        if (!entry.keyword.isEmpty())
            m_entries.push_back(std::move(entry));
    }
}

bool KeywordHistory::save() const
{
    if (!m_mayBeSaved)
        return false;
    if (m_entries.empty())
        return true;
    return IniFile(filePath(), IniDocument::Form::Escaped).update([this](IniDocument &file) {
        int position = 0;
        for (const Entry &entry : m_entries)
            file.setValue(keyOf(++position), valueOf(entry));
    });
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
