#include "engine/RegularFile.h"

#include "engine/WindowsName.h"

#include <algorithm>
#include <qt_windows.h>

namespace {

HANDLE handleOf(qintptr handle)
{
    return reinterpret_cast<HANDLE>(handle);
}

// A name that is opened may be a device's ("CON"), which the attributes tell
// without opening it.
bool isDevice(const std::wstring &name)
{
    const DWORD attributes = GetFileAttributesW(name.c_str());
    return attributes == INVALID_FILE_ATTRIBUTES || (attributes & FILE_ATTRIBUTE_DEVICE) != 0;
}

} // namespace

RegularFile::RegularFile(const QString &path, TypeCheck check)
{
    const std::wstring name = WindowsName::of(path);
    if (check == TypeCheck::BeforeOpen && isDevice(name))
        return;
    const HANDLE handle = CreateFileW(name.c_str(), GENERIC_READ,
                                      FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                      nullptr, OPEN_EXISTING, FILE_FLAG_SEQUENTIAL_SCAN, nullptr);
    if (handle == INVALID_HANDLE_VALUE)
        return;
    LARGE_INTEGER size = {};
    if (GetFileType(handle) != FILE_TYPE_DISK || GetFileSizeEx(handle, &size) == 0) {
        CloseHandle(handle);
        return;
    }
    m_handle = reinterpret_cast<qintptr>(handle);
    m_size = size.QuadPart;
}

RegularFile::~RegularFile()
{
    if (isOpen())
        CloseHandle(handleOf(m_handle));
}

qint64 RegularFile::readSome(char *buffer, qint64 maximum)
{
    if (!isOpen())
        return 0;
    constexpr qint64 kLargestRead = 1 << 30; // the call counts in 32 bits
    const DWORD wanted = DWORD(std::min(maximum, kLargestRead));
    DWORD got = 0;
    return ReadFile(handleOf(m_handle), buffer, wanted, &got, nullptr) == 0 ? -1 : qint64(got);
}

void RegularFile::rewind()
{
    if (isOpen())
        SetFilePointerEx(handleOf(m_handle), LARGE_INTEGER(), nullptr, FILE_BEGIN);
}
