#pragma once

#include <QColor>
#include <QStringList>
#include <QTextEdit>

/// The text of a note, to read only. The mouse and the keys that mean something
/// to the note reach it through this.
class AssistTextEdit : public QTextEdit {
    Q_OBJECT

public:
    explicit AssistTextEdit(QWidget *parent);

    /// The lines are HTML, put one directly behind the other.
    void setLines(const QStringList &lines);
    void setColours(const QColor &back, const QColor &text, const QColor &border);

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;
};
