#include "view/StringLiterals.h"

namespace {

/// Where the part ends in which a literal hides what else begins there. An
/// apostrophe closes nothing and hides nothing; a double quote is one in code only.
int endOfHidden(const StringLiteral &literal, StringLiterals::Context context)
{
    const bool isOneWithoutEnd =
        context == StringLiterals::Context::Code && literal.quote == QLatin1Char('"');
    return literal.closed || isOneWithoutEnd ? literal.span.end : literal.span.start + 1;
}

} // namespace

/// Of the literals that begin before before.
bool StringLiterals::nextLiteral(const QString &text, const TextSpan &range, int before,
                                 Context context, StringLiteral &literal) const
{
    const auto opens = [&](int position) {
        const QChar c = text.at(position);
        if (c != QLatin1Char('\'') || !m_singleQuotes)
            return c == QLatin1Char('"');
        return context == Context::Code || position == 0
            || !text.at(position - 1).isLetterOrNumber();
    };
    int start = range.start;
    while (start < before && !opens(start))
        ++start;
    if (start >= before)
        return false;
    literal.quote = text.at(start);
    // An expression takes longer to begin than most literals to walk through.
    const int quote = text.indexOf(literal.quote, start + 1);
    const int close = quote < 0 ? text.size() : quote;
    literal.closed = close < range.end;
    literal.span = {start, literal.closed ? close + 1 : range.end};
    return true;
}

std::vector<StringLiteral> StringLiterals::find(const QString &text, const TextSpan &range) const
{
    std::vector<StringLiteral> literals;
    StringLiteral literal;
    for (int from = range.start;
         nextLiteral(text, {from, range.end}, range.end, Context::Code, literal);) {
        from = endOfHidden(literal, Context::Code);
        literals.push_back(literal);
    }
    return literals;
}

TextSpan StringLiterals::findOutside(const Finder &find, const QString &text, int from, int end,
                                     Context context) const
{
    TextSpan match = find(from);
    StringLiteral literal;
    int quotesFrom = from;
    while (match.start >= 0 && match.start < end
           && nextLiteral(text, {quotesFrom, text.size()}, match.start, context, literal)) {
        quotesFrom = endOfHidden(literal, context);
        if (match.start < quotesFrom)
            match = find(quotesFrom);
    }
    return match.start < end ? match : TextSpan{-1, -1};
}
