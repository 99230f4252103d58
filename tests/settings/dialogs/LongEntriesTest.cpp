#include "settings/dialogs/LongEntries.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QCompleter>
#include <QLineEdit>
#include <QPainter>
#include <QtTest>

#include <memory>

/// The lists are compared with those of a box that the toolkit fills alone.
class LongEntriesTest : public QObject {
    Q_OBJECT

private slots:
    void anEntryHasTheSizeThatTheToolkitGivesIt_data();
    void anEntryHasTheSizeThatTheToolkitGivesIt();
    void anEntryLooksAsTheToolkitDrawsIt();
    void ofALongEntryBeginningAndEndAreShown();
    void noPairIsCut_data();
    void noPairIsCut();
    void aLongEntryIsChosenWhole();
    void aLongCompletionIsTakenWhole();
};

namespace {

const QStringList kTexts{QStringLiteral("abc"), QStringLiteral("図書館 &x"),
                         QString(LongEntries::kMostShown, QLatin1Char('a'))};

QString longText()
{
    return QString(LongEntries::kMostShown, QLatin1Char('a')) + QString(20000, QLatin1Char('b'))
        + QString(LongEntries::kMostShown, QLatin1Char('c'));
}

/// What a list may be: of a combo box or of completions.
struct Lists {
    explicit Lists(const QStringList &texts, bool shortened = true) : completer(texts)
    {
        combo.setEditable(true);
        combo.addItems(texts);
        combo.setCurrentIndex(-1);
        combo.setCompleter(nullptr);
        edit.setCompleter(&completer);
        if (shortened) {
            LongEntries::shortenIn(&combo);
            LongEntries::shortenIn(&completer);
        }
    }

    QComboBox combo;
    QCompleter completer;
    QLineEdit edit;
};

QSize sizeOf(const QAbstractItemView &list, const QString &text)
{
    const std::unique_ptr<QStringListModel> model(new QStringListModel({text}));
    QStyleOptionViewItem option;
    option.font = list.font();
    option.fontMetrics = QFontMetrics(option.font);
    option.widget = &list;
    return list.itemDelegate()->sizeHint(option, model->index(0));
}

QImage pictureOf(const QAbstractItemView &list, const QString &text, QStyle::State state)
{
    const std::unique_ptr<QStringListModel> model(new QStringListModel({text}));
    QStyleOptionViewItem option;
    option.font = list.font();
    option.fontMetrics = QFontMetrics(option.font);
    option.rect = QRect(0, 0, 300, 24);
    option.state = state;
    option.widget = &list;
    option.textElideMode = Qt::ElideMiddle;
    QImage image(option.rect.size(), QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    list.itemDelegate()->paint(&painter, option, model->index(0));
    return image;
}

} // namespace

void LongEntriesTest::anEntryHasTheSizeThatTheToolkitGivesIt_data()
{
    QTest::addColumn<QString>("text");
    for (const QString &text : kTexts)
        QTest::addRow("%d units", text.size()) << text;
}

void LongEntriesTest::anEntryHasTheSizeThatTheToolkitGivesIt()
{
    QFETCH(QString, text);
    Lists lists(kTexts);
    Lists plain(kTexts, false);
    QCOMPARE(sizeOf(*lists.combo.view(), text), sizeOf(*plain.combo.view(), text));
    QCOMPARE(sizeOf(*lists.completer.popup(), text), sizeOf(*plain.completer.popup(), text));
}

void LongEntriesTest::anEntryLooksAsTheToolkitDrawsIt()
{
    Lists lists(kTexts);
    Lists plain(kTexts, false);
    for (const QString &text : kTexts) {
        for (const QStyle::State state :
             {QStyle::State(QStyle::State_Enabled),
              QStyle::State_Enabled | QStyle::State_Selected | QStyle::State_Active}) {
            QVERIFY(pictureOf(*lists.combo.view(), text, state)
                    == pictureOf(*plain.combo.view(), text, state));
            QVERIFY(pictureOf(*lists.completer.popup(), text, state)
                    == pictureOf(*plain.completer.popup(), text, state));
        }
    }
}

void LongEntriesTest::ofALongEntryBeginningAndEndAreShown()
{
    const int half = LongEntries::kMostShown / 2;
    const QString shown =
        QString(half, QLatin1Char('a')) + QChar(0x2026) + QString(half, QLatin1Char('c'));
    Lists lists(kTexts);
    Lists plain(kTexts, false);
    for (const auto &[list, expected] :
         {std::make_pair(lists.combo.view(), plain.combo.view()),
          std::make_pair(lists.completer.popup(), plain.completer.popup())}) {
        QCOMPARE(sizeOf(*list, longText()), sizeOf(*expected, shown));
        QVERIFY(pictureOf(*list, longText(), QStyle::State_Enabled)
                == pictureOf(*expected, shown, QStyle::State_Enabled));
    }
}

void LongEntriesTest::noPairIsCut_data()
{
    const int half = LongEntries::kMostShown / 2;
    const QString pairs = QStringLiteral("\U00020BB7").repeated(LongEntries::kMostShown);
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("begin");
    QTest::addColumn<int>("end");
    QTest::newRow("none is near") << pairs << half << half;
    QTest::newRow("at the beginning's end") << QLatin1Char('a') + pairs << half - 1 << half;
    QTest::newRow("at the end's beginning") << pairs + QLatin1Char('a') << half << half - 1;
}

void LongEntriesTest::noPairIsCut()
{
    QFETCH(QString, text);
    QFETCH(int, begin);
    QFETCH(int, end);
    Lists lists({text});
    const QString shown = text.left(begin) + QChar(0x2026) + text.right(end);
    QVERIFY(shown.size() <= LongEntries::kMostShown + 1);
    Lists plain({shown}, false);
    QCOMPARE(sizeOf(*lists.combo.view(), text), sizeOf(*plain.combo.view(), shown));
}

void LongEntriesTest::aLongEntryIsChosenWhole()
{
    Lists lists({QStringLiteral("first"), longText()});
    lists.combo.show();
    lists.combo.showPopup();
    lists.combo.view()->setCurrentIndex(lists.combo.model()->index(1, 0));
    QTest::keyClick(lists.combo.view(), Qt::Key_Return);
    QVERIFY(lists.combo.currentText() == longText());
}

void LongEntriesTest::aLongCompletionIsTakenWhole()
{
    Lists lists({QStringLiteral("first"), longText()});
    lists.edit.show();
    QApplication::setActiveWindow(&lists.edit);
    lists.edit.setFocus();
    QTest::keyClicks(&lists.edit, QStringLiteral("aaa"));
    QAbstractItemView *list = lists.completer.popup();
    QVERIFY(list->isVisible());
    QTest::keyClick(list, Qt::Key_Down);
    QTest::keyClick(list, Qt::Key_Return);
    QVERIFY(lists.edit.text() == longText());
}

QTEST_MAIN(LongEntriesTest)
#include "LongEntriesTest.moc"
