#pragma once

#include "fuzz/FuzzInput.h"
#include "settings/AppSettings.h"
#include "tests/support/ScratchFolder.h"

#include <QDateTime>
#include <QFile>

/// A language whose definition a fuzzer makes.
namespace FuzzedLanguage {

inline QString name()
{
    return QStringLiteral("fuzzed");
}

/// From now on the bytes are the definition of the language name().
inline void define(const QByteArray &bytes)
{
    static const ScratchFolder folder;
    static const bool loaded = (AppSettings::instance().load(folder.path()), true);
    Q_UNUSED(loaded)
    static qint64 changes = 0;
    QFile file(folder.write(QStringLiteral("list/fuzzed.lst"), bytes));
    // Later than the one before, so that it is read anew.
    require(file.open(QIODevice::ReadWrite)
                && file.setFileTime(QDateTime::fromSecsSinceEpoch(1'000'000'000 + ++changes),
                                    QFileDevice::FileModificationTime),
            "the definition is there");
}

} // namespace FuzzedLanguage
