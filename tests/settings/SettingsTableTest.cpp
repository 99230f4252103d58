#include "settings/SettingsTable.h"

#include "settings/IniDocument.h"

#include <QPoint>
#include <QSet>
#include <QSize>
#include <QTest>

using namespace SettingsTable;

// The keys, defaults and directions are what files of other installations and
// the companion editor hold: they are spelt out here a second time so that none
// changes unnoticed.
class SettingsTableTest : public QObject {
    Q_OBJECT

private slots:
    void theSettingsAreTheseInThisOrder();
    void theColoursAreTheseInThisOrder();
    void everyKeyStandsOnce();
    void everyColourHasItsOwnMember();
    void whatIsWrittenIsEveryKeyThatIsNotReadOnly();
    void theHistoriesAreThoseThatTheProgramAddsTo();
};

namespace {

constexpr Access RW = Access::ReadWrite;
constexpr Access R = Access::ReadOnly;
constexpr Access W = Access::WriteOnly;

struct Row {
    const char *key;
    QVariant defaultValue;
    Access access;
};

QVariant text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

const std::vector<Row> &expectedSettings()
{
    static const std::vector<Row> rows{
        {"pos", QPoint(100, 100), RW},
        {"geometry", QByteArray(), RW},
        {"layoutdata", QByteArray(), RW},
        {"layouttoolbar", QByteArray(), RW},
        {"layoutsplitter", QByteArray(), RW},
        {"grepsize", QSize(800, 300), RW},
        {"textsize", QSize(800, 300), R},
        {"size", QSize(800, 800), RW},
        {"tabcolm", 4, RW},
        {"bigsize", 1, RW},
        {"logmax", 10, R},
        {"codechksize", 4096, RW},
        {"caseinsensitive", true, RW},
        {"regexp", true, RW},
        {"browser", text("gnome-open"), RW},
        {"editor/editor", text(""), RW},
        {"editor/editor_para", text(""), RW},
        {"pathhistory", QStringList(), RW},
        {"maskhistory", QStringList(), RW},
        {"keyhistory", QStringList(), RW},
        {"history2", QStringList(), RW},
        {"excusiondir", QStringList(), RW},
        {"excusionfile", QStringList(), RW},
        {"cursorback", true, R},
        {"searchHistorymax", 100, R},
        {"tab", true, RW},
        {"cr", true, RW},
        {"zenspc", true, RW},
        {"subdir", true, RW},
        {"warningmsg", false, RW},
        {"fname", false, RW},
        {"newfile/codeset", 1, R},
        {"newfile/detectsize", 2048, R},
        {"newfile/lb", 2, R},
        {"newfile/bom", 0, R},
        {"font/grep_family", text("IPAゴシック"), RW},
        {"font/grep_pointSize", 14, RW},
        {"font/grep_bold", false, RW},
        {"font/text_family", text("IPAゴシック"), RW},
        {"font/text_pointSize", 14, RW},
        {"font/text_bold", false, RW},
        {"font/inp_family", text("MS UI Gothic"), RW},
        {"font/inp_pointSize", 9, RW},
        {"font/inp_bold", false, RW},
        {"font/assit_family", text("IPAゴシック"), R},
        {"font/assit_pointSize", 12, R},
        {"font/assist_bold", false, R},
        {"find/case", true, RW},
        {"find/word", false, RW},
        {"find/regexp", false, RW},
    };
    return rows;
}

const std::vector<Row> &expectedColours()
{
    static const std::vector<Row> rows{
        {"color/backcolor", text("#0a1b34"), RW},
        {"color/forecolor", text("#ffffff"), RW},
        {"color/hlbackcolor", text("#4682b4"), RW},
        {"color/hlforecolor", text("#ffffff"), RW},
        {"color/cursorcolor", text("#ffff33"), RW},
        {"color/findcolor1", text("#ff0000"), RW},
        {"color/findcolor2", text("#ff0044"), RW},
        {"color/reteralcolor", text("#ffff7f"), RW},
        {"color/reservecolor", text("#00ffff"), RW},
        {"color/keywordcolor", text("#ffccaa"), RW},
        {"color/lnumforecolor", text("#aaff7f"), RW},
        {"color/lnumbackcolor", text("#535353"), RW},
        {"color/valuecolor", text("#ffff00"), RW},
        {"color/boxcolor", text("#8c0000"), RW},
        {"color/classcolor", text(""), W},
        {"color/ctrlcolor", text("#7efff5"), RW},
        {"color/commentcolor", text("#7777bb"), RW},
        {"color/fnamecolor", text("yellow"), R},
        {"color/tabcolor", text("#fafafa"), RW},
        {"color/locktabcolor", text("#f0c8dc"), RW},
        {"color/diffbackcolor", text("#413c50"), RW},
        {"color/diffdeletecolor", text("#722738"), RW},
        {"color/diffinsertcolor", text("#225938"), RW},
        {"color/editlockbackcolor", text("#142014"), RW},
        {"color/readonlybackcolor", text("#0a2a0a"), R},
        {"palette/Window", text("#353535"), RW},
        {"palette/WindowText", text("#ffffff"), RW},
        {"palette/Base", text("#191919"), RW},
        {"palette/AlternateBase", text("#353535"), RW},
        {"palette/ToolTipBase", text("#ffffff"), RW},
        {"palette/ToolTipText", text("#ffffff"), RW},
        {"palette/Text", text("#ffffff"), RW},
        {"palette/Button", text("#353535"), RW},
        {"palette/ButtonText", text("#ffffff"), RW},
        {"palette/BrightText", text("#ff0000"), RW},
        {"palette/Link", text("#2a82da"), RW},
        {"palette/Highlight", text("#2a82da"), RW},
        {"palette/HighlightedText", text("#000000"), RW},
        {"color/assistWinBorderColor", text("#ffffff"), R},
        {"color/assistWinBackColor", text("#223344"), R},
        {"color/assistWinTextColor", text("#dddddd"), R},
    };
    return rows;
}

QString described(const QString &key, const QVariant &defaultValue, Access access)
{
    return QStringLiteral("%1 %2 %3 %4")
        .arg(key, QString::fromLatin1(defaultValue.typeName()),
             QString::fromUtf8(IniText::escapedValue(defaultValue, IniText::Charset::Utf8)))
        .arg(static_cast<int>(access));
}

QStringList described(const std::vector<Row> &rows)
{
    QStringList lines;
    for (const Row &row : rows)
        lines.append(described(QString::fromLatin1(row.key), row.defaultValue, row.access));
    return lines;
}

IniDocument fileOf(const AppSettings &source)
{
    IniDocument file(IniDocument::Form::Utf8);
    for (const SettingsMerge::Value &value : written(source))
        file.setValue(value.key, value.value);
    return file;
}

} // namespace

void SettingsTableTest::theSettingsAreTheseInThisOrder()
{
    QStringList actual;
    for (const Setting &setting : settings())
        actual.append(described(setting.key, setting.defaultValue, setting.access));
    QCOMPARE(actual, described(expectedSettings()));
}

void SettingsTableTest::theColoursAreTheseInThisOrder()
{
    QStringList actual;
    for (const ColourSetting &colour : colours())
        actual.append(described(colour.key, colour.defaultName, colour.access));
    QCOMPARE(actual, described(expectedColours()));
}

void SettingsTableTest::everyKeyStandsOnce()
{
    QStringList keys;
    for (const Setting &setting : settings())
        keys.append(setting.key);
    for (const ColourSetting &colour : colours())
        keys.append(colour.key);
    QCOMPARE(keys.removeDuplicates(), 0);
}

void SettingsTableTest::everyColourHasItsOwnMember()
{
    // One is changed alone; exactly its own key shows the change.
    for (const ColourSetting &colour : colours()) {
        if (colour.access == R)
            continue;
        AppSettings one;
        one.*(colour.member) = QColor(1, 2, 3);
        const IniDocument file = fileOf(one);
        for (const ColourSetting &other : colours()) {
            if (other.access != R)
                QCOMPARE(file.text(other.key) == QLatin1String("#010203"), other.key == colour.key);
        }
    }
}

void SettingsTableTest::whatIsWrittenIsEveryKeyThatIsNotReadOnly()
{
    const AppSettings source;
    const IniDocument file = fileOf(source);
    for (const std::vector<Row> &rows : {expectedSettings(), expectedColours()}) {
        for (const Row &row : rows)
            QVERIFY2(file.contains(QString::fromLatin1(row.key)) == (row.access != R), row.key);
    }
    const int keys = file.toBytes().count('=');
    QCOMPARE(keys, 75);
}

void SettingsTableTest::theHistoriesAreThoseThatTheProgramAddsTo()
{
    QStringList histories;
    for (const SettingsMerge::Value &value : written(AppSettings())) {
        if (value.isHistory)
            histories.append(value.key);
    }
    QCOMPARE(histories.join(QLatin1Char(' ')), QStringLiteral("maskhistory keyhistory history2"));
}

QTEST_GUILESS_MAIN(SettingsTableTest)
#include "SettingsTableTest.moc"
