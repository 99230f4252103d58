#include "cli/EncodingReport.h"

#include "cli/LineOutput.h"
#include "cli/PathOrder.h"
#include "engine/CodeSet.h"
#include "engine/NativePath.h"

#include <algorithm>
#include <utility>

namespace {

QByteArray encodingLine(const QString &path, int codeSet, int lineEnd, bool bom)
{
    const QByteArray start = NativePath::toNative(path) + '\t' + QByteArray::number(codeSet) + '\t';
    if (codeSet < 0)
        return start + "-\t-\t-\n";
    return start + CodeSet::name(codeSet).toUtf8() + '\t' + CodeSet::lineEndName(lineEnd).toUtf8()
        + '\t' + (bom ? '1' : '0') + '\n';
}

} // namespace

EncodingReport::EncodingReport(LineOutput &output, bool sort) : m_output(output), m_sort(sort)
{
}

void EncodingReport::addEncoding(const QString &path, int codeSet, int lineEnd, bool bom)
{
    ++m_files;
    m_refused += codeSet < 0 ? 1 : 0;
    const QByteArray line = encodingLine(path, codeSet, lineEnd, bom);
    if (m_sort)
        m_kept.append({path, line});
    else
        m_output.add(line);
}

void EncodingReport::finish(bool)
{
    std::stable_sort(m_kept.begin(), m_kept.end(), [](const auto &a, const auto &b) {
        return PathOrder::byBytes(a.first, b.first);
    });
    for (const QPair<QString, QByteArray> &file : std::as_const(m_kept))
        m_output.add(file.second);
    m_kept.clear();
}

RunReport::Counts EncodingReport::counts(int) const
{
    return {{QStringLiteral("files"), m_files}, {QStringLiteral("refused"), m_refused}};
}
