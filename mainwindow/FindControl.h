#pragma once

#include "mainwindow/TextFind.h"

#include <QObject>
#include <QString>

class GrepEditor;

QT_BEGIN_NAMESPACE
class QStatusBar;
QT_END_NAMESPACE

/// Finds a text in the view that the user is in, the preview or else the result
/// view, with the switches of the find dialog.
class FindControl : public QObject {
    Q_OBJECT

public:
    /// Not owned; must outlive this object.
    struct Views {
        GrepEditor *resultView = nullptr;
        GrepEditor *preview = nullptr;
        QStatusBar *statusBar = nullptr;
    };

    FindControl(const Views &views, QObject *parent);

    /// Asks for a text and finds it.
    void ask();
    /// Finds the text that was asked for last; asks when there is none. The status
    /// bar tells when the text's end was passed or nothing is found.
    void find(TextFind::Direction direction);

private:
    GrepEditor &currentView() const;
    void findIn(GrepEditor &view, TextFind::Direction direction);

    const Views m_views;
    QString m_text;
};
