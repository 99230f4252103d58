// Runs a fuzzer's harness on the files that are named, and on every file in the
// folders that are named, without a fuzzer: so each compiler and sanitizer sees
// the inputs that were kept.

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <cstdint>
#include <cstdio>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size);
extern "C" int LLVMFuzzerInitialize(int *argc, char ***argv);

namespace {

bool replay(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        std::fprintf(stderr, "cannot read %s\n", qUtf8Printable(path));
        return false;
    }
    // Told before it runs: the last name is that of an input that ends it.
    std::fprintf(stderr, "%s\n", qUtf8Printable(path));
    const QByteArray bytes = file.readAll();
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t *>(bytes.constData()),
                           static_cast<std::size_t>(bytes.size()));
    return true;
}

QStringList filesAt(const QString &path)
{
    if (!QFileInfo(path).isDir())
        return {path};
    const QDir folder(path);
    QStringList files;
    const QStringList names = folder.entryList(QDir::Files, QDir::Name);
    for (const QString &name : names)
        files.append(folder.filePath(name));
    return files;
}

} // namespace

int main(int argc, char *argv[])
{
    LLVMFuzzerInitialize(&argc, &argv);
    int replayed = 0;
    for (int i = 1; i < argc; ++i) {
        const QStringList files = filesAt(QFile::decodeName(argv[i]));
        for (const QString &file : files) {
            if (!replay(file))
                return 1;
            ++replayed;
        }
    }
    std::fprintf(stderr, "%d inputs\n", replayed);
    // A corpus that was moved away would test nothing.
    return replayed > 0 ? 0 : 1;
}
