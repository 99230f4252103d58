#pragma once

#include <QByteArray>
#include <QString>

#include <functional>

/// The program's three streams, without a text layer: what is written arrives
/// byte for byte on every platform.
namespace StandardStreams {

enum class Stream { Output = 1, Error = 2 };

enum class WriteResult {
    Written,
    Closed, ///< the reader of the pipe is gone, or the write was given up
    Failed ///< see errorText
};

/// To be called once before the first write: a closed pipe must be an error of
/// the write, not the end of the process, and a console must show UTF-8.
void prepare();

bool isTerminal(Stream stream);
/// Columns of the terminal behind stream; 80 when it does not tell.
int terminalColumns(Stream stream);

/// Writes all of bytes. Where a signal interrupts the write, giveUp decides
/// whether the rest is dropped. On failure errorText gets the system's reason.
WriteResult write(Stream stream, const QByteArray &bytes, const std::function<bool()> &giveUp,
                  QString *errorText);

} // namespace StandardStreams
