#pragma once

#include <QtGlobal>

QT_BEGIN_NAMESPACE
class QToolBar;
class QToolButton;
QT_END_NAMESPACE

/// The buttons of the tool bar, which owns them; each is named as its object.
struct ToolButtons {
    QToolButton *arrowBackBtn = nullptr; ///< has a drop-down menu
    QToolButton *arrowForwardBtn = nullptr;
    QToolButton *findBtn = nullptr;
    QToolButton *findNextBtn = nullptr;
    QToolButton *findPrevBtn = nullptr;
    QToolButton *optionBtn = nullptr;

    /// They never take the focus: finding goes on in the view that has it.
    static ToolButtons addTo(QToolBar *toolBar);
};
