#include "settings/SettingsMerge.h"

#include "settings/HistoryList.h"
#include "settings/IniDocument.h"

SettingsMerge::SettingsMerge(const Values &own, const IniDocument &file)
{
    for (const Value &value : own)
        m_known.insert(value.key, {value.value, file.value(value.key), false});
}

SettingsMerge SettingsMerge::write(const Values &own, IniDocument &file) const
{
    SettingsMerge after;
    for (const Value &value : own)
        after.m_known.insert(value.key, writeOne(value, file));
    return after;
}

bool SettingsMerge::isOthers(const QString &key, const IniDocument &file) const
{
    const auto known = m_known.constFind(key);
    return known != m_known.constEnd() && file.contains(key)
        && (known->isOthers || file.value(key) != known->inFile);
}

SettingsMerge::Known SettingsMerge::writeOne(const Value &value, IniDocument &file) const
{
    const QVariant former = m_known.value(value.key).own;
    bool others = isOthers(value.key, file);
    if (others && value.isHistory) {
        const QStringList added =
            HistoryList::added(former.toStringList(), value.value.toStringList());
        if (!added.isEmpty())
            file.setValue(value.key, HistoryList::merged(file.list(value.key), added));
    } else if (!others || value.value != former) {
        file.setValue(value.key, value.value);
        others = false;
    }
    return {value.value, file.value(value.key), others};
}
