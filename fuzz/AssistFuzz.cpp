#include "fuzz/FuzzInput.h"
#include "settings/AppSettings.h"
#include "tests/support/ScratchFolder.h"
#include "view/AssistFile.h"

/// Any bytes as an assist definition file, and its first note moved.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static const ScratchFolder folder;
    static const AppSettings settings;
    FuzzInput input(data, size);
    const QString path = folder.write(QStringLiteral("assist.ini"), input.rest());
    const AssistFile::Notes notes = AssistFile::read(path, settings);
    require(notes.records.size() <= AssistFile::kMostNotes, "notes are limited");
    for (const AssistRecord &record : notes.records) {
        require(record.geometry.width() >= AssistFile::kSmallestWidth
                    && record.geometry.width() <= AssistFile::kLargestSize
                    && record.geometry.height() >= AssistFile::kSmallestHeight
                    && record.geometry.height() <= AssistFile::kLargestSize,
                "a note has a size that a screen can take");
        require(qAbs(record.geometry.x()) <= AssistFile::kLargestDistance
                    && qAbs(record.geometry.y()) <= AssistFile::kLargestDistance,
                "a note is not too far away");
    }
    if (notes.records.empty())
        return 0;
    const AssistRecord &first = notes.records.front();
    const QRect moved(-7, 9, 200, 100);
    require(AssistFile::writeGeometry(path, first.group, moved), "a geometry can be saved");
    const AssistFile::Notes again = AssistFile::read(path, settings);
    require(!again.records.empty() && again.records.front().group == first.group
                && again.records.front().geometry == moved
                && again.records.front().lines == first.lines,
            "a note that was moved is there, with its text");
    return 0;
}
