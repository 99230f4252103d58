#pragma once

#include <QString>
#include <QVector>

/// What the manual tells beyond --help. Plain texts without a line feed at the end;
/// what they say of masks and keywords is the engine's rule, in short.
namespace ManTopics {

/// A term or a command, and what is to be said of it.
struct Entry {
    QString term;
    QString text;
};

QString keywords();
QString masks();
/// Each term is one command of a shell.
QVector<Entry> examples();
/// The files that the program itself reads, beside those that it searches. It
/// writes none.
QVector<Entry> files();

} // namespace ManTopics
