#pragma once

namespace LocaleSetup {

/// For the very start of main, before the application object: that object takes
/// the encoding of file names and of the console from the environment, once.
/// Where the environment names the C or POSIX locale, or one that the system
/// does not have, this process and its children get C.UTF-8 instead: otherwise
/// no file with a Japanese name could be opened. Another locale is left alone.
/// Does nothing on Windows, where names are UTF-16 whatever the locale is.
void useUtf8InPlainLocale();

} // namespace LocaleSetup
