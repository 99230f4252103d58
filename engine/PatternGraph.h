#pragma once

#include <QHash>
#include <QString>

#include <bitset>
#include <vector>

/// A pattern in QRegExp's classic syntax as a graph that accepts at least the
/// texts that the pattern can match: it may accept too much, never too little.
///
/// 1. Which ASCII characters a single character, a class or an escape stands for
///    is asked of QRegExp itself. All characters beyond ASCII are one symbol,
///    High; it is left out only where none of them can match.
/// 2. "^", word boundaries and lookaheads are taken as fulfilled, a
///    back-reference as any text. "$" is fulfilled at the end of a line only.
/// 3. A count above kMostCopies counts as that many and more.
///
/// Of what it cannot follow, and of patterns that grow beyond kMostStates, it
/// makes no graph.
class PatternGraph {
public:
    static constexpr int kHigh = 128;
    static constexpr int kMostCopies = 16;
    static constexpr int kMostStates = 1000;
    using Symbols = std::bitset<kHigh + 1>;

    struct State {
        /// Left by one of the symbols to the target; -1: there is no such edge.
        int target = -1;
        Symbols symbols;
        /// Left without a symbol.
        std::vector<int> free;
        /// Left without a symbol where the line ends; -1: not.
        int atLineEnd = -1;
    };

    /// pattern must be one that QRegExp accepts.
    PatternGraph(const QString &pattern, Qt::CaseSensitivity sensitivity);

    bool isUsable() const { return !m_failed; }
    const std::vector<State> &states() const { return m_states; }
    int start() const { return m_whole.start; }
    int end() const { return m_whole.end; }

private:
    /// A part of the graph with one state to enter and one to leave it.
    struct Part {
        int start = 0;
        int end = 0;
    };
    struct Count {
        int least = 1;
        int most = 1; // -1: without limit
    };

    bool atEnd() const { return m_at >= m_pattern.size(); }
    ushort current() const { return atEnd() ? 0 : m_pattern.at(m_at).unicode(); }
    ushort take();
    bool takeIf(ushort unit);
    int takeNumber(int fallback);
    void takeDigits(int maxCount, int base);

    Part expression();
    Part term();
    Part factor();
    Part atom();
    Part group();
    Part characterClass(int from);
    Part escape(int from);
    Count count();
    Count braces();
    Part repeated(const Part &first, int from, const Count &count);

    int newState();
    Part nothing();
    Part lineEnd();
    Part oneOf(const Symbols &symbols);
    Part anyText();
    Part single(int from, bool high);
    Part joined(const Part &first, const Part &second);
    void connect(int from, int to) { m_states[size_t(from)].free.push_back(to); }
    Symbols asciiOf(const QString &text);
    bool mayMatchHigh(ushort character) const;
    bool mayMatchHigh(const Symbols &symbols) const;

    QString m_pattern;
    Qt::CaseSensitivity m_sensitivity;
    QHash<QString, int> m_asked; // text of a single, to the state that has its symbols
    std::vector<State> m_states;
    Part m_whole;
    int m_at = 0;
    int m_depth = 0;
    bool m_failed = false;
};
