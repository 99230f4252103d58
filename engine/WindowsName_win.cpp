#include "engine/WindowsName.h"

#include <QDir>

namespace {

bool startsWithDrive(const QString &native)
{
    const auto letter = [](QChar character) {
        return (character >= QLatin1Char('A') && character <= QLatin1Char('Z'))
            || (character >= QLatin1Char('a') && character <= QLatin1Char('z'));
    };
    return native.size() >= 3 && letter(native.at(0)) && native.at(1) == QLatin1Char(':')
        && native.at(2) == QLatin1Char('\\');
}

// "\\?\..." and "\\.\..." say already how they are to be taken.
bool hasForm(const QString &native)
{
    return native.startsWith(QLatin1String("\\\\?\\"))
        || native.startsWith(QLatin1String("\\\\.\\"));
}

} // namespace

std::wstring WindowsName::of(const QString &path)
{
    const QString native = QDir::toNativeSeparators(path);
    const bool share = native.startsWith(QLatin1String("\\\\"));
    if (hasForm(native) || !(share || startsWithDrive(native)))
        return native.toStdWString();
    // The long form knows no "." and "..".
    const QString clean = QDir::toNativeSeparators(QDir::cleanPath(path));
    const QString name =
        share ? QLatin1String("\\\\?\\UNC\\") + clean.mid(2) : QLatin1String("\\\\?\\") + clean;
    return name.toStdWString();
}
