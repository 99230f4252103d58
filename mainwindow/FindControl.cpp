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
    // Before the dialog, which takes the focus.
    GrepEditor &view = currentView();
    QString text = m_text;
    if (!findDialog::ask(0, text, view.window()) || text.isEmpty())
        return;
    m_text = text;
    findIn(view, TextFind::Direction::Forward);
}

void FindControl::find(TextFind::Direction direction)
{
    if (m_text.isEmpty())
        ask();
    else
        findIn(currentView(), direction);
}

/// The window's focus, which a dialog that is open or closing does not change.
GrepEditor &FindControl::currentView() const
{
    const bool inPreview = m_views.preview->window()->focusWidget() == m_views.preview;
    return inPreview ? *m_views.preview : *m_views.resultView;
}

void FindControl::findIn(GrepEditor &view, TextFind::Direction direction)
{
    const AppSettings &settings = AppSettings::instance();
    const TextFind::Options options{settings.findcase, settings.findword, settings.findregexp};
    switch (TextFind::find(view, m_text, options, direction)) {
    case TextFind::Result::Found:
        m_views.statusBar->clearMessage();
        break;
    case TextFind::Result::FoundAfterWrap:
        m_views.statusBar->showMessage(wrapMessage(direction), kMessageMilliseconds);
        break;
    case TextFind::Result::InvalidPattern:
        QApplication::beep();
        m_views.statusBar->showMessage(
            QStringLiteral("「%1」は正規表現として正しくありません").arg(m_text),
            kMessageMilliseconds);
        break;
    case TextFind::Result::NotFound:
        QApplication::beep();
        m_views.statusBar->showMessage(QStringLiteral("「%1」は見つかりません").arg(m_text),
                                       kMessageMilliseconds);
        break;
    }
}
