#pragma once

#include <QColor>

/// How well one colour is read on another, as the guidelines for accessible web
/// content measure it.
namespace ColourContrast {

/// What a text needs to be read by nearly everybody.
constexpr double kText = 4.5;
/// What large letters and signs need.
constexpr double kSign = 3;

/// 1 for the same colour to 21 for black and white. Transparency does not count.
double ratio(const QColor &one, const QColor &other);

/// Black or white, whichever is easier to read on ground.
QColor readableOn(const QColor &ground);

} // namespace ColourContrast
