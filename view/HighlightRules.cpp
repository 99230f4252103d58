#include "view/HighlightRules.h"

#include "view/LanguagePattern.h"

#include <QElapsedTimer>

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

bool isLong(const QString &text)
{
    return text.size() > LinePattern::kShortLine;
}

} // namespace

QString HighlightRules::findName(int number)
{
    return QStringLiteral("zFind_%1").arg(number);
}

void HighlightRules::forget()
{
    m_prepared = false;
    m_known = Known();
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
    if (name < QLatin1String("z"))
        rule.pattern = LinePattern(rule.expression, kSight);
    else
        rule.finder = LineFinder(rule.expression);
    m_rules[name] = std::move(rule);
    forget();
}

void HighlightRules::set(const QString &name, const QRegExp &expression, HighlightColour colour)
{
    put(name, {expression, colour, QString(), {}, {}});
}

void HighlightRules::setWord(const QString &name, const QString &word, HighlightColour colour)
{
    if (isPlainWord(word)) {
        put(name, {QRegExp(), colour, word, {}, {}});
        return;
    }
    const QLatin1String boundary("\\b");
    put(name, {LanguagePattern::compiled(boundary + word + boundary), colour, QString(), {}, {}});
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

void HighlightRules::visitRule(const Rule &rule, const QString &text, int limit,
                               const Visitor &visitor)
{
    if (rule.expression.isEmpty())
        return;
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

bool HighlightRules::lookForMatches(const QString &text, int limit,
                                    const std::function<bool()> &isTimeUp) const
{
    prepare();
    const int end = std::min(limit, text.size());
    if (m_known.limit != end || m_known.text != text) {
        m_known = Known();
        m_known.text = text;
        m_known.limit = end;
        // In a short text the language's rules take no time.
        m_known.order = isLong(text) ? 0 : m_firstFind;
    }
    bool isFirst = true;
    while (m_known.order < static_cast<int>(m_order.size())) {
        if (!isFirst && isTimeUp())
            return false;
        isFirst = false;
        look();
    }
    return true;
}

void HighlightRules::look() const
{
    const Rule &rule = *m_order[static_cast<std::size_t>(m_known.order)];
    if (m_known.order >= m_firstFind)
        return lookForFind(rule);
    QElapsedTimer timer;
    timer.start();
    lookForLanguage(rule);
    const qint64 spent = timer.nsecsElapsed();
    const qint64 atOnceLeft = qint64(kAtOnceMilliseconds) * 1000 * 1000 - m_known.nanoseconds;
    m_nanosecondsAtOnce += std::clamp(atOnceLeft, qint64(0), spent);
    m_known.nanoseconds += spent;
    if (m_known.order < m_firstFind
        && m_known.nanoseconds >= qint64(m_patienceMilliseconds) * 1000 * 1000)
        goOnToRule(m_firstFind);
}

void HighlightRules::lookForLanguage(const Rule &rule) const
{
    if (!m_known.walk)
        m_known.walk.emplace(rule.pattern, m_known.text, m_known.limit);
    const LinePatternWalk::Look look = m_known.walk->look(m_known.from);
    if (!look.isDone)
        return;
    if (!look.match.isValid())
        return goOnToRule(m_known.order + 1);
    m_known.matches.push_back({m_known.order, look.match.start, look.match.length});
    m_known.from = look.match.start + look.match.length;
}

void HighlightRules::lookForFind(const Rule &rule) const
{
    const LineFinder::Look look =
        rule.finder.lookForward(m_known.text, m_known.from, m_known.limit);
    m_known.from = look.next;
    if (look.match.isValid())
        m_known.matches.push_back({m_known.order, look.match.start, look.match.length});
    if (look.next >= m_known.limit)
        goOnToRule(m_known.order + 1);
}

void HighlightRules::goOnToRule(int order) const
{
    m_known.order = order;
    m_known.from = 0;
    m_known.walk.reset();
}

/// What is known of the rules from order to end.
void HighlightRules::visitKnown(int order, int end, const Visitor &visitor) const
{
    const auto first = std::partition_point(m_known.matches.begin(), m_known.matches.end(),
                                            [&](const Match &m) { return m.order < order; });
    for (auto match = first; match != m_known.matches.end() && match->order < end; ++match)
        visitor(match->start, match->length,
                m_order[static_cast<std::size_t>(match->order)]->colour);
}

void HighlightRules::visitMatches(const QString &text, Group group, int limit,
                                  const Visitor &visitor) const
{
    prepare();
    if (group == Group::Finds || isLong(text))
        lookForMatches(text, limit, [] { return false; });
    if (group == Group::Finds)
        return visitKnown(m_firstFind, static_cast<int>(m_order.size()), visitor);
    const std::vector<Match> words = wordMatches(text, limit);
    auto word = words.begin();
    for (int place = 0; place < m_firstFind; ++place) {
        const Rule &rule = *m_order[static_cast<std::size_t>(place)];
        for (; word != words.end() && word->order == place; ++word)
            visitor(word->start, word->length, rule.colour);
        if (isLong(text))
            visitKnown(place, place + 1, visitor);
        else
            visitRule(rule, text, limit, visitor);
    }
}
