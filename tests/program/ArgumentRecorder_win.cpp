#include <string>

#include <windows.h>

// The editor's stand-in: keeps its command line, in UTF-8, in the file "arguments"
// beside itself, once there is no file "hold" there.
int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int)
{
    wchar_t own[MAX_PATH];
    const std::wstring folder(own, GetModuleFileNameW(nullptr, own, MAX_PATH));
    const std::wstring beside = folder.substr(0, folder.rfind(L'\\') + 1);
    while (GetFileAttributesW((beside + L"hold").c_str()) != INVALID_FILE_ATTRIBUTES)
        Sleep(10);
    const std::wstring file = beside + L"arguments";
    const wchar_t *const line = GetCommandLineW();
    char bytes[0x8000];
    const int size =
        WideCharToMultiByte(CP_UTF8, 0, line, -1, bytes, sizeof bytes, nullptr, nullptr);
    const std::wstring unfinished = file + L".new";
    const HANDLE handle = CreateFileW(unfinished.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                                      FILE_ATTRIBUTE_NORMAL, nullptr);
    if (handle == INVALID_HANDLE_VALUE || size == 0)
        return 1;
    DWORD written = 0;
    const bool done = WriteFile(handle, bytes, DWORD(size - 1), &written, nullptr) != 0;
    CloseHandle(handle);
    return done && MoveFileW(unfinished.c_str(), file.c_str()) != 0 ? 0 : 1;
}
