#include "view/HighlightRules.h"

#include "view/LanguagePattern.h"

#include <algorithm>

namespace {

/// As QRegExp decides where "\b" matches.
bool isWordCharacter(QChar c)
{
    return c.isLetterOrNumber() || c.isMark() || c == QLatin1Char('_');
}

bool isPlainWord(const QString &text)
{
    return !text.isEmpty() && std::all_of(text.begin(), text.end(), isWordCharacter);
}

} // namespace

QString HighlightRules::findName(int number)
{
    return QStringLiteral("zFind_%1").arg(number);
}

void HighlightRules::clear()
{
    m_rules.clear();
    m_prepared = false;
}

void HighlightRules::remove(const QString &name)
{
    m_rules.erase(name);
    m_prepared = false;
}

void HighlightRules::put(const QString &name, Rule rule)
{
    m_rules[name] = std::move(rule);
    m_prepared = false;
}

void HighlightRules::set(const QString &name, const QRegExp &expression, HighlightColour colour)
{
    put(name, {expression, colour, QString()});
}

void HighlightRules::setWord(const QString &name, const QString &word, HighlightColour colour)
{
    if (isPlainWord(word)) {
        put(name, {QRegExp(), colour, word});
        return;
    }
    const QLatin1String boundary("\\b");
    put(name, {LanguagePattern::compiled(boundary + word + boundary), colour, QString()});
}

QRegExp HighlightRules::expression(const QString &name) const
{
    const auto found = m_rules.find(name);
    return found == m_rules.end() ? QRegExp() : found->second.expression;
}

QStringList HighlightRules::names() const
{
    QStringList names;
    for (const auto &rule : m_rules)
        names.append(rule.first);
    return names;
}

void HighlightRules::prepare() const
{
    if (m_prepared)
        return;
    m_order.clear();
    m_words.clear();
    m_firstFind = 0;
    for (const auto &[name, rule] : m_rules) {
        const int place = static_cast<int>(m_order.size());
        m_order.push_back(&rule);
        if (!rule.word.isEmpty())
            m_words[QStringView(rule.word)].append(place);
        if (name < QLatin1String("z"))
            m_firstFind = place + 1;
    }
    m_prepared = true;
}

std::vector<HighlightRules::Match> HighlightRules::wordMatches(const QString &text, int limit) const
{
    std::vector<Match> matches;
    const auto stop = text.begin() + std::min(limit, text.size());
    for (auto start = text.begin(); !m_words.isEmpty();) {
        start = std::find_if(start, stop, isWordCharacter);
        if (start == stop)
            break;
        const auto end = std::find_if_not(start, text.end(), isWordCharacter);
        const int length = static_cast<int>(end - start);
        const auto known = m_words.constFind(QStringView(start, length));
        if (known != m_words.constEnd()) {
            for (int place : *known)
                matches.push_back({place, static_cast<int>(start - text.begin()), length});
        }
        start = end;
    }
    std::stable_sort(matches.begin(), matches.end(),
                     [](const Match &a, const Match &b) { return a.order < b.order; });
    return matches;
}

void HighlightRules::visitRule(const Rule &rule, const QString &wholeText, int limit,
                               const Visitor &visitor)
{
    if (rule.expression.isEmpty())
        return;
    // Where a long text has no match, each rule would walk to its end.
    const int seen = wholeText.size() - limit > kLongText ? limit + kLongText : wholeText.size();
    const QString text = QString::fromRawData(wholeText.constData(), seen);
    int from = 0;
    while (from <= text.size()) {
        const int start = rule.expression.indexIn(text, from);
        if (start < 0 || start >= limit)
            return;
        const int length = rule.expression.matchedLength();
        if (length > 0)
            visitor(start, length, rule.colour);
        from = start + std::max(length, 1);
    }
}

void HighlightRules::visitRuleByPieces(const Rule &rule, const QString &text, int limit,
                                       const Visitor &visitor)
{
    constexpr int kPiece = 1024;
    // What begins near the end of a piece is seen whole up to this length.
    constexpr int kBeyond = 256;
    if (rule.expression.isEmpty())
        return;
    const int end = std::min(limit, text.size());
    int from = 0;
    for (int piece = 0; piece < end; piece += kPiece) {
        // From the start of the text, so that "^" does not match inside it.
        const int seen = std::min(piece + kPiece + kBeyond, text.size());
        const QString upToHere = QString::fromRawData(text.constData(), seen);
        const int pieceEnd = std::min(piece + kPiece, end);
        from = std::max(from, piece);
        while (from < pieceEnd) {
            const int start = rule.expression.indexIn(upToHere, from);
            if (start < 0 || start >= pieceEnd)
                break;
            const int length = rule.expression.matchedLength();
            if (length > 0)
                visitor(start, length, rule.colour);
            from = start + std::max(length, 1);
        }
    }
}

void HighlightRules::visitMatches(const QString &text, Group group, int limit,
                                  const Visitor &visitor) const
{
    prepare();
    const bool finds = group == Group::Finds;
    const std::vector<Match> words = finds ? std::vector<Match>() : wordMatches(text, limit);
    auto word = words.begin();
    const int end = finds ? static_cast<int>(m_order.size()) : m_firstFind;
    for (int place = finds ? m_firstFind : 0; place < end; ++place) {
        const Rule &rule = *m_order[static_cast<std::size_t>(place)];
        for (; word != words.end() && word->order == place; ++word)
            visitor(word->start, word->length, rule.colour);
        if (finds && text.size() >= kLongText)
            visitRuleByPieces(rule, text, limit, visitor);
        else
            visitRule(rule, text, limit, visitor);
    }
}
