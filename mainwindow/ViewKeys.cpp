#include "mainwindow/ViewKeys.h"

#include "view/GrepEditor.h"

#include <QShortcut>
#include <QSplitter>

namespace ViewKeys {

namespace {

constexpr int kBorderStep = 24;

template <typename Action> void onKey(GrepEditor *view, const char *key, Action action)
{
    auto *shortcut = new QShortcut(QKeySequence(QLatin1String(key)), view);
    shortcut->setContext(Qt::WidgetShortcut);
    QObject::connect(shortcut, &QShortcut::activated, view, action);
}

} // namespace

void install(GrepEditor *view, QSplitter *splitter)
{
    // Where "+" needs Shift, people press the key without it.
    for (const char *key : {"Ctrl++", "Ctrl+="})
        onKey(view, key, [view] { view->zoom(1); });
    onKey(view, "Ctrl+-", [view] { view->zoom(-1); });
    onKey(view, "Ctrl+0", [view] { view->zoom(0); });
    onKey(view, "Alt+Up", [splitter] { moveBorder(splitter, -kBorderStep); });
    onKey(view, "Alt+Down", [splitter] { moveBorder(splitter, kBorderStep); });
}

void moveBorder(QSplitter *splitter, int pixels)
{
    QList<int> sizes = splitter->sizes();
    if (sizes.size() < 2)
        return;
    const auto smallest = [splitter](int index) {
        return splitter->widget(index)->minimumSizeHint().height();
    };
    const int most = qMax(sizes[1] - smallest(1), 0);
    const int least = qMin(smallest(0) - sizes[0], 0);
    const int step = qBound(least, pixels, most);
    sizes[0] += step;
    sizes[1] -= step;
    splitter->setSizes(sizes);
}

} // namespace ViewKeys
