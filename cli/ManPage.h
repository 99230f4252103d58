#pragma once

#include <QString>

/// The manual page of the console program, as roff text: what --help says, from
/// the same texts and the same option table, and the topics of ManTopics.
namespace ManPage {

/// version is that of the program. The last line is ended.
QString text(const QString &version);

/// text as roff shows it, whatever characters it holds and wherever its lines
/// begin.
QString escaped(QString text);

} // namespace ManPage
