#include "tests/support/FileText.h"

#include <QBuffer>
#include <QTextStream>

QString FileText::read(const QByteArray &bytes, QTextCodec *codec)
{
    QBuffer device;
    device.setData(bytes);
    device.open(QIODevice::ReadOnly | QIODevice::Text);
    QTextStream stream(&device);
    if (codec != nullptr)
        stream.setCodec(codec);
    // The text comes behind a line feed: at the very front a second mark would be
    // taken for one and go.
    const QByteArray utf8 = '\n' + stream.readAll().toUtf8();
    // A whole QByteArray would end at a NUL.
    return QString::fromUtf8(utf8.constData(), utf8.size()).mid(1);
}

QStringList FileText::lines(const QString &text)
{
    return text.split(QLatin1Char('\n'), Qt::KeepEmptyParts);
}
