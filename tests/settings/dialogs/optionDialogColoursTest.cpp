#include "settings/dialogs/optionDialog.h"

#include "tests/settings/dialogs/OptionDialogFixture.h"
#include "tests/support/AnsweringPrompt.h"

#include <QLabel>
#include <QTest>

#include <algorithm>
#include <cstdlib>

Q_DECLARE_METATYPE(QColor AppSettings::*)

using namespace OptionDialogFixture;

using Member = QColor AppSettings::*;

/// The colours of the option dialog: its colour page, and what becomes of it.
class optionDialogColoursTest : public QObject {
    Q_OBJECT

private slots:
    void init() { loadDefaults(); }

    void everyColourStandsBesideItsLabel_data();
    void everyColourStandsBesideItsLabel();

    void theColoursAreShown();

    void aColourThatDoesNotLastSaysSo_data();
    void aColourThatDoesNotLastSaysSo();
    void withTheEditorsColoursEachSaysThatItDoesNotLast();
    void theColourChooserIsTitledAfterItsRow_data();
    void theColourChooserIsTitledAfterItsRow();
    void aColourButtonEditsItsColour_data();
    void aColourButtonEditsItsColour();
    void aCancelledColourChangesNothing();
    void thereIsNoButtonForTheKeywordColour();
    void theKeywordColourIsCarriedThrough();
    void theBackgroundButtonDerivesThePalette();
    void aTransparentChoiceStaysSo();
    void theTextButtonDerivesThePalette();
    void aCancelledPaletteColourChangesNothing();
    void theDarkPresetIsShownAndStored();
    void theDarkPresetFollowedByCancelChangesNothing();

    void editorColoursAloneShowNoMessage();
    void aPaletteColourShowsTheMessage();
};

void optionDialogColoursTest::everyColourStandsBesideItsLabel_data()
{
    QTest::addColumn<QString>("label");
    QTest::addColumn<QStringList>("suffixes");
    const auto row = [](const char *label, const char *suffixes) {
        QTest::newRow(label) << QString::fromUtf8(label) << list(suffixes);
    };
    row("ウインドウ背景と文字色", "base|text");
    row("エディタ背景と文字色", "c01|c02");
    row("選択時背景と文字色", "c04|c05");
    row("行番号欄背景と文字色", "c17|c10");
    row("カーソル行のアンダーライン色", "c03");
    row("コメント文字色", "c06");
    row("数値文字色", "c11");
    row("キーワード文字色", "c07");
    row("予約語文字色", "c08");
    row("プリプロセッサ文字色", "c13");
    row("文字列色", "c09");
    row("改行コード文字色", "c14");
    row("ファイル名文字色", "c15");
}

void optionDialogColoursTest::everyColourStandsBesideItsLabel()
{
    QFETCH(QString, label);
    QFETCH(QStringList, suffixes);
    const Shown shown;
    const auto labels = shown.dialog.findChildren<QLabel *>();
    const auto found = std::find_if(labels.begin(), labels.end(),
                                    [&](const QLabel *each) { return each->text() == label; });
    QVERIFY(found != labels.end());
    shown.turnTo(*found);
    int right = (*found)->geometry().right();
    for (const QString &suffix : suffixes) {
        for (const QString &prefix : {QStringLiteral("sample_"), QStringLiteral("pb_")}) {
            const auto *widget = shown.child(QString(prefix + suffix).toLatin1().constData());
            QVERIFY(std::abs(widget->geometry().center().y() - (*found)->geometry().center().y())
                    <= 2);
            QVERIFY(widget->geometry().left() > right);
            right = widget->geometry().right();
        }
    }
}

void optionDialogColoursTest::theColoursAreShown()
{
    const Shown shown;
    QCOMPARE(shown.sample("base"), sheet("#353535"));
    QCOMPARE(shown.sample("text"), sheet("#ffffff"));
    QCOMPARE(shown.sample("c01"), sheet("#0a1b34"));
    // Unset until somebody sets it here.
    QCOMPARE(shown.sample("c13"), sheet("#000000"));
    QCOMPARE(shown.child("pb_c01")->accessibleDescription(), QStringLiteral("#0a1b34"));
}

void optionDialogColoursTest::aColourThatDoesNotLastSaysSo_data()
{
    QTest::addColumn<QString>("expected");
    const auto row = [](const char *button, const char *tip) {
        QTest::newRow(button) << QString::fromUtf8(tip);
    };
    row("pb_c15", "#ffff00\n次回起動時に元に戻ります");
    row("pb_c13", "#000000\nこのプログラムでは表示に使わず、次回起動時に元に戻ります");
    row("pb_c10", "#aaff7f\nこのプログラムでは表示に使いません");
    row("pb_c17", "#535353\nこのプログラムでは表示に使いません");
    row("pb_c07", "#ff0000\n検索したキーワードの目印の色です");
    row("pb_c01", "#0a1b34");
}

void optionDialogColoursTest::aColourThatDoesNotLastSaysSo()
{
    QFETCH(QString, expected);
    const Shown shown;
    const QWidget *button = shown.child(QTest::currentDataTag());
    QCOMPARE(button->toolTip(), expected);
    QCOMPARE(button->accessibleDescription(),
             QString(expected).replace(QLatin1Char('\n'), QLatin1Char(' ')));
}

void optionDialogColoursTest::withTheEditorsColoursEachSaysThatItDoesNotLast()
{
    const ScratchFolder folder;
    folder.write(QStringLiteral("sarvedit.ini"), "[color]\nbackcolor=#010203\n");
    settings().load(folder.path());
    const Shown shown;
    const QString told = QStringLiteral("\nsarvedit の色が優先され、次回起動時に元に戻ります");
    QCOMPARE(shown.child("pb_c01")->toolTip(), QStringLiteral("#010203") + told);
    QCOMPARE(shown.child("pb_base")->toolTip(), QStringLiteral("#353535") + told);
}

void optionDialogColoursTest::theColourChooserIsTitledAfterItsRow_data()
{
    QTest::addColumn<QString>("title");
    const auto row = [](const char *button, const char *title) {
        QTest::newRow(button) << QString::fromUtf8(title);
    };
    row("pb_base", "ウインドウの背景色");
    row("pb_text", "ウインドウの文字色");
    row("pb_c01", "エディタの背景色");
    row("pb_c02", "エディタの文字色");
    row("pb_c03", "カーソル行のアンダーライン色");
    row("pb_c10", "行番号欄の文字色");
    row("pb_c17", "行番号欄の背景色");
    row("pb_c15", "ファイル名文字色");
}

void optionDialogColoursTest::theColourChooserIsTitledAfterItsRow()
{
    QFETCH(QString, title);
    const Shown shown;
    const AnsweringPrompt user;
    shown.click(QTest::currentDataTag());
    QCOMPARE(user.colourTitles, QStringList{title});
}

void optionDialogColoursTest::aColourButtonEditsItsColour_data()
{
    QTest::addColumn<QByteArray>("suffix");
    QTest::addColumn<Member>("member");
    QTest::newRow("c01") << QByteArray("c01") << &AppSettings::backcolor;
    QTest::newRow("c02") << QByteArray("c02") << &AppSettings::forecolor;
    QTest::newRow("c03") << QByteArray("c03") << &AppSettings::cursorcolor;
    QTest::newRow("c04") << QByteArray("c04") << &AppSettings::hlbackcolor;
    QTest::newRow("c05") << QByteArray("c05") << &AppSettings::hlforecolor;
    QTest::newRow("c06") << QByteArray("c06") << &AppSettings::commentcolor;
    QTest::newRow("c07") << QByteArray("c07") << &AppSettings::findcolor1;
    QTest::newRow("c08") << QByteArray("c08") << &AppSettings::reservecolor;
    QTest::newRow("c09") << QByteArray("c09") << &AppSettings::reteralcolor;
    QTest::newRow("c10") << QByteArray("c10") << &AppSettings::lnumforecolor;
    QTest::newRow("c11") << QByteArray("c11") << &AppSettings::valuecolor;
    QTest::newRow("c13") << QByteArray("c13") << &AppSettings::classcolor;
    QTest::newRow("c14") << QByteArray("c14") << &AppSettings::ctrlcolor;
    QTest::newRow("c15") << QByteArray("c15") << &AppSettings::fnamecolor;
    QTest::newRow("c17") << QByteArray("c17") << &AppSettings::lnumbackcolor;
}

void optionDialogColoursTest::aColourButtonEditsItsColour()
{
    QFETCH(QByteArray, suffix);
    QFETCH(Member, member);
    settings().*member = QColor(7, 8, 9);
    const Shown shown;
    QCOMPARE(shown.sample(suffix.constData()), sheet("#070809"));
    AnsweringPrompt user;
    user.colours << QColor(0x12, 0x34, 0x56);
    shown.click(QByteArray("pb_" + suffix).constData());
    QCOMPARE(user.colourQuestions, QList<QColor>{QColor(7, 8, 9)});
    QCOMPARE(shown.sample(suffix.constData()), sheet("#123456"));
    QCOMPARE(settings().*member, QColor(7, 8, 9));
    shown.ok();
    QCOMPARE((settings().*member).name(), QStringLiteral("#123456"));
}

void optionDialogColoursTest::aCancelledColourChangesNothing()
{
    const Shown shown;
    const AnsweringPrompt user;
    shown.click("pb_c01");
    QCOMPARE(user.colourQuestions.size(), 1);
    shown.ok();
    QCOMPARE(settings().backcolor.name(), QStringLiteral("#0a1b34"));
}

void optionDialogColoursTest::thereIsNoButtonForTheKeywordColour()
{
    const Shown shown;
    QVERIFY(!shown.dialog.findChild<QWidget *>(QStringLiteral("pb_c12")));
    QVERIFY(!shown.dialog.findChild<QWidget *>(QStringLiteral("pb_c16")));
}

void optionDialogColoursTest::theKeywordColourIsCarriedThrough()
{
    settings().keywordcolor = QColor(1, 2, 3);
    const Shown shown;
    const AnsweringPrompt user;
    shown.click("pb_dark");
    shown.ok();
    QCOMPARE(settings().keywordcolor, QColor(1, 2, 3));
}

void optionDialogColoursTest::theBackgroundButtonDerivesThePalette()
{
    const Shown shown;
    AnsweringPrompt user;
    user.colours << QColor(10, 20, 30);
    shown.click("pb_base");
    QCOMPARE(user.colourQuestions, QList<QColor>{QColor(0x35, 0x35, 0x35)});
    QCOMPARE(shown.sample("base"), sheet("#0a141e"));
    shown.ok();
    QCOMPARE(settings().paletteBase, QColor(10, 20, 30, 255));
    QCOMPARE(settings().paletteWindow, QColor(10, 20, 30, 170));
    QCOMPARE(settings().paletteAlternateBase, QColor(10, 20, 30, 170));
    QCOMPARE(settings().paletteButton, QColor(10, 20, 30, 204));
    QCOMPARE(settings().paletteText, QColor(Qt::white));
}

void optionDialogColoursTest::aTransparentChoiceStaysSo()
{
    const Shown shown;
    AnsweringPrompt user;
    user.colours << QColor(10, 20, 30, 200) << QColor(40, 50, 60, 100);
    shown.click("pb_base");
    shown.click("pb_text");
    shown.ok();
    QCOMPARE(settings().paletteBase, QColor(10, 20, 30, 200));
    QCOMPARE(settings().paletteWindow, QColor(10, 20, 30, 134));
    QCOMPARE(settings().paletteAlternateBase, QColor(10, 20, 30, 134));
    QCOMPARE(settings().paletteButton, QColor(10, 20, 30, 160));
    for (const Member member : {&AppSettings::paletteWindowText, &AppSettings::paletteToolTipBase,
                                &AppSettings::paletteToolTipText, &AppSettings::paletteText,
                                &AppSettings::paletteButtonText})
        QCOMPARE(settings().*member, QColor(40, 50, 60, 100));
    QCOMPARE(settings().paletteBrightText, QColor(60, 0, 0, 255));
}

void optionDialogColoursTest::theTextButtonDerivesThePalette()
{
    settings().paletteWindowText = QColor(5, 6, 7);
    const Shown shown;
    AnsweringPrompt user;
    user.colours << QColor(10, 20, 30);
    shown.click("pb_text");
    QCOMPARE(user.colourQuestions, QList<QColor>{QColor(5, 6, 7)});
    QCOMPARE(shown.sample("text"), sheet("#0a141e"));
    shown.ok();
    for (const Member member : {&AppSettings::paletteWindowText, &AppSettings::paletteToolTipBase,
                                &AppSettings::paletteToolTipText, &AppSettings::paletteText,
                                &AppSettings::paletteButtonText})
        QCOMPARE(settings().*member, QColor(10, 20, 30));
    QCOMPARE(settings().paletteBrightText, QColor(30, 0, 0));
}

void optionDialogColoursTest::aCancelledPaletteColourChangesNothing()
{
    const Shown shown;
    const AnsweringPrompt user;
    shown.click("pb_base");
    shown.click("pb_text");
    shown.ok();
    QCOMPARE(user.colourQuestions.size(), 2);
    QVERIFY(user.messages.isEmpty());
    QCOMPARE(settings().paletteWindow, QColor(0x35, 0x35, 0x35));
    QCOMPARE(settings().paletteBrightText, QColor(Qt::red));
}

void optionDialogColoursTest::theDarkPresetIsShownAndStored()
{
    const Shown shown;
    const AnsweringPrompt user;
    shown.click("pb_dark");
    QCOMPARE(shown.sample("c01"), sheet("#21212b"));
    QCOMPARE(shown.sample("base"), sheet("#414141"));
    shown.ok();
    QCOMPARE(settings().backcolor, QColor(0x21, 0x21, 0x2b));
    QCOMPARE(settings().paletteButton, QColor(0x41, 0x41, 0x41));
    QCOMPARE(user.messages.size(), 1);
}

void optionDialogColoursTest::theDarkPresetFollowedByCancelChangesNothing()
{
    const Shown shown;
    const AnsweringPrompt user;
    shown.click("pb_dark");
    shown.cancel();
    QCOMPARE(settings().backcolor.name(), QStringLiteral("#0a1b34"));
    QCOMPARE(settings().paletteWindow.name(), QStringLiteral("#353535"));
    QVERIFY(!settings().classcolor.isValid());
    QVERIFY(user.messages.isEmpty());
}

void optionDialogColoursTest::editorColoursAloneShowNoMessage()
{
    const Shown shown;
    AnsweringPrompt user;
    user.colours << QColor(1, 2, 3);
    shown.click("pb_c02");
    shown.ok();
    QCOMPARE(settings().forecolor, QColor(1, 2, 3));
    QVERIFY(user.messages.isEmpty());
}

void optionDialogColoursTest::aPaletteColourShowsTheMessage()
{
    const Shown shown;
    AnsweringPrompt user;
    user.colours << QColor(1, 2, 3);
    shown.click("pb_text");
    shown.ok();
    QCOMPARE(user.messages.size(), 1);
    const auto &message = user.messages.first();
    QCOMPARE(message.icon, QMessageBox::Information);
    QCOMPARE(message.title, QStringLiteral("Palette Change"));
    QCOMPARE(message.text, QStringLiteral("色の変更は次回プログラム起動で有効です"));
    QCOMPARE(message.buttons, QMessageBox::StandardButtons(QMessageBox::Ok));
    QVERIFY(!shown.dialog.isVisible());
}

QTEST_MAIN(optionDialogColoursTest)
#include "optionDialogColoursTest.moc"
