#include "settings/SettingsTable.h"

namespace SettingsTable {

const std::vector<Setting> &settings()
{
    using S = AppSettings;
    constexpr Access RW = Access::ReadWrite;
    constexpr Access R = Access::ReadOnly;
    const QString gothic = QStringLiteral("IPAゴシック");

    static const std::vector<Setting> table{
        {QStringLiteral("pos"), QPoint(100, 100), RW, &S::pos},
        {QStringLiteral("geometry"), QByteArray(), RW, &S::geometry},
        {QStringLiteral("layoutdata"), QByteArray(), RW, &S::layoutdata},
        {QStringLiteral("layouttoolbar"), QByteArray(), RW, &S::layouttoolbar},
        {QStringLiteral("layoutsplitter"), QByteArray(), RW, &S::layoutsplitter},
        {QStringLiteral("grepsize"), QSize(800, 300), RW, &S::grepsize},
        {QStringLiteral("textsize"), QSize(800, 300), R, &S::textsize},
        {QStringLiteral("size"), QSize(800, 800), RW, &S::size},
        {QStringLiteral("tabcolm"), 4, RW, &S::tabcolm},
        {QStringLiteral("bigsize"), 1, RW, &S::bigsize},
        {QStringLiteral("logmax"), 10, R, &S::logmax},
        {QStringLiteral("codechksize"), 4096, RW, &S::codechksize},
        {QStringLiteral("caseinsensitive"), true, RW, &S::caseinsensitive},
        {QStringLiteral("regexp"), true, RW, &S::regexp},
        {QStringLiteral("browser"), QStringLiteral("gnome-open"), RW, &S::browser},
        {QStringLiteral("editor/editor"), QString(), RW, &S::editor},
        {QStringLiteral("editor/editor_para"), QString(), RW, &S::editor_para},
        {QStringLiteral("pathhistory"), QStringList(), RW, &S::pathhistory},
        {QStringLiteral("maskhistory"), QStringList(), RW, &S::maskhistory, true},
        {QStringLiteral("keyhistory"), QStringList(), RW, &S::keyhistory, true},
        {QStringLiteral("history2"), QStringList(), RW, &S::history2, true},
        {QStringLiteral("excusiondir"), QStringList(), RW, &S::excusiondir},
        {QStringLiteral("excusionfile"), QStringList(), RW, &S::excusionfile},
        {QStringLiteral("cursorback"), true, R, &S::cursorback},
        {QStringLiteral("searchHistorymax"), 100, R, &S::searchHistorymax},
        {QStringLiteral("tab"), true, RW, &S::tab},
        {QStringLiteral("cr"), true, RW, &S::cr},
        {QStringLiteral("zenspc"), true, RW, &S::zenspc},
        {QStringLiteral("subdir"), true, RW, &S::subdir},
        {QStringLiteral("warningmsg"), false, RW, &S::warningmsg},
        {QStringLiteral("fname"), false, RW, &S::fname},
        {QStringLiteral("newfile/codeset"), 1, R, &S::newfileCodeset},
        {QStringLiteral("newfile/detectsize"), 2048, R, &S::newfileDetectsize},
        {QStringLiteral("newfile/lb"), 2, R, &S::newfileLb},
        {QStringLiteral("newfile/bom"), 0, R, NumberAsFlag{&S::newfileBom}},
        {QStringLiteral("font/grep_family"), gothic, RW, FontPart{&S::grepFont, FontPart::Family}},
        {QStringLiteral("font/grep_pointSize"), 14, RW,
         FontPart{&S::grepFont, FontPart::PointSize}},
        {QStringLiteral("font/grep_bold"), false, RW, FontPart{&S::grepFont, FontPart::Bold}},
        {QStringLiteral("font/text_family"), gothic, RW, FontPart{&S::textFont, FontPart::Family}},
        {QStringLiteral("font/text_pointSize"), 14, RW,
         FontPart{&S::textFont, FontPart::PointSize}},
        {QStringLiteral("font/text_bold"), false, RW, FontPart{&S::textFont, FontPart::Bold}},
        {QStringLiteral("font/inp_family"), QStringLiteral("MS UI Gothic"), RW,
         FontPart{&S::inputFont, FontPart::Family}},
        {QStringLiteral("font/inp_pointSize"), 9, RW, FontPart{&S::inputFont, FontPart::PointSize}},
        {QStringLiteral("font/inp_bold"), false, RW, FontPart{&S::inputFont, FontPart::Bold}},
        // "assit" twice and "assist" once: this is how existing files spell them.
        {QStringLiteral("font/assit_family"), gothic, R,
         FontPart{&S::assistFont, FontPart::Family}},
        {QStringLiteral("font/assit_pointSize"), 12, R,
         FontPart{&S::assistFont, FontPart::PointSize}},
        {QStringLiteral("font/assist_bold"), false, R, FontPart{&S::assistFont, FontPart::Bold}},
        {QStringLiteral("find/case"), true, RW, &S::findcase},
        {QStringLiteral("find/word"), false, RW, &S::findword},
        {QStringLiteral("find/regexp"), false, RW, &S::findregexp},
    };
    return table;
}

const std::vector<ColourSetting> &colours()
{
    using S = AppSettings;
    constexpr Access RW = Access::ReadWrite;
    constexpr Access R = Access::ReadOnly;
    constexpr Access W = Access::WriteOnly;
    const auto row = [](const char *key, const char *name, Access access, QColor S::*member) {
        return ColourSetting{QLatin1String(key), QLatin1String(name), access, member};
    };

    static const std::vector<ColourSetting> table{
        row("color/backcolor", "#0a1b34", RW, &S::backcolor),
        row("color/forecolor", "#ffffff", RW, &S::forecolor),
        row("color/hlbackcolor", "#4682b4", RW, &S::hlbackcolor),
        row("color/hlforecolor", "#ffffff", RW, &S::hlforecolor),
        row("color/cursorcolor", "#ffff33", RW, &S::cursorcolor),
        row("color/findcolor1", "#ff0000", RW, &S::findcolor1),
        row("color/findcolor2", "#ff0044", RW, &S::findcolor2),
        row("color/reteralcolor", "#ffff7f", RW, &S::reteralcolor),
        row("color/reservecolor", "#00ffff", RW, &S::reservecolor),
        row("color/keywordcolor", "#ffccaa", RW, &S::keywordcolor),
        row("color/lnumforecolor", "#aaff7f", RW, &S::lnumforecolor),
        row("color/lnumbackcolor", "#535353", RW, &S::lnumbackcolor),
        row("color/valuecolor", "#ffff00", RW, &S::valuecolor),
        row("color/boxcolor", "#8c0000", RW, &S::boxcolor),
        row("color/classcolor", "", W, &S::classcolor),
        row("color/ctrlcolor", "#7efff5", RW, &S::ctrlcolor),
        row("color/commentcolor", "#7777bb", RW, &S::commentcolor),
        row("color/fnamecolor", "yellow", R, &S::fnamecolor),
        row("color/tabcolor", "#fafafa", RW, &S::tabcolor),
        row("color/locktabcolor", "#f0c8dc", RW, &S::locktabcolor),
        row("color/diffbackcolor", "#413c50", RW, &S::diffbackcolor),
        row("color/diffdeletecolor", "#722738", RW, &S::diffdeletecolor),
        row("color/diffinsertcolor", "#225938", RW, &S::diffinsertcolor),
        row("color/editlockbackcolor", "#142014", RW, &S::editlockbackcolor),
        row("color/readonlybackcolor", "#0a2a0a", R, &S::readonlybackcolor),
        row("palette/Window", "#353535", RW, &S::paletteWindow),
        row("palette/WindowText", "#ffffff", RW, &S::paletteWindowText),
        row("palette/Base", "#191919", RW, &S::paletteBase),
        row("palette/AlternateBase", "#353535", RW, &S::paletteAlternateBase),
        row("palette/ToolTipBase", "#ffffff", RW, &S::paletteToolTipBase),
        row("palette/ToolTipText", "#ffffff", RW, &S::paletteToolTipText),
        row("palette/Text", "#ffffff", RW, &S::paletteText),
        row("palette/Button", "#353535", RW, &S::paletteButton),
        row("palette/ButtonText", "#ffffff", RW, &S::paletteButtonText),
        row("palette/BrightText", "#ff0000", RW, &S::paletteBrightText),
        row("palette/Link", "#2a82da", RW, &S::paletteLink),
        row("palette/Highlight", "#2a82da", RW, &S::paletteHighlight),
        row("palette/HighlightedText", "#000000", RW, &S::paletteHighlightedText),
        row("color/assistWinBorderColor", "#ffffff", R, &S::assistWinBorderColor),
        row("color/assistWinBackColor", "#223344", R, &S::assistWinBackColor),
        row("color/assistWinTextColor", "#dddddd", R, &S::assistWinTextColor),
    };
    return table;
}

} // namespace SettingsTable
