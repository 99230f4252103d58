#include "mainwindow/DocumentText.h"

#include <QCoreApplication>
#include <QTextBlock>
#include <QTextDocument>

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
