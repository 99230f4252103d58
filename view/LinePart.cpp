#include "view/LinePart.h"

#include "view/BlockData.h"

#include <QAbstractTextDocumentLayout>
#include <QTextBlock>
#include <QTextDocument>

#include <algorithm>

namespace {

/// Characters beyond both edges that are drawn as well: a glyph may stand over
/// its own width, and its shape depends on its neighbours.
constexpr int kBeyondEdge = 16;

/// More UTF-16 code units than any screen shows of a line.
constexpr int kMostSeen = 64 * 1024;

/// More tab stops than any screen shows.
constexpr int kMostStops = 4096;

bool isRightToLeft(QChar c)
{
    switch (c.direction()) {
    case QChar::DirR:
    case QChar::DirAL:
    case QChar::DirAN:
    case QChar::DirRLE:
    case QChar::DirRLO:
    case QChar::DirRLI:
        return true;
    default:
        break;
    }
    // First halves of the pairs U+10800..U+10FFF and U+1E800..U+1EFFF, the
    // blocks of right-to-left scripts outside the basic plane.
    const ushort unit = c.unicode();
    return (unit >= 0xD802 && unit <= 0xD803) || (unit >= 0xD83A && unit <= 0xD83B);
}

/// In the resolution of the device that the whole line is laid out for.
QFont fontFor(const QTextBlock &block, const QFont &font)
{
    const QPaintDevice *device = block.document()->documentLayout()->paintDevice();
    return device ? QFont(font, device) : font;
}

/// How far a tab at the start of a line reaches, laid out with this option.
qreal tabWidth(const QTextOption &option, const QFont &font)
{
    QTextLayout layout(QStringLiteral("\t"), font);
    layout.setTextOption(option);
    layout.beginLayout();
    const QTextLine line = layout.createLine();
    layout.endLayout();
    return line.cursorToX(1);
}

/// By how much a layout of its own multiplies the tab stops that it is given:
/// the font's resolution by the first screen's.
qreal tabStopScale(const QFont &font)
{
    constexpr qreal kGiven = 128;
    QTextOption option;
    option.setTabs({QTextOption::Tab(kGiven, QTextOption::LeftTab)});
    return tabWidth(option, font) / kGiven;
}

/// In place of QTextLine::xToCursor() where a line is wider than a layout can count
/// (some 33 million pixels), so that whatever is asked for seems to be behind it.
int endOfSeen(const QTextLine &line, int from, qreal right)
{
    int step = 256; // a question takes long, and so does a part of many tabs
    int end = from;
    for (qreal x = 0; end < from + kMostSeen && x <= right; x = line.cursorToX(end)) {
        end += step;
        step *= 2;
    }
    return std::min(end, line.textStart() + line.textLength());
}

} // namespace

LinePart::LinePart(const QTextBlock &block, const QFont &font, qreal left, qreal right)
    : m_whole(*block.layout()), m_text(block.text())
{
    const QString composed = m_whole.preeditAreaText();
    if (!composed.isEmpty())
        m_text.insert(m_whole.preeditAreaPosition(), composed);
    if (m_text.size() < kLongLine || m_whole.lineCount() != 1 || !composed.isEmpty())
        return;
    const QTextLine line = m_whole.lineAt(0);
    const int from = std::max(line.xToCursor(left) - kBeyondEdge, 0);
    const int to = std::min(line.xToCursor(right) + kBeyondEdge, m_text.size());
    takePart(from, to - from < kMostSeen ? to : endOfSeen(line, from, right));
    if (!m_own)
        return;
    const auto *data = static_cast<const BlockData *>(block.userData());
    layOut(line, fontFor(block, font), data ? data->colours : QVector<QTextLayout::FormatRange>());
}

void LinePart::takePart(int from, int to)
{
    // Only between what looks like characters is there an x coordinate.
    while (from > 0 && !m_whole.isValidCursorPosition(from))
        --from;
    while (to < m_text.size() && !m_whole.isValidCursorPosition(to))
        ++to;
    if (from > to || std::any_of(m_text.begin() + from, m_text.begin() + to, isRightToLeft))
        return;
    m_reachesEnd = to == m_text.size();
    m_from = from;
    m_text = m_text.mid(from, to - from);
    m_own = std::make_unique<QTextLayout>(m_text);
}

void LinePart::layOut(const QTextLine &line, const QFont &font,
                      const QVector<QTextLayout::FormatRange> &colours)
{
    const qreal x = line.cursorToX(m_from);
    m_own->setFont(font);
    m_own->setFormats(cut(m_whole.formats()) + cut(colours));
    if (m_text.contains(QLatin1Char('\t'))) {
        const qreal width = tabWidth(m_whole.textOption(), font);
        const qreal scale = tabStopScale(font);
        layOutWithStops(gridOfStops(line, x, width), scale);
        if (hasDoubtfulTab(width))
            layOutWithStops(askedStops(line, x), scale);
    } else {
        layOutWithStops({}, 1);
    }
    // A fallback font elsewhere in the line may have made it higher.
    m_offset = QPointF(x, line.y() + line.ascent() - m_own->lineAt(0).ascent());
}

void LinePart::layOutWithStops(const QVector<qreal> &stops, qreal scale)
{
    QList<QTextOption::Tab> tabs;
    for (const qreal stop : stops)
        tabs.append(QTextOption::Tab(stop / scale, QTextOption::LeftTab));
    QTextOption option = m_whole.textOption();
    option.setTabs(tabs);
    m_own->setTextOption(option);
    m_own->beginLayout();
    m_own->createLine();
    m_own->endLayout();
}

/// The whole line's tab stops, from x in it: from the one where the part's first tab
/// ends, which only the whole line knows to a fraction of a pixel, to that of the last.
/// Not asked for one by one: each question takes a look at every tab of the line.
QVector<qreal> LinePart::gridOfStops(const QTextLine &line, qreal x, qreal width) const
{
    QVector<qreal> stops;
    const QLatin1Char tab('\t');
    const qreal first = line.cursorToX(m_from + m_text.indexOf(tab) + 1) - x;
    const qreal last = line.cursorToX(m_from + m_text.lastIndexOf(tab) + 1) - x;
    int count = 0;
    for (qreal stop = first; stop <= last && count < kMostStops; stop = first + width * ++count)
        stops.append(stop);
    return stops;
}

/// Whether the text before a tab comes so near to the stop that the whole line, which
/// divides by the width and rounds to a 64th, may have taken the one behind.
bool LinePart::hasDoubtfulTab(qreal width) const
{
    const QLatin1Char tab('\t');
    const QTextLine own = m_own->lineAt(0);
    for (int i = m_text.indexOf(tab); i >= 0; i = m_text.indexOf(tab, i + 1)) {
        if (own.cursorToX(i + 1) - own.cursorToX(i) < width / 64)
            return true;
    }
    return false;
}

/// Where the whole line's tabs end, from x in it.
QVector<qreal> LinePart::askedStops(const QTextLine &line, qreal x) const
{
    QVector<qreal> stops;
    const QLatin1Char tab('\t');
    for (int i = m_text.indexOf(tab); i >= 0; i = m_text.indexOf(tab, i + 1))
        stops.append(line.cursorToX(m_from + i + 1) - x);
    return stops;
}

QVector<QTextLayout::FormatRange>
LinePart::cut(const QVector<QTextLayout::FormatRange> &formats) const
{
    QVector<QTextLayout::FormatRange> pieces;
    for (const QTextLayout::FormatRange &format : formats) {
        const int start = std::max(format.start - m_from, 0);
        const int end = std::min(format.start + format.length - m_from, m_text.size());
        if (start < end)
            pieces.append({start, end - start, format.format});
    }
    return pieces;
}
