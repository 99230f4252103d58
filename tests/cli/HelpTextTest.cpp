#include "cli/HelpText.h"

#include "cli/OptionTable.h"

#include <QtTest>

class HelpTextTest : public QObject {
    Q_OBJECT

private slots:
    void theHelpNamesEveryOption();
    void theHelpFitsEightyColumns();
    void everyFixedValueIsTakenAndNamedInTheHelp();
    void anotherValueThanTheFixedOnesIsRefused();
    void theHelpSaysWhichOptionsAddUp();
};

void HelpTextTest::theHelpNamesEveryOption()
{
    const QString help = HelpText::text();
    QVERIFY(OptionTable::all().size() > 20);
    for (const OptionTable::Option &option : OptionTable::all()) {
        QVERIFY2(help.contains(option.longForm()), option.longName);
        if (option.shortName != 0)
            QVERIFY2(help.contains(QStringLiteral("  -%1, ").arg(QLatin1Char(option.shortName))
                                   + option.longForm()),
                     option.longName);
    }
    QVERIFY(help.endsWith(QLatin1Char('\n')));
}

void HelpTextTest::theHelpFitsEightyColumns()
{
    const QStringList lines = HelpText::text().split(QLatin1Char('\n'));
    for (const QString &line : lines)
        QVERIFY2(line.size() <= 80, qPrintable(line));
}

void HelpTextTest::everyFixedValueIsTakenAndNamedInTheHelp()
{
    int values = 0;
    for (const OptionTable::Option &option : OptionTable::all()) {
        for (const OptionTable::Choice &choice : option.choices) {
            Options options;
            const QString value = QLatin1String(choice.value);
            QCOMPARE(option.apply(options, value), QString());
            const QString line = value + QLatin1String(": ") + QLatin1String(choice.help);
            QVERIFY2(HelpText::text().contains(QLatin1String("  ") + line + QLatin1Char('\n')),
                     qPrintable(line));
            ++values;
        }
    }
    QCOMPARE(values, 6);
}

void HelpTextTest::anotherValueThanTheFixedOnesIsRefused()
{
    for (const OptionTable::Option &option : OptionTable::all()) {
        Options options;
        if (!option.choices.isEmpty())
            QVERIFY2(!option.apply(options, QStringLiteral("nonsense")).isEmpty(), option.longName);
    }
}

void HelpTextTest::theHelpSaysWhichOptionsAddUp()
{
    for (const OptionTable::Option &option : OptionTable::all()) {
        const QString help = QLatin1String(option.help);
        QVERIFY2(help.contains(QLatin1String("repeatable")) == option.repeatable, option.longName);
    }
}

QTEST_GUILESS_MAIN(HelpTextTest)
#include "HelpTextTest.moc"
