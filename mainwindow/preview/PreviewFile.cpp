#include "mainwindow/preview/PreviewFile.h"

#include "engine/FileReader.h"

PreviewFile PreviewFile::load(const QString &path, const DetectionSettings &settings,
                              const AutoDetectionBox &box, qint64 largest)
{
    PreviewFile file;
    file.path = path;
    file.text = QStringLiteral("%1プレビューできません。").arg(path);
    file.stamp = NativeFile::stampOf(path);
    file.codeSet = detectFileCodeSet(path, &file.form.lineEnd, &file.form.bom, settings, box);
    if (file.codeSet < 0)
        return file;
    FileReader reader;
    if (reader.read(path, largest, FileReader::TypeCheck::BeforeOpen) != FileReader::Status::Read)
        return file;
    const QByteArray bytes = QByteArray::fromRawData(reader.content(), int(reader.size()));
    file.form.codeSet = file.codeSet;
    file.attributes = NativeFile::attributesOf(path);
    file.text = PreviewText::decode(bytes, file.codeSet);
    file.survives = PreviewText::encode(PreviewText::asEdited(file.text), file.form) == bytes;
    file.readable = true;
    return file;
}
