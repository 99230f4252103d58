#include "mainwindow/ScreenPlace.h"

#include <QRegion>

#include <algorithm>

namespace ScreenPlace {

namespace {

bool isCovered(const QRect &frame, const QVector<QRect> &screens)
{
    QRegion uncovered(frame);
    for (const QRect &screen : screens)
        uncovered -= screen;
    return uncovered.isEmpty();
}

qint64 overlap(const QRect &frame, const QRect &screen)
{
    const QRect common = frame & screen;
    return common.isEmpty() ? 0 : qint64(common.width()) * common.height();
}

QRect movedInto(const QRect &screen, const QRect &frame)
{
    QRect place(frame.topLeft(), frame.size().boundedTo(screen.size()));
    place.moveRight(std::min(place.right(), screen.right()));
    place.moveBottom(std::min(place.bottom(), screen.bottom()));
    place.moveLeft(std::max(place.left(), screen.left()));
    place.moveTop(std::max(place.top(), screen.top()));
    return place;
}

} // namespace

QRect fitted(const QRect &frame, const QVector<QRect> &screens)
{
    if (screens.isEmpty() || isCovered(frame, screens))
        return frame;
    // The first of the best: the main screen when there is no overlap at all.
    const auto best = std::max_element(screens.begin(), screens.end(),
                                       [&frame](const QRect &one, const QRect &other) {
                                           return overlap(frame, one) < overlap(frame, other);
                                       });
    return movedInto(*best, frame);
}

} // namespace ScreenPlace
