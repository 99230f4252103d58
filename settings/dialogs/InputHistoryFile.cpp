#include "settings/dialogs/InputHistoryFile.h"

#include "settings/IniFile.h"
#include "settings/ShownFont.h"

namespace {

constexpr auto kSize = "size";
constexpr auto kCursorLast = "cursorLast";
constexpr auto kList = "history/list";
constexpr auto kLearn = "history/learn";
constexpr auto kMax = "history/max";
constexpr auto kFontFamily = "font/family";
constexpr auto kFontPointSize = "font/pointSize";
constexpr auto kFontBold = "font/bold";

QString key(const char *name)
{
    return QLatin1String(name);
}

QFont fontOf(const IniDocument &file, const QString &family)
{
    constexpr int kPointSize = 12;
    QFont font(family);
    const int pointSize = file.value(key(kFontPointSize), kPointSize).toInt();
    font.setPointSize(pointSize > 0 && pointSize <= ShownFont::kLargestPointSize ? pointSize
                                                                                 : kPointSize);
    font.setWeight(file.value(key(kFontBold), false).toBool() ? QFont::Bold : QFont::Normal);
    return font;
}

} // namespace

InputHistoryFile::InputHistoryFile(const QString &directory, const QString &purpose)
    : m_path(directory + QStringLiteral("input") + purpose + QStringLiteral(".ini"))
{
}

InputHistoryFile::Content InputHistoryFile::read() const
{
    Content content;
    const auto found = IniFile(m_path, IniDocument::Form::Escaped).tryRead();
    content.mayBeSaved = found.has_value();
    if (!found)
        return content;
    const IniDocument &file = *found;
    const QSize size = file.value(key(kSize), content.size).toSize();
    if (size.isValid())
        content.size = size;
    content.cursorLast = file.value(key(kCursorLast), content.cursorLast).toBool();
    content.history = file.list(key(kList));
    content.learn = file.value(key(kLearn), content.learn).toBool();
    // Not a limit that nobody meant: it would cost the history at the next entry.
    bool isNumber = false;
    const int max = file.text(key(kMax)).toInt(&isNumber);
    if (isNumber && max >= 1)
        content.max = max;
    const QString family = file.text(key(kFontFamily));
    if (!family.isEmpty())
        content.font = fontOf(file, family);
    return content;
}

bool InputHistoryFile::save(const Content &content) const
{
    if (!content.mayBeSaved)
        return false;
    return IniFile(m_path, IniDocument::Form::Escaped).update([&content](IniDocument &file) {
        file.setValue(key(kSize), content.size);
        file.setValue(key(kCursorLast), content.cursorLast);
        file.setValue(key(kList), content.history);
        file.setValue(key(kLearn), content.learn);
    });
}
