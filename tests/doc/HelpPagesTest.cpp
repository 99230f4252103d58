#include "tests/doc/Page.h"

#include <QFile>
#include <QImageReader>
#include <QRegularExpression>
#include <QSet>
#include <QtTest>

namespace {

QSet<QString> idsOf(const Page &page)
{
    QSet<QString> ids;
    for (const Page &element : page.all("")) {
        const QString id = element.attribute("id");
        if (!id.isEmpty())
            ids.insert(id);
    }
    return ids;
}

/// Everything that leads to another file or place.
QStringList linksOf(const Page &page)
{
    QStringList links;
    for (const Page &element : page.all("")) {
        for (const char *name : {"href", "src"}) {
            if (element.attributes().hasAttribute(QLatin1String(name)))
                links += element.attribute(name);
        }
    }
    return links;
}

} // namespace

class HelpPagesTest : public QObject {
    Q_OBJECT

private slots:
    void bothPagesAreThere();
    void everyPageIsWellFormed_data() { addPages(); }
    void everyPageIsWellFormed();
    void everyPageSaysWhatItIs_data() { addPages(); }
    void everyPageSaysWhatItIs();
    void everyLinkLeadsSomewhere_data() { addPages(); }
    void everyLinkLeadsSomewhere();
    void noPageLeadsOutOrRunsAnything_data() { addPages(); }
    void noPageLeadsOutOrRunsAnything();
    void theStyleSheetNeedsNothingElse();
    void noIdIsUsedTwice_data() { addPages(); }
    void noIdIsUsedTwice();
    void everySectionIsInTheContents_data() { addPages(); }
    void everySectionIsInTheContents();
    void everyPictureHasItsSizeAndAText_data() { addPages(); }
    void everyPictureHasItsSizeAndAText();
    void everyPictureIsShown();

private:
    static void addPages();
    static Page page(const QString &fileName);
};

void HelpPagesTest::addPages()
{
    QTest::addColumn<QString>("fileName");
    for (const QString &name : Page::files(QStringLiteral("*.html")))
        QTest::newRow(qPrintable(name)) << name;
}

Page HelpPagesTest::page(const QString &fileName)
{
    QString error;
    return Page::read(fileName, &error);
}

/// By the names that the program asks for.
void HelpPagesTest::bothPagesAreThere()
{
    QCOMPARE(Page::files(QStringLiteral("*.html")),
             (QStringList{QStringLiteral("index.html"), QStringLiteral("sarvik_regexp.html")}));
}

void HelpPagesTest::everyPageIsWellFormed()
{
    QFETCH(QString, fileName);
    QString error;
    const Page page = Page::read(fileName, &error);
    QCOMPARE(error, QString());
    QCOMPARE(page.all("body").size(), 1);
}

void HelpPagesTest::everyPageSaysWhatItIs()
{
    QFETCH(QString, fileName);
    const Page whole = page(fileName);
    QCOMPARE(whole.all("html").constFirst().attribute("lang"), QStringLiteral("ja"));
    QCOMPARE(whole.all("title").size(), 1);
    QVERIFY(whole.all("title").constFirst().text().contains(QLatin1String("sarvik")));
    bool fitsTheWidth = false;
    for (const Page &meta : whole.all("meta"))
        fitsTheWidth = fitsTheWidth || meta.attribute("name") == QLatin1String("viewport");
    QVERIFY(fitsTheWidth);
}

void HelpPagesTest::everyLinkLeadsSomewhere()
{
    QFETCH(QString, fileName);
    const QStringList links = linksOf(page(fileName));
    QVERIFY(links.size() > 5);
    for (const QString &link : links) {
        const QString file = link.section(QLatin1Char('#'), 0, 0);
        const QString id = link.section(QLatin1Char('#'), 1);
        QVERIFY2(file.isEmpty() || QFile::exists(Page::folder() + file), qPrintable(link));
        if (!id.isEmpty())
            QVERIFY2(idsOf(page(file.isEmpty() ? fileName : file)).contains(id), qPrintable(link));
    }
}

void HelpPagesTest::noPageLeadsOutOrRunsAnything()
{
    QFETCH(QString, fileName);
    for (const Page &element : page(fileName).all("")) {
        QVERIFY(element.name() != QLatin1String("script"));
        QVERIFY(element.name() != QLatin1String("iframe"));
        for (const QXmlStreamAttribute &attribute : element.attributes()) {
            const QString name = attribute.name().toString();
            const QString value = attribute.value().toString();
            QVERIFY2(!name.startsWith(QLatin1String("on")), qPrintable(name));
            QVERIFY2(!value.contains(QLatin1String("//")), qPrintable(value));
            QVERIFY2(!value.contains(QLatin1String("javascript:")), qPrintable(value));
        }
    }
}

void HelpPagesTest::theStyleSheetNeedsNothingElse()
{
    for (const QString &name : Page::files(QStringLiteral("*.css"))) {
        QFile file(Page::folder() + name);
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QByteArray sheet = file.readAll();
        QVERIFY(sheet.contains("prefers-color-scheme: dark"));
        QVERIFY(!sheet.contains("url("));
        QVERIFY(!sheet.contains("@import"));
    }
}

void HelpPagesTest::noIdIsUsedTwice()
{
    QFETCH(QString, fileName);
    const Page whole = page(fileName);
    int ids = 0;
    for (const Page &element : whole.all(""))
        ids += element.attribute("id").isEmpty() ? 0 : 1;
    QCOMPARE(idsOf(whole).size(), ids);
}

void HelpPagesTest::everySectionIsInTheContents()
{
    QFETCH(QString, fileName);
    const Page whole = page(fileName);
    QStringList contents;
    for (const Page &nav : whole.all("nav")) {
        if (nav.hasClass("contents"))
            contents = linksOf(nav);
    }
    QStringList sections;
    for (const Page &section : whole.all("section"))
        sections += QLatin1Char('#') + section.attribute("id");
    QVERIFY(sections.size() > 5);
    QCOMPARE(contents, sections);
}

void HelpPagesTest::everyPictureHasItsSizeAndAText()
{
    QFETCH(QString, fileName);
    for (const Page &image : page(fileName).all("img")) {
        const QString source = image.attribute("src");
        QVERIFY2(image.attribute("alt").size() > 5, qPrintable(source));
        const QSize size = QImageReader(Page::folder() + source).size();
        const QSize told(image.attribute("width").toInt(), image.attribute("height").toInt());
        QVERIFY2(
            size == told,
            qPrintable(
                QStringLiteral("%1 is %2 x %3").arg(source).arg(size.width()).arg(size.height())));
    }
}

void HelpPagesTest::everyPictureIsShown()
{
    QStringList shown;
    for (const QString &name : Page::files(QStringLiteral("*.html"))) {
        for (const Page &image : page(name).all("img"))
            shown += image.attribute("src");
    }
    const QStringList pictures = Page::files(QStringLiteral("*.png"));
    QVERIFY(pictures.size() > 5);
    for (const QString &picture : pictures)
        QVERIFY2(shown.contains(picture), qPrintable(picture));
}

QTEST_GUILESS_MAIN(HelpPagesTest)
#include "HelpPagesTest.moc"
