#include "settings/WindowSize.h"

#include <QGuiApplication>
#include <QScreen>

namespace WindowSize {

namespace {

int clampedLength(int stored, int lowerBound, int desktop)
{
    constexpr int kReplacement = 800;
    const bool tooLong = desktop > 0 && stored > desktop;
    return stored <= lowerBound || tooLong ? kReplacement : stored;
}

} // namespace

QSize clamped(const QSize &stored, const QSize &desktop)
{
    return {clampedLength(stored.width(), 600, desktop.width()),
            clampedLength(stored.height(), 400, desktop.height())};
}

QSize desktop()
{
    const QScreen *screen = QGuiApplication::primaryScreen();
    return screen ? screen->virtualSize() : QSize();
}

} // namespace WindowSize
