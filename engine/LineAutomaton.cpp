#include "engine/LineAutomaton.h"

#include "engine/PatternGraph.h"

#include <algorithm>
#include <map>
#include <utility>

namespace {

using StateSet = std::vector<int>; // ascending

constexpr int kLineFeed = '\n';
constexpr int kCarriageReturn = '\r';

class GraphWalk {
public:
    explicit GraphWalk(const PatternGraph &graph)
        : m_graph(graph), m_isReached(graph.states().size())
    {
    }

    enum class Place { InLine, AtLineEnd };

    /// The states and all that are reached from them without a symbol.
    StateSet closed(const StateSet &states, Place place = Place::InLine) const
    {
        StateSet reached;
        const auto reach = [&](int state) {
            if (!m_isReached[size_t(state)])
                reached.push_back(state);
            m_isReached[size_t(state)] = true;
        };
        for (const int state : states)
            reach(state);
        for (size_t done = 0; done < reached.size(); ++done) {
            const PatternGraph::State &state = m_graph.states()[size_t(reached[done])];
            for (const int next : state.free)
                reach(next);
            if (place == Place::AtLineEnd && state.atLineEnd >= 0)
                reach(state.atLineEnd);
        }
        for (const int state : reached)
            m_isReached[size_t(state)] = false;
        std::sort(reached.begin(), reached.end());
        return reached;
    }

    /// Where symbol leads from the states, closed; a match may begin anywhere.
    StateSet after(const StateSet &states, int symbol, bool stays) const
    {
        StateSet next = {m_graph.start()};
        for (const int state : states) {
            const PatternGraph::State &from = m_graph.states()[size_t(state)];
            if (from.target >= 0 && from.symbols[size_t(symbol)])
                next.push_back(from.target);
            if (stays)
                next.push_back(state);
        }
        return closed(next);
    }

    bool accepts(const StateSet &states) const
    {
        return std::binary_search(states.cbegin(), states.cend(), m_graph.end());
    }

    /// Whether the line may match if it ends here.
    bool acceptsAtLineEnd(const StateSet &states) const
    {
        return accepts(closed(states, Place::AtLineEnd));
    }

private:
    const PatternGraph &m_graph;
    mutable std::vector<bool> m_isReached; // of all states, while they are closed
};

/// Symbols that no edge of the graph tells apart are one class.
class SymbolClasses {
public:
    explicit SymbolClasses(const PatternGraph &graph)
    {
        std::map<std::vector<bool>, int> known;
        for (int symbol = 0; symbol <= PatternGraph::kHigh; ++symbol) {
            std::vector<bool> memberships;
            for (const PatternGraph::State &state : graph.states())
                memberships.push_back(state.symbols[size_t(symbol)]);
            // The ends of lines and what is beyond ASCII are classes of their own.
            for (const int own : {kLineFeed, kCarriageReturn, PatternGraph::kHigh})
                memberships.push_back(symbol == own);
            const auto [place, isNew] = known.emplace(memberships, int(m_symbols.size()));
            if (isNew)
                m_symbols.push_back(symbol);
            m_classes[size_t(symbol)] = std::uint8_t(place->second);
        }
    }

    int classOf(int symbol) const { return m_classes[size_t(symbol)]; }
    /// One symbol of each class.
    const std::vector<int> &symbols() const { return m_symbols; }

private:
    std::array<std::uint8_t, PatternGraph::kHigh + 1> m_classes{};
    std::vector<int> m_symbols;
};

} // namespace

LineAutomaton::LineAutomaton(const QString &pattern, Qt::CaseSensitivity sensitivity)
{
    const PatternGraph graph(pattern, sensitivity);
    if (!graph.isUsable())
        return;
    m_units = machineOf(graph, false);
    if (m_units.usable)
        m_bytes = machineOf(graph, true);
}

/// In bytes a character beyond ASCII may be any number of them, also none at the
/// end of a broken one: whatever was reached stays reached.
LineAutomaton::Machine LineAutomaton::machineOf(const PatternGraph &graph, bool bytes)
{
    const GraphWalk walk(graph);
    const SymbolClasses classes(graph);
    const auto width = std::uint32_t(classes.symbols().size());
    Machine machine;
    const StateSet start = walk.closed({graph.start()});
    // An empty line may match; then what is behind the last line feed would have to be
    // told from a line.
    if (walk.acceptsAtLineEnd(start))
        return machine;
    machine.table.assign(width, 0); // row 0 is the accepted one
    std::map<StateSet, std::uint32_t> rows = {{start, width}};
    std::vector<StateSet> open = {start};
    machine.start = width;
    for (size_t done = 0; done < open.size(); ++done) {
        const StateSet states = open[done];
        const bool mayEnd = walk.acceptsAtLineEnd(states);
        for (const int symbol : classes.symbols()) {
            StateSet next = states;
            // A carriage return may be all that ends a line.
            const bool isEnd = symbol == kLineFeed || symbol == kCarriageReturn;
            if (symbol == kLineFeed)
                next = start;
            else if (!isEnd)
                next = walk.after(states, symbol, bytes && symbol == PatternGraph::kHigh);
            std::uint32_t row = machine.accepted;
            if (!(isEnd && mayEnd) && !walk.accepts(next)) {
                const auto newRow = std::uint32_t(open.size() + 1) * width;
                const auto [place, isNew] = rows.emplace(next, newRow);
                if (isNew && open.size() >= size_t(kMostStates))
                    return Machine();
                if (isNew)
                    open.push_back(next);
                row = place->second;
            }
            machine.table.push_back(row);
        }
    }
    for (int unit = 0; unit < 256; ++unit)
        machine.classes[size_t(unit)] =
            std::uint8_t(classes.classOf(std::min(unit, PatternGraph::kHigh)));
    machine.usable = true;
    return machine;
}

template <typename Unit>
qint64 LineAutomaton::Machine::next(const Unit *text, qint64 size, qint64 from) const
{
    const auto step = [this](std::uint32_t row, Unit unit) {
        const size_t index = sizeof(Unit) == 1 ? size_t(unit) : std::min<size_t>(unit, 0xFF);
        return table[row + classes[index]];
    };
    std::uint32_t row = start;
    qint64 at = from;
    // Accepted once is accepted for good, so that it need not be asked each time.
    constexpr qint64 kTogether = 8;
    for (; at + kTogether <= size; at += kTogether) {
        std::uint32_t reached = row;
        for (qint64 i = 0; i < kTogether; ++i)
            reached = step(reached, text[at + i]);
        if (reached == accepted)
            break;
        row = reached;
    }
    for (; at < size; ++at) {
        row = step(row, text[at]);
        if (row == accepted)
            return at;
    }
    // Where the text ends, its last line does.
    return step(row, Unit(kLineFeed)) == accepted ? size - 1 : -1;
}

qint64 LineAutomaton::next(QStringView text, qint64 from) const
{
    return m_units.next(text.utf16(), text.size(), from);
}

qint64 LineAutomaton::nextInAscii(const char *bytes, qint64 size, qint64 from) const
{
    return m_units.next(reinterpret_cast<const uchar *>(bytes), size, from);
}

qint64 LineAutomaton::nextInBytes(const char *bytes, qint64 size, qint64 from) const
{
    return m_bytes.next(reinterpret_cast<const uchar *>(bytes), size, from);
}
