#include "settings/SettingsTable.h"

#include "settings/IniDocument.h"

namespace SettingsTable {

namespace {

// A weight above this counts as bold.
constexpr int kHeaviestNormalWeight = 57;

void assign(QFont &font, FontPart::Kind kind, const QVariant &value)
{
    switch (kind) {
    case FontPart::Family:
        font = QFont(value.toString());
        break;
    case FontPart::PointSize:
        if (value.toInt() > 0)
            font.setPointSize(value.toInt());
        break;
    case FontPart::Bold:
        font.setWeight(value.toBool() ? QFont::Bold : QFont::Normal);
        break;
    }
}

QVariant fontPart(const QFont &font, FontPart::Kind kind)
{
    switch (kind) {
    case FontPart::Family:
        return font.family();
    case FontPart::PointSize:
        return font.pointSize();
    case FontPart::Bold:
        return font.weight() > kHeaviestNormalWeight;
    }
    return QVariant();
}

/// Reads one setting into its member.
struct Read {
    AppSettings &target;
    const IniDocument &file;
    const Setting &setting;

    template <typename T> void operator()(T AppSettings::*member) const
    {
        target.*member = value().template value<T>();
    }
    // A comma that was typed by hand does not make a text a list.
    void operator()(QString AppSettings::*member) const { target.*member = text(); }
    void operator()(const NumberAsFlag &flag) const
    {
        target.*(flag.member) = value().toInt() != 0;
    }
    void operator()(const FontPart &part) const
    {
        const bool isText = part.kind == FontPart::Family;
        assign(target.*(part.member), part.kind, isText ? QVariant(text()) : value());
    }

    QVariant value() const { return file.value(setting.key, setting.defaultValue); }
    QString text() const { return file.text(setting.key, setting.defaultValue.toString()); }
};

struct ValueOf {
    const AppSettings &source;

    template <typename T> QVariant operator()(T AppSettings::*member) const
    {
        return QVariant::fromValue(source.*member);
    }
    QVariant operator()(const NumberAsFlag &flag) const { return source.*(flag.member) ? 1 : 0; }
    QVariant operator()(const FontPart &part) const
    {
        return fontPart(source.*(part.member), part.kind);
    }
};

QColor colourNamed(const QString &name)
{
    return QColor::isValidColor(name) ? QColor(name) : QColor();
}

} // namespace

void read(AppSettings &target, const IniDocument &file)
{
    for (const Setting &setting : settings()) {
        if (setting.access != Access::WriteOnly)
            std::visit(Read{target, file, setting}, setting.member);
    }
}

void readColours(AppSettings &target, const IniDocument &file)
{
    for (const ColourSetting &colour : colours()) {
        if (colour.access != Access::WriteOnly)
            target.*(colour.member) = colourNamed(file.text(colour.key, colour.defaultName));
    }
}

SettingsMerge::Values written(const AppSettings &source)
{
    SettingsMerge::Values values;
    for (const Setting &setting : settings()) {
        if (setting.access != Access::ReadOnly)
            values.push_back(
                {setting.key, std::visit(ValueOf{source}, setting.member), setting.isHistory});
    }
    for (const ColourSetting &colour : colours()) {
        if (colour.access != Access::ReadOnly)
            values.push_back({colour.key, (source.*(colour.member)).name(QColor::HexRgb), false});
    }
    return values;
}

} // namespace SettingsTable
