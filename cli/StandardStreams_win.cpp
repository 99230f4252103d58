#include "cli/StandardStreams.h"

#include <windows.h>

namespace {

HANDLE handleOf(StandardStreams::Stream stream)
{
    return GetStdHandle(stream == StandardStreams::Stream::Output ? STD_OUTPUT_HANDLE
                                                                  : STD_ERROR_HANDLE);
}

QString systemMessage(DWORD code)
{
    return QStringLiteral("system error %1").arg(code);
}

} // namespace

void StandardStreams::prepare()
{
    SetConsoleOutputCP(CP_UTF8);
    for (const Stream stream : {Stream::Output, Stream::Error}) {
        DWORD mode = 0;
        if (GetConsoleMode(handleOf(stream), &mode))
            SetConsoleMode(handleOf(stream), mode | ENABLE_VIRTUAL_TERMINAL_PROCESSING);
    }
}

bool StandardStreams::isTerminal(Stream stream)
{
    DWORD mode = 0;
    return GetConsoleMode(handleOf(stream), &mode) != 0;
}

int StandardStreams::terminalColumns(Stream stream)
{
    constexpr int kUsualColumns = 80;
    CONSOLE_SCREEN_BUFFER_INFO info;
    if (!GetConsoleScreenBufferInfo(handleOf(stream), &info))
        return kUsualColumns;
    return info.srWindow.Right - info.srWindow.Left + 1;
}

StandardStreams::WriteResult StandardStreams::write(Stream stream, const QByteArray &bytes,
                                                    const std::function<bool()> &giveUp,
                                                    QString *errorText)
{
    DWORD done = 0;
    const DWORD size = static_cast<DWORD>(bytes.size());
    while (done < size) {
        DWORD count = 0;
        if (WriteFile(handleOf(stream), bytes.constData() + done, size - done, &count, nullptr)) {
            done += count;
            continue;
        }
        const DWORD code = GetLastError();
        if (code == ERROR_BROKEN_PIPE || code == ERROR_NO_DATA || giveUp())
            return WriteResult::Closed;
        *errorText = systemMessage(code);
        return WriteResult::Failed;
    }
    return WriteResult::Written;
}
