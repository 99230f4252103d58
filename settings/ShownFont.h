#pragma once

#include <QFont>

/// Fonts as widgets show them. Settings keep what was typed, whatever its size.
namespace ShownFont {

/// Points. A font much larger than a screen takes minutes and gigabytes to draw.
constexpr int kLargestPointSize = 200;

/// The font, of the largest size where it would be larger.
QFont bounded(const QFont &font);

} // namespace ShownFont
