#pragma once

#include "mainwindow/TextFind.h"

#include <QObject>
#include <QString>
#include <QTimer>

#include <functional>
#include <memory>

class GrepEditor;

QT_BEGIN_NAMESPACE
class QShortcut;
class QStatusBar;
QT_END_NAMESPACE

/// Finds a text in the view that the user is in, the preview or else the result
/// view, with the switches of the find dialog.
///
/// In a long text this goes on over many turns of the event loop, so the window
/// answers meanwhile. It ends without a word when the user moves that view's cursor or
/// goes to the other view, and by Escape.
class FindControl : public QObject {
    Q_OBJECT

signals:
    /// The status bar is free again for the place of the selected hit.
    void placeWanted();
    /// A line was selected in the result view while the focus was elsewhere.
    void foundUnfocused();

public:
    /// Not owned; must outlive this object.
    struct Views {
        GrepEditor *resultView = nullptr;
        GrepEditor *preview = nullptr;
        QStatusBar *statusBar = nullptr;
        /// Tells whether a part of that view's text is still to come; then nothing is
        /// searched.
        std::function<bool(const GrepEditor &)> isLoading;
    };

    FindControl(const Views &views, QObject *parent);
    ~FindControl() override;

    /// Asks for a text and finds it.
    void ask();
    /// Finds the text that was asked for last; asks when there is none. The status
    /// bar tells when the text's end was passed or nothing is found. While the same
    /// is being searched already, nothing happens.
    void find(TextFind::Direction direction);
    /// Gives up a search that goes on: the text that it goes through is replaced.
    void stop();

private:
    GrepEditor &currentView() const;
    void findIn(GrepEditor &view, TextFind::Direction direction);
    void goOn(int milliseconds);
    void end(TextFind::Result result);
    void select(const TextFind &find);
    void cancel();
    void tell(const QString &message);
    void tellFailure(const QString &message);
    void takeBackMessage();

    const Views m_views;
    QString m_text;
    std::unique_ptr<TextFind> m_find; // while one goes on
    const GrepEditor *m_view = nullptr; // that it goes through
    QTimer m_turn;
    QShortcut *m_escape = nullptr; // enabled while one goes on
    QString m_message; // the last one, which its timer takes back
    QTimer *m_messageTimer = nullptr;
};
