#include "settings/StyleSheet.h"
#include "view/GrepEditor.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QtTest>

namespace {

QStringList messages;

void keep(QtMsgType, const QMessageLogContext &, const QString &text)
{
    messages += text;
}

QByteArray bytesOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QString programFolder()
{
    return QStringLiteral(PROGRAM_FOLDER);
}

/// What the toolkit says of a sheet when widgets take it.
QStringList complaintsAbout(const QString &sheet)
{
    messages.clear();
    const QtMessageHandler former = qInstallMessageHandler(keep);
    qApp->setStyleSheet(sheet);
    GrepEditor view(true);
    view.show();
    QTest::qWait(0);
    qApp->setStyleSheet(QString());
    qInstallMessageHandler(former);
    return messages.filter(QStringLiteral("tylesheet"), Qt::CaseInsensitive);
}

} // namespace

class ShippedFilesTest : public QObject {
    Q_OBJECT

private slots:
    void theExampleOfAStyleSheetIsShipped();
    void theToolkitTakesTheExample();
    void theToolkitWouldComplainOfAnother();
    void theExampleNeedsNoOtherFile();
    void theHelpLiesWhereTheProgramLooks();
};

void ShippedFilesTest::theExampleOfAStyleSheetIsShipped()
{
    const QByteArray example = bytesOf(QStringLiteral(SARVIK_SOURCES "doc/sarvify-example.qss"));
    QVERIFY(example.size() > 1000);
    QCOMPARE(bytesOf(programFolder() + QStringLiteral("sarvify-example.qss")), example);
}

void ShippedFilesTest::theToolkitTakesTheExample()
{
    const QByteArray example = bytesOf(programFolder() + QStringLiteral("sarvify-example.qss"));
    QCOMPARE(complaintsAbout(StyleSheet::fromBytes(example, programFolder())), QStringList());
}

void ShippedFilesTest::theToolkitWouldComplainOfAnother()
{
    QVERIFY(!complaintsAbout(QStringLiteral("QWidget { color: ")).isEmpty());
}

void ShippedFilesTest::theExampleNeedsNoOtherFile()
{
    const QString sheet =
        QString::fromUtf8(bytesOf(programFolder() + QStringLiteral("sarvify-example.qss")));
    const int commentEnd = sheet.indexOf(QLatin1String("*/"));
    QVERIFY(commentEnd > 0);
    QVERIFY(!sheet.mid(commentEnd).contains(QLatin1String("url")));
}

void ShippedFilesTest::theHelpLiesWhereTheProgramLooks()
{
    const QDir sources(QStringLiteral(SARVIK_SOURCES "doc/sarvik"));
    for (const char *name : {"index.html", "sarvik_regexp.html", "style.css", "images/main.png"}) {
        const QString path = QLatin1String(name);
        const QByteArray page = bytesOf(sources.filePath(path));
        QVERIFY2(!page.isEmpty(), name);
        QCOMPARE(bytesOf(programFolder() + QStringLiteral("doc/sarvik/") + path), page);
    }
}

QTEST_MAIN(ShippedFilesTest)
#include "ShippedFilesTest.moc"
