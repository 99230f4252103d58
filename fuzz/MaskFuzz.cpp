#include "engine/ExclusionList.h"
#include "engine/FileMask.h"
#include "fuzz/FuzzInput.h"

#include <QRegExp>
#include <QStringList>

#include <algorithm>

namespace {

/// The rule of a mask without any short cut.
bool passesPlainly(QString mask, const QString &name)
{
    const bool negation = mask.contains(QLatin1Char('^'));
    mask.remove(QLatin1Char('^'));
    mask.replace(QStringLiteral("*.*"), QStringLiteral("*"));
    const QStringList parts = mask.split(QLatin1Char(' '));
    const bool matched = std::any_of(parts.begin(), parts.end(), [&name](const QString &part) {
        return QRegExp(part, Qt::CaseInsensitive, QRegExp::Wildcard).exactMatch(name);
    });
    return matched != negation;
}

bool isExcludedPlainly(const QStringList &entries, const QString &name)
{
    return std::any_of(entries.begin(), entries.end(), [&name](const QString &entry) {
        return !entry.isEmpty() && name.contains(entry);
    });
}

} // namespace

/// Mask and exclusions against their rules written plainly. Lines: the mask, a
/// file's name, exclusions separated by commas.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    FuzzInput input(data, size);
    const QString mask = input.textLine();
    const QString name = input.textLine();
    const QStringList exclusions = input.textLine().split(QLatin1Char(','));
    const FileMask tested(mask);
    require(tested.passes(name) == passesPlainly(mask, name), "the mask passes as its rule says");
    require(tested.passes(name) == FileMask(tested).passes(name), "a copy of the mask does so too");
    const ExclusionList excluded(exclusions, exclusions);
    require(excluded.excludesFile(name) == isExcludedPlainly(exclusions, name),
            "a file is excluded by a part of its name");
    require(excluded.excludesFolder(name) == exclusions.contains(name),
            "a folder is excluded by its whole name");
    return 0;
}
