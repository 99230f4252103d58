#include "settings/AppSettings.h"
#include "settings/IniDocument.h"
#include "settings/KeywordHistory.h"
#include "settings/ParameterFile.h"
#include "settings/SettingsTable.h"
#include "settings/StyleSheet.h"
#include "tests/support/ScratchFolder.h"
#include "tests/support/TestLength.h"

#include <QTest>

#include <memory>
#include <random>

// Whatever stands in the files, the program starts, searches and saves.
class GarbageFilesTest : public QObject {
    Q_OBJECT

private slots:
    void anyFileIsReadAndSaved_data();
    void anyFileIsReadAndSaved();
    void anySettingMayHaveAnyValue();
    void randomBytesAreReadAndSaved();
    void randomPiecesAreReadAndSaved();

private:
    void useAll(const QByteArray &content);

    std::unique_ptr<ScratchFolder> m_folder;
    std::mt19937 m_random{19990101};
};

namespace {

// What a file may be made of to mislead a reader.
const QByteArrayList kPieces{"[General]\n",
                             "[",
                             "]",
                             "\n",
                             "\r\n",
                             "\r",
                             "=",
                             "\"",
                             "\\",
                             "\\x",
                             ",",
                             ";",
                             "%U",
                             "%",
                             "[keyword]\n001=",
                             "[langlist]\nc=",
                             "size=",
                             "pos=",
                             "tabcolm=",
                             "geometry=",
                             "pathlist=",
                             "@Point(",
                             "@Size(",
                             "@ByteArray(",
                             "@Rect(1 2 3 4)",
                             "@Invalid()",
                             "@String(",
                             ")",
                             "@Variant(\\0\\0\\0\\t\\x7f\\xff\\xff\\xff)",
                             "@DateTime(\\0\\0\\0\\x10)",
                             "-2147483648",
                             "99999999999999999999",
                             "nan",
                             "true",
                             "\xef\xbb\xbf",
                             "\xe6\x97\xa5",
                             "\x93\xfa",
                             "\xff"};

const QByteArrayList kValues{"",
                             "x",
                             "-1",
                             "0",
                             "2147483647",
                             "-2147483648",
                             "4294967296",
                             "1e9",
                             "true",
                             "a, b",
                             "@",
                             "@@",
                             "@Invalid()",
                             "@Point(1 2)",
                             "@Point(2147483648 -2147483649)",
                             "@Size(-1 -1)",
                             "@Size(99999999 99999999)",
                             "@ByteArray(\\0\\xff)",
                             "@Variant(\\0\\0\\0\\t\\x7f\\xff\\xff\\xff)",
                             "\"",
                             "\\",
                             "\\x",
                             "#12345",
                             "yellow",
                             "rgb(1,2,3)",
                             "\xe6\x97\xa5",
                             "\xff\xfe"};

} // namespace

void GarbageFilesTest::useAll(const QByteArray &content)
{
    m_folder = std::make_unique<ScratchFolder>();
    for (const char *name :
         {"sarvik.ini", "sarvedit.ini", "keywordhistory.ini", "sarvikpara.ini", "sarvify.qss"})
        m_folder->write(QString::fromLatin1(name), content);

    AppSettings settings;
    settings.load(m_folder->path());
    QVERIFY(settings.tabcolm >= 1);
    QVERIFY(settings.size.width() > 600 && settings.size.height() > 400);
    QCOMPARE(settings.langlist.size(), settings.langlistValues.size());
    QVERIFY(settings.keywordHistory->entries().size() <= size_t(1000000));
    settings.keywordHistory->add(QStringLiteral("検索"), true, false, true);
    QVERIFY(settings.save(m_folder->path()));

    KeywordHistory history(100, m_folder->path());
    history.load();
    QCOMPARE(history.keywords().value(0), QStringLiteral("検索"));

    const ParameterFile parameters(m_folder->path());
    parameters.read();
    QVERIFY(parameters.write({{QStringLiteral("検")}, QStringLiteral("*"), QStringLiteral("索")}));
    QCOMPARE(parameters.read().pathlist, QStringList{QStringLiteral("検")});
    QCOMPARE(parameters.read().mask, QStringLiteral("*"));
    QCOMPARE(parameters.read().findword, QStringLiteral("索"));

    QVERIFY(StyleSheet::read(m_folder->path()).has_value());

    // What was saved over garbage is read as it was saved.
    AppSettings again;
    again.load(m_folder->path());
    QCOMPARE(again.size, settings.size);
    QCOMPARE(again.tabcolm, settings.tabcolm);
    QCOMPARE(again.pathhistory, settings.pathhistory);
    QCOMPARE(again.editor, settings.editor);
    QCOMPARE(again.geometry, settings.geometry);
}

void GarbageFilesTest::anyFileIsReadAndSaved_data()
{
    QTest::addColumn<QByteArray>("content");
    QByteArray noise;
    for (int i = 0; i < 1048576; ++i)
        noise += static_cast<char>(m_random());
    QTest::newRow("1 MB of noise") << noise;
    QTest::newRow("1 MB of zeros") << QByteArray(1048576, '\0');
    QTest::newRow("100,000 line ends") << QByteArray(100000, '\n');
    const QByteArray longText(125, 'x');
    QTest::newRow("1 MB of keys") << QByteArray("a=" + longText + '\n').repeated(8192);
    QTest::newRow("1 MB of sections") << QByteArray('[' + longText + "]\n").repeated(8192);
    QTest::newRow("1 MB of quotes") << QByteArray(1048576, '"');
    QTest::newRow("1 MB of backslashes") << QByteArray(1048576, '\\');
    QTest::newRow("a list of 1 MB") << "pathhistory=" + QByteArray(longText + ',').repeated(8192);
    QTest::newRow("a key of 1 MB") << QByteArray(1048576, '%') + "=1";
    QTest::newRow("a language list of 1 MB")
        << "[langlist]\n" + QByteArray("a=" + longText + '\n').repeated(8192);
    QTest::newRow("byte-order mark alone") << QByteArray("\xef\xbb\xbf");
    QTest::newRow("half a byte-order mark") << QByteArray("\xef\xbb");
    QTest::newRow("UTF-16") << QByteArray("\xff\xfe[\0G\0]\0\n\0", 10);
    QTest::newRow("an object of unlimited size")
        << QByteArray("[General]\npos=@Variant(\\0\\0\\0\\t\\x7f\\xff\\xff\\xff)\n");
    QTest::newRow("a history of unlimited capacity")
        << QByteArray("searchHistorymax=2147483647\n[keyword]\n001=101a\n002=000b\n");
}

void GarbageFilesTest::anyFileIsReadAndSaved()
{
    QFETCH(QByteArray, content);
    useAll(content);
}

void GarbageFilesTest::anySettingMayHaveAnyValue()
{
    QStringList keys;
    for (const SettingsTable::Setting &setting : SettingsTable::settings())
        keys.append(setting.key);
    for (const SettingsTable::ColourSetting &colour : SettingsTable::colours())
        keys.append(colour.key);
    for (int shift = 0; shift < kValues.size(); ++shift) {
        QByteArray content = "[General]\n";
        for (int i = 0; i < keys.size(); ++i)
            content += IniText::escapedKey(keys.at(i)) + '='
                + kValues.at((i + shift) % kValues.size()) + '\n';
        useAll(content);
        if (QTest::currentTestFailed())
            return;
    }
}

void GarbageFilesTest::randomBytesAreReadAndSaved()
{
    for (int i = 0; i < TestLength::rounds(20, 400); ++i) {
        QByteArray content;
        for (size_t n = m_random() % 3000; n > 0; --n)
            content += static_cast<char>(m_random());
        useAll(content);
        if (QTest::currentTestFailed())
            return;
    }
}

void GarbageFilesTest::randomPiecesAreReadAndSaved()
{
    for (int i = 0; i < TestLength::rounds(40, 800); ++i) {
        QByteArray content;
        for (size_t n = m_random() % 200; n > 0; --n)
            content +=
                kPieces.at(static_cast<int>(m_random() % static_cast<size_t>(kPieces.size())));
        useAll(content);
        if (QTest::currentTestFailed())
            return;
    }
}

QTEST_GUILESS_MAIN(GarbageFilesTest)
#include "GarbageFilesTest.moc"
