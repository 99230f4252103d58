#include "tests/support/StreamedText.h"

#include <QFile>
#include <QTextStream>

StreamedText::StreamedText(const QByteArray &content)
{
    setContent(content);
}

void StreamedText::setContent(const QByteArray &content)
{
    // A new file: some file systems wait for the disk when an old one is rewritten.
    if (!m_path.isEmpty())
        m_folder.remove(QStringLiteral("content"));
    m_path = m_folder.write(QStringLiteral("content"), content);
}

QString StreamedText::read(QTextCodec *codec) const
{
    QFile file(m_path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
        qFatal("cannot read %s: %s", qPrintable(m_path), qPrintable(file.errorString()));
    QTextStream stream(&file);
    if (codec != nullptr)
        stream.setCodec(codec);
    return stream.readAll();
}
