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

void HighlightRules::forget()
{
    m_prepared = false;
    m_finds = Finds();
}

void HighlightRules::clear()
{
    m_rules.clear();
    forget();
}

void HighlightRules::remove(const QString &name)
{
    m_rules.erase(name);
    forget();
}

void HighlightRules::put(const QString &name, Rule rule)
{
    if (!(name < QLatin1String("z")))
        rule.finder = LineFinder(rule.expression);
    m_rules[name] = std::move(rule);
    forget();
}

void HighlightRules::set(const QString &name, const QRegExp &expression, HighlightColour colour)
{
    put(name, {expression, colour, QString(), LineFinder()});
}

void HighlightRules::setWord(const QString &name, const QString &word, HighlightColour colour)
{
    if (isPlainWord(word)) {
        put(name, {QRegExp(), colour, word, LineFinder()});
        return;
    }
    const QLatin1String boundary("\\b");
    put(name,
        {LanguagePattern::compiled(boundary + word + boundary), colour, QString(), LineFinder()});
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

bool HighlightRules::lookForFinds(const QString &text, int limit,
                                  const std::function<bool()> &isTimeUp) const
{
    prepare();
    const int end = std::min(limit, text.size());
    if (m_finds.limit != end || m_finds.text != text)
        m_finds = {text, end, m_firstFind, 0, {}};
    bool isFirst = true;
    while (m_finds.order < static_cast<int>(m_order.size())) {
        if (!isFirst && isTimeUp())
            return false;
        isFirst = false;
        LineFinder &finder = m_order[static_cast<std::size_t>(m_finds.order)]->finder;
        const LineFinder::Look look = finder.lookForward(text, m_finds.from, end);
        m_finds.from = look.next;
        if (look.match.isValid())
            m_finds.matches.push_back({m_finds.order, look.match.start, look.match.length});
        if (look.next >= end) {
            ++m_finds.order;
            m_finds.from = 0;
        }
    }
    return true;
}

void HighlightRules::visitFinds(const QString &text, int limit, const Visitor &visitor) const
{
    lookForFinds(text, limit, [] { return false; });
    for (const Match &match : m_finds.matches)
        visitor(match.start, match.length, m_order[static_cast<std::size_t>(match.order)]->colour);
}

void HighlightRules::visitMatches(const QString &text, Group group, int limit,
                                  const Visitor &visitor) const
{
    if (group == Group::Finds)
        return visitFinds(text, limit, visitor);
    prepare();
    const std::vector<Match> words = wordMatches(text, limit);
    auto word = words.begin();
    for (int place = 0; place < m_firstFind; ++place) {
        const Rule &rule = *m_order[static_cast<std::size_t>(place)];
        for (; word != words.end() && word->order == place; ++word)
            visitor(word->start, word->length, rule.colour);
        visitRule(rule, text, limit, visitor);
    }
}
