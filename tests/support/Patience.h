#pragma once

/// How long a test waits for what must come, on however busy a machine; one that
/// passes never waits so long.
constexpr int kPatienceMilliseconds = 60000;
