#pragma once

#include "cli/Options.h"

#include <QChar>
#include <QString>
#include <QStringList>
#include <QVector>

/// Every option of the command line once: its names, its help and what it does.
namespace OptionTable {

struct Option {
    char shortName; ///< 0: none
    const char *longName;
    const char *valueName; ///< as the help shows it; nullptr: a switch
    const char *help;
    bool searchOnly; ///< without meaning for --line-count and --encodings
    /// Stores value (empty for a switch); returns one line that names the value
    /// where it cannot be taken, else an empty text.
    QString (*apply)(Options &options, const QString &value);
    /// The only values there are, with a blank between them; nullptr: any.
    const char *choices = nullptr;
    /// Whether several add up; of any other the last one counts.
    bool repeatable = false;

    bool takesValue() const { return valueName != nullptr; }
    QString longForm() const { return QLatin1String("--") + QLatin1String(longName); }
    /// The short form, if there is one, and the long form: as a person types them.
    QStringList forms() const;
};

/// In the order of the help.
const QVector<Option> &all();
/// nullptr when there is no such option.
const Option *findLong(const QString &name);
const Option *findShort(QChar name);

} // namespace OptionTable
