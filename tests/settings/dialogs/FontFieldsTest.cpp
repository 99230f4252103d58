#include "settings/dialogs/FontFields.h"

#include <QCheckBox>
#include <QFontComboBox>
#include <QLineEdit>
#include <QSpinBox>
#include <QTest>

namespace {

struct Form {
    explicit Form(const QFont &font) : fields(&family, &size, &bold, font) { }

    QFontComboBox family;
    QSpinBox size;
    QCheckBox bold;
    FontFields fields;
};

QFont weighted(int weight)
{
    QFont font(QStringLiteral("DejaVu Sans Mono"), 12);
    font.setWeight(weight);
    return font;
}

} // namespace

class FontFieldsTest : public QObject {
    Q_OBJECT

private slots:
    void theWidgetsShowTheFont();
    void boldBeginsAtWeight58_data();
    void boldBeginsAtWeight58();
    void theFontIsThatOfTheWidgets();
    void aFontThatIsNotInstalledIsShownAndKept();
    void aTypedFamilyIsTakenWhenItIsInstalled();
    void aTypedFamilyThatIsNotInstalledChangesNothing();
    void aTypedFamilyThatIsNotInstalledGivesWayToTheOneBefore_data();
    void aTypedFamilyThatIsNotInstalledGivesWayToTheOneBefore();
    void aSizeBeyondTheRangeIsKept();
};

void FontFieldsTest::theWidgetsShowTheFont()
{
    const Form form(QFont(QStringLiteral("DejaVu Sans Mono"), 13));
    QCOMPARE(form.family.currentText(), QStringLiteral("DejaVu Sans Mono"));
    QCOMPARE(form.size.value(), 13);
    QVERIFY(!form.bold.isChecked());
}

void FontFieldsTest::boldBeginsAtWeight58_data()
{
    QTest::addColumn<int>("weight");
    QTest::addColumn<bool>("bold");
    QTest::addColumn<int>("stored");
    QTest::newRow("normal") << 50 << false << 50;
    QTest::newRow("57") << 57 << false << 50;
    QTest::newRow("58") << 58 << true << 75;
    QTest::newRow("bold") << 75 << true << 75;
}

void FontFieldsTest::boldBeginsAtWeight58()
{
    QFETCH(int, weight);
    QFETCH(bool, bold);
    QFETCH(int, stored);
    const Form form(weighted(weight));
    QCOMPARE(form.bold.isChecked(), bold);
    QCOMPARE(form.fields.font().weight(), stored);
}

void FontFieldsTest::theFontIsThatOfTheWidgets()
{
    Form form(QFont(QStringLiteral("DejaVu Sans Mono"), 13));
    form.family.setCurrentFont(QFont(QStringLiteral("DejaVu Sans")));
    form.size.setValue(20);
    form.bold.setChecked(true);
    const QFont font = form.fields.font();
    QCOMPARE(font.family(), QStringLiteral("DejaVu Sans"));
    QCOMPARE(font.pointSize(), 20);
    QCOMPARE(font.weight(), 75);
}

void FontFieldsTest::aFontThatIsNotInstalledIsShownAndKept()
{
    Form form(QFont(QStringLiteral("No Such Font"), 13));
    QCOMPARE(form.family.currentText(), QStringLiteral("No Such Font"));
    form.size.setValue(20);
    QCOMPARE(form.fields.font().family(), QStringLiteral("No Such Font"));
    QCOMPARE(form.fields.font().pointSize(), 20);
}

void FontFieldsTest::aTypedFamilyIsTakenWhenItIsInstalled()
{
    Form form(QFont(QStringLiteral("No Such Font"), 13));
    form.family.setEditText(QStringLiteral("dejavu sans"));
    QCOMPARE(form.fields.font().family(), QStringLiteral("DejaVu Sans"));
}

void FontFieldsTest::aTypedFamilyThatIsNotInstalledChangesNothing()
{
    Form form(QFont(QStringLiteral("DejaVu Sans Mono"), 13));
    form.family.setEditText(QStringLiteral("Nonsense"));
    QCOMPARE(form.fields.font().family(), QStringLiteral("DejaVu Sans Mono"));
}

void FontFieldsTest::aTypedFamilyThatIsNotInstalledGivesWayToTheOneBefore_data()
{
    QTest::addColumn<QString>("shown");
    QTest::addColumn<QString>("chosen");
    QTest::addColumn<QString>("expected");
    const QString mono = QStringLiteral("DejaVu Sans Mono");
    const QString none = QStringLiteral("No Such Font");
    QTest::newRow("the shown one") << mono << QString() << mono;
    QTest::newRow("a shown one that is not installed") << none << QString() << none;
    QTest::newRow("one that was chosen meanwhile") << none << mono << mono;
}

void FontFieldsTest::aTypedFamilyThatIsNotInstalledGivesWayToTheOneBefore()
{
    QFETCH(QString, shown);
    QFETCH(QString, chosen);
    QFETCH(QString, expected);
    Form form(QFont(shown, 13));
    QLineEdit *field = form.family.lineEdit();
    const auto type = [field](const QString &text) {
        field->selectAll();
        QTest::keyClicks(field, text);
        QTest::keyClick(field, Qt::Key_Return);
    };
    if (!chosen.isEmpty())
        type(chosen);
    type(QStringLiteral("Nonsense"));
    QCOMPARE(form.family.currentText(), expected);
    QCOMPARE(form.fields.font().family(), expected);
}

void FontFieldsTest::aSizeBeyondTheRangeIsKept()
{
    Form form(QFont(QStringLiteral("DejaVu Sans Mono"), 500));
    QCOMPARE(form.size.value(), 500);
    QCOMPARE(form.fields.font().pointSize(), 500);
}

QTEST_MAIN(FontFieldsTest)
#include "FontFieldsTest.moc"
