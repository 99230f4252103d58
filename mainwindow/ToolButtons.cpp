#include "mainwindow/ToolButtons.h"

#include <QKeySequence>
#include <QStringList>
#include <QToolBar>
#include <QToolButton>

namespace {

struct Description {
    const char *name;
    const char *icon;
    QString text;
    QString toolTip;
    const char *shortcut;
    /// One more, of the window's, which the tool tip names too.
    const char *secondKey = "";
};

/// With the keys that do the same behind it.
QString toolTip(const Description &description)
{
    QStringList keys;
    for (const char *key : {description.shortcut, description.secondKey}) {
        if (*key)
            keys += QKeySequence(QLatin1String(key)).toString();
    }
    if (keys.isEmpty())
        return description.toolTip;
    return QStringLiteral("%1 (%2)").arg(description.toolTip, keys.join(QStringLiteral(", ")));
}

QToolButton *addButton(QToolBar *toolBar, const Description &description)
{
    auto *button = new QToolButton(toolBar);
    button->setObjectName(QLatin1String(description.name));
    button->setIcon(QIcon(QStringLiteral(":/icon/%1.png").arg(QLatin1String(description.icon))));
    button->setText(description.text);
    button->setAccessibleName(description.text);
    button->setToolTip(toolTip(description));
    button->setShortcut(QKeySequence(QLatin1String(description.shortcut)));
    button->setFocusPolicy(Qt::NoFocus);
    toolBar->addWidget(button);
    return button;
}

} // namespace

ToolButtons ToolButtons::addTo(QToolBar *toolBar)
{
    ToolButtons buttons;
    buttons.arrowBackBtn = addButton(toolBar,
                                     {"arrowBackBtn", "arrow-back", QStringLiteral("前の検索結果"),
                                      QStringLiteral("前に検索結果を表示します"), "Alt+Left"});
    buttons.arrowBackBtn->setToolTip(QStringLiteral("前に検索結果を表示します"));
    // The only place that names the key of the window's shortcut for the menu.
    buttons.arrowBackBtn->setStatusTip(QStringLiteral("Ctrl+H: 過去の検索結果の一覧を表示します"));
    buttons.arrowBackBtn->setPopupMode(QToolButton::MenuButtonPopup);
    buttons.arrowForwardBtn =
        addButton(toolBar,
                  {"arrowForwardBtn", "arrow-forward", QStringLiteral("次の検索結果"),
                   QStringLiteral("次の検索結果を表示します"), "Alt+Right"});
    toolBar->addSeparator();
    buttons.findBtn = addButton(toolBar,
                                {"findBtn", "edit-find-4", QStringLiteral("検索"),
                                 QStringLiteral("表示中のテキストから探します"), "Ctrl+F"});
    buttons.findNextBtn = addButton(toolBar,
                                    {"findNextBtn", "go-down-5", QStringLiteral("次を検索"),
                                     QStringLiteral("次を検索します"), "Ctrl+Down", "F3"});
    buttons.findPrevBtn = addButton(toolBar,
                                    {"findPrevBtn", "go-up-5", QStringLiteral("前を検索"),
                                     QStringLiteral("前を検索します"), "Ctrl+Up", "Shift+F3"});
    toolBar->addSeparator();
    buttons.optionBtn = addButton(
        toolBar,
        {"optionBtn", "option", QStringLiteral("設定"), QStringLiteral("設定を変更します"), ""});
    return buttons;
}
