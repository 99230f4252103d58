#pragma once

#include "engine/SearchCondition.h"

/// The searches and counts that most tests of the engine ask for.

/// For keyword in every file below paths.
inline SearchCondition searchFor(const QString &keyword, const QStringList &paths)
{
    SearchCondition condition;
    condition.pathlist = paths;
    condition.mask = QStringLiteral("*.*");
    condition.keyword1 = keyword;
    return condition;
}

inline SearchCondition countLinesIn(const QStringList &paths)
{
    SearchCondition condition;
    condition.pathlist = paths;
    condition.mask = QStringLiteral("*.*");
    condition.linecount = true;
    return condition;
}
