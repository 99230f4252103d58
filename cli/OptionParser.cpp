#include "cli/OptionParser.h"

#include "cli/KeywordCheck.h"
#include "cli/Message.h"
#include "cli/OptionTable.h"

namespace {

/// Walks the arguments once; stops at the first error.
class Reader {
public:
    explicit Reader(const QStringList &arguments) : m_arguments(arguments) { }

    /// Both return an error or an empty text.
    QString readOptions(Options &options);
    QString assignOperands(Options &options) const;

private:
    QString readLong(const QString &argument, Options &options);
    QString readShort(const QString &argument, Options &options);
    QString apply(const OptionTable::Option &option, const QString &value, Options &options);
    bool atEnd() const { return m_next >= m_arguments.size(); }

    const QStringList m_arguments;
    QStringList m_operands; // KEYWORD and PATH
    int m_next = 0;
    const OptionTable::Option *m_searchOption = nullptr; // the first one given
};

bool isInformation(const Options &options)
{
    return options.mode == Options::Mode::Help || options.mode == Options::Mode::Version;
}

QString Reader::readOptions(Options &options)
{
    while (!atEnd() && !isInformation(options)) {
        const QString argument = m_arguments.at(m_next++);
        if (argument == QLatin1String("--")) {
            m_operands += m_arguments.mid(m_next);
            break;
        }
        QString error;
        if (argument.startsWith(QLatin1String("--")))
            error = readLong(argument, options);
        else if (argument.startsWith(QLatin1Char('-')) && argument.size() > 1)
            error = readShort(argument, options);
        else
            m_operands += argument;
        if (!error.isEmpty())
            return error;
    }
    return QString();
}

QString Reader::readLong(const QString &argument, Options &options)
{
    const int equals = argument.indexOf(QLatin1Char('='));
    const QString name = argument.mid(2, equals < 0 ? -1 : equals - 2);
    const OptionTable::Option *option = OptionTable::findLong(name);
    if (option == nullptr)
        return QStringLiteral("unknown option ") + Message::quoted(argument);
    if (!option->takesValue()) {
        if (equals >= 0)
            return QStringLiteral("option takes no value: ") + Message::quoted(argument);
        return apply(*option, QString(), options);
    }
    if (equals >= 0)
        return apply(*option, argument.mid(equals + 1), options);
    if (atEnd())
        return QStringLiteral("option needs a value: ") + Message::quoted(argument);
    return apply(*option, m_arguments.at(m_next++), options);
}

QString Reader::readShort(const QString &argument, Options &options)
{
    for (int i = 1; i < argument.size(); ++i) {
        const QString given = QLatin1Char('-') + argument.mid(i, 1);
        const OptionTable::Option *option = OptionTable::findShort(argument.at(i));
        if (option == nullptr)
            return QStringLiteral("unknown option ") + Message::quoted(given);
        QString value;
        if (option->takesValue()) {
            if (i + 1 == argument.size() && atEnd())
                return QStringLiteral("option needs a value: ") + Message::quoted(given);
            value = i + 1 < argument.size() ? argument.mid(i + 1) : m_arguments.at(m_next++);
            i = argument.size();
        }
        QString error = apply(*option, value, options);
        if (!error.isEmpty())
            return error;
    }
    return QString();
}

QString Reader::apply(const OptionTable::Option &option, const QString &value, Options &options)
{
    if (option.searchOnly && m_searchOption == nullptr)
        m_searchOption = &option;
    return option.apply(options, value);
}

QString Reader::assignOperands(Options &options) const
{
    const bool search = options.mode == Options::Mode::Search;
    if (!search && m_searchOption != nullptr)
        return m_searchOption->longForm()
            + QStringLiteral(" has no meaning with --line-count and --encodings");
    if (search && options.within && options.nearKeyword.isEmpty())
        return QStringLiteral("--within %1 needs --near").arg(*options.within);
    if (search && m_operands.isEmpty())
        return QStringLiteral("KEYWORD and PATH are missing (-h shows the options)");
    options.keyword = search ? m_operands.first() : QString();
    options.paths = m_operands.mid(search ? 1 : 0);
    QString error = search ? KeywordCheck::error(options) : QString();
    if (!error.isEmpty())
        return error;
    if (options.paths.isEmpty())
        return search
            ? QStringLiteral("PATH is missing after KEYWORD ") + Message::quoted(options.keyword)
            : QStringLiteral("PATH is missing (-h shows the options)");
    return QString();
}

} // namespace

OptionParser::Result OptionParser::parse(const QStringList &arguments)
{
    Result result;
    Reader reader(arguments);
    result.error = reader.readOptions(result.options);
    if (result.error.isEmpty() && !isInformation(result.options))
        result.error = reader.assignOperands(result.options);
    return result;
}
