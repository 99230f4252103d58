#include "mainwindow/PreviewControl.h"

#include "engine/CodeSet.h"
#include "mainwindow/PiecewiseText.h"
#include "mainwindow/Questions.h"
#include "mainwindow/SearchForm.h"
#include "mainwindow/preview/PreviewSaver.h"
#include "settings/AppSettings.h"
#include "settings/dialogs/prompts/UserPrompt.h"
#include "view/GrepEditor.h"
#include "view/Highlighter.h"
#include "view/ResultLine.h"

#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <QLabel>
#include <QSaveFile>
#include <QSignalBlocker>
#include <QStatusBar>
#include <QTextBlock>

namespace {

constexpr int kMessageMilliseconds = 2000;

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
    , m_formLabel(new QLabel(views.statusBar))
{
    m_views.statusBar->addPermanentWidget(m_formLabel);
}

QWidget *PreviewControl::window() const
{
    return m_views.preview->window();
}

void PreviewControl::follow()
{
    GrepEditor &results = *m_views.resultView;
    if (!m_resultShown || !results.hasFocus())
        return;
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
    const QString path = ResultLine::pathOf(isHit ? results.fileLineText() : line);
    m_views.statusBar->showMessage(
        path + QStringLiteral("  ---- %1:%2").arg(place.line).arg(place.column));
    if (path != m_file.path && !showFile(path))
        return;
    results.setLocation(path, place.line, place.column);
    m_views.preview->setLocation(path, place.line, place.column);
    moveCursorToLine(place.line);
    markKeywords();
}

bool PreviewControl::showFile(const QString &path)
{
    if (!leaveFile())
        return false;
    const int showing = ++m_showing;
    m_file = PreviewFile::load(
        path, detectionSettings(), [this](const QString &title, const QString &text) {
            UserPrompt::current().message(
                window(), {QMessageBox::Critical, title, text, QMessageBox::Ok, QMessageBox::Ok});
        });
    GrepEditor &preview = *m_views.preview;
    preview.setReadOnly(true);
    preview.highlighter().setLanguage(QFileInfo(path).suffix());
    const auto isOutdated = [&] {
        return showing != m_showing;
    };
    if (!PiecewiseText::show(preview, PreviewText::asEdited(m_file.text), isOutdated))
        return false;
    // The view holds the text now.
    m_file.text.clear();
    preview.setReadOnly(!m_file.readable);
    showFormLabel();
    return true;
}

/// Another file comes, whatever is answered; but a text that was to be saved and
/// could not be goes only when it is kept elsewhere.
bool PreviewControl::leaveFile()
{
    if (m_file.path.isEmpty() || !m_views.preview->document()->isModified())
        return true;
    const QMessageBox::StandardButton answer = Questions::saveModified(window(), m_file.path);
    return answer != QMessageBox::Yes || save() || rescue();
}

bool PreviewControl::saveIfModified()
{
    if (m_file.path.isEmpty() || !m_views.preview->document()->isModified())
        return true;
    switch (Questions::saveModified(window(), m_file.path)) {
    case QMessageBox::Yes:
        return save();
    case QMessageBox::No:
        return true;
    default:
        return false;
    }
}

QString PreviewControl::text() const
{
    return PreviewText::asEdited(m_views.preview->document()->toRawText());
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
    if (m_file.path.isEmpty() || !m_file.readable)
        return false;
    const QString text = this->text();
    if (!mayBeSaved(text))
        return false;
    const PreviewSaver::Outcome outcome = PreviewSaver::save(&m_file, text);
    m_file.text.clear();
    switch (outcome.result) {
    case PreviewSaver::Outcome::Result::Saved:
        m_views.preview->document()->setModified(false);
        m_views.statusBar->showMessage(outcome.message, kMessageMilliseconds);
        return true;
    case PreviewSaver::Outcome::Result::RenameFailed:
        Questions::tellFailure(window(), outcome.message);
        return false;
    case PreviewSaver::Outcome::Result::WriteFailed:
        m_views.statusBar->showMessage(outcome.message, kMessageMilliseconds);
        Questions::tellFailure(window(), outcome.message);
        return false;
    case PreviewSaver::Outcome::Result::Nothing:
        return false;
    }
    return false;
}

bool PreviewControl::rescue()
{
    const QString stamp = QDateTime::currentDateTime().toString(QStringLiteral("yyyyMMdd-hhmmss"));
    const QString path = m_rescueDirectory + stamp + QLatin1Char('-')
        + QFileInfo(m_file.path).fileName() + QStringLiteral(".txt");
    QDir().mkpath(m_rescueDirectory);
    QSaveFile file(path);
    const QByteArray bytes = text().toUtf8();
    const bool saved =
        file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.commit();
    Questions::tellFailure(
        window(),
        saved ? QStringLiteral("%1\nを保存できなかったので、修正した内容を\n%2\nに残しました。")
                    .arg(m_file.path, path)
              : QStringLiteral("%1\nを保存できませんでした。").arg(m_file.path));
    return saved;
}

void PreviewControl::moveCursorToLine(int line)
{
    GrepEditor &preview = *m_views.preview;
    const QTextBlock block = preview.document()->findBlockByNumber(line - 1);
    QTextCursor cursor(preview.document());
    cursor.setPosition(line > 0 && block.isValid() ? block.position() : 0);
    preview.setTextCursor(cursor);
    preview.ensureCursorVisible();
}

void PreviewControl::markKeywords()
{
    const FormState form = m_views.form->state();
    const GrepEditor &preview = *m_views.preview;
    const QRegExp pattern1 = preview.findPattern(form.keyword1);
    if (form.usesKeyword2() && !form.keyword2.isEmpty())
        preview.highlighter().setFind(pattern1, preview.findPattern(form.keyword2));
    else
        preview.highlighter().setFind(pattern1);
}

void PreviewControl::showFormLabel()
{
    if (!m_file.readable) {
        m_formLabel->clear();
        return;
    }
    QString label = CodeSet::name(m_file.form.codeSet) + QStringLiteral("  ")
        + CodeSet::lineEndName(m_file.form.lineEnd);
    if (m_file.form.bom)
        label += QStringLiteral("  BOM");
    m_formLabel->setText(label);
}
