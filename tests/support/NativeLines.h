#pragma once

#include <QByteArray>

/// text, which has "\n" line ends, with those of this platform's text files.
QByteArray nativeLines(const QByteArray &text);
