#include "mainwindow/history/ResultLogFile.h"

#include "engine/CodeSet.h"
#include "engine/FileReader.h"
#include "engine/NativePath.h"
#include "engine/TextDecoder.h"
#include "settings/Retry.h"
#include "settings/SaveSteps.h"

#include <QSaveFile>
#include <QTextCodec>

using SaveSteps::mayTake;
using SaveSteps::Step;

namespace {

constexpr int kUtf8Mib = 106;
constexpr int kLabelLines = 9;
const QByteArray kUtf8Mark = QByteArrayLiteral("\xEF\xBB\xBF");

QTextCodec *localeCodec()
{
    return QTextCodec::codecForLocale();
}

QString withoutCarriageReturns(QString text)
{
    return text.remove(QLatin1Char('\r'));
}

/// The locale's encoding is UTF-8, and no byte-order mark says otherwise.
bool isUtf8(const QByteArray &content)
{
    return localeCodec()->mibEnum() == kUtf8Mib
        && QTextCodec::codecForUtfText(content.left(4), localeCodec())->mibEnum() == kUtf8Mib;
}

/// Bytes that are no UTF-8 come back as the code units that stand for them; a
/// decoder would make them all the same.
QString utf8Text(QByteArray content)
{
    QString text = QString::fromUtf8(content.constData(), content.size());
    if (text.contains(QChar(QChar::ReplacementCharacter))) {
        if (content.startsWith(kUtf8Mark))
            content.remove(0, kUtf8Mark.size());
        text = NativePath::fromNative(content);
    }
    return withoutCarriageReturns(std::move(text));
}

QString decoded(const char *bytes, qint64 size)
{
    const QByteArray content = QByteArray::fromRawData(bytes, int(size));
    return isUtf8(content) ? utf8Text(content) : decodeText(bytes, size, CodeSet::Default);
}

QByteArray encodedBy(const QTextCodec *codec, const QString &text)
{
    QTextCodec::ConverterState state(QTextCodec::IgnoreHeader);
    return codec->fromUnicode(text.constData(), text.size(), &state);
}

/// toUtf8() is fast, and right but for halves of surrogate pairs.
QByteArray utf8Of(const QString &text)
{
    const bool hasHalves = !text.isValidUtf16();
    return hasHalves ? NativePath::toNative(text) : text.toUtf8();
}

QByteArray encoded(const QString &text)
{
    const QTextCodec *codec = localeCodec();
    // Asking the codec what it cannot hold is not enough: on some platforms it
    // takes a similar character instead.
    QByteArray bytes = encodedBy(codec, text);
    if (decodeText(bytes.constData(), bytes.size(), CodeSet::Default)
        == withoutCarriageReturns(text))
        return bytes;
    return kUtf8Mark + text.toUtf8();
}

/// Piece by piece, each of some lines: the bytes of all at once would take half as much
/// memory again as the text, which may be most of what there is.
bool writeUtf8(QIODevice &file, const QString &text)
{
    constexpr int kPiece = 1 << 20;
    for (int at = 0; at < text.size();) {
        const int lineEnd =
            at + kPiece < text.size() ? text.indexOf(QLatin1Char('\n'), at + kPiece) : -1;
        const int end = lineEnd < 0 ? text.size() : lineEnd + 1;
        const QByteArray bytes = utf8Of(QString::fromRawData(text.constData() + at, end - at));
        if (file.write(bytes) != bytes.size())
            return false;
        at = end;
    }
    return true;
}

bool writeLog(QIODevice &file, const ResultLog &log)
{
    if (localeCodec()->mibEnum() == kUtf8Mib)
        return writeUtf8(file, log.header()) && writeUtf8(file, log.text);
    const QByteArray content = encoded(log.write());
    return file.write(content) == content.size();
}

QString valueOf(const QStringList &lines, int number)
{
    return lines.value(number - 1).mid(ResultLog::kLabelLength);
}

/// As much of the file's beginning as the label needs.
QByteArray readStart(const QString &path)
{
    constexpr int kPiece = 4096;
    constexpr int kMost = 64 * 1024;
    RegularFile file(path);
    QByteArray start;
    while (start.size() < kMost && start.count('\n') < kLabelLines) {
        QByteArray piece(kPiece, Qt::Uninitialized);
        const qint64 count = file.read(piece.data(), piece.size());
        start.append(piece.constData(), int(count));
        if (count < piece.size())
            break;
    }
    return start;
}

enum class Replacement { Done, NotWritten, NotReplaced };

Replacement replace(const QString &path, const ResultLog &log)
{
    QSaveFile file(path);
    if (!mayTake(Step::WriteNew) || !file.open(QIODevice::WriteOnly | QIODevice::Text)
        || !writeLog(file, log) || !file.flush())
        return Replacement::NotWritten;
    const bool replaced = mayTake(Step::ReplaceOld) && file.commit();
    return replaced ? Replacement::Done : Replacement::NotReplaced;
}

} // namespace

bool ResultLogFile::write(const QString &path, const ResultLog &log)
{
    if (path.isEmpty())
        return false;
    Replacement replacement = Replacement::NotWritten;
    // What cannot even be written to the folder will not be a moment later.
    Retry::whileHeld([&] {
        replacement = replace(path, log);
        return replacement != Replacement::NotReplaced;
    });
    return mayTake(Step::Finished) && replacement == Replacement::Done;
}

std::optional<QString> ResultLogFile::read(const QString &path)
{
    FileReader reader;
    const auto status = reader.read(path, kLargestText, FileReader::TypeCheck::BeforeOpen);
    if (status != FileReader::Status::Read || reader.hasFailed())
        return std::nullopt;
    return decoded(reader.content(), reader.size());
}

QString ResultLogFile::label(const QString &path)
{
    const QByteArray start = readStart(path);
    const QStringList lines =
        decoded(start.constData(), start.size()).split(QLatin1Char('\n')).mid(0, kLabelLines);
    return valueOf(lines, 2) + QStringLiteral("　---　")
        + valueOf(lines, 8).section(QStringLiteral(", "), 0, 0) + valueOf(lines, 9);
}
