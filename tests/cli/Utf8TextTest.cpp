#include "cli/Utf8Text.h"

#include <QRandomGenerator>
#include <QTest>

class Utf8TextTest : public QObject {
    Q_OBJECT

private slots:
    void theBytesAreThoseOfTheWholeString();
    void whatStandsThereStays();
};

void Utf8TextTest::theBytesAreThoseOfTheWholeString()
{
    const QStringList characters{QStringLiteral("a"), QStringLiteral("\u007F"),
                                 QStringLiteral("\u0080"), QStringLiteral("漢"),
                                 QStringLiteral("𠮷")};
    QRandomGenerator random(3);
    for (int round = 0; round < 5000; ++round) {
        QString text(random.bounded(50), QLatin1Char('x'));
        for (int i = random.bounded(40); i > 0; --i)
            text += characters.at(random.bounded(2) == 0 ? 0 : random.bounded(5));
        QByteArray bytes;
        Utf8Text::append(&bytes, text);
        QCOMPARE(bytes, text.toUtf8());
    }
}

void Utf8TextTest::whatStandsThereStays()
{
    QByteArray bytes("path:");
    Utf8Text::append(&bytes, QStringLiteral("あ1"));
    Utf8Text::append(&bytes, QString());
    QCOMPARE(bytes, QStringLiteral("path:あ1").toUtf8());
}

QTEST_GUILESS_MAIN(Utf8TextTest)
#include "Utf8TextTest.moc"
