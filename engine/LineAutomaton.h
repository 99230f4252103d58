#pragma once

#include <QString>

#include <array>
#include <cstdint>
#include <vector>

class PatternGraph;

/// Finds the lines that a pattern may match by one look at each character,
/// whatever the pattern: for those whose matches have no literal in common. It
/// finds too many lines, never too few; what a line holds is for the pattern to
/// decide. Carriage returns are passed over, as the decoder drops them.
///
/// Immutable; any number of threads may use one object.
class LineAutomaton {
public:
    static constexpr int kMostStates = 2000;

    /// Not usable.
    LineAutomaton() = default;
    /// pattern as it is matched, with its word boundaries; one that QRegExp accepts.
    LineAutomaton(const QString &pattern, Qt::CaseSensitivity sensitivity);

    /// False: every line may match, or the automaton would be too large.
    bool isUsable() const { return m_units.usable; }

    /// A position on the first line, of those that begin at or after from, that
    /// may match; -1 if there is none. from is where a line begins. Only if
    /// usable.
    qint64 next(QStringView text, qint64 from) const;

    /// The same in bytes that are ASCII.
    qint64 nextInAscii(const char *bytes, qint64 size, qint64 from) const;

    /// False: not usable, or the automaton would be too large for bytes beyond ASCII, of
    /// which a character may have any number.
    bool isUsableInBytes() const { return m_bytes.usable; }
    /// The same in bytes that are ASCII or UTF-8, broken or not. Only if usable in bytes.
    qint64 nextInBytes(const char *bytes, qint64 size, qint64 from) const;

private:
    /// A step leads from one row of the table, by the class of the character, to
    /// another row; rows are told by where they begin.
    struct Machine {
        bool usable = false;
        std::array<std::uint8_t, 256> classes{}; // above 127 all the same
        std::vector<std::uint32_t> table;
        std::uint32_t start = 0;
        std::uint32_t accepted = 0; // no other row follows

        template <typename Unit> qint64 next(const Unit *text, qint64 size, qint64 from) const;
    };

    static Machine machineOf(const PatternGraph &graph, bool bytes);

    Machine m_units;
    Machine m_bytes;
};
