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

/// To be called once, before the program opens anything: a closed pipe must be
/// an error of the write, not the end of the process; a stream that the program
/// was started without must not become the first file that it opens; and a
/// console must show UTF-8.
void prepare();

bool isTerminal(Stream stream);
/// Columns of the terminal behind stream; 80 when it does not tell.
int terminalColumns(Stream stream);

/// Writes all of bytes, which are whole lines. While the stream has no room,
/// giveUp is asked every 50 ms, on this thread; once it says true the rest is
/// dropped, but a line that has begun is finished as long as somebody reads.
/// Lines of up to 4 KiB never mix with those of other processes on one pipe.
/// Nothing can be written to an output that was closed when the program
/// started; messages to a closed Error stream are dropped in silence. errorText
/// gets the system's reason with Failed, and is left alone otherwise.
WriteResult write(Stream stream, const QByteArray &bytes, const std::function<bool()> &giveUp,
                  QString *errorText);

} // namespace StandardStreams
