#include "engine/ListFile.h"
#include "fuzz/FuzzInput.h"
#include "settings/IniDocument.h"
#include "tests/support/ScratchFolder.h"

/// Any bytes as a list file.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static const ScratchFolder folder;
    FuzzInput input(data, size);
    const QByteArray bytes = input.rest();
    const QString path = folder.write(QStringLiteral("files.ini"), bytes);
    bool known = false;
    const QStringList files = ListFile::read(path, &known);
    require(known || files.isEmpty(), "without the key there are no entries");

    IniDocument document(bytes, IniDocument::Form::Escaped);
    document.setValue(QStringLiteral("files"), files);
    folder.write(QStringLiteral("files.ini"), document.toBytes());
    require(ListFile::read(path, &known) == files && known, "entries that are written are read");
    return 0;
}
