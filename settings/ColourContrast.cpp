#include "settings/ColourContrast.h"

#include <algorithm>
#include <cmath>

namespace ColourContrast {

namespace {

double linear(double channel)
{
    return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
}

/// 0 for black to 1 for white.
double luminance(const QColor &colour)
{
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF())
        + 0.0722 * linear(colour.blueF());
}

} // namespace

double ratio(const QColor &one, const QColor &other)
{
    const auto [darker, lighter] = std::minmax({luminance(one), luminance(other)});
    return (lighter + 0.05) / (darker + 0.05);
}

QColor readableOn(const QColor &ground)
{
    const QColor black(Qt::black);
    const QColor white(Qt::white);
    return ratio(black, ground) >= ratio(white, ground) ? black : white;
}

} // namespace ColourContrast
