#include <cwchar>

#include <windows.h>

namespace {

// What was asked of the pipe's other end, or its end.
void waitForTheOther()
{
    char byte = 0;
    DWORD count = 0;
    ReadFile(GetStdHandle(STD_INPUT_HANDLE), &byte, 1, &count, nullptr);
}

} // namespace

// FileHolder PATH SHARED: holds the file open as another program does, with what it
// shares (FILE_SHARE_...) as a number, until its input ends; says "held" once it does.
int wmain(int count, wchar_t *arguments[])
{
    if (count != 3)
        return 2;
    const HANDLE file = CreateFileW(arguments[1], GENERIC_READ | GENERIC_WRITE,
                                    DWORD(std::wcstoul(arguments[2], nullptr, 10)), nullptr,
                                    OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        return 1;
    DWORD written = 0;
    WriteFile(GetStdHandle(STD_OUTPUT_HANDLE), "held\n", 5, &written, nullptr);
    waitForTheOther();
    CloseHandle(file);
    return 0;
}
