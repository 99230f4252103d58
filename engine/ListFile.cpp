#include "engine/ListFile.h"

#include "settings/IniFile.h"

#include <QFileInfo>

QStringList ListFile::read(const QString &path, bool *known)
{
    // Added where folders are, it has their slash.
    const QString name = path.endsWith(QLatin1Char('/')) ? path.chopped(1) : path;
    const QString key = QStringLiteral("files");
    // Asked before it is opened: opening a FIFO would wait for its writer.
    const bool readable = QFileInfo(name).isFile();
    if (known)
        *known = false;
    if (!readable)
        return {};
    // Not the toolkit's own reader of ini files: that one builds whatever object,
    // of whatever size, a file asks for.
    const IniDocument file = IniFile(name, IniDocument::Form::Escaped).read();
    if (known)
        *known = file.contains(key);
    return file.list(key);
}
