#include "tests/doc/Page.h"

#include "mainwindow/ToolButtons.h"
#include "settings/SettingsTable.h"
#include "view/GrepEditor.h"

#include <QColor>
#include <QFile>
#include <QMenu>
#include <QRegularExpression>
#include <QToolBar>
#include <QToolButton>
#include <QXmlStreamReader>
#include <QtTest>

namespace {

Page index()
{
    QString error;
    return Page::read(QStringLiteral("index.html"), &error);
}

/// Without what a reader does not see as a difference: line ends, blanks.
QString compact(QString text)
{
    return text.remove(QRegularExpression(QStringLiteral("\\s")));
}

/// A label without the mark of its key: "(&F) ファイル" keeps its "(F)", as it is
/// shown, "マスク(&M)" loses all of it.
QString withoutKey(QString label)
{
    label.remove(QRegularExpression(QStringLiteral("(?<=.)\\(&[A-Z]\\)")));
    return label.remove(QLatin1Char('&'));
}

/// The texts of a form: the values of the properties of these names, one line each.
QStringList textsOf(const QString &form, const QStringList &properties)
{
    QFile file(QStringLiteral(SARVIK_SOURCES) + form);
    if (!file.open(QIODevice::ReadOnly))
        qFatal("cannot read %s", qPrintable(form));
    QXmlStreamReader reader(&file);
    QString property;
    QStringList texts;
    while (!reader.atEnd()) {
        if (!reader.readNextStartElement()) {
            if (reader.tokenType() == QXmlStreamReader::EndElement
                && reader.name() == QLatin1String("property"))
                property.clear();
            continue;
        }
        if (reader.name() == QLatin1String("property")
            || reader.name() == QLatin1String("attribute"))
            property = reader.attributes().value(QLatin1String("name")).toString();
        else if (reader.name() == QLatin1String("string") && properties.contains(property))
            texts += reader.readElementText().split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    }
    return texts;
}

/// As a settings file holds it, and a word where there is nothing.
QString shownDefault(const QVariant &value)
{
    QString text = value.toString();
    if (value.type() == QVariant::Point) {
        const QPoint point = value.toPoint();
        text = QStringLiteral("@Point(%1 %2)").arg(point.x()).arg(point.y());
    } else if (value.type() == QVariant::Size) {
        const QSize size = value.toSize();
        text = QStringLiteral("@Size(%1 %2)").arg(size.width()).arg(size.height());
    }
    return text.isEmpty() ? QStringLiteral("（なし）") : text;
}

/// What a section sets in the letters of code.
QStringList namedIn(const char *id)
{
    QStringList names;
    for (const Page &section : index().all("section")) {
        if (section.attribute("id") != QLatin1String(id))
            continue;
        for (const Page &code : section.all("code"))
            names += code.text();
    }
    return names;
}

} // namespace

class HelpTextsTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { m_help = compact(index().text()); }
    void everyLabelIsNamed_data();
    void everyLabelIsNamed();
    void everyToolButtonIsNamed();
    void everyContextMenuEntryIsNamed();
    void everySettingIsOneWithItsDefault();
    void everyKeyOfThePathDialogsFileIsNamed();
    void everyPlaceholderOfTheEditorIsNamed();

private:
    QString m_help;
};

void HelpTextsTest::everyLabelIsNamed_data()
{
    QTest::addColumn<QString>("label");
    const QStringList labels = {QStringLiteral("text"), QStringLiteral("title"),
                                QStringLiteral("shortcut")};
    const QStringList window = labels + QStringList{QStringLiteral("statusTip")};
    const QStringList dialog = labels + QStringList{QStringLiteral("windowTitle")};
    const QVector<QPair<QString, QStringList>> forms = {
        {QStringLiteral("mainwindow/MainWindow.ui"), window},
        {QStringLiteral("mainwindow/SearchForm.ui"), labels},
        {QStringLiteral("settings/dialogs/optionDialog.ui"), dialog},
        {QStringLiteral("settings/dialogs/findDialog.ui"), labels},
        {QStringLiteral("settings/dialogs/InputFolderDialog.ui"), labels},
        {QStringLiteral("view/fileDialog.ui"), dialog}};
    for (const auto &form : forms) {
        const QStringList texts = textsOf(form.first, form.second);
        for (const QString &text : texts) {
            // How to use a dialog, in the help's own words.
            if (text.startsWith(QLatin1String(" ESC:")))
                continue;
            QTest::newRow(qPrintable(form.first + QLatin1Char(' ') + text)) << text;
        }
    }
}

void HelpTextsTest::everyLabelIsNamed()
{
    QFETCH(QString, label);
    const QString shown = compact(withoutKey(label));
    QVERIFY(!shown.isEmpty());
    QVERIFY2(m_help.contains(shown), qPrintable(shown));
}

void HelpTextsTest::everyToolButtonIsNamed()
{
    QToolBar toolBar;
    ToolButtons::addTo(&toolBar);
    const QList<QToolButton *> buttons =
        toolBar.findChildren<QToolButton *>(QRegularExpression(QStringLiteral("Btn$")));
    QVERIFY(buttons.size() >= 6);
    for (const QToolButton *button : buttons) {
        QVERIFY2(m_help.contains(compact(button->text())), qPrintable(button->text()));
        const QString key = button->shortcut().toString();
        QVERIFY2(m_help.contains(key), qPrintable(key));
    }
}

void HelpTextsTest::everyContextMenuEntryIsNamed()
{
    GrepEditor view(true);
    const std::unique_ptr<QMenu> menu = view.makeContextMenu();
    QVERIFY(menu->actions().size() >= 3);
    for (const QAction *action : menu->actions()) {
        const QString label = withoutKey(action->text().section(QLatin1Char('\t'), 0, 0));
        const QString key = action->text().section(QLatin1Char('\t'), 1);
        QVERIFY2(m_help.contains(compact(label)), qPrintable(label));
        QVERIFY2(m_help.contains(key), qPrintable(key));
    }
}

/// Each key stands in one of the tables, and nothing else does.
void HelpTextsTest::everySettingIsOneWithItsDefault()
{
    QMap<QString, QString> defaults;
    for (const SettingsTable::Setting &setting : SettingsTable::settings())
        defaults.insert(setting.key, shownDefault(setting.defaultValue));
    for (const SettingsTable::ColourSetting &colour : SettingsTable::colours())
        defaults.insert(colour.key, shownDefault(colour.defaultName));
    QVERIFY(defaults.size() > 80);
    QMap<QString, QString> told;
    for (const Page &table : index().all("table")) {
        if (!table.hasClass("settings"))
            continue;
        for (const Page &row : table.all("tr")) {
            const QVector<Page> cells = row.all("td");
            if (cells.isEmpty())
                continue;
            const QString key = cells.at(0).text();
            QVERIFY2(!told.contains(key), qPrintable(key));
            told.insert(key, cells.at(1).text());
        }
    }
    for (const QString &key : told.keys() + defaults.keys()) {
        QVERIFY2(defaults.contains(key), qPrintable(key));
        QVERIFY2(told.contains(key), qPrintable(key));
        QCOMPARE(told.value(key), defaults.value(key));
    }
}

/// By the names in the source, which nothing else tells.
void HelpTextsTest::everyKeyOfThePathDialogsFileIsNamed()
{
    QFile file(QStringLiteral(SARVIK_SOURCES "settings/dialogs/InputHistoryFile.cpp"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QRegularExpression constant(QStringLiteral("constexpr auto k\\w+ = \"([^\"]+)\";"));
    auto keys = constant.globalMatch(QString::fromUtf8(file.readAll()));
    const QStringList named = namedIn("path-dialog");
    int found = 0;
    for (; keys.hasNext(); ++found) {
        const QString key = keys.next().captured(1);
        QVERIFY2(named.contains(key), qPrintable(key));
    }
    QCOMPARE(found, 8);
}

void HelpTextsTest::everyPlaceholderOfTheEditorIsNamed()
{
    for (const char *placeholder : {"%f", "%l", "%c", "%b"})
        QVERIFY2(m_help.contains(QLatin1String(placeholder)), placeholder);
}

QTEST_MAIN(HelpTextsTest)
#include "HelpTextsTest.moc"
