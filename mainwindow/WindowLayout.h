#pragma once

#include <QtGlobal>

QT_BEGIN_NAMESPACE
class QMainWindow;
class QSplitter;
class QWidget;
QT_END_NAMESPACE

/// Where the main window stands and how it is divided, between the window and
/// AppSettings.
namespace WindowLayout {

struct Parts {
    QMainWindow *window = nullptr;
    QSplitter *splitter = nullptr;
    QWidget *resultView = nullptr;
    QWidget *preview = nullptr;
};

/// Size and position first; geometry and tool bars, which say more, only when
/// something is stored. Then the window is moved, and shrunk where it must be, so
/// that all of it is on screens.
void restore(const Parts &parts);

/// In memory; saving is the caller's.
void store(const Parts &parts);

} // namespace WindowLayout
