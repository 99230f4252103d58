#include "mainwindow/FindControl.h"

#include "settings/AppSettings.h"
#include "settings/dialogs/findDialog.h"
#include "view/GrepEditor.h"

#include <QApplication>
#include <QStatusBar>

namespace {

constexpr int kMessageMilliseconds = 5000;

QString wrapMessage(TextFind::Direction direction)
{
    return direction == TextFind::Direction::Forward
        ? QStringLiteral("末尾まで検索したので先頭に戻りました")
        : QStringLiteral("先頭まで検索したので末尾に戻りました");
}

} // namespace

FindControl::FindControl(const Views &views, QObject *parent) : QObject(parent), m_views(views)
{
}

void FindControl::ask()
{
    QString text = m_text;
    if (!findDialog::ask(0, text, m_views.resultView->window()) || text.isEmpty())
        return;
    m_text = text;
    find(TextFind::Direction::Forward);
}

void FindControl::find(TextFind::Direction direction)
{
    if (m_text.isEmpty())
        return ask();
    const AppSettings &settings = AppSettings::instance();
    const TextFind::Options options{settings.findcase, settings.findword, settings.findregexp};
    GrepEditor &view = m_views.preview->hasFocus() ? *m_views.preview : *m_views.resultView;
    switch (TextFind::find(view, m_text, options, direction)) {
    case TextFind::Result::Found:
        m_views.statusBar->clearMessage();
        break;
    case TextFind::Result::FoundAfterWrap:
        m_views.statusBar->showMessage(wrapMessage(direction), kMessageMilliseconds);
        break;
    case TextFind::Result::NotFound:
        QApplication::beep();
        m_views.statusBar->showMessage(QStringLiteral("「%1」は見つかりません").arg(m_text),
                                       kMessageMilliseconds);
        break;
    }
}
