#include "mainwindow/PreviewControl.h"

#include "engine/CodeSet.h"
#include "mainwindow/KeywordMarks.h"
#include "mainwindow/Questions.h"
#include "mainwindow/SearchForm.h"
#include "mainwindow/StatusMessages.h"
#include "mainwindow/preview/PreviewSaver.h"
#include "mainwindow/preview/RescueFile.h"
#include "settings/AppSettings.h"
#include "settings/dialogs/prompts/UserPrompt.h"
#include "view/GrepEditor.h"
#include "view/Highlighter.h"
#include "view/LanguageConfig.h"
#include "view/ResultLine.h"

#include <QDateTime>
#include <QDebug>
#include <QFileInfo>
#include <QLabel>
#include <QStatusBar>
#include <QTextBlock>

#include <utility>

namespace {

DetectionSettings detectionSettings()
{
    const AppSettings &settings = AppSettings::instance();
    DetectionSettings detection;
    detection.sampleSize = settings.codechksize;
    detection.detectSize = settings.newfileDetectsize;
    detection.fallbackCodeSet = settings.newfileCodeset;
    detection.fallbackLineEnd = settings.newfileLb;
    detection.fallbackBom = settings.newfileBom;
    return detection;
}

} // namespace

PreviewControl::PreviewControl(const Views &views, const QString &rescueDirectory, QObject *parent)
    : QObject(parent)
    , m_views(views)
    , m_rescueDirectory(rescueDirectory)
    , m_text(views.preview, this)
    , m_codeSetLabel(new QLabel(views.statusBar))
    , m_lineEndLabel(new QLabel(views.statusBar))
{
    m_views.statusBar->addPermanentWidget(m_codeSetLabel);
    m_views.statusBar->addPermanentWidget(m_lineEndLabel);
    connect(&m_text, &PiecewiseText::finished, this, &PreviewControl::onTextShown);
    connect(m_views.preview->document(), &QTextDocument::modificationChanged, this,
            &PreviewControl::showLabels);
    connect(m_views.resultView, &GrepEditor::mouseReleased, this,
            &PreviewControl::followAfterMouse);
}

QWidget *PreviewControl::window() const
{
    return m_views.preview->window();
}

void PreviewControl::setResultShown(bool shown)
{
    m_resultShown = shown;
    m_views.resultView->setListsHits(shown);
}

void PreviewControl::follow()
{
    const GrepEditor &results = *m_views.resultView;
    m_followWaits = results.isMousePressed();
    // Not hasFocus(): the window may just be getting the focus back from a dialog.
    if (!m_followWaits && results.window()->focusWidget() == &results)
        showHit();
}

void PreviewControl::showHit()
{
    if (!m_resultShown)
        return;
    const GrepEditor &results = *m_views.resultView;
    m_views.statusBar->clearMessage();
    const QString line = results.currentLineText();
    const ResultLine::Kind kind = ResultLine::kind(line);
    if (kind == ResultLine::Kind::None)
        return;
    const int block = results.textCursor().blockNumber() + 1;
    if (block == m_lastResultBlock)
        return;
    m_lastResultBlock = block;
    const ResultLine::Place place = ResultLine::placeOf(line);
    const bool isHit = kind == ResultLine::Kind::Hit;
    m_place = {ResultLine::pathOf(isHit ? results.fileLineText() : line), place.line, place.column};
    tellPlace();
    if (isShown(m_place.path) || showFile(m_place.path))
        showPlace();
}

void PreviewControl::followAfterMouse()
{
    if (m_followWaits)
        follow();
}

void PreviewControl::tellPlace() const
{
    if (m_resultShown && m_views.resultView->textCursor().blockNumber() + 1 == m_lastResultBlock)
        m_views.statusBar->showMessage(
            m_place.path + QStringLiteral("  ---- %1:%2").arg(m_place.line).arg(m_place.column));
}

/// Hits of one result do not have their file read again; a new result may tell
/// of a file that has changed.
bool PreviewControl::isShown(const QString &path)
{
    const bool mayBeOutdated = std::exchange(m_mayBeOutdated, false);
    if (path != m_file.path)
        return false;
    return !mayBeOutdated || isModified() || !PreviewSaver::changedOnDisk(m_file);
}

bool PreviewControl::showFile(const QString &path)
{
    if (!leaveFile())
        return false;
    const auto tell = [this](const QString &title, const QString &text) {
        UserPrompt::current().message(
            window(), {QMessageBox::Critical, title, text, QMessageBox::Ok, QMessageBox::Ok});
    };
    m_file = PreviewFile::load(path, detectionSettings(), tell);
    m_views.preview->setReadOnly(true);
    m_views.preview->highlighter().setLanguage(LanguageConfig::suffixOf(path));
    m_text.show(PreviewText::forDocument(m_file.text, m_file.form));
    m_views.preview->highlightCurrentLine();
    // The view holds the text now.
    m_file.text.clear();
    showLabels();
    return true;
}

void PreviewControl::onTextShown()
{
    // Not before: what is not there yet would be missing from a saved file.
    m_views.preview->setReadOnly(!m_file.readable);
    if (std::exchange(m_placeWaits, false) && m_place.path == m_file.path)
        moveCursorToPlace();
}

/// A line that is not there yet is gone to when it is.
void PreviewControl::showPlace()
{
    m_views.resultView->setLocation(m_place.path, m_place.line, m_place.column);
    m_views.preview->setLocation(m_place.path, m_place.line, m_place.column);
    m_placeWaits = !isPlaceShown();
    moveCursorToPlace();
    markKeywords();
}

bool PreviewControl::isModified() const
{
    return !m_file.path.isEmpty() && m_text.isFinished()
        && m_views.preview->document()->isModified();
}

/// Another file comes, whatever is answered; but a text that was to be saved and
/// could not be goes only when it is kept elsewhere, and one that nobody gave up
/// is kept, too.
bool PreviewControl::leaveFile()
{
    if (!isModified())
        return true;
    switch (Questions::saveModified(window(), m_file.path)) {
    case QMessageBox::Yes:
        return save() || rescueAndTell();
    case QMessageBox::No:
        return true;
    default:
        return keepElsewhere();
    }
}

bool PreviewControl::saveIfModified()
{
    if (!isModified())
        return true;
    switch (Questions::saveModified(window(), m_file.path)) {
    case QMessageBox::Yes:
        return save();
    case QMessageBox::No:
        m_views.preview->document()->setModified(false);
        return true;
    default:
        return false;
    }
}

void PreviewControl::rescueIfModified()
{
    if (isModified() && rescue().isEmpty())
        qWarning().noquote() << "edited text of" << m_file.path << "is lost";
}

QString PreviewControl::text() const
{
    return PreviewText::fromDocument(m_views.preview->document()->toRawText(), m_file.form);
}

bool PreviewControl::mayBeSaved(const QString &text)
{
    if (PreviewSaver::changedOnDisk(m_file)
        && !Questions::saveAllTheSame(
            window(), m_file.path,
            QStringLiteral("表示した後に、他のプログラムで変更されています。"
                           "保存すると、その変更は失われます。")))
        return false;
    if (PreviewSaver::changesUntouchedBytes(m_file)
        && !Questions::saveAllTheSame(
            window(), m_file.path,
            QStringLiteral("文字コードや改行コードを正しく読めなかった部分があり、"
                           "保存すると、修正していない部分も変わります。")))
        return false;
    if (!PreviewSaver::losesCharacters(m_file, text))
        return true;
    const QString lost = PreviewText::lostCharacters(text, m_file.codeSet);
    return Questions::saveAllTheSame(
        window(), m_file.path,
        QStringLiteral("%1 では表せない文字があり、保存すると「?」などに変わります。\n%2")
            .arg(CodeSet::name(m_file.codeSet), lost));
}

bool PreviewControl::save()
{
    if (m_file.path.isEmpty() || !m_file.readable || !m_text.isFinished())
        return false;
    if (!isModified() && PreviewSaver::isAsShown(m_file)) {
        // Another backup would hold what stands in the file anyway, and the text
        // of before would be gone.
        m_views.messages->confirm(QStringLiteral("修正されていません"));
        return true;
    }
    const QString text = this->text();
    const bool isAsked = PreviewSaver::changedOnDisk(m_file);
    if (!mayBeSaved(text))
        return false;
    // Who was asked gives up whatever came until the answer.
    const NativeFile::Stamp agreed = isAsked ? NativeFile::stampOf(m_file.path) : m_file.stamp;
    const PreviewSaver::Outcome outcome = PreviewSaver::save(&m_file, text, agreed);
    m_file.text.clear();
    switch (outcome.result) {
    case PreviewSaver::Outcome::Result::Changed:
        // Now it is seen, and asked about.
        return PreviewSaver::changedOnDisk(m_file) && save();
    case PreviewSaver::Outcome::Result::Saved:
        m_views.preview->document()->setModified(false);
        m_views.messages->confirm(outcome.message);
        return true;
    case PreviewSaver::Outcome::Result::RenameFailed:
        Questions::tellFailure(window(), outcome.message);
        return false;
    case PreviewSaver::Outcome::Result::WriteFailed:
        m_views.messages->refuse(outcome.message);
        Questions::tellFailure(window(), outcome.message);
        return false;
    case PreviewSaver::Outcome::Result::Nothing:
        return false;
    }
    return false;
}

/// The file that the text is kept in; empty when it could not be written.
QString PreviewControl::rescue() const
{
    return RescueFile::write(m_rescueDirectory, QFileInfo(m_file.path).fileName(), text(),
                             QDateTime::currentDateTime());
}

/// For a question that was cancelled. False when the text could not be kept.
bool PreviewControl::keepElsewhere()
{
    const QString path = rescue();
    if (path.isEmpty()) {
        Questions::tellFailure(
            window(),
            QStringLiteral("%1\nの修正した内容を残せなかったので、そのまま表示します。")
                .arg(m_file.path));
        return false;
    }
    m_views.statusBar->showMessage(QStringLiteral("修正した内容を %1 に残しました").arg(path));
    return true;
}

bool PreviewControl::rescueAndTell()
{
    const QString path = rescue();
    if (path.isEmpty())
        Questions::tellFailure(window(),
                               QStringLiteral("%1\nを保存できませんでした。").arg(m_file.path));
    else
        Questions::tellFailure(
            window(),
            QStringLiteral("%1\nを保存できなかったので、修正した内容を\n%2\nに残しました。")
                .arg(m_file.path, path));
    return !path.isEmpty();
}

/// False while the part of the text that the hit is in is still to come: later,
/// nobody is taken away from where they are reading.
bool PreviewControl::isPlaceShown() const
{
    if (m_text.isFinished())
        return true;
    // All rows of such a file are its first line.
    const bool isOneLine = m_file.readable && m_file.form.lineEnd == CodeSet::Cr;
    return !isOneLine && m_place.line <= m_views.preview->document()->blockCount();
}

void PreviewControl::moveCursorToPlace()
{
    GrepEditor &preview = *m_views.preview;
    const QTextBlock block =
        m_place.line > 0 ? preview.document()->findBlockByNumber(m_place.line - 1) : QTextBlock();
    QTextCursor cursor(preview.document());
    if (block.isValid())
        cursor.setPosition(block.position() + rowInLine(block));
    preview.setTextCursor(cursor);
    preview.ensureCursorVisible();
}

/// Where the hit's row begins in its line, which has several when there are
/// carriage returns in it.
int PreviewControl::rowInLine(const QTextBlock &block) const
{
    const int tabWidth = AppSettings::instance().tabcolm;
    if (m_file.form.loneReturns)
        return PreviewText::rowOf(block.text(), m_place.column, tabWidth);
    if (m_file.readable && m_file.form.lineEnd == CodeSet::Cr && m_place.line == 1)
        return PreviewText::rowOf(block.document()->toRawText(), m_place.column, tabWidth);
    return 0;
}

void PreviewControl::markKeywords()
{
    KeywordMarks::show(*m_views.preview, m_views.form->state());
}

void PreviewControl::showLabels()
{
    if (!m_file.readable) {
        m_codeSetLabel->clear();
        m_lineEndLabel->clear();
        return;
    }
    QString codeSet = CodeSet::name(m_file.form.codeSet);
    if (m_file.form.bom)
        codeSet += QStringLiteral(" BOM");
    if (isModified())
        codeSet.prepend(QStringLiteral("＊修正あり  "));
    m_codeSetLabel->setText(codeSet);
    m_lineEndLabel->setText(CodeSet::lineEndName(m_file.form.lineEnd));
}
