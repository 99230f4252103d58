#pragma once

#include <QString>

/// What stands in the search form and how the three matching toggles are, apart
/// from any widget.
struct FormState {
    QString pathText;
    QString mask;
    QString keyword1;
    bool extraGroup = false;
    bool useKeyword2 = false;
    QString keyword2;
    int lineDistance = 0;
    bool keyword3Group = false;
    QString keyword3;
    bool subdir = true;
    bool emptyFiles = false;
    bool skipped = false;
    bool ignoreCase = false;
    bool word = false;
    bool regexp = false;

    /// Keyword 2 takes part: its group and its check box are both checked.
    bool usesKeyword2() const { return extraGroup && useKeyword2; }
};
