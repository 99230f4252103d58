#include "view/ProgramLauncher.h"

#include <QDir>

#include <vector>

#include <windows.h>

#include <shellapi.h>

namespace {

class WindowsLauncher : public ProgramLauncher {
public:
    PathStyle pathStyle() const override { return PathStyle::Windows; }
    bool startDetached(const LaunchCommand &command) override;
    bool open(const LaunchCommand &command) override;
};

const wchar_t *wide(const QString &text)
{
    return reinterpret_cast<const wchar_t *>(text.utf16());
}

void enter(const QString &directory)
{
    if (!directory.isEmpty())
        QDir::setCurrent(directory);
}

/// The line goes to the system as it stands; the toolkit's process class would
/// take it apart and quote it its own way.
bool WindowsLauncher::startDetached(const LaunchCommand &command)
{
    enter(command.directory);
    const QString line = LaunchRules::commandLine(command);
    // The system may write into the buffer.
    std::vector<wchar_t> buffer(static_cast<size_t>(line.size()) + 1);
    line.toWCharArray(buffer.data());
    STARTUPINFOW startup = {};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process = {};
    if (!CreateProcessW(nullptr, buffer.data(), nullptr, nullptr, FALSE, CREATE_NEW_CONSOLE,
                        nullptr, nullptr, &startup, &process))
        return false;
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    return true;
}

bool WindowsLauncher::open(const LaunchCommand &command)
{
    enter(command.directory);
    const QString program = LaunchRules::quotedIfBlank(command.program);
    const HINSTANCE result = ShellExecuteW(nullptr, L"open", wide(program),
                                           wide(command.parameters), nullptr, SW_SHOWNORMAL);
    constexpr INT_PTR kFirstSuccess = 32;
    return reinterpret_cast<INT_PTR>(result) >= kFirstSuccess;
}

} // namespace

ProgramLauncher::~ProgramLauncher() = default;

ProgramLauncher &ProgramLauncher::native()
{
    static WindowsLauncher launcher;
    return launcher;
}
