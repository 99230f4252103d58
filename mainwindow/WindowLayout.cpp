#include "mainwindow/WindowLayout.h"

#include "settings/AppSettings.h"
#include "settings/WindowSize.h"

#include <QGuiApplication>
#include <QMainWindow>
#include <QScreen>
#include <QSplitter>

#include <algorithm>

namespace WindowLayout {

namespace {

bool isStored(const QByteArray &state)
{
    return state.size() > 1;
}

/// A window that is larger than its screen gets the screen's size; one that fits
/// stays where it is.
void fitIntoScreen(QMainWindow &window)
{
    const QScreen *screen = QGuiApplication::screenAt(window.pos());
    if (!screen)
        screen = QGuiApplication::primaryScreen();
    if (!screen || window.isMaximized() || window.isFullScreen())
        return;
    const QRect available = screen->availableGeometry();
    const QSize fitting = window.size().boundedTo(available.size());
    if (fitting == window.size())
        return;
    window.resize(fitting);
    QRect place(window.pos(), fitting);
    place.moveRight(std::min(place.right(), available.right()));
    place.moveBottom(std::min(place.bottom(), available.bottom()));
    window.move(place.topLeft());
}

} // namespace

void restore(const Parts &parts)
{
    const AppSettings &settings = AppSettings::instance();
    parts.window->resize(WindowSize::clamped(settings.size, WindowSize::desktop()));
    parts.window->move(settings.pos);
    if (isStored(settings.geometry))
        parts.window->restoreGeometry(settings.geometry);
    if (isStored(settings.layouttoolbar))
        parts.window->restoreState(settings.layouttoolbar);
    fitIntoScreen(*parts.window);
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
