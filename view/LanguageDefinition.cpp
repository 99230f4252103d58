#include "view/LanguageDefinition.h"

#include <QVector>

namespace {

using Lines = QVector<QStringRef>;

Lines linesOf(const QString &text)
{
    constexpr int kFewestWindowsLines = 5;
    const Lines lines = text.splitRef(QStringLiteral("\r\n"));
    return lines.size() < kFewestWindowsLines ? text.splitRef(QLatin1Char('\n')) : lines;
}

/// Sets target to what follows key when the line begins with it.
bool take(const QStringRef &line, QLatin1String key, QString &target)
{
    if (!line.startsWith(key))
        return false;
    target = line.mid(key.size()).toString();
    return true;
}

class Parser {
public:
    void add(const QStringRef &line);
    LanguageDefinition result() const { return m_definition; }

private:
    bool isOptionHeader(const QStringRef &line);
    bool isCommentHeader(const QStringRef &line);
    bool isListHeader(const QStringRef &line);
    void readOption(const QStringRef &line);
    void readComment(const QStringRef &line);

    LanguageDefinition m_definition;
    bool m_optionsOpen = false;
    bool m_commentOpen = false;
    QStringList *m_list = nullptr;
};

void Parser::add(const QStringRef &line)
{
    if (line.startsWith(QLatin1String("//")))
        return;
    // All three are asked: one line may be a header of several kinds.
    const bool isHeader =
        int(isOptionHeader(line)) + int(isCommentHeader(line)) + int(isListHeader(line)) > 0;
    if (isHeader || !m_list || m_list->size() >= LanguageFile::kMostEntries)
        return;
    if (!line.trimmed().isEmpty())
        m_list->append(line.toString());
}

bool Parser::isOptionHeader(const QStringRef &line)
{
    if (line.contains(QLatin1String("[langoption]"))) {
        m_optionsOpen = true;
        return true;
    }
    if (m_optionsOpen)
        readOption(line);
    return false;
}

bool Parser::isCommentHeader(const QStringRef &line)
{
    if (line.startsWith(QLatin1String("[comment]"))) {
        m_commentOpen = true;
        return true;
    }
    if (m_commentOpen)
        readComment(line);
    return false;
}

bool Parser::isListHeader(const QStringRef &line)
{
    struct Section {
        QLatin1String header;
        QStringList LanguageDefinition::*list;
    };
    static const Section sections[] = {
        {QLatin1String("[reserve]"), &LanguageDefinition::reserve},
        {QLatin1String("[WordReserve]"), &LanguageDefinition::wordReserve},
        {QLatin1String("[keywords]"), &LanguageDefinition::keywords},
        {QLatin1String("[WordKeywords]"), &LanguageDefinition::wordKeywords},
    };
    for (const Section &section : sections) {
        if (line.startsWith(section.header)) {
            m_list = &(m_definition.*section.list);
            return true;
        }
    }
    return false;
}

void Parser::readOption(const QStringRef &line)
{
    static const QLatin1String regexpKeys[] = {QLatin1String("regexp1="), QLatin1String("regexp2="),
                                               QLatin1String("regexp3="), QLatin1String("regexp4="),
                                               QLatin1String("regexp5=")};
    take(line, QLatin1String("suffix="), m_definition.suffix);
    for (std::size_t i = 0; i < m_definition.regexps.size(); ++i) {
        if (take(line, regexpKeys[i], m_definition.regexps[i]))
            m_definition.regexps[i].replace(QLatin1Char('*'), QLatin1String("\\*"));
    }
    if (take(line, QLatin1String("splitext="), m_definition.splitext))
        m_optionsOpen = false;
}

void Parser::readComment(const QStringRef &line)
{
    take(line, QLatin1String("singleLine="), m_definition.singleLine);
    take(line, QLatin1String("multiLineStart="), m_definition.multiLineStart);
    if (take(line, QLatin1String("multiLineEnd="), m_definition.multiLineEnd))
        m_commentOpen = false;
}

} // namespace

LanguageDefinition LanguageFile::parse(const QString &text)
{
    Parser parser;
    for (const QStringRef &line : linesOf(text))
        parser.add(line);
    return parser.result();
}
