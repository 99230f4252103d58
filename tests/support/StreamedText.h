#pragma once

#include "tests/support/ScratchFolder.h"

#include <QByteArray>
#include <QString>

class QTextCodec;

/// What the toolkit's text stream reads from a real file: the measure for the
/// engine's own decoding.
class StreamedText {
public:
    explicit StreamedText(const QByteArray &content = QByteArray());

    void setContent(const QByteArray &content);

    /// The whole file, opened in text mode. With a null codec none is set, and
    /// the locale's decodes.
    QString read(QTextCodec *codec) const;

private:
    ScratchFolder m_folder;
    QString m_path;
};
