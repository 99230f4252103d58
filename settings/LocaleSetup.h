#pragma once

namespace LocaleSetup {

/// For the very start of main, before the application object: that object takes
/// the encoding of file names and of the console from the environment, once.
/// Where the environment names the C or POSIX locale, or one that the system
/// does not have, this process and its children get C.UTF-8 instead: otherwise
/// no file with a Japanese name could be opened. Another locale is left alone.
/// Does nothing on Windows, where names are UTF-16 whatever the locale is.
void useUtf8InPlainLocale();

/// For the start of main, too. Where the environment names no time zone, it gets to
/// name the system's, as in "Asia/Tokyo": otherwise the zone's file is looked at whenever
/// a file's time is converted, which for the list of logs is a hundred thousand times.
/// Programs that are started inherit the name, and the window keeps its zone when the
/// system's changes. Does nothing where the system's zone has no name, and on Windows.
void nameTimeZone();

} // namespace LocaleSetup
