#include "mainwindow/preview/RescueFile.h"

#include <QDir>
#include <QFile>
#include <QSaveFile>

namespace RescueFile {

namespace {

/// File systems take 255 bytes or UTF-16 code units; time and suffix need some.
constexpr int kLongestNameBytes = 200;
constexpr int kMostFilesASecond = 1000;
/// A text that nothing else keeps is worth more than one try.
constexpr int kMostFailures = 3;

QString shortened(QString fileName)
{
    while (QFile::encodeName(fileName).size() > kLongestNameBytes)
        fileName.chop(fileName.size() > 1 && fileName.at(fileName.size() - 1).isLowSurrogate() ? 2
                                                                                               : 1);
    return fileName;
}

QString pathOf(const QString &directory, const QString &stamp, int number, const QString &fileName)
{
    const QString suffix =
        number > 1 ? QStringLiteral("_%1").arg(number, 2, 10, QLatin1Char('0')) : QString();
    return directory + stamp + suffix + QLatin1Char('-') + fileName + QStringLiteral(".txt");
}

/// What stands at path until the bytes are all written is empty.
bool fill(const QString &path, const QByteArray &bytes)
{
    QSaveFile file(path);
    if (file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.commit())
        return true;
    QFile::remove(path);
    return false;
}

} // namespace

QString write(const QString &directory, const QString &fileName, const QString &text,
              const QDateTime &time)
{
    QDir().mkpath(directory);
    const QString stamp = time.toString(QStringLiteral("yyyyMMdd-hhmmss"));
    const QString name = shortened(fileName);
    int failures = 0;
    for (int number = 1; number <= kMostFilesASecond && failures < kMostFailures; ++number) {
        const QString path = pathOf(directory, stamp, number, name);
        QFile place(path);
        // Another window may take the name at the same moment.
        if (place.open(QIODevice::WriteOnly | QIODevice::NewOnly)) {
            place.close();
            if (fill(path, text.toUtf8()))
                return path;
            ++failures;
        } else if (!place.exists()) {
            ++failures;
        }
    }
    return QString();
}

} // namespace RescueFile
