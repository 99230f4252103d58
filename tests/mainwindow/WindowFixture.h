#pragma once

#include "mainwindow/MainWindow.h"
#include "tests/support/AnsweringPrompt.h"
#include "tests/support/ScratchFolder.h"
#include "view/GrepEditor.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QDir>
#include <QPlainTextEdit>
#include <QStatusBar>
#include <QStringList>

#include <memory>

/// A window with a tree to search and somebody who answers its questions. The
/// application directory is the test program's own; making the fixture empties
/// it of what a window before has written.
class WindowFixture {
public:
    WindowFixture();
    ~WindowFixture();

    /// Opens a window; one at a time.
    MainWindow &open(const QStringList &pathlist = {}, const QString &mask = {},
                     const QString &findword = {});
    void close() { m_window.reset(); }
    MainWindow &window() const { return *m_window; }

    template <typename Widget> Widget *child(const char *name) const
    {
        return m_window->findChild<Widget *>(QLatin1String(name));
    }
    QPlainTextEdit *pathEdit() const { return child<QPlainTextEdit>("pathEdit"); }
    QComboBox *mask() const { return child<QComboBox>("maskCombo"); }
    QComboBox *keyword1() const { return child<QComboBox>("keyword1Combo"); }
    QComboBox *keyword2() const { return child<QComboBox>("keyword2Combo"); }
    QComboBox *keyword3() const { return child<QComboBox>("keyword3Combo"); }
    QAbstractButton *searchButton() const { return child<QAbstractButton>("pushButton"); }
    GrepEditor *resultView() const { return child<GrepEditor>("resultView"); }
    GrepEditor *preview() const { return child<GrepEditor>("preview"); }
    QString statusText() const { return m_window->statusBar()->currentMessage(); }
    /// All that has stood in the status bar since the window was opened, also what has
    /// gone by itself: some messages stay for two seconds only.
    const QStringList &told() const { return m_told; }
    QString lastTold() const { return m_told.isEmpty() ? QString() : m_told.last(); }

    void fill(const QString &path, const QString &mask, const QString &keyword);
    bool isRunning() const;
    /// Processes events until the run is over; false when it does not end.
    bool waitUntilIdle() const;
    /// Fills the form, presses the search button and waits.
    bool search(const QString &path, const QString &mask, const QString &keyword);

    /// The result view's text with the seconds of the time replaced by "T".
    QString resultText() const;

    static QDir logDirectory();

    enum class LogChoice { Accept, Cancel, AcceptWhatIsGone };
    /// Opens the log chooser and chooses the log of this name by keys. False when it
    /// is not offered, cannot be removed, or the chooser stays.
    bool chooseLog(const QString &name, LogChoice choice = LogChoice::Accept);

    /// For the end of a test program: the fading of a clear button outlives its
    /// field and deletes itself in the event loop.
    static void waitForFading();

    static QString applicationFile(const QString &name);
    static QByteArray readApplicationFile(const QString &name);

    ScratchFolder tree;
    AnsweringPrompt prompt;

private:
    static void emptyApplicationDirectory();

    QStringList m_told;
    std::unique_ptr<MainWindow> m_window;
};
