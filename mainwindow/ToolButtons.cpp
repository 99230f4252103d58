#include "mainwindow/ToolButtons.h"

#include <QKeySequence>
#include <QToolBar>
#include <QToolButton>

namespace {

struct Description {
    const char *name;
    const char *icon;
    QString text;
    QString toolTip;
    const char *shortcut;
};

QToolButton *addButton(QToolBar *toolBar, const Description &description)
{
    auto *button = new QToolButton(toolBar);
    const QKeySequence shortcut(QLatin1String(description.shortcut));
    button->setObjectName(QLatin1String(description.name));
    button->setIcon(QIcon(QStringLiteral(":/icon/%1.png").arg(QLatin1String(description.icon))));
    button->setText(description.text);
    button->setAccessibleName(description.text);
    button->setToolTip(shortcut.isEmpty() ? description.toolTip
                                          : QStringLiteral("%1 (%2)").arg(description.toolTip,
                                                                          shortcut.toString()));
    button->setShortcut(shortcut);
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
                                     QStringLiteral("次を検索します"), "Ctrl+Down"});
    buttons.findPrevBtn = addButton(toolBar,
                                    {"findPrevBtn", "go-up-5", QStringLiteral("前を検索"),
                                     QStringLiteral("前を検索します"), "Ctrl+Up"});
    toolBar->addSeparator();
    buttons.optionBtn = addButton(
        toolBar,
        {"optionBtn", "option", QStringLiteral("設定"), QStringLiteral("設定を変更します"), ""});
    return buttons;
}
