#include "settings/SettingsTable.h"

namespace SettingsTable {

namespace {

// A weight above this counts as bold.
constexpr int kHeaviestNormalWeight = 57;

void assign(AppSettings &target, QFont AppSettings::*member, FontPart::Kind kind,
            const QVariant &value)
{
    QFont &font = target.*member;
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

struct Assign {
    AppSettings &target;
    const QVariant &value;

    template <typename T> void operator()(T AppSettings::*member) const
    {
        target.*member = value.value<T>();
    }
    void operator()(const NumberAsFlag &flag) const { target.*(flag.member) = value.toInt() != 0; }
    void operator()(const FontPart &part) const { assign(target, part.member, part.kind, value); }
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

void read(AppSettings &target, const Reader &reader)
{
    for (const Setting &setting : settings()) {
        if (setting.access != Access::WriteOnly)
            std::visit(Assign{target, reader(setting.key, setting.defaultValue)}, setting.member);
    }
}

void readColours(AppSettings &target, const Reader &reader)
{
    for (const ColourSetting &colour : colours()) {
        if (colour.access != Access::WriteOnly)
            target.*(colour.member) =
                colourNamed(reader(colour.key, colour.defaultName).toString());
    }
}

void write(const AppSettings &source, const Writer &writer)
{
    for (const Setting &setting : settings()) {
        if (setting.access != Access::ReadOnly)
            writer(setting.key, std::visit(ValueOf{source}, setting.member));
    }
    for (const ColourSetting &colour : colours()) {
        if (colour.access != Access::ReadOnly)
            writer(colour.key, (source.*(colour.member)).name(QColor::HexRgb));
    }
}

} // namespace SettingsTable
