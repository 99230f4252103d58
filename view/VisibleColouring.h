#pragma once

#include <QObject>

class Highlighter;
QT_BEGIN_NAMESPACE
class QPlainTextEdit;
QT_END_NAMESPACE

/// Has a highlighter in mode OnDemand colour the lines of a view that are about
/// to be painted, of very long ones not much more than is on screen. Belongs to
/// the view, whose document the highlighter colours.
class VisibleColouring : public QObject {
    Q_OBJECT

public:
    VisibleColouring(QPlainTextEdit *view, Highlighter *highlighter);

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void colourVisibleLines();
    int visibleUnits() const;

    QPlainTextEdit *m_view;
    Highlighter *m_highlighter;
};
