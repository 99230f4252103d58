#pragma once

#include <QString>

/// The settings that an archive of the program begins with, under a name of their
/// own: unpacking a newer archive over an older one leaves "sarvik.ini" alone.
namespace StarterSettings {

/// Makes "sarvik.ini" of "sarvik-starter.ini" where there is only the latter; appDir
/// ends in "/". Whatever has the name "sarvik.ini" stays. Failures are not reported:
/// the program then begins with its built-in defaults.
void provide(const QString &appDir);

} // namespace StarterSettings
