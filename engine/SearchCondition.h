#pragma once

#include <QString>
#include <QStringList>

/// One search request. The members are the arguments of the scan slot that
/// SignalSpool and TextGrepCore both declare, in that slot's order, so that the
/// record travels through a queued invocation as ten plain arguments.
struct SearchCondition {
    /// Bits of flg; all other bits are ignored.
    enum Flag {
        RegExpFlag = 0x001, ///< the keywords are patterns
        WordFlag = 0x010, ///< keyword1 must match a whole word
        IgnoreCaseFlag = 0x100 ///< clear: every comparison is case-sensitive
    };

    /// What to search: folders (each ending in "/"), single files (no "/" at
    /// the end; searched whatever mask and exclusions say), or, as the first
    /// entry, "@" and the path of a list file, which then stands alone.
    QStringList pathlist;
    QString mask; ///< file-name mask as typed; see FileMask
    QString keyword1; ///< the search keyword, plain text or pattern
    QString keyword2; ///< must follow within plusline lines; empty: condition off
    QString keyword3; ///< must not stand on the line; empty: no exclusion
    int plusline = 0; ///< lines after the keyword1 line in which keyword2 counts
    int flg = 0; ///< set of Flag
    bool fnameflg = false; ///< report the name of a file without a hit line
    bool subdir = true; ///< descend into sub-folders
    bool linecount = false; ///< count lines instead of searching

    bool regExp() const { return (flg & RegExpFlag) != 0; }
    bool word() const { return (flg & WordFlag) != 0; }
    bool ignoreCase() const { return (flg & IgnoreCaseFlag) != 0; }
    /// The case sensitivity of every comparison of this search.
    Qt::CaseSensitivity caseSensitivity() const
    {
        return ignoreCase() ? Qt::CaseInsensitive : Qt::CaseSensitive;
    }
};
