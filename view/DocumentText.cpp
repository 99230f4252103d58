#include "view/DocumentText.h"

#include <QCoreApplication>
#include <QMimeData>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>

namespace {

QString withLineFeeds(QString text)
{
    text.replace(QChar(QChar::ParagraphSeparator), QLatin1Char('\n'));
    return text.replace(QChar(QChar::LineSeparator), QLatin1Char('\n'));
}

} // namespace

QString DocumentText::take(const QTextDocument &document)
{
    constexpr int kLinesBetweenEvents = 8192; // a few milliseconds
    QString text;
    text.reserve(document.characterCount());
    int lines = 0;
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        if (lines > 0)
            text += QLatin1Char('\n');
        text += block.text();
        if (++lines % kLinesBetweenEvents == 0)
            QCoreApplication::processEvents();
    }
    return text;
}

QString DocumentText::rows(const QTextDocument &document)
{
    return withLineFeeds(document.toRawText());
}

QString DocumentText::rows(const QTextCursor &selection)
{
    return withLineFeeds(selection.selectedText());
}

QMimeData *DocumentText::copied(const QTextCursor &selection)
{
    auto *data = new QMimeData;
    data->setText(rows(selection));
    return data;
}
