#include "view/UserAssistWindow.h"

#include "view/AssistTextEdit.h"

#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QEvent>
#include <QMenu>
#include <QMouseEvent>
#include <QScreen>
#include <QTimer>
#include <QToolButton>
#include <QVBoxLayout>

UserAssistWindow::UserAssistWindow(const AssistRecord &record, const QString &file, QWidget *parent)
    : QDialog(parent, Qt::Dialog | Qt::FramelessWindowHint)
    , m_group(record.group)
    , m_file(file)
    , m_window(parent ? parent->window() : nullptr)
    , m_savedGeometry(record.geometry)
{
    setMouseTracking(true);
    setAttribute(Qt::WA_TranslucentBackground);
    // The user goes on typing in the window that the note explains.
    setAttribute(Qt::WA_ShowWithoutActivating);
    setAutoFillBackground(true);
    QPalette colours = palette();
    // What is filled is the corners outside the round border.
    colours.setBrush(QPalette::Window, Qt::transparent);
    setPalette(colours);
    setMinimumSize(AssistFile::kSmallestWidth, AssistFile::kSmallestHeight);
    buildPanel(record);
    buildCloseButton(record);
    // Made last, so that it lies over the panel.
    setSizeGripEnabled(true);

    if (m_window)
        m_window->installEventFilter(this);
    resize(record.geometry.size());
    move(windowPosition() + record.geometry.topLeft());
    // Before the event loop runs, a new window does not know its own place.
    QTimer::singleShot(0, this, &UserAssistWindow::finishPlacement);
    m_saveInterval.setSingleShot(true);
    m_saveInterval.setInterval(kSaveIntervalMilliseconds);
    connect(&m_saveInterval, &QTimer::timeout, this, &UserAssistWindow::savePending);
}

UserAssistWindow::~UserAssistWindow()
{
    savePending();
}

void UserAssistWindow::buildPanel(const AssistRecord &record)
{
    auto *outer = new QVBoxLayout(this);
    outer->setContentsMargins(0, 0, 0, 0);
    m_panel = new QWidget(this);
    m_panel->setAttribute(Qt::WA_StyledBackground);
    m_panel->setStyleSheet(
        QStringLiteral("QWidget{border-color: %1;background-color: %2;border-style: "
                       "solid;border-width: 1px;border-radius: 6px;}")
            .arg(record.borderColor.name(), record.backColor.name()));
    outer->addWidget(m_panel);

    auto *inner = new QVBoxLayout(m_panel);
    inner->setContentsMargins(6, 6, 6, 1);
    m_textEdit = new AssistTextEdit(m_panel);
    m_textEdit->setColours(record.backColor, record.textColor, record.borderColor);
    m_textEdit->setLines(record.lines);
    inner->addWidget(m_textEdit);
}

void UserAssistWindow::buildCloseButton(const AssistRecord &record)
{
    m_closeButton = new QToolButton(this);
    m_closeButton->setText(QStringLiteral("×"));
    m_closeButton->setToolTip(QStringLiteral("閉じる (Esc)"));
    m_closeButton->setAccessibleName(QStringLiteral("閉じる"));
    m_closeButton->setFocusPolicy(Qt::NoFocus);
    m_closeButton->setStyleSheet(
        QStringLiteral("QToolButton{border: none;background-color: %1;color: %2;font: bold;}")
            .arg(record.backColor.name(), record.textColor.name()));
    m_closeButton->hide();
    connect(m_closeButton, &QToolButton::clicked, this,
            &UserAssistWindow::UserAssistWindowAllClose);
}

QPoint UserAssistWindow::windowPosition() const
{
    return m_window ? m_window->pos() : QPoint();
}

QRect UserAssistWindow::relativeGeometry() const
{
    return QRect(pos() - m_windowPosition, size());
}

void UserAssistWindow::finishPlacement()
{
    m_windowPosition = windowPosition();
    const QPoint wanted = m_windowPosition + m_savedGeometry.topLeft();
    const QPoint place =
        m_window ? AssistPlace::beside(QRect(wanted, size()), surroundings()) : wanted;
    move(place);
    // The file keeps the place for a screen with more room, unless the user changes
    // something here.
    m_savedGeometry.moveTopLeft(place - m_windowPosition);
    m_placed = true;
    save();
}

AssistPlace::Surroundings UserAssistWindow::surroundings() const
{
    AssistPlace::Surroundings around;
    around.window = m_window->frameGeometry();
    const auto others =
        parentWidget()->findChildren<UserAssistWindow *>(QString(), Qt::FindDirectChildrenOnly);
    for (const UserAssistWindow *other : others) {
        if (other != this && other->m_placed && other->isVisible())
            around.notes.append(other->geometry());
    }
    for (const QScreen *screen : QGuiApplication::screens())
        around.screens.append(screen->availableGeometry());
    return around;
}

void UserAssistWindow::followWindow()
{
    if (!m_placed)
        return;
    const QPoint offset = windowPosition() - m_windowPosition;
    m_windowPosition += offset;
    move(pos() + offset);
}

void UserAssistWindow::save()
{
    if (!m_placed || relativeGeometry() == m_savedGeometry)
        return;
    m_savePending = true;
    // While the mouse sizes the note, not with every pixel.
    if (!m_saveInterval.isActive())
        savePending();
}

void UserAssistWindow::savePending()
{
    if (!m_savePending)
        return;
    m_savePending = false;
    m_savedGeometry = relativeGeometry();
    AssistFile::writeGeometry(m_file, m_group, m_savedGeometry);
    m_saveInterval.start();
}

void UserAssistWindow::reject()
{
    emit UserAssistWindowAllClose();
}

bool UserAssistWindow::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_window) {
        if (event->type() == QEvent::Move)
            followWindow();
        else if (event->type() == QEvent::Hide)
            hide();
        else if (event->type() == QEvent::Show)
            show();
    }
    return QDialog::eventFilter(watched, event);
}

void UserAssistWindow::closeEvent(QCloseEvent *event)
{
    if (event->spontaneous()) {
        event->ignore();
        emit UserAssistWindowAllClose();
        return;
    }
    // Not QDialog's, which would ask once more.
    event->accept();
}

void UserAssistWindow::contextMenuEvent(QContextMenuEvent *event)
{
    auto *menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->addAction(QStringLiteral("(&C)コピー"), this,
                    [this]() { QApplication::clipboard()->setText(m_textEdit->toPlainText()); });
    menu->addAction(QStringLiteral("(&X)閉じる"), this,
                    &UserAssistWindow::UserAssistWindowAllClose);
    menu->popup(event->globalPos());
}

void UserAssistWindow::enterEvent(QEvent *event)
{
    QDialog::enterEvent(event);
    m_closeButton->show();
}

void UserAssistWindow::leaveEvent(QEvent *event)
{
    QDialog::leaveEvent(event);
    m_closeButton->hide();
}

void UserAssistWindow::keyPressEvent(QKeyEvent *event)
{
    // The key that opens the notes closes them as well.
    if (event->key() == Qt::Key_F1)
        emit UserAssistWindowAllClose();
    else
        QDialog::keyPressEvent(event);
}

void UserAssistWindow::mousePressEvent(QMouseEvent *event)
{
    m_dragging = event->button() == Qt::LeftButton;
    m_dragOffset = event->globalPos() - pos();
}

void UserAssistWindow::mouseMoveEvent(QMouseEvent *event)
{
    if (m_dragging)
        move(event->globalPos() - m_dragOffset);
}

void UserAssistWindow::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton)
        return;
    m_dragging = false;
    save();
}

void UserAssistWindow::resizeEvent(QResizeEvent *event)
{
    QDialog::resizeEvent(event);
    const QSize button = m_closeButton->sizeHint();
    m_closeButton->setGeometry(QRect(QPoint(width() - button.width() - 4, 4), button));
    save();
}
