#include "view/GrepEditor.h"

#include "settings/AppSettings.h"
#include "settings/ShownFont.h"
#include "view/DisplayColumn.h"
#include "view/DocumentText.h"
#include "view/EditorCommand.h"
#include "view/FileLineSearch.h"
#include "view/FindPattern.h"
#include "view/FocusEdge.h"
#include "view/GrepEditorHost.h"
#include "view/Highlighter.h"
#include "view/LongLineLayout.h"
#include "view/OtherGrepCommand.h"
#include "view/ProgramLauncher.h"
#include "view/ResultLine.h"
#include "view/TextAppender.h"
#include "view/TextDrag.h"
#include "view/VisibleColouring.h"

#include <QApplication>
#include <QDebug>
#include <QDir>
#include <QFontMetricsF>
#include <QMenu>
#include <QMimeData>
#include <QPainter>
#include <QScrollBar>
#include <QTextBlock>
#include <QUrl>
#include <QWheelEvent>

#include <algorithm>
#include <cstdlib>

namespace {

/// One notch of a mouse wheel, in eighths of a degree.
constexpr int kNotch = 120;
/// UTF-16 code units of a text that is laid out anew in no time.
constexpr int kLongestLaidOutAnew = 64 * 1024;
/// A wheel event that moves further than this is a device gone wild.
constexpr int kMostWheelDelta = 240;

void setColour(QPalette &palette, QPalette::ColorRole role, const QColor &colour)
{
    if (colour.isValid())
        palette.setColor(role, colour);
}

QStringList eachOnOneLine(QStringList lines)
{
    for (QString &line : lines)
        line = ResultLine::onOneLine(line);
    return lines;
}

} // namespace

GrepEditor::GrepEditor(bool isResultView, QWidget *parent)
    : QPlainTextEdit(parent)
    , m_isResultView(isResultView)
    , m_host(dynamic_cast<GrepEditorHost *>(parent))
    , m_startDirectory(QDir::currentPath())
{
    auto *layout = new LongLineLayout(document());
    layout->setPaintDevice(viewport()); // as the one before had it, for its resolution
    document()->setDocumentLayout(layout);
    setDocument(document()); // takes up the layout
    m_fileLineSearch = std::make_unique<FileLineSearch>(*document());
    viewport()->setCursor(Qt::ArrowCursor);
    setLineWrapMode(QPlainTextEdit::NoWrap);
    const AppSettings &settings = AppSettings::instance();
    setViewFont(isResultView ? settings.grepFont : settings.textFont, true);
    m_highlighter = new Highlighter(document(), isResultView, Highlighter::Mode::OnDemand);
    m_highlighter->keepLongLinesApart();
    new VisibleColouring(this, m_highlighter);
    if (isResultView)
        m_highlighter->setLanguage(QString());
    applyColours();
    new FocusEdge(this);
    new TextDrag(this, [this] { return createMimeDataFromSelection(); });
    connect(this, &GrepEditor::cursorPositionChanged, this, &GrepEditor::highlightCurrentLine);
}

GrepEditor::~GrepEditor() = default;

// By value: the caller's may be the very font that is set.
void GrepEditor::setViewFont(QFont font, bool remember)
{
    AppSettings &settings = AppSettings::instance();
    if (remember)
        m_defaultFont = font;
    const QFont shown = ShownFont::bounded(font);
    setFont(shown);
    viewport()->setFont(shown);
    // The view's font change reached the document already unless the view had
    // this font before; each setting lays the whole document out anew.
    if (document()->defaultFont() != this->font())
        document()->setDefaultFont(shown);
    (m_isResultView ? settings.grepFont : settings.textFont) = font;
    const qreal blank = QFontMetricsF(shown, this).horizontalAdvance(QLatin1Char(' '));
    setTabStopDistance(blank * std::max(settings.tabcolm, 1));
}

void GrepEditor::applyColours()
{
    const AppSettings &settings = AppSettings::instance();
    QPalette colours = palette();
    setColour(colours, QPalette::Base, settings.backcolor);
    setColour(colours, QPalette::Text, settings.forecolor);
    setColour(colours, QPalette::Highlight, settings.hlbackcolor);
    setColour(colours, QPalette::HighlightedText, settings.hlforecolor);
    setPalette(colours);
    m_highlighter->reloadColours();
    viewport()->update();
}

QString GrepEditor::currentLineText() const
{
    return textCursor().block().text();
}

QString GrepEditor::fileLineText() const
{
    return m_fileLineSearch->headOf(textCursor().block()).text();
}

void GrepEditor::setLocation(const QString &fileName, int line, int column)
{
    m_fileName = fileName;
    m_line = line;
    m_column = column;
}

bool GrepEditor::takeLocationFromLine()
{
    const QString text = currentLineText();
    const ResultLine::Kind kind = ResultLine::kind(text);
    if (kind == ResultLine::Kind::None || !m_listsHits)
        return false;
    const ResultLine::Place place = ResultLine::placeOf(text);
    const QString fileLine = kind == ResultLine::Kind::File ? text : fileLineText();
    setLocation(ResultLine::pathOf(fileLine), place.line, place.column);
    return true;
}

void GrepEditor::openInEditor()
{
    if (m_isResultView && !takeLocationFromLine())
        return;
    const AppSettings &settings = AppSettings::instance();
    EditorCommand::Request request;
    request.editor = settings.editor;
    request.parameterTemplate = settings.editor_para;
    request.fileName = m_fileName;
    request.line = m_line;
    request.column = m_column;
    if (!m_isResultView) {
        const QTextCursor cursor = textCursor();
        request.line = cursor.blockNumber() + 1;
        request.column = DisplayColumn::before(cursor.block().text(), cursor.positionInBlock(),
                                               settings.tabcolm);
    }
    request.applicationDirectory = QCoreApplication::applicationDirPath();
    request.startDirectory = m_startDirectory;
    const auto command = EditorCommand::build(request, launcher().pathStyle());
    if (command && !launcher().startDetached(*command))
        qDebug().noquote() << "editor not started:" << command->program;
}

void GrepEditor::othergrep()
{
    const QTextCursor cursor = textCursor();
    if (!cursor.hasSelection())
        return;
    QString text = cursor.selectedText();
    text.replace(QChar::ParagraphSeparator, QLatin1Char('\n'));
    const QString path = m_host ? m_host->searchPaths().value(0) : QString();
    const LaunchCommand command = OtherGrepCommand::build(QCoreApplication::applicationDirPath(),
                                                          path, text, launcher().pathStyle());
    if (launcher().open(command))
        return;
    qDebug("ShellExecute error2 ");
    qDebug().noquote() << LaunchRules::quotedIfBlank(command.program);
    qDebug().noquote() << command.parameters;
}

ProgramLauncher &GrepEditor::launcher() const
{
    return m_launcher ? *m_launcher : ProgramLauncher::native();
}

QRegExp GrepEditor::findPattern(const QString &keyword) const
{
    const AppSettings &settings = AppSettings::instance();
    FindPattern::Options options;
    options.regexp = settings.regexp;
    options.word = settings.word;
    options.ignoreCase = settings.caseinsensitive;
    return FindPattern::forKeyword(keyword, options);
}

void GrepEditor::appendLines(const QStringList &lines)
{
    TextAppender::append(*this, eachOnOneLine(lines));
}

QString GrepEditor::textOfAppended(const QStringList &lines) const
{
    QString text = TextAppender::joined(eachOnOneLine(lines), document()->isEmpty());
    return text.replace(QChar::ParagraphSeparator, QLatin1Char('\n'));
}

void GrepEditor::highlightCurrentLine()
{
    resetPickCounts();
    viewport()->update();
}

void GrepEditor::resetPickCounts()
{
    m_pickCount1 = 0;
    m_pickCount2 = 0;
}

bool GrepEditor::pickWord(int &count)
{
    const QTextCursor cursor = textCursor();
    ++count;
    m_pickedWord = m_picker.pick(cursor.block().text(), cursor.positionInBlock(), count);
    // At the end of a line there is no word, and a keyword is better than none.
    return m_host && !m_pickedWord.isEmpty();
}

void GrepEditor::pickKeyword1()
{
    if (!pickWord(m_pickCount1))
        return;
    m_host->setKeyword1(m_pickedWord);
    m_host->refreshForm();
}

void GrepEditor::pickKeyword2()
{
    if (!pickWord(m_pickCount2))
        return;
    m_host->setKeyword2(m_pickedWord);
    m_host->refreshForm();
}

void GrepEditor::keyPressEvent(QKeyEvent *event)
{
    const int key = event->key();
    const bool shift = event->modifiers().testFlag(Qt::ShiftModifier);
    m_isMousePressed = false; // somebody who types has let it go, seen or not
    if (key != Qt::Key_F5 && key != Qt::Key_F6)
        resetPickCounts();
    if (key == Qt::Key_Escape) {
        m_escapePressed = true;
    } else if ((key == Qt::Key_Return || key == Qt::Key_Enter) && (m_isResultView || shift)) {
        // Held down, as since the search began, it would start an editor for each repeat.
        if (!event->isAutoRepeat())
            openInEditor();
        return;
    } else if (key == Qt::Key_F5) {
        pickKeyword1();
    } else if (key == Qt::Key_F6) {
        pickKeyword2();
    } else if (key == Qt::Key_G && event->modifiers() == Qt::AltModifier) {
        othergrep();
        return;
    } else if (event->modifiers() == Qt::AltModifier
               && (key == Qt::Key_Left || key == Qt::Key_Right)) {
        // Keys of the window's; where there is no further search they move nothing.
        return;
    }
    QPlainTextEdit::keyPressEvent(event);
}

void GrepEditor::focusOutEvent(QFocusEvent *event)
{
    // A box that opens under the pressed button takes its release.
    m_isMousePressed = false;
    QPlainTextEdit::focusOutEvent(event);
}

void GrepEditor::mousePressEvent(QMouseEvent *event)
{
    const bool isLeft = event->button() == Qt::LeftButton;
    const QTextCursor before = textCursor();
    if (isLeft)
        m_isMousePressed = true; // before the cursor moves
    QPlainTextEdit::mousePressEvent(event);
    if (!isLeft)
        return;
    // Without Shift, only the third click of three makes a selection at once.
    const QTextCursor after = textCursor();
    const bool isOther = before.anchor() != after.anchor() || before.position() != after.position();
    m_selectsLines = event->modifiers() != Qt::ShiftModifier && after.hasSelection() && isOther;
    keepCursorInSelectedLine();
}

void GrepEditor::mouseMoveEvent(QMouseEvent *event)
{
    QPlainTextEdit::mouseMoveEvent(event);
    if (event->buttons().testFlag(Qt::LeftButton))
        keepCursorInSelectedLine();
}

/// A selected line ends at the start of the next one, which is another hit.
void GrepEditor::keepCursorInSelectedLine()
{
    QTextCursor cursor = textCursor();
    if (!m_isResultView || !m_selectsLines || !cursor.atBlockStart()
        || cursor.position() <= cursor.anchor())
        return;
    cursor.movePosition(QTextCursor::PreviousCharacter, QTextCursor::KeepAnchor);
    setTextCursor(cursor);
}

void GrepEditor::mouseDoubleClickEvent(QMouseEvent *event)
{
    m_selectsLines = false;
    // Before the word is selected, which puts the cursor behind the word.
    if (event->button() == Qt::LeftButton) {
        m_isMousePressed = true;
        setTextCursor(cursorForPosition(event->pos()));
        openInEditor();
    }
    QPlainTextEdit::mouseDoubleClickEvent(event);
}

void GrepEditor::mouseReleaseEvent(QMouseEvent *event)
{
    QPlainTextEdit::mouseReleaseEvent(event);
    if (event->button() == Qt::BackButton)
        emit BackButton();
    else if (event->button() == Qt::ForwardButton)
        emit ForwardButton();
    if (!event->buttons().testFlag(Qt::LeftButton)) {
        m_isMousePressed = false;
        emit mouseReleased();
    }
}

/// At every step of a drag the base class forgets how each line is laid out, a
/// million times. As lines are not wrapped, the width matters only to those that
/// are written from right to left; in a long text they keep the edge they have.
///
/// What the cursor's row loses to a scroll bar that a wide line brings, or to a smaller
/// window, is scrolled into sight again.
void GrepEditor::resizeEvent(QResizeEvent *event)
{
    const bool wasInSight = isCursorInSight(event->oldSize().height());
    const bool layOutAnew = !m_isLaidOut || document()->characterCount() < kLongestLaidOutAnew;
    m_isLaidOut = m_isLaidOut || viewport()->width() > 0;
    const QSize unchangedWidth(event->size().width(), event->oldSize().height());
    QResizeEvent withoutLayout(event->size(), unchangedWidth);
    QPlainTextEdit::resizeEvent(layOutAnew ? event : &withoutLayout);
    QScrollBar *const bar = verticalScrollBar();
    if (wasInSight && !isCursorInSight(viewport()->height()))
        bar->setValue(bar->value() + rowsToCursor() + 1 - rowsIn(viewport()->height()));
}

/// All of its row. A line is one row and a step of the scroll bar: lines are not wrapped.
bool GrepEditor::isCursorInSight(int viewportHeight) const
{
    const int rows = rowsToCursor();
    return rows >= 0 && rows < rowsIn(viewportHeight);
}

/// From the first row that is seen.
int GrepEditor::rowsToCursor() const
{
    return textCursor().blockNumber() - firstVisibleBlock().blockNumber();
}

/// Whole rows; one at least, which has to do.
int GrepEditor::rowsIn(int viewportHeight) const
{
    const QTextBlock first = firstVisibleBlock();
    const qreal top = blockBoundingGeometry(first).translated(contentOffset()).top();
    const qreal row = blockBoundingRect(first).height();
    return row > 0 ? std::max(int((viewportHeight - top) / row), 1) : 1;
}

void GrepEditor::wheelEvent(QWheelEvent *event)
{
    if (event->angleDelta().manhattanLength() > kMostWheelDelta) {
        event->ignore();
    } else if (event->modifiers().testFlag(Qt::ControlModifier)) {
        event->accept();
        zoomByWheel(*event);
    } else if (event->modifiers().testFlag(Qt::ShiftModifier)) {
        event->accept();
        scrollByLines(*event);
    } else {
        QPlainTextEdit::wheelEvent(event);
    }
}

void GrepEditor::zoomByWheel(const QWheelEvent &event)
{
    int delta = event.angleDelta().y();
    const bool isPart = delta != 0 && std::abs(delta) < kNotch;
    if (isPart || !event.pixelDelta().isNull()) {
        // A touch pad or a fine wheel moves in parts of a notch, not all of them
        // with pixels; none asks for a reset.
        m_zoomRest += delta;
        delta = m_zoomRest / kNotch * kNotch;
        m_zoomRest -= delta;
        if (delta == 0)
            return;
    }
    zoom(delta / kNotch);
}

void GrepEditor::zoom(int step)
{
    const int before = QFontInfo(font()).pointSize();
    QFont font = m_defaultFont;
    if (step != 0) {
        const int after = std::min(before + step, ShownFont::kLargestPointSize);
        if (after <= 0 || after == before)
            return;
        font = this->font();
        font.setPointSize(after);
    }
    setViewFont(font, false);
    const QSize size = viewport()->size();
    QCoreApplication::postEvent(viewport(), new QResizeEvent(size, size));
    if (step < 0 || (step == 0 && QFontInfo(this->font()).pointSize() < before))
        emit ZoomedOut(this);
}

void GrepEditor::scrollByLines(const QWheelEvent &event)
{
    // The bar scrolls a page at a time for an event with Shift, and as many
    // lines as the platform says for one without; so the event loses its Shift
    // and all but one line's part of its way.
    const QPoint delta = event.angleDelta() / std::max(QApplication::wheelScrollLines(), 1);
    QWheelEvent lines(event.position(), event.globalPosition(), QPoint(), delta, event.buttons(),
                      Qt::NoModifier, event.phase(), event.inverted(), event.source());
    QCoreApplication::sendEvent(verticalScrollBar(), &lines);
}

std::unique_ptr<QMenu> GrepEditor::makeContextMenu()
{
    // The shortcut stands in the text: as the action's own it would be a second
    // one for the same keys.
    const bool selected = textCursor().hasSelection();
    auto menu = std::make_unique<QMenu>(this);
    QAction *copyAction =
        menu->addAction(QStringLiteral("(&C)コピー\tCtrl+C"), this, &GrepEditor::copy);
    copyAction->setEnabled(selected);
    menu->addAction(QStringLiteral("(&A)全て選択\tCtrl+A"), this, &GrepEditor::selectAll);
    QAction *grepAction =
        menu->addAction(QStringLiteral("(&G)srvaik起動\tAlt+G"), this, &GrepEditor::othergrep);
    grepAction->setEnabled(selected);
    return menu;
}

QMimeData *GrepEditor::createMimeDataFromSelection() const
{
    return DocumentText::copied(textCursor());
}

bool GrepEditor::canInsertFromMimeData(const QMimeData *source) const
{
    const QList<QUrl> urls = source->urls();
    const bool hasFile =
        std::any_of(urls.begin(), urls.end(), [](const QUrl &url) { return url.isLocalFile(); });
    return !hasFile && QPlainTextEdit::canInsertFromMimeData(source);
}

void GrepEditor::contextMenuEvent(QContextMenuEvent *event)
{
    QMenu *menu = makeContextMenu().release();
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->popup(event->globalPos());
}

void GrepEditor::paintEvent(QPaintEvent *event)
{
    QPainter painter(viewport());
    const QAbstractTextDocumentLayout::PaintContext context = getPaintContext();
    BlockPainter blocks(painter, context, look(), event->rect());
    const QTextBlock current = textCursor().block();
    QPointF origin = contentOffset();
    for (QTextBlock block = firstVisibleBlock();
         block.isValid() && origin.y() <= event->rect().bottom(); block = block.next()) {
        const qreal height = blockBoundingRect(block).height();
        if (block.isVisible() && origin.y() + height > event->rect().top()) {
            if (block == current)
                blocks.paintCurrentLine(QRectF(0, origin.y(), viewport()->width(), height));
            blocks.paint(block, origin);
        }
        origin.ry() += height;
    }
}

BlockPainter::Look GrepEditor::look() const
{
    const AppSettings &settings = AppSettings::instance();
    BlockPainter::Look look;
    look.textFont = font();
    look.marks.tabs = settings.tab;
    look.marks.fullWidthSpaces = settings.zenspc;
    look.marks.lineEnds = settings.cr;
    look.tabColour = settings.tabcolor;
    look.controlColour = settings.ctrlcolor;
    look.documentEndColour = settings.markercolor;
    const QColor text = palette().color(QPalette::Text);
    look.caretColour = settings.cursorcolor.isValid() ? settings.cursorcolor : text;
    look.caretWidth = cursorWidth();
    if (settings.cursorback) {
        look.currentLineFill = TextMarks::currentLineFill(settings.backcolor);
        look.currentLineEdge = settings.cursorcolor;
    }
    return look;
}
