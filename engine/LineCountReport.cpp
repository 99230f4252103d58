#include "engine/LineCountReport.h"

#include <QFileInfo>

namespace {

constexpr int kCountWidth = 7;

QString folderChangeRule()
{
    return QString(39, QLatin1Char('-'));
}

QString endRule()
{
    return QString(49, QLatin1Char('-'));
}

} // namespace

LineCountReport::LineCountReport(const QLocale &locale) : m_locale(locale)
{
}

QStringList LineCountReport::addFile(const QString &filename, int count)
{
    QStringList lines;
    const QString folder = QFileInfo(filename).path();
    if (folder != m_lastFolder && !m_lastFolder.isEmpty()) {
        lines << folderChangeRule() << subtotal();
        m_folderLines = 0;
    }
    lines << m_locale.toString(count).rightJustified(kCountWidth) + QLatin1Char(' ') + filename;
    m_totalLines += count;
    m_folderLines += count;
    ++m_files;
    m_lastFolder = folder;
    return lines;
}

QStringList LineCountReport::finish(bool aborted) const
{
    QStringList lines;
    if (aborted)
        lines << QStringLiteral("/////////////////////// 中止しました ///////////////////////////");
    else
        lines << subtotal() << endRule();
    lines << QStringLiteral("合計行数 ") + m_locale.toString(m_totalLines)
            + QStringLiteral("  該当ファイル数 ") + QString::number(m_files);
    return lines;
}

QString LineCountReport::subtotal() const
{
    return QStringLiteral("合計 ") + m_locale.toString(m_folderLines) + QLatin1Char('\n');
}
