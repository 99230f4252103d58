#pragma once

#include <QObject>

QT_BEGIN_NAMESPACE
class QAbstractScrollArea;
QT_END_NAMESPACE

/// Paints the frame of a text view in the colour of what is selected while the view
/// has the focus, as the style does for a field of one line. A view without a frame
/// stays as it is.
class FocusEdge : public QObject {
    Q_OBJECT

public:
    /// Belongs to area.
    explicit FocusEdge(QAbstractScrollArea *area);

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void paint();

    QAbstractScrollArea *m_area;
};
