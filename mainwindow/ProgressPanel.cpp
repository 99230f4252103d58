#include "mainwindow/ProgressPanel.h"

#include "mainwindow/SearchSummary.h"
#include "settings/ColourContrast.h"

#include "ui_ProgressPanel.h"

#include <algorithm>

namespace {

/// As in the bars' style sheet, in every scheme of colours.
constexpr QRgb kBarGround = 0xff770000;

/// The colour, as dark as it takes to read a light text on it.
QColor darkenedFor(const QColor &text, QColor ground)
{
    constexpr int kStepPercent = 105;
    while (ColourContrast::ratio(text, ground) < ColourContrast::kText)
        ground = ground.darker(kStepPercent);
    return ground;
}

void showQueue(QProgressBar *bar, const QString &format, int length)
{
    bar->setFormat(format.arg(length));
    if (length > bar->maximum() + 100)
        bar->setRange(0, length + 100);
    // A value beyond the range would be ignored, and the one of before stay.
    bar->setValue(std::min(length, bar->maximum()));
}

} // namespace

ProgressPanel::ProgressPanel(QWidget *parent)
    : QWidget(parent), m_ui(std::make_unique<Ui::ProgressPanel>())
{
    m_ui->setupUi(this);
    // A text is over both parts of its bar, the empty one and the filled one, and would
    // not change its colour just where one ends.
    QPalette colours = palette();
    const QColor text = ColourContrast::readableOn(QColor(kBarGround));
    colours.setColor(QPalette::Text, text);
    colours.setColor(QPalette::HighlightedText, text);
    colours.setColor(QPalette::Highlight, darkenedFor(text, colours.color(QPalette::Highlight)));
    for (QProgressBar *bar : {m_ui->dirBar, m_ui->fileBar, m_ui->spoolBar})
        bar->setPalette(colours);
    setShown(false);
}

ProgressPanel::~ProgressPanel() = default;

void ProgressPanel::setShown(bool shown)
{
    setVisible(shown);
    m_ui->dirBar->setVisible(shown);
    m_ui->fileBar->setVisible(shown);
    m_ui->spoolBar->setVisible(shown);
}

void ProgressPanel::showDirectories(int length)
{
    showQueue(m_ui->dirBar, QStringLiteral("dir %L1 "), length);
}

void ProgressPanel::showFiles(int length)
{
    showQueue(m_ui->fileBar, QStringLiteral("file %L1 "), length);
}

void ProgressPanel::showSpool(int fill, int peak)
{
    showSpoolPeak(peak);
    m_ui->spoolBar->setFormat(QStringLiteral("spool %L1 ").arg(fill));
    m_ui->spoolBar->setValue(fill);
}

void ProgressPanel::startDisplaying(int peak)
{
    showSpoolPeak(peak);
}

void ProgressPanel::showSpoolPeak(int peak)
{
    // A range of nothing is how a bar says that it is busy, by moving to and fro.
    m_ui->spoolBar->setRange(0, std::max(peak, 1));
}

void ProgressPanel::showDisplayed(int count)
{
    m_ui->spoolBar->setValue(count);
    m_ui->spoolBar->setFormat(QStringLiteral("spool %1 ").arg(count));
}

void ProgressPanel::showThreads(const QMap<int, int> &counts)
{
    const QString table = SearchSummary::threadTable(counts);
    m_ui->threadLabel->setText(table);
    m_ui->threadLabel->setToolTip(table.trimmed());
}
