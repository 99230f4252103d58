#include "engine/ListFile.h"

#include "settings/IniFile.h"

#include <QFileInfo>

QStringList ListFile::read(const QString &path, bool *known)
{
    const QString key = QStringLiteral("files");
    // Asked before it is opened: opening a FIFO would wait for its writer.
    const bool readable = QFileInfo(path).isFile();
    if (known)
        *known = false;
    if (!readable)
        return {};
    // Not the toolkit's own reader of ini files: that one builds whatever object,
    // of whatever size, a file asks for.
    const IniDocument file = IniFile(path, IniDocument::Form::Escaped).read();
    if (known)
        *known = file.contains(key);
    return file.list(key);
}
