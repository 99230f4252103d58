#include "settings/KeywordHistory.h"

#include "tests/support/ScratchFolder.h"

#include <QComboBox>
#include <QTest>

class KeywordHistoryComboTest : public QObject {
    Q_OBJECT

private slots:
    void theComboShowsTheKeywordsInListOrder();
    void formerItemsGo();
};

namespace {

QStringList itemsOf(const QComboBox &combo)
{
    QStringList items;
    for (int i = 0; i < combo.count(); ++i)
        items.append(combo.itemText(i));
    return items;
}

} // namespace

void KeywordHistoryComboTest::theComboShowsTheKeywordsInListOrder()
{
    const ScratchFolder folder;
    KeywordHistory history(100, folder.path());
    history.add(QStringLiteral("older"), true, false, true);
    history.add(QStringLiteral("検索"), false, true, false);
    QComboBox combo;
    history.fillCombo(&combo);
    QCOMPARE(itemsOf(combo), QStringList({QStringLiteral("検索"), QStringLiteral("older")}));
}

void KeywordHistoryComboTest::formerItemsGo()
{
    const ScratchFolder folder;
    KeywordHistory history(100, folder.path());
    history.add(QStringLiteral("abc"), true, true, true);
    QComboBox combo;
    combo.addItem(QStringLiteral("former"));
    history.fillCombo(&combo);
    QCOMPARE(itemsOf(combo), QStringList{QStringLiteral("abc")});
}

QTEST_MAIN(KeywordHistoryComboTest)
#include "KeywordHistoryComboTest.moc"
