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
    const QByteArray utf8 = stream.readAll().toUtf8();
    return QString::fromUtf8(utf8.constData(),
                             utf8.size()); // a whole QByteArray would end at a NUL
}

QStringList FileText::lines(const QString &text)
{
    return text.split(QLatin1Char('\n'), Qt::KeepEmptyParts);
}
