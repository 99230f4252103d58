#pragma once

#include "settings/SettingsMerge.h"

#include <QByteArray>
#include <QColor>
#include <QFont>
#include <QPoint>
#include <QSize>
#include <QString>
#include <QStringList>

#include <memory>

class IniDocument;
class KeywordHistory;

/// Every setting of the program, read from "sarvik.ini" in the application
/// directory and written back to it; the one place that other rooms ask. Which
/// key belongs to which member, its default, and whether it is read, written
/// or both, stands in SettingsTable.
///
/// Colours come from the companion editor's "sarvedit.ini" when that file
/// exists, so that both programs share one colour scheme; a colour that is
/// changed here is then written to "sarvik.ini" but not read back.
///
/// Nothing locks the members: they belong to the user interface's thread. A search
/// takes what it needs of them (SearchLimits) on that thread, before it starts.
///
/// Usable without a QGuiApplication: fonts and colours are plain values here.
class AppSettings {
public:
    /// The process-wide object, with every member empty until load(). Made on
    /// the first call, once, whichever thread comes first.
    static AppSettings &instance();

    AppSettings();
    ~AppSettings();
    AppSettings(const AppSettings &) = delete;
    AppSettings &operator=(const AppSettings &) = delete;

    /// Reads every setting from the files in appDir, which ends in "/", and
    /// replaces the keyword history by a fresh one; a pointer to the former one
    /// is then dangling. A missing file, or a missing key, gives the default;
    /// a value of the wrong type gives Qt's conversion of it (0, false, empty,
    /// an invalid colour). May be called again at any time.
    void load(const QString &appDir);

    /// Writes the settings that are written to "sarvik.ini" in appDir, which
    /// ends in "/", after the daily backup, and saves the keyword history. Keys
    /// that the program does not write stay as they are, and so does what another
    /// program has saved since the last load() or save() and this one has not
    /// changed (SettingsMerge); members stay as they are here. False when
    /// the settings file was not replaced; it is then the old one, whole. So it
    /// is when the last load() could not read the file: what it holds is worth
    /// more than the defaults that were taken instead. Nobody is told.
    bool save(const QString &appDir);

    /// The directory of the last load(), ending in "/"; empty before it.
    const QString &applicationDirectory() const { return m_applicationDirectory; }

    /// Whether the last load() took the colours from the companion editor's file:
    /// colours set here are then those of this run only.
    bool coloursAreEditors() const { return m_coloursAreEditors; }

    // Window state, in pixels.
    QPoint pos;
    QSize size;
    QSize grepsize;
    QSize textsize;

    // Editor: the program and the template of its parameters.
    QString editor;
    QString editor_para;

    /// Past texts of the find dialog, newest first.
    QStringList keyhistory;

    /// Display columns between tab stops, 1 or more after load().
    int tabcolm = 0;
    /// Largest file that is searched, in MiB.
    int bigsize = 0;
    /// Leading bytes that the encoding detection looks at.
    int codechksize = 0;
    /// Result logs that are kept.
    int logmax = 0;
    /// Code-set number for a text whose encoding nothing tells.
    int newfileCodeset = 0;
    int newfileDetectsize = 0;
    int newfileLb = 0;
    bool newfileBom = false;

    QString browser;

    // Switches of the find dialog; findcase means "ignore case".
    bool findcase = false;
    bool findword = false;
    bool findregexp = false;

    // Colours of the result view and the preview.
    QColor backcolor;
    QColor forecolor;
    QColor hlbackcolor;
    QColor hlforecolor;
    QColor cursorcolor;
    QColor findcolor1;
    QColor findcolor2;
    QColor reteralcolor;
    QColor reservecolor;
    QColor keywordcolor;
    QColor lnumbackcolor;
    QColor lnumforecolor;
    QColor commentcolor;
    QColor valuecolor;
    QColor boxcolor;
    /// Never loaded: invalid until the option dialog sets it.
    QColor classcolor;
    QColor ctrlcolor;
    QColor fnamecolor;
    /// Dark yellow after every load; has no key.
    QColor markercolor;
    QColor tabcolor;
    QColor locktabcolor;
    QColor diffbackcolor;
    QColor diffdeletecolor;
    QColor diffinsertcolor;
    QColor editlockbackcolor;
    QColor readonlybackcolor;

    // Colours of the application palette, named as the palette's roles.
    QColor paletteWindow;
    QColor paletteWindowText;
    QColor paletteBase;
    QColor paletteAlternateBase;
    QColor paletteToolTipBase;
    QColor paletteToolTipText;
    QColor paletteText;
    QColor paletteButton;
    QColor paletteButtonText;
    QColor paletteBrightText;
    QColor paletteLink;
    QColor paletteHighlight;
    QColor paletteHighlightedText;

    QColor assistWinBorderColor;
    QColor assistWinBackColor;
    QColor assistWinTextColor;

    QFont assistFont;
    QFont grepFont;
    QFont textFont;
    /// Equal to inputFont after load(); the option dialog sets both.
    QFont inputFontCopy;
    /// The one of the two that is saved.
    QFont inputFont;

    // Search switches. word has no key: it is false after every load.
    bool caseinsensitive = false;
    bool word = false;
    bool regexp = false;
    bool cursorback = false;

    // What the main window saves of its layout; opaque here.
    QByteArray geometry;
    QByteArray layoutdata;
    QByteArray layouttoolbar;
    QByteArray layoutsplitter;

    QStringList pathhistory;
    QStringList maskhistory;
    QStringList history2;
    QStringList excusiondir;
    QStringList excusionfile;

    /// Names of the languages, and for each its suffixes as one text: langlistValues
    /// has the same length. First those of the settings, in the file's order of keys
    /// (sorted), then of the shipped file list/langlist.ini those that the settings
    /// do not name: where two have a suffix, the earlier counts. Never written.
    QStringList langlist;
    QStringList langlistValues;

    /// Null before the first load().
    std::unique_ptr<KeywordHistory> keywordHistory;
    /// Capacity of the keyword history, in entries.
    int searchHistorymax = 0;

    // What the result view marks, and the form's check boxes.
    bool tab = false;
    bool cr = false;
    bool zenspc = false;
    bool subdir = false;
    bool warningmsg = false;
    bool fname = false;

private:
    /// Those that are not there yet.
    void addLanguages(const IniDocument &file);

    QString m_applicationDirectory;
    /// Of the file in that directory.
    SettingsMerge m_merge;
    bool m_mayBeSaved = true;
    bool m_coloursAreEditors = false;
};
