#pragma once

#include <QSize>

namespace WindowSize {

/// The main window's size as it is restored, in pixels. A width that is not
/// above 600 or is above the desktop's becomes 800; a height that is not above
/// 400 or is above the desktop's becomes 800. A null or invalid desktop means
/// that there is no screen: only the lower bounds apply then.
QSize clamped(const QSize &stored, const QSize &desktop);

/// All screens together, in pixels; null where there is none.
QSize desktop();

} // namespace WindowSize
