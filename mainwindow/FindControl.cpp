#include "mainwindow/FindControl.h"

#include "settings/AppSettings.h"
#include "settings/dialogs/findDialog.h"
#include "view/GrepEditor.h"

#include <QApplication>
#include <QShortcut>
#include <QStatusBar>

#include <utility>

namespace {

constexpr int kMessageMilliseconds = 5000;
/// Most texts are through before the first turn ends, and nothing is seen of it.
constexpr int kFirstTurnMilliseconds = 30;
constexpr int kTurnMilliseconds = 20;

QString wrapMessage(TextFind::Direction direction)
{
    return direction == TextFind::Direction::Forward
        ? QStringLiteral("末尾まで検索したので先頭に戻りました")
        : QStringLiteral("先頭まで検索したので末尾に戻りました");
}

} // namespace

FindControl::FindControl(const Views &views, QObject *parent)
    : QObject(parent)
    , m_views(views)
    , m_escape(new QShortcut(QKeySequence(Qt::Key_Escape), views.resultView->window()))
    , m_messageTimer(new QTimer(this))
{
    m_escape->setEnabled(false);
    connect(m_escape, &QShortcut::activated, this, &FindControl::cancel);
    connect(&m_turn, &QTimer::timeout, this, [this] {
        if (&currentView() == m_view && m_find->isCursorUntouched())
            goOn(kTurnMilliseconds);
        else
            stop();
    });
    m_messageTimer->setObjectName(QStringLiteral("findMessageTimer"));
    m_messageTimer->setSingleShot(true);
    m_messageTimer->setInterval(kMessageMilliseconds);
    connect(m_messageTimer, &QTimer::timeout, this, &FindControl::takeBackMessage);
}

FindControl::~FindControl() = default;

void FindControl::ask()
{
    // Before the dialog, which takes the focus.
    GrepEditor &view = currentView();
    QString text = m_text;
    if (!findDialog::ask(0, text, view.window()) || text.isEmpty())
        return;
    m_text = text;
    stop();
    findIn(view, TextFind::Direction::Forward);
}

void FindControl::find(TextFind::Direction direction)
{
    if (m_text.isEmpty())
        return ask();
    // A key that is held down would begin anew again and again.
    if (m_find && m_find->direction() == direction)
        return;
    stop();
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
    m_views.statusBar->clearMessage();
    if (m_views.isLoading && m_views.isLoading(view))
        return tellFailure(QStringLiteral("読み込み中です。終わってから検索してください"));
    const AppSettings &settings = AppSettings::instance();
    const TextFind::Options options{settings.findcase, settings.findword, settings.findregexp};
    m_find = std::make_unique<TextFind>(&view, m_text, options, direction);
    m_view = &view;
    goOn(kFirstTurnMilliseconds);
}

void FindControl::goOn(int milliseconds)
{
    const TextFind::Result result = m_find->step(milliseconds);
    if (result != TextFind::Result::Searching)
        return end(result);
    if (m_turn.isActive())
        return;
    m_views.statusBar->showMessage(QStringLiteral("「%1」を検索しています　Esc: 中止").arg(m_text));
    m_escape->setEnabled(true);
    m_turn.start(0);
}

void FindControl::stop()
{
    if (!m_find)
        return;
    if (m_turn.isActive())
        m_views.statusBar->clearMessage();
    m_turn.stop();
    m_escape->setEnabled(false);
    m_find.reset();
}

void FindControl::cancel()
{
    stop();
    tell(QStringLiteral("検索を中止しました"));
}

void FindControl::end(TextFind::Result result)
{
    // Selecting may show another file and ask something meanwhile.
    const std::unique_ptr<TextFind> find = std::move(m_find);
    if (m_turn.isActive())
        m_views.statusBar->clearMessage();
    m_turn.stop();
    m_escape->setEnabled(false);
    switch (result) {
    case TextFind::Result::Found:
        select(*find);
        if (m_views.statusBar->currentMessage().isEmpty())
            emit placeWanted();
        break;
    case TextFind::Result::FoundAfterWrap:
        select(*find);
        tell(wrapMessage(find->direction()));
        break;
    case TextFind::Result::InvalidPattern:
        tellFailure(QStringLiteral("「%1」は正規表現として正しくありません").arg(m_text));
        break;
    case TextFind::Result::NotFound:
        tellFailure(QStringLiteral("「%1」は見つかりません").arg(m_text));
        break;
    case TextFind::Result::Searching:
        break;
    }
}

void FindControl::select(const TextFind &find)
{
    find.select();
    const QWidget *const results = m_views.resultView;
    if (m_view == results && results->window()->focusWidget() != results)
        emit foundUnfocused();
}

void FindControl::tellFailure(const QString &message)
{
    QApplication::beep();
    tell(message);
}

void FindControl::tell(const QString &message)
{
    m_message = message;
    m_views.statusBar->showMessage(message);
    m_messageTimer->start();
}

/// Unless something else is told meanwhile.
void FindControl::takeBackMessage()
{
    if (m_views.statusBar->currentMessage() != m_message)
        return;
    m_views.statusBar->clearMessage();
    emit placeWanted();
}
