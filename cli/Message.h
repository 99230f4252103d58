#pragma once

#include <QString>

namespace Message {

/// value as an error message shows it: in quotes, control characters escaped,
/// so that the message stays one line.
QString quoted(const QString &value);

} // namespace Message
