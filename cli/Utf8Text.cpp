#include "cli/Utf8Text.h"

#include <limits>
#include <new>

namespace {

/// What an array may hold, less what it takes for itself.
constexpr qint64 kMostBytes = std::numeric_limits<int>::max() - 64;

/// Writes the ASCII that text begins with, or nearly all of it, to out; returns
/// how much.
qint64 narrow(QStringView text, char *out)
{
    // In blocks, so that the compiler can look at many units at once.
    constexpr qint64 kBlock = 16;
    const auto *const units = text.utf16();
    qint64 done = 0;
    for (; done + kBlock <= text.size(); done += kBlock) {
        char16_t joined = 0;
        for (qint64 i = done; i < done + kBlock; ++i)
            joined = char16_t(joined | units[i]);
        if (joined >= 0x80)
            return done;
        for (qint64 i = done; i < done + kBlock; ++i)
            out[i] = char(units[i]);
    }
    for (; done < text.size() && units[done] < 0x80; ++done)
        out[done] = char(units[done]);
    return done;
}

} // namespace

void Utf8Text::append(QByteArray *bytes, QStringView text)
{
    const int before = bytes->size();
    // As QByteArray does where it grows by itself; with resize() the sum would be
    // negative, and the array empty.
    if (text.size() > kMostBytes - before)
        throw std::bad_alloc();
    bytes->resize(before + int(text.size()));
    const qint64 done = narrow(text, bytes->data() + before);
    if (done == text.size())
        return;
    bytes->truncate(before + int(done));
    bytes->append(text.mid(done).toUtf8());
}
