#pragma once

#include <QPalette>

class AppSettings;

namespace ApplicationPalette {

/// The palette of the whole program: every role that has a colour in the
/// settings has that colour in all groups; disabled texts, also those on
/// buttons, are dark green.
QPalette fromSettings(const AppSettings &settings);

/// The palette for tool tips: that of the program, but with a black or white
/// text, whichever is easier to read, where the program's can hardly be told
/// from its ground.
QPalette forToolTips(const QPalette &program);

} // namespace ApplicationPalette
