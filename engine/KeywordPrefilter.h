#pragma once

#include <QString>

class KeywordPrefilter {
public:
    KeywordPrefilter(const QString &, bool, Qt::CaseSensitivity) { }
    bool mayMatch(const char *, qint64, int) const { return true; }
};
