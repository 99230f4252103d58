#include <windows.h>

// What the companion editor does when it has changed the keyword history.
int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int)
{
    const UINT message = RegisterWindowMessageA("sarvedit broadcast message");
    return PostMessageA(HWND_BROADCAST, message, GetCurrentThreadId(), 7) != 0 ? 0 : 1;
}
