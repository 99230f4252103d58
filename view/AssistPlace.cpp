#include "view/AssistPlace.h"

#include <algorithm>
#include <limits>

namespace AssistPlace {

namespace {

/// Between a note and what it stands beside, in pixels.
constexpr int kGap = 12;

qint64 area(const QRect &rectangle)
{
    return rectangle.isEmpty() ? 0 : qint64(rectangle.width()) * rectangle.height();
}

qint64 covered(const QRect &note, const Surroundings &around)
{
    qint64 sum = area(note & around.window);
    for (const QRect &other : around.notes)
        sum += area(note & other);
    return sum;
}

/// The places at the sides of something: right, below, left, above.
void appendSides(const QRect &of, const QRect &note, QVector<QPoint> &places)
{
    places.append({of.right() + 1 + kGap, note.top()});
    places.append({note.left(), of.bottom() + 1 + kGap});
    places.append({of.left() - kGap - note.width(), note.top()});
    places.append({note.left(), of.top() - kGap - note.height()});
}

/// A note that is larger than the screen shows its beginning.
QPoint movedInto(const QRect &screen, QRect note)
{
    note.moveRight(std::min(note.right(), screen.right()));
    note.moveBottom(std::min(note.bottom(), screen.bottom()));
    note.moveLeft(std::max(note.left(), screen.left()));
    note.moveTop(std::max(note.top(), screen.top()));
    return note.topLeft();
}

/// In the order in which they are preferred.
QVector<QPoint> candidates(const QRect &wanted, const Surroundings &around, const QRect &screen)
{
    QVector<QPoint> places;
    appendSides(around.window, wanted, places);
    const QVector<QPoint> besideWindow = places;
    for (const QRect &other : around.notes) {
        // Also where another note is in the way of one of these.
        for (const QPoint &place : besideWindow)
            appendSides(other, QRect(place, wanted.size()), places);
    }
    for (const QPoint &corner :
         {screen.topRight(), screen.bottomRight(), screen.bottomLeft(), screen.topLeft()})
        places.append(corner);
    for (QPoint &place : places)
        place = movedInto(screen, QRect(place, wanted.size()));
    return places;
}

} // namespace

QPoint beside(const QRect &wanted, const Surroundings &around)
{
    const QVector<QRect> &screens = around.screens;
    const auto holdsIt = [&wanted](const QRect &screen) {
        return screen.contains(wanted);
    };
    if (screens.isEmpty() || std::any_of(screens.begin(), screens.end(), holdsIt))
        return wanted.topLeft();
    const QRect screen =
        *std::max_element(screens.begin(), screens.end(), [&](const QRect &a, const QRect &b) {
            return area(a & around.window) < area(b & around.window);
        });
    QPoint best;
    qint64 least = std::numeric_limits<qint64>::max();
    for (const QPoint &place : candidates(wanted, around, screen)) {
        const qint64 hidden = covered(QRect(place, wanted.size()), around);
        if (hidden < least) {
            least = hidden;
            best = place;
        }
    }
    return best;
}

} // namespace AssistPlace
