#pragma once

#include <QString>
#include <QStringList>

/// What --help says. The man page has the same texts; see ManPage.
///
/// Lines fit eighty columns; each text is without a line feed at its end unless
/// its comment says otherwise.
namespace HelpText {

/// The ways to call the program, one a line.
QStringList synopsis();
QString description();
/// What is passed over, and what is said about it.
QString passedOver();
/// Without a heading.
QString exitStatus();

/// What -h prints: all of it and every option, the last line ended.
QString text();

} // namespace HelpText
