#pragma once

#include <QMap>
#include <QWidget>

#include <memory>

QT_BEGIN_NAMESPACE
class QProgressBar;
namespace Ui {
class ProgressPanel;
}
QT_END_NAMESPACE

/// Three bars for work that waits (folders, files, lines to be listed) and the
/// table of the threads' work. Seen while a search runs.
class ProgressPanel : public QWidget {
    Q_OBJECT

public:
    explicit ProgressPanel(QWidget *parent = nullptr);
    ~ProgressPanel() override;

    /// Shows or hides the panel. The bars keep what they showed.
    void setShown(bool shown);

    /// Queue lengths. A bar's range grows only when a length is more than 100
    /// beyond it, so that it does not look full all the time.
    void showDirectories(int length);
    void showFiles(int length);
    /// Lines that wait, of the most that ever waited in this run.
    void showSpool(int fill, int peak);
    /// Lines shown so far of those that waited at the end.
    void startDisplaying(int peak);
    void showDisplayed(int count);
    void showThreads(const QMap<int, int> &counts);

private:
    void showSpoolPeak(int peak);

    std::unique_ptr<Ui::ProgressPanel> m_ui;
};
