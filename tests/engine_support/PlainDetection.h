#pragma once

#include <QByteArray>

#include <array>

/// What detection finds in a sample.
struct Detected {
    int codeSet = -1;
    int lineEnd = -1;
    bool bom = false;

    /// As the engine's detector finds it.
    static Detected byEngine(const QByteArray &sample, int detectSize);
};

inline bool operator==(const Detected &one, const Detected &other)
{
    return one.codeSet == other.codeSet && one.lineEnd == other.lineEnd && one.bom == other.bom;
}

/// The rule of detection once more, as plainly as it can be written: the measure
/// for the vectorised one.
namespace PlainDetection {

struct Range {
    qint32 first;
    qint32 last;
};

/// Ends included; what lies in none of them is unassigned.
extern const std::array<Range, 32> kAssigned;

bool isUnassigned(qint32 value);
Detected detect(const QByteArray &sample, int detectSize);

} // namespace PlainDetection
