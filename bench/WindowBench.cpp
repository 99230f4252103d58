#include "engine/NativePath.h"
#include "mainwindow/HistoryControl.h"
#include "mainwindow/MainWindow.h"
#include "settings/AppSettings.h"
#include "settings/ApplicationDirectory.h"
#include "settings/LocaleSetup.h"
#include "view/GrepEditor.h"
#include "view/ResultLine.h"

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QElapsedTimer>
#include <QFile>
#include <QKeyEvent>
#include <QMenu>
#include <QPlainTextEdit>
#include <QStatusBar>
#include <QTextBlock>
#include <QTextStream>
#include <QTimer>
#include <QToolButton>

#include <algorithm>

namespace {

/// Longest time between two turns of the event loop, as a user would feel it.
class Heartbeat : public QObject {
public:
    Heartbeat()
    {
        connect(&m_timer, &QTimer::timeout, this, &Heartbeat::beat);
        m_timer.start(1);
        m_clock.start();
    }

    qint64 takeLongest() { return std::exchange(m_longest, 0); }

private:
    void beat() { m_longest = std::max(m_longest, m_clock.restart()); }

    QTimer m_timer;
    QElapsedTimer m_clock;
    qint64 m_longest = 0;
};

class Bench : public QObject {
public:
    explicit Bench(MainWindow &window) : m_window(window)
    {
        // The first turn of the event loop in which the rest is being listed.
        connect(&m_poll, &QTimer::timeout, this, [this] {
            if (m_engineEnd == 0 && button()->text() == QStringLiteral("表示中..."))
                m_engineEnd = m_clock.elapsed();
        });
        m_poll.start(1);
    }

    void search(const QString &path, const QString &mask, const QString &keyword,
                int abortAfterMilliseconds)
    {
        m_window.findChild<QPlainTextEdit *>(QStringLiteral("pathEdit"))->setPlainText(path);
        m_window.findChild<QComboBox *>(QStringLiteral("maskCombo"))->setEditText(mask);
        m_window.findChild<QComboBox *>(QStringLiteral("keyword1Combo"))->setEditText(keyword);
        m_heartbeat.takeLongest();
        m_clock.start();
        button()->click();
        qint64 aborted = 0;
        if (abortAfterMilliseconds > 0) {
            waitUntil([&] { return m_clock.elapsed() >= abortAfterMilliseconds; });
            aborted = m_clock.elapsed();
            button()->click();
        }
        waitUntil([this] { return button()->text() == QStringLiteral("検索開始"); });
        const qint64 idle = m_clock.elapsed();
        if (m_engineEnd == 0) // listed in less than a turn
            m_engineEnd = idle;
        // The last block ends with the first turn after it.
        waitUntil([&] { return m_clock.elapsed() > idle + 50; });
        QTextStream(stdout) << "search_ms " << idle << "\nengine_ms " << m_engineEnd
                            << "\nengine_end_to_idle_ms " << idle - m_engineEnd
                            << "\nabort_to_engine_end_ms "
                            << (abortAfterMilliseconds > 0 ? m_engineEnd - aborted : 0)
                            << "\nlongest_block_ms " << m_heartbeat.takeLongest() << "\nlines "
                            << view()->blockCount() << '\n';
    }

    /// Writes what the window lists for a line count.
    void countLines(const QString &path, const QString &mask, const QString &reportPath)
    {
        m_window.findChild<QPlainTextEdit *>(QStringLiteral("pathEdit"))->setPlainText(path);
        m_window.findChild<QComboBox *>(QStringLiteral("maskCombo"))->setEditText(mask);
        m_heartbeat.takeLongest();
        m_clock.start();
        m_window.lineCountGrep();
        waitUntil([this] { return button()->text() == QStringLiteral("検索開始"); });
        const qint64 idle = m_clock.elapsed();
        QFile report(reportPath);
        // Letter by letter: a plain text has blanks in place of no-break spaces.
        QString listed = view()->document()->toRawText();
        listed.replace(QChar::ParagraphSeparator, QLatin1Char('\n'));
        if (!report.open(QIODevice::WriteOnly) || report.write(NativePath::toNative(listed)) < 0)
            qFatal("cannot write the report");
        QTextStream(stdout) << "count_ms " << idle << "\nlongest_block_ms "
                            << m_heartbeat.takeLongest() << '\n';
    }

    /// To be called after a search: a text that is nowhere in its result.
    void findNothing()
    {
        QTimer::singleShot(0, this, [] {
            QWidget *dialog = QApplication::activeModalWidget();
            dialog->findChild<QComboBox *>(QStringLiteral("le_keyword"))
                ->setEditText(QStringLiteral("no such text anywhere"));
            QTimer::singleShot(200, dialog,
                               [dialog] { qobject_cast<QDialog *>(dialog)->accept(); });
        });
        m_window.findDialogPopup();
        m_heartbeat.takeLongest();
        m_clock.start();
        const QString told = QStringLiteral("見つかりません");
        waitUntil([&] { return m_window.statusBar()->currentMessage().contains(told); });
        QTextStream(stdout) << "find_ms " << m_clock.elapsed() << "\nfind_longest_block_ms "
                            << m_heartbeat.takeLongest() << '\n';
    }

    /// To be called after a search.
    void resizeWindow()
    {
        m_heartbeat.takeLongest();
        m_clock.start();
        m_window.resize(m_window.width() + 100, m_window.height() + 20);
        waitUntil([this] { return m_clock.elapsed() > 1000; });
        QTextStream(stdout) << "resize_longest_block_ms " << m_heartbeat.takeLongest() << '\n';
    }

    void loadLog()
    {
        m_heartbeat.takeLongest();
        m_clock.start();
        const auto *history = m_window.findChild<HistoryControl *>();
        QToolButton *button = m_window.findChild<QToolButton *>(QStringLiteral("arrowBackBtn"));
        button->menu()->actions().at(0)->trigger();
        waitUntil([&] { return !history->isLoading(); });
        const qint64 loaded = m_clock.elapsed();
        waitUntil([&] { return m_clock.elapsed() > loaded + 200; });
        QTextStream(stdout) << "load_ms " << loaded << "\nload_longest_block_ms "
                            << m_heartbeat.takeLongest() << "\nlines " << view()->blockCount()
                            << '\n';
    }

    /// To be called after a search: the first hit of each file, and then the next
    /// line of the same file.
    void previewEachFile()
    {
        m_window.activateWindow();
        view()->setFocus();
        for (int line = 0; line + 2 < view()->blockCount(); ++line) {
            const QTextBlock block = view()->document()->findBlockByNumber(line);
            if (!block.text().startsWith(QLatin1String("::")) || !block.next().isValid())
                continue;
            const QString name = block.text().section(QLatin1Char('/'), -1);
            m_heartbeat.takeLongest();
            QTextStream(stdout) << "preview_ms:" << name << ' ' << timeToPreview(block.next())
                                << "\npreview_block_ms:" << name << ' ' << m_heartbeat.takeLongest()
                                << "\nsame_file_ms:" << name << ' '
                                << timeToPreview(block.next().next()) << '\n';
        }
    }

    /// To be called after a search: the Down key from the first line to the last.
    void holdDown()
    {
        m_window.activateWindow();
        view()->setFocus();
        view()->moveCursor(QTextCursor::Start);
        QElapsedTimer all;
        all.start();
        qint64 longest = 0;
        const int presses = view()->blockCount() - 1;
        for (int press = 0; press < presses; ++press) {
            m_clock.start();
            QKeyEvent down(QEvent::KeyPress, Qt::Key_Down, Qt::NoModifier);
            QCoreApplication::sendEvent(view(), &down);
            QCoreApplication::processEvents();
            longest = std::max(longest, m_clock.elapsed());
        }
        QTextStream(stdout) << "down_presses " << presses << "\ndown_all_ms " << all.elapsed()
                            << "\ndown_longest_ms " << longest << '\n';
    }

private:
    /// Milliseconds until the hit's line is the preview's current one, drawn.
    qint64 timeToPreview(const QTextBlock &hit)
    {
        auto *preview = m_window.findChild<GrepEditor *>(QStringLiteral("preview"));
        const int line = ResultLine::placeOf(hit.text()).line;
        m_clock.start();
        view()->setTextCursor(QTextCursor(hit));
        while (preview->textCursor().blockNumber() + 1 != line && m_clock.elapsed() < 30000)
            QCoreApplication::processEvents();
        preview->viewport()->repaint();
        const qint64 shown = m_clock.elapsed();
        QCoreApplication::processEvents();
        return shown;
    }

    QAbstractButton *button() const
    {
        return m_window.findChild<QAbstractButton *>(QStringLiteral("pushButton"));
    }
    GrepEditor *view() const
    {
        return m_window.findChild<GrepEditor *>(QStringLiteral("resultView"));
    }

    template <typename Condition> void waitUntil(Condition condition)
    {
        while (!condition())
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }

    MainWindow &m_window;
    Heartbeat m_heartbeat;
    QTimer m_poll;
    QElapsedTimer m_clock;
    qint64 m_engineEnd = 0;
};

} // namespace

/// Arguments: PATH MASK KEYWORD [ABORT_AFTER_MS | preview | down | resize | find], or --load,
/// or --count PATH MASK REPORT.
/// Prints a name and a figure on each line.
int main(int argc, char *argv[])
{
    LocaleSetup::useUtf8InPlainLocale();
    LocaleSetup::nameTimeZone();
    QApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    AppSettings::instance().load(ApplicationDirectory::path());
    MainWindow window({}, {}, {});
    window.show();
    Bench bench(window);
    if (arguments.value(1) == QLatin1String("--load"))
        bench.loadLog();
    else if (arguments.value(1) == QLatin1String("--count"))
        bench.countLines(arguments.value(2), arguments.value(3), arguments.value(4));
    else
        bench.search(arguments.value(1), arguments.value(2), arguments.value(3),
                     arguments.value(4).toInt());
    if (arguments.value(4) == QLatin1String("resize"))
        bench.resizeWindow();
    if (arguments.value(4) == QLatin1String("preview"))
        bench.previewEachFile();
    if (arguments.value(4) == QLatin1String("down"))
        bench.holdDown();
    if (arguments.value(4) == QLatin1String("find"))
        bench.findNothing();
    return 0;
}
