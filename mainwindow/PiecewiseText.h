#pragma once

#include <QObject>
#include <QString>
#include <QTimer>

QT_BEGIN_NAMESPACE
class QPlainTextEdit;
QT_END_NAMESPACE

/// Shows long texts in a view without blocking the window: the beginning at once,
/// the rest piece by piece, one in each turn of the event loop. The view sends no
/// signal for it, its document is never modified by it, and nothing of it can be
/// undone. The cursor starts at the start.
class PiecewiseText : public QObject {
    Q_OBJECT

signals:
    /// The whole text is there; not for one that was cancelled. For a short text
    /// sent by show() itself.
    void finished();

public:
    /// view is not owned and must outlive this object.
    PiecewiseText(QPlainTextEdit *view, QObject *parent);

    /// Replaces the view's text by text, whose lines are separated by line feeds.
    /// What is left of a text before is given up.
    void show(const QString &text);
    /// Gives up what is left; what is there stays.
    void cancel();

    bool isFinished() const { return m_start < 0; }

private:
    void showNextPiece();
    void finishPiece(int end);

    QPlainTextEdit *const m_view;
    QTimer m_timer;
    QString m_text;
    /// Where the next piece begins; -1 when there is none.
    int m_start = -1;
};
