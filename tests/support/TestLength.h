#pragma once

#include <QtGlobal>

/// How long generated tests are: every run makes enough cases to catch what
/// breaks often, `scripts/test --long` enough for what hardly ever does.
namespace TestLength {

/// normal, or longRun while SARVIK_TEST_LONG is set.
inline int rounds(int normal, int longRun)
{
    return qEnvironmentVariableIsSet("SARVIK_TEST_LONG") ? longRun : normal;
}

} // namespace TestLength
