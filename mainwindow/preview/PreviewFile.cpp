#include "mainwindow/preview/PreviewFile.h"

#include "engine/FileReader.h"

#include <new>
#include <utility>

namespace {

/// False when there is nothing to show.
bool readText(PreviewFile *file, qint64 largest)
{
    FileReader reader;
    const auto status = reader.read(file->path, largest, FileReader::TypeCheck::BeforeOpen);
    // Half a text would be shown as the whole one, and saved over it.
    if (status != FileReader::Status::Read || reader.hasFailed())
        return false;
    const QByteArray bytes = QByteArray::fromRawData(reader.content(), int(reader.size()));
    QString text = PreviewText::decode(bytes, file->codeSet);
    PreviewText::takeReturns(text, &file->form);
    const QString unedited = PreviewText::asEdited(text, file->form);
    file->survives = PreviewText::encode(unedited, file->form) == bytes;
    file->text = std::move(text);
    return true;
}

} // namespace

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
    file.form.codeSet = file.codeSet;
    try {
        file.readable = readText(&file, largest);
    } catch (const std::bad_alloc &) {
        // One file too large for what memory there is must not end the program.
        return file;
    }
    if (file.readable)
        file.attributes = NativeFile::attributesOf(path);
    return file;
}
