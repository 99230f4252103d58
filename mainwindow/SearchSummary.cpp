#include "mainwindow/SearchSummary.h"

namespace SearchSummary {

namespace {

QStringList headed(const QString &head, const QStringList &entries)
{
    return entries.isEmpty() ? QStringList() : QStringList(head) + entries;
}

} // namespace

QString abortBanner()
{
    return QStringLiteral("/////////////////////// 中止しました ///////////////////////////");
}

QStringList lines(const Outcome &outcome)
{
    QStringList lines;
    lines += outcome.aborted ? abortBanner() : QString(49, QLatin1Char('-'));
    if (outcome.usesKeyword2)
        lines += QStringLiteral("追加条件：「%1」が %2 行以内にある場合")
                     .arg(outcome.keyword2, QString::number(outcome.lineDistance));
    if (outcome.excludesKeyword3)
        lines += QStringLiteral("追加条件：「%1」を含まない行のみ").arg(outcome.keyword3);
    lines += QStringLiteral("該当ファイル数 %L1 / %L2")
                 .arg(outcome.matchedFiles)
                 .arg(outcome.totalFiles);
    lines += QStringLiteral("該当行数 %L1").arg(outcome.matchedLines);
    lines += elapsedText(outcome.elapsedMilliseconds);
    lines += QString();
    return lines;
}

QString elapsedText(qint64 milliseconds)
{
    const double seconds = static_cast<double>(milliseconds) / 1000.0;
    if (seconds > 60.0) {
        const qint64 whole = milliseconds / 1000;
        const qint64 minutes = whole / 60;
        return QStringLiteral("処理時間: %1 分 %2 秒").arg(minutes).arg(whole - minutes * 60);
    }
    return QStringLiteral("処理時間: %1 秒").arg(seconds, 0, 'f', 2);
}

QStringList warningSection(const QStringList &skipped)
{
    return headed(QStringLiteral("---------- Warning skip foler or file ------------"), skipped);
}

QString shortOfMemory()
{
    return QStringLiteral("メモリが足りなくなったため中止しました。");
}

QString shortOfMemory(int hitsLeftOut)
{
    return shortOfMemory() + QStringLiteral("見つけて表示していない行 %L1").arg(hitsLeftOut);
}

QStringList errorSection(const QStringList &unreadable)
{
    return headed(QStringLiteral("---------- Read Error File ------------"), unreadable);
}

QString threadTable(const QMap<int, int> &counts)
{
    QString table = QStringLiteral("スレッド処理数\n");
    int position = 0;
    for (auto entry = counts.cbegin(); entry != counts.cend(); ++entry) {
        table += QStringLiteral("  ID %3: %1 %2 \n")
                     .arg(entry.key(), 5, 10, QLatin1Char('0'))
                     .arg(entry.value())
                     .arg(++position);
    }
    return table;
}

} // namespace SearchSummary
