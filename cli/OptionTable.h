#pragma once

#include "cli/Options.h"

#include <QChar>
#include <QString>
#include <QStringList>
#include <QVector>

/// Every option of the command line once: its names, its help and what it does.
namespace OptionTable {

/// One of the values that an option may have.
struct Choice {
    const char *value;
    const char *help; ///< a few words, without a line feed
};

struct Option {
    char shortName; ///< 0: none
    const char *longName;
    const char *valueName; ///< as the help shows it; nullptr: a switch
    const char *help; ///< of a value that has choices, without them
    bool searchOnly; ///< without meaning for --line-count and --encodings
    /// Stores value (empty for a switch); returns one line that names the value
    /// where it cannot be taken, else an empty text.
    QString (*apply)(Options &options, const QString &value);
    /// The only values there are; empty: any.
    QVector<Choice> choices = {};
    /// Whether several add up; of any other the last one counts.
    bool repeatable = false;

    bool takesValue() const { return valueName != nullptr; }
    QString longForm() const { return QLatin1String("--") + QLatin1String(longName); }
    /// The short form, if there is one, and the long form: as a person types them.
    QStringList forms() const;
    /// help, then a line for each of the choices; without a line feed at the end.
    QString wholeHelp() const;
    /// Of the choices, in their order.
    QStringList values() const;
};

/// In the order of the help.
const QVector<Option> &all();
/// nullptr when there is no such option.
const Option *findLong(const QString &name);
const Option *findShort(QChar name);

} // namespace OptionTable
