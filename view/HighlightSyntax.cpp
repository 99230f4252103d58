#include "view/HighlightSyntax.h"

#include "view/LanguageConfig.h"
#include "view/LanguagePattern.h"

#include <QDebug>

namespace {

QString builtInComment(const QString &suffix)
{
    if (suffix == QLatin1String("ini"))
        return QStringLiteral(";.*$");
    if (suffix == QLatin1String("bat"))
        return QStringLiteral("^.*(rem|REM|Rem).*$");
    if (suffix == QLatin1String("sed"))
        return QStringLiteral("^#.*$");
    return QString();
}

/// Numbers the rules from 0, words first.
void addRules(HighlightRules &rules, const QString &nameTemplate, HighlightColour colour,
              const QStringList &words, const QStringList &patterns)
{
    int number = 0;
    for (const QString &word : words) {
        if (!word.isEmpty())
            rules.setWord(nameTemplate.arg(number++), word, colour);
    }
    for (const QString &pattern : patterns) {
        if (!pattern.isEmpty())
            rules.set(nameTemplate.arg(number++), LanguagePattern::compiled(pattern), colour);
    }
}

void visitStrings(const std::vector<StringLiteral> &literals, int limit,
                  const HighlightRules::Visitor &visitor)
{
    const auto visit = [&](QChar quote, HighlightColour colour) {
        for (const StringLiteral &literal : literals) {
            if (literal.quote == quote && literal.span.start < limit)
                visitor(literal.span.start, literal.span.end - literal.span.start, colour);
        }
    };
    visit(QLatin1Char('"'), HighlightColour::DoubleQuotedString);
    visit(QLatin1Char('\''), HighlightColour::SingleQuotedString);
}

} // namespace

HighlightSyntax::HighlightSyntax(bool isResultView)
    : m_comments(m_markers, m_literals), m_isResultView(isResultView)
{
}

void HighlightSyntax::setLanguage(const QString &suffix, const QString &languageName)
{
    m_rules.clear();
    if (m_isResultView) {
        m_rules.set(QStringLiteral("Grep"), QRegExp(QStringLiteral("^::[^\n]*")),
                    HighlightColour::FileLine);
        addValueRule();
    }
    const bool hadBlockComments = m_multiLine;
    if (suffix.isEmpty() && languageName.isEmpty()) {
        forgetComments();
        return;
    }
    const LanguageConfig::Definition definition =
        LanguageConfig::instance().definition(suffix, languageName);
    if (definition) {
        addWords(*definition);
    } else {
        qDebug() << suffix << languageName << "LanguageOption Readfile error";
        forgetComments();
    }
    addValueRule();
    if (!hadBlockComments)
        takeBuiltInComment(builtInComment(suffix));
    if (definition) {
        takeSingleLine(definition->singleLine);
        takeBlockComments(definition->multiLineStart, definition->multiLineEnd);
    }
    m_comments = CommentScanner(m_markers, m_literals);
}

/// A file of no language looks the same behind any other.
void HighlightSyntax::forgetComments()
{
    m_markers = CommentMarkers();
    m_multiLine = false;
    m_literals.setSingleQuotes(true);
    m_comments = CommentScanner(m_markers, m_literals);
}

void HighlightSyntax::addWords(const LanguageDefinition &definition)
{
    addRules(m_rules, QStringLiteral("Reserve_%1"), HighlightColour::ReservedWord,
             definition.wordReserve, definition.reserve);
    addRules(m_rules, QStringLiteral("KeyWord_%1"), HighlightColour::Keyword,
             definition.wordKeywords, definition.keywords);
}

void HighlightSyntax::addValueRule()
{
    m_rules.set(QStringLiteral("Value"),
                QRegExp(QStringLiteral("\\btrue\\b|\\bfalse\\b|\\b[0-9]+\\b|\\b0x[0-9A-Fa-f]+\\b")),
                HighlightColour::Value);
}

void HighlightSyntax::takeBuiltInComment(const QString &pattern)
{
    if (pattern.isEmpty() || m_isResultView)
        return;
    m_markers.singleLine = LanguagePattern::compiled(pattern);
    setCommentRule();
}

void HighlightSyntax::takeSingleLine(const QString &pattern)
{
    m_markers.singleLine = LanguagePattern::compiled(pattern);
    if (!pattern.isEmpty())
        m_literals.setSingleQuotes(!pattern.contains(QLatin1Char('\'')));
    if (!m_isResultView)
        setCommentRule();
}

void HighlightSyntax::setCommentRule()
{
    const QString rule = QStringLiteral("Comment");
    if (m_markers.singleLine.isEmpty())
        m_rules.remove(rule);
    else
        m_rules.set(rule, m_markers.singleLine.expression(), HighlightColour::LineComment);
}

void HighlightSyntax::takeBlockComments(const QString &start, const QString &end)
{
    m_markers.multiLineStart = LanguagePattern::compiled(start);
    m_markers.multiLineEnd = LanguagePattern::compiled(end);
    m_multiLine = !m_markers.multiLineStart.isEmpty() && !m_markers.multiLineEnd.isEmpty();
}

bool HighlightSyntax::setFind(int number, const QRegExp &pattern)
{
    const QString rule = HighlightRules::findName(number);
    if (m_rules.expression(rule) == pattern)
        return false;
    if (pattern.isEmpty())
        m_rules.remove(rule);
    else
        m_rules.set(rule, pattern, number == 1 ? HighlightColour::Find1 : HighlightColour::Find2);
    return true;
}

TextSpan HighlightSyntax::visitColours(const Line &line,
                                       const HighlightRules::Visitor &visitor) const
{
    TextSpan lastComment = {-1, -1};
    const auto visitComment = [&](const TextSpan &span, HighlightColour colour) {
        if (span.start < 0 || span.start >= span.end)
            return;
        visitor(span.start, span.end - span.start, colour);
        lastComment = span;
    };

    const QString &text = line.text;
    std::vector<TextSpan> blocks;
    TextSpan lineComment = {-1, text.size()};
    if (m_multiLine) {
        CommentScanner::OpenComments open = {line.openBefore};
        blocks = m_comments.blockComments(text, open);
        lineComment.start = m_comments.lineComment(text, blocks);
    }
    m_rules.visitMatches(text, HighlightRules::Group::Language, line.limit, visitor);
    visitComment(lineComment, HighlightColour::LineComment);
    const int stringsEnd = lineComment.start < 0 ? text.size() : lineComment.start;
    visitStrings(m_comments.stringLiterals(text, blocks, stringsEnd), line.limit, visitor);
    for (const TextSpan &block : blocks)
        visitComment(block, HighlightColour::BlockComment);
    m_rules.visitMatches(text, HighlightRules::Group::Finds, line.limit, visitor);
    return lastComment;
}
