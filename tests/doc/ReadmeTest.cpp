#include <QFile>
#include <QFileInfo>
#include <QMap>
#include <QRegularExpression>
#include <QtTest>

namespace {

QString textOf(const QString &name)
{
    QFile file(QStringLiteral(SARVIK_SOURCES) + name);
    if (!file.open(QIODevice::ReadOnly))
        qFatal("cannot read %s", qPrintable(name));
    return QString::fromUtf8(file.readAll());
}

/// The cells of each table row that has the name of a measurement, by that name.
QMap<QString, QStringList> measurements(const QString &name)
{
    const QRegularExpression rowName(QStringLiteral("^`([a-z]+(-[a-z0-9]+)*)`$"));
    QMap<QString, QStringList> rows;
    const QStringList lines = textOf(name).split(QLatin1Char('\n'));
    for (const QString &line : lines) {
        QStringList cells;
        QString key;
        for (const QString &cell : line.split(QLatin1Char('|'))) {
            const auto match = rowName.match(cell.trimmed());
            if (match.hasMatch())
                key = match.captured(1);
            cells += cell.trimmed();
        }
        if (!key.isEmpty() && cells.size() > 5)
            rows.insert(key, cells.mid(0, cells.size() - 1));
    }
    return rows;
}

/// CPU, wall and memory, which stand last.
QStringList figures(const QStringList &cells)
{
    return cells.mid(cells.size() - 3);
}

} // namespace

/// The first words about the program, in both languages.
class ReadmeTest : public QObject {
    Q_OBJECT

private slots:
    void eachLanguageLeadsToTheOther();
    void everyLinkLeadsToAFile_data() { addPages(); }
    void everyLinkLeadsToAFile();
    void everyScriptIsThere_data() { addPages(); }
    void everyScriptIsThere();
    void everyFigureIsOneThatWasMeasured_data() { addPages(); }
    void everyFigureIsOneThatWasMeasured();
    void bothLanguagesTellTheSameMeasurements();

private:
    static void addPages();
};

void ReadmeTest::addPages()
{
    QTest::addColumn<QString>("page");
    for (const char *name : {"README.md", "README.ja.md"})
        QTest::newRow(name) << QString(QLatin1String(name));
}

void ReadmeTest::eachLanguageLeadsToTheOther()
{
    QVERIFY(textOf(QStringLiteral("README.md")).left(80).contains(QLatin1String("(README.ja.md)")));
    QVERIFY(textOf(QStringLiteral("README.ja.md")).left(80).contains(QLatin1String("(README.md)")));
}

void ReadmeTest::everyLinkLeadsToAFile()
{
    QFETCH(QString, page);
    const QRegularExpression link(QStringLiteral("\\]\\(([^)]+)\\)"));
    auto links = link.globalMatch(textOf(page));
    int found = 0;
    for (; links.hasNext(); ++found) {
        const QString file = links.next().captured(1);
        QVERIFY2(QFileInfo::exists(QStringLiteral(SARVIK_SOURCES) + file), qPrintable(file));
    }
    QVERIFY(found > 5);
}

void ReadmeTest::everyScriptIsThere()
{
    QFETCH(QString, page);
    const QRegularExpression script(QStringLiteral("\\bscripts/[a-z-]+(/[a-z-]+)?"));
    auto scripts = script.globalMatch(textOf(page));
    int found = 0;
    for (; scripts.hasNext(); ++found) {
        const QString file = scripts.next().captured();
        QVERIFY2(QFileInfo(QStringLiteral(SARVIK_SOURCES) + file).isFile(), qPrintable(file));
    }
    QVERIFY(found > 5);
}

void ReadmeTest::everyFigureIsOneThatWasMeasured()
{
    QFETCH(QString, page);
    const QMap<QString, QStringList> measured = measurements(QStringLiteral("docs/performance.md"));
    const QMap<QString, QStringList> told = measurements(page);
    QVERIFY(told.size() >= 8);
    for (auto row = told.begin(); row != told.end(); ++row) {
        QVERIFY2(measured.contains(row.key()), qPrintable(row.key()));
        QCOMPARE(figures(row.value()), figures(measured.value(row.key())));
    }
}

void ReadmeTest::bothLanguagesTellTheSameMeasurements()
{
    QCOMPARE(measurements(QStringLiteral("README.ja.md")).keys(),
             measurements(QStringLiteral("README.md")).keys());
}

QTEST_GUILESS_MAIN(ReadmeTest)
#include "ReadmeTest.moc"
