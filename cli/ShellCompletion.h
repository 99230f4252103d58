#pragma once

#include <QString>

/// Scripts that make a shell complete the options of the console program, their
/// fixed values, and the names of files; made from the option table. Each is
/// valid in its shell whatever the help of an option holds; the last line is
/// ended.
namespace ShellCompletion {

QString bash();
QString zsh();
QString fish();

} // namespace ShellCompletion
