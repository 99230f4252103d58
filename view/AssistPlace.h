#pragma once

#include <QPoint>
#include <QRect>
#include <QVector>

/// Where a note stands beside its window. All rectangles are in the desktop's pixels.
namespace AssistPlace {

/// What is around a note.
struct Surroundings {
    /// The window with its frame.
    QRect window;
    /// The other notes that have their places.
    QVector<QRect> notes;
    /// The room that each screen has for windows.
    QVector<QRect> screens;
};

/// The upper left corner for a note that is to stand at wanted. One that is wholly on
/// a screen stays, whatever it covers: somebody put it there. Any other goes where it
/// covers least of the window and of the other notes, on the screen with most of the
/// window: of several such places to the right of the window, else below it, to its
/// left, above it or to the screen's edge.
QPoint beside(const QRect &wanted, const Surroundings &around);

} // namespace AssistPlace
