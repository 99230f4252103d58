#pragma once

#include <QRect>
#include <QVector>

/// Where a window may stand. All rectangles are in the desktop's pixels.
namespace ScreenPlace {

/// The place for a window with its frame. screens is the room that each screen
/// has for windows, the main screen's first.
///
/// A frame that is wholly on screens, on one or across several, stays. Any other
/// is moved into the screen that it overlaps most, or the main screen when it
/// overlaps none, and shrunk only where it is larger than that screen.
QRect fitted(const QRect &frame, const QVector<QRect> &screens);

} // namespace ScreenPlace
