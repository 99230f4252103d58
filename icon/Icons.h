#pragma once

#include <QIcon>

/// The images under ":/icon/": an icon is named as its file, ":/icon/exit.png",
/// and has a variant of twice the size, ":/icon/exit@2x.png", that QIcon takes
/// by itself on a screen at 200 %.
namespace Icons {

/// Makes the images known to the program; call it before the first window is
/// built. It is needed because a linker leaves out of a program what nothing in
/// it refers to. Calling it again does no harm.
void load();

/// The program's own icon in all sizes that window managers and task bars ask
/// for, 16 to 256 pixels. Needs a QGuiApplication; loads the images itself.
QIcon program();

} // namespace Icons
