// Saves a log of some size, for tests that take the disk away from it:
//
//   HistoryProcess log FILE [STEP [MILLIONS]]
//   HistoryProcess again FILE TAG TIMES
//   HistoryProcess history FOLDER TAG TIMES LENGTH
//
// "log" replaces FILE by one of MILLIONS of characters, or 1; at the STEPth step of that (from 0)
// the process ends on the spot, with exit code 77. "again" replaces FILE TIMES times by a log of
// many times TAG. "history" saves TIMES logs, all of the same
// moment, whose texts are LENGTH times TAG and a number, into FOLDER. Ends with 0 when all were
// saved and with 1 otherwise.

#include "mainwindow/history/LogHistory.h"
#include "mainwindow/history/ResultLogFile.h"

#include "settings/SaveSteps.h"
#include "tests/support/EndAtOnce.h"

#include <QCoreApplication>

#include <cstdlib>

namespace {

void endAtStep(int last)
{
    constexpr int kEnded = 77;
    SaveSteps::setObserver([last, step = 0](SaveSteps::Step) mutable {
        if (step++ == last)
            endAtOnce(kEnded);
        return true;
    });
}

bool writeAgain(const QString &path, const QString &tag, int times)
{
    ResultLog log;
    log.text = tag.repeated(100'000);
    for (int i = 0; i < times; ++i) {
        if (!ResultLogFile::write(path, log))
            return false;
    }
    return true;
}

int act(const QStringList &arguments)
{
    ResultLog log;
    if (arguments.value(1) == QLatin1String("log") && arguments.size() > 2) {
        if (arguments.size() > 3)
            endAtStep(arguments.at(3).toInt());
        const int millions = arguments.value(4, QStringLiteral("1")).toInt();
        log.text = QString(millions * 1'000'000, QLatin1Char('x'));
        for (int i = 0; i < log.text.size(); i += 100)
            log.text[i] = QLatin1Char('\n');
        return ResultLogFile::write(arguments.at(2), log) ? 0 : 1;
    }
    if (arguments.value(1) == QLatin1String("again") && arguments.size() == 5)
        return writeAgain(arguments.at(2), arguments.at(3), arguments.at(4).toInt()) ? 0 : 1;
    if (arguments.size() != 6)
        return 2;
    const LogHistory history(arguments.at(2));
    const QDateTime time(QDate(2026, 1, 2), QTime(3, 4, 5));
    for (int i = 0; i < arguments.at(4).toInt(); ++i) {
        log.text = QString(arguments.at(3) + QString::number(i)).repeated(arguments.at(5).toInt());
        if (history.save(time, log).isEmpty())
            return 1;
    }
    return 0;
}

} // namespace

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    return answer(act(QCoreApplication::arguments()));
}
