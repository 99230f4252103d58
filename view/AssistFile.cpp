#include "view/AssistFile.h"

#include "settings/AppSettings.h"
#include "settings/IniFile.h"

#include <QFileInfo>

#include <algorithm>
#include <array>
#include <map>
#include <optional>

namespace {

const QString kWindowKey = QStringLiteral("window");

IniFile fileAt(const QString &path)
{
    return IniFile(path, IniDocument::Form::Utf8);
}

std::optional<QRect> geometryOf(const QStringList &window)
{
    std::array<int, 4> numbers = {};
    if (window.size() < static_cast<int>(numbers.size()))
        return std::nullopt;
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        bool isNumber = false;
        numbers[i] = window.at(static_cast<int>(i)).trimmed().toInt(&isNumber);
        if (!isNumber)
            return std::nullopt;
    }
    const auto distance = [](int pixels) {
        return std::clamp(pixels, -AssistFile::kLargestDistance, AssistFile::kLargestDistance);
    };
    const auto size = [](int pixels, int smallest) {
        return std::clamp(pixels, smallest, AssistFile::kLargestSize);
    };
    return QRect(distance(numbers[0]), distance(numbers[1]),
                 size(numbers[2], AssistFile::kSmallestWidth),
                 size(numbers[3], AssistFile::kSmallestHeight));
}

void readColour(const QString &name, QColor &colour)
{
    const QColor named(name.trimmed());
    if (named.isValid())
        colour = named;
}

/// False when the group has no geometry.
bool readGroup(const IniDocument &document, const QStringList &keys, AssistRecord &record)
{
    std::optional<QRect> geometry;
    for (const QString &key : keys) {
        const QString path = record.group + QLatin1Char('/') + key;
        if (key == kWindowKey)
            geometry = geometryOf(document.list(path));
        else if (key == QLatin1String("borderColor"))
            readColour(document.text(path), record.borderColor);
        else if (key == QLatin1String("backColor"))
            readColour(document.text(path), record.backColor);
        else if (key == QLatin1String("textColor"))
            readColour(document.text(path), record.textColor);
        else
            record.lines.append(document.text(path));
    }
    record.geometry = geometry.value_or(QRect());
    return geometry.has_value();
}

/// The keys of each group, both sorted; those with a further "/" count for the
/// group only.
std::map<QString, QStringList> groupsOf(const IniDocument &document)
{
    std::map<QString, QStringList> groups;
    for (const QString &path : document.allKeys()) {
        const int slash = path.indexOf(QLatin1Char('/'));
        if (slash <= 0)
            continue;
        QStringList &keys = groups[path.left(slash)];
        const QString key = path.mid(slash + 1);
        if (!key.contains(QLatin1Char('/')))
            keys.append(key);
    }
    return groups;
}

} // namespace

AssistFile::Notes AssistFile::read(const QString &path, const AppSettings &settings)
{
    Notes notes;
    if (QFileInfo(path).size() > kLargestFileBytes)
        return notes;
    const IniDocument document = fileAt(path).read();
    for (const auto &[group, keys] : groupsOf(document)) {
        AssistRecord record = {group,
                               {},
                               settings.assistWinBorderColor,
                               settings.assistWinBackColor,
                               settings.assistWinTextColor,
                               {}};
        if (notes.records.size() >= kMostNotes)
            break;
        notes.windowMissing = !readGroup(document, keys, record);
        if (notes.windowMissing)
            break;
        notes.records.push_back(record);
    }
    return notes;
}

bool AssistFile::writeGeometry(const QString &path, const QString &group, const QRect &geometry)
{
    const QStringList window = {QString::number(geometry.x()), QString::number(geometry.y()),
                                QString::number(geometry.width()),
                                QString::number(geometry.height())};
    return fileAt(path).update([&](IniDocument &document) {
        document.setValue(group + QLatin1Char('/') + kWindowKey, window);
    });
}
