// Saves a log of some size, for tests that take the disk away from it:
//
//   HistoryProcess log FILE
//   HistoryProcess history FOLDER TAG TIMES
//
// "log" replaces FILE. "history" saves TIMES logs, all of the same moment, whose
// texts are TAG and a number, into FOLDER. Ends with 0 when all were saved and
// with 1 otherwise.

#include "mainwindow/history/LogHistory.h"
#include "mainwindow/history/ResultLogFile.h"

#include <QCoreApplication>

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    ResultLog log;
    if (arguments.size() == 3) {
        log.text = QString(1'000'000, QLatin1Char('x'));
        return ResultLogFile::write(arguments.at(2), log) ? 0 : 1;
    }
    if (arguments.size() != 5)
        return 2;
    const LogHistory history(arguments.at(2));
    const QDateTime time(QDate(2026, 1, 2), QTime(3, 4, 5));
    for (int i = 0; i < arguments.at(4).toInt(); ++i) {
        log.text = arguments.at(3) + QString::number(i);
        if (history.save(time, log).isEmpty())
            return 1;
    }
    return 0;
}
