#include "tests/support/NativeLines.h"

#include <QBuffer>

// The toolkit's devices in text mode know the platform's line ends.
QByteArray nativeLines(const QByteArray &text)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    if (!buffer.open(QIODevice::WriteOnly | QIODevice::Text) || buffer.write(text) == -1)
        qFatal("cannot write into memory");
    return bytes;
}
