#pragma once

#include "engine/LineMatcher.h"

#include <QStringList>

/// Short forms for the tests of the line matcher.
namespace MatcherText {

constexpr int kRegExp = 0x001;
constexpr int kWord = 0x010;
constexpr int kIgnoreCase = 0x100;
constexpr int kTabWidth = 4;

inline SearchCondition conditionOf(const QString &keyword1, int flg = 0)
{
    SearchCondition condition;
    condition.keyword1 = keyword1;
    condition.flg = flg;
    return condition;
}

inline QStringList hitsOf(const SearchCondition &condition, const QString &text,
                          int tabWidth = kTabWidth)
{
    return LineMatcher(condition, tabWidth).matchEveryLine(text);
}

inline QStringList hitsOf(const QString &keyword1, int flg, const QString &text)
{
    return hitsOf(conditionOf(keyword1, flg), text);
}

inline QString hit(qint64 line, int column, const QString &text)
{
    return QStringLiteral("  %1:%2:").arg(line, 5).arg(column, 5) + text;
}

} // namespace MatcherText
