#pragma once

#include <QPalette>

class AppSettings;

namespace ApplicationPalette {

/// The palette of the whole program: every role that has a colour in the
/// settings has that colour in all groups; disabled texts, also those on
/// buttons, are dark green.
QPalette fromSettings(const AppSettings &settings);

} // namespace ApplicationPalette
