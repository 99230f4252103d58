#include "mainwindow/preview/RescueFile.h"

#include "mainwindow/history/FirstName.h"
#include "settings/SaveSteps.h"

#include <QDir>
#include <QFile>
#include <QRandomGenerator>
#include <QSaveFile>

using SaveSteps::mayTake;
using SaveSteps::Step;

namespace RescueFile {

namespace {

/// File systems take 255 bytes or UTF-16 code units; time and suffix need some.
constexpr int kLongestNameBytes = 200;
constexpr int kMostFilesASecond = 1000;
/// A text that nothing else keeps is worth more than one try.
constexpr int kMostAttempts = 3;

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

/// What a text is written to until it is whole: a name that nobody else makes.
QString temporaryName(const QString &path)
{
    return path + QStringLiteral(".saving-%1").arg(QRandomGenerator::system()->generate64(), 0, 16);
}

bool fill(const QString &path, const QByteArray &bytes)
{
    QSaveFile file(path);
    return mayTake(Step::WriteNew) && file.open(QIODevice::WriteOnly)
        && file.write(bytes) == bytes.size() && mayTake(Step::ReplaceOld) && file.commit();
}

/// Gives the file the first name of that time which no file has; empty when it has none.
QString named(const QString &temporary, const QString &directory, const QString &stamp,
              const QString &fileName)
{
    // Another window may take a name at the same moment.
    for (int number = 1; number <= kMostFilesASecond; ++number) {
        QString path = pathOf(directory, stamp, number, fileName);
        const FirstName::Result result = FirstName::give(temporary, path);
        if (result == FirstName::Result::Given)
            return path;
        if (result == FirstName::Result::Failed)
            break;
    }
    return QString();
}

QString tryWriting(const QString &directory, const QString &stamp, const QString &fileName,
                   const QByteArray &bytes)
{
    const QString temporary = temporaryName(pathOf(directory, stamp, 1, fileName));
    QString path;
    if (fill(temporary, bytes) && mayTake(Step::Finished))
        path = named(temporary, directory, stamp, fileName);
    if (path.isEmpty())
        QFile::remove(temporary);
    return path;
}

} // namespace

QString write(const QString &directory, const QString &fileName, const QString &text,
              const QDateTime &time)
{
    QDir().mkpath(directory);
    const QString stamp = time.toString(QStringLiteral("yyyyMMdd-hhmmss"));
    const QString name = shortened(fileName);
    const QByteArray bytes = text.toUtf8();
    QString path;
    for (int attempt = 0; attempt < kMostAttempts && path.isEmpty(); ++attempt)
        path = tryWriting(directory, stamp, name, bytes);
    return path;
}

} // namespace RescueFile
