#include "mainwindow/WindowLayout.h"

#include "mainwindow/ScreenPlace.h"
#include "settings/AppSettings.h"
#include "settings/WindowSize.h"

#include <QGuiApplication>
#include <QMainWindow>
#include <QMargins>
#include <QScreen>
#include <QSplitter>

namespace WindowLayout {

namespace {

bool isStored(const QByteArray &state)
{
    return state.size() > 1;
}

/// What the window manager will put around the window, which is not known before
/// the window is shown: what it put there the last time, or what most put above
/// it. A restored geometry gives the place of the content, the stored position that
/// of the frame.
QMargins expectedFrame(const QWidget &window, bool geometryRestored)
{
    // Borders beside a window are a pixel or none, or not to be seen.
    constexpr int kTitleBar = 32;
    constexpr int kMostFrame = 80;
    const QPoint corner = window.pos() - AppSettings::instance().pos;
    const QRect believable(0, 0, kMostFrame, kMostFrame);
    if (geometryRestored && believable.contains(corner))
        return {corner.x(), corner.y(), corner.x(), corner.x()};
    return {0, kTitleBar, 0, 0};
}

QVector<QRect> roomOfScreens()
{
    QVector<QRect> screens;
    for (const QScreen *screen : QGuiApplication::screens())
        screens += screen->availableGeometry();
    return screens;
}

/// The desktop may be smaller than the one that the place was stored on.
void fitIntoScreen(QMainWindow &window, bool geometryRestored)
{
    if (window.isMaximized() || window.isFullScreen())
        return;
    const QMargins frame = expectedFrame(window, geometryRestored);
    // Until it is shown, its place is that of the content or of the frame,
    // whichever was set last.
    const QPoint corner(frame.left(), frame.top());
    QRect stored = QRect(window.pos(), window.size()).marginsAdded(frame);
    if (!geometryRestored)
        stored.translate(corner);
    const QRect place = ScreenPlace::fitted(stored, roomOfScreens());
    if (place == stored)
        return;
    const QRect content = place.marginsRemoved(frame);
    // One that grows when it is shown gets its content to where its frame was to be,
    // and its title bar beyond the screen.
    const QSize least = window.minimumSizeHint();
    if (geometryRestored || least.boundedTo(content.size()) != least) {
        window.setGeometry(content);
    } else {
        window.resize(content.size());
        window.move(place.topLeft());
    }
}

} // namespace

void restore(const Parts &parts)
{
    const AppSettings &settings = AppSettings::instance();
    parts.window->resize(WindowSize::clamped(settings.size, WindowSize::desktop()));
    parts.window->move(settings.pos);
    const bool geometryRestored =
        isStored(settings.geometry) && parts.window->restoreGeometry(settings.geometry);
    if (isStored(settings.layouttoolbar))
        parts.window->restoreState(settings.layouttoolbar);
    fitIntoScreen(*parts.window, geometryRestored);
    if (isStored(settings.layoutsplitter))
        parts.splitter->restoreState(settings.layoutsplitter);
    else
        parts.splitter->setSizes({settings.grepsize.height(), settings.textsize.height()});
}

void store(const Parts &parts)
{
    AppSettings &settings = AppSettings::instance();
    settings.pos = parts.window->pos();
    settings.size = parts.window->size();
    settings.grepsize = parts.resultView->size();
    settings.textsize = parts.preview->size();
    settings.layouttoolbar = parts.window->saveState();
    settings.layoutsplitter = parts.splitter->saveState();
    settings.geometry = parts.window->saveGeometry();
}

} // namespace WindowLayout
