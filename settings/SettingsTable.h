#pragma once

#include "settings/AppSettings.h"
#include "settings/SettingsMerge.h"

#include <QVariant>

#include <variant>
#include <vector>

class IniDocument;

/// Every key of the settings file, once: its name, its default, whether it is
/// read, written or both, and the member that holds it. Loading and saving are
/// walks over these tables, in their order.
namespace SettingsTable {

enum class Access {
    ReadWrite,
    /// Edited by hand or by the companion editor; never overwritten.
    ReadOnly,
    /// Written for other programs; never read back.
    WriteOnly
};

/// A member that the file holds as a number: true when that is not 0.
struct NumberAsFlag {
    bool AppSettings::*member;
};

/// One of the three keys that make up a font. The family comes first: it starts
/// the font anew.
struct FontPart {
    enum Kind { Family, PointSize, Bold };
    QFont AppSettings::*member;
    Kind kind;
};

using Member = std::variant<bool AppSettings::*, int AppSettings::*, QString AppSettings::*,
                            QStringList AppSettings::*, QByteArray AppSettings::*,
                            QPoint AppSettings::*, QSize AppSettings::*, NumberAsFlag, FontPart>;

struct Setting {
    QString key;
    QVariant defaultValue;
    Access access;
    Member member;
    /// A list that grows at its front and is merged with that of other programs.
    bool isHistory = false;
};

struct ColourSetting {
    QString key;
    /// As QColor's parser of names takes it.
    QString defaultName;
    Access access;
    QColor AppSettings::*member;
};

/// The settings other than colours; they have their own file.
const std::vector<Setting> &settings();

/// The colours, which may come from the companion editor's file.
const std::vector<ColourSetting> &colours();

/// Sets the members of target. A missing key gives its default, a value of
/// another type what the conversion makes of it: ranges are the caller's.
void read(AppSettings &target, const IniDocument &file);
/// A name that is no colour gives an invalid colour.
void readColours(AppSettings &target, const IniDocument &file);

/// What the file gets: the settings and then the colours, as #rrggbb.
SettingsMerge::Values written(const AppSettings &source);

} // namespace SettingsTable
