#include "mainwindow/PastedLine.h"

#include <QApplication>
#include <QClipboard>
#include <QDropEvent>
#include <QLineEdit>
#include <QMimeData>
#include <QtTest>

#include <memory>

class PastedLineTest : public QObject {
    Q_OBJECT

private slots:
    void init();

    void theFirstLineThatIsNotEmptyIsTaken_data();
    void theFirstLineThatIsNotEmptyIsTaken();
    void textsOfSeveralLinesAreLeftOut();
    void aPastedLineHasNoEnd_data();
    void aPastedLineHasNoEnd();
    void aPasteReplacesTheSelection();
    void aPasteIsUndoneInOneStep();
    void whatWasTypedBeforeStaysWhenAPasteIsUndone();
    void lineEndsAloneAreAnEmptyPaste();
    void aTextThatIsSetKeepsItsLineEnds();
    void aLineEndThatUndoingBringsBackStays();
    void everyoneIsToldOfTheLineInTheEnd();
    void aDroppedLineHasNoEnd();

private:
    static void paste(const char *text);

    std::unique_ptr<QLineEdit> m_field;
};

void PastedLineTest::init()
{
    m_field = std::make_unique<QLineEdit>();
    new PastedLine(m_field.get());
}

void PastedLineTest::paste(const char *text)
{
    QApplication::clipboard()->setText(QString::fromUtf8(text));
}

void PastedLineTest::theFirstLineThatIsNotEmptyIsTaken_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("line");
    QTest::newRow("no end") << QStringLiteral("TODO") << QStringLiteral("TODO");
    QTest::newRow("LF") << QStringLiteral("TODO\n") << QStringLiteral("TODO");
    QTest::newRow("CR LF") << QStringLiteral("TODO\r\n") << QStringLiteral("TODO");
    QTest::newRow("CR") << QStringLiteral("TODO\r") << QStringLiteral("TODO");
    QTest::newRow("blanks stay") << QStringLiteral(" a b \n") << QStringLiteral(" a b ");
    QTest::newRow("two lines") << QStringLiteral("one\ntwo\n") << QStringLiteral("one");
    QTest::newRow("empty lines first") << QStringLiteral("\r\n\none\n") << QStringLiteral("one");
    QTest::newRow("nothing else") << QStringLiteral("\r\n\n") << QString();
    QTest::newRow("nothing") << QString() << QString();
}

void PastedLineTest::theFirstLineThatIsNotEmptyIsTaken()
{
    QFETCH(QString, text);
    QTEST(PastedLine::firstLine(text), "line");
}

void PastedLineTest::textsOfSeveralLinesAreLeftOut()
{
    QCOMPARE(PastedLine::singleLines({QStringLiteral("a"), QStringLiteral("b\n"),
                                      QStringLiteral("c\rd"), QStringLiteral("e f")}),
             (QStringList{QStringLiteral("a"), QStringLiteral("e f")}));
}

void PastedLineTest::aPastedLineHasNoEnd_data()
{
    theFirstLineThatIsNotEmptyIsTaken_data();
}

void PastedLineTest::aPastedLineHasNoEnd()
{
    QFETCH(QString, text);
    QFETCH(QString, line);
    m_field->setText(QStringLiteral("[]"));
    m_field->setCursorPosition(1);
    QApplication::clipboard()->setText(text);
    QTest::keyClick(m_field.get(), Qt::Key_V, Qt::ControlModifier);
    QCOMPARE(m_field->text(), QStringLiteral("[%1]").arg(line));
    QCOMPARE(m_field->cursorPosition(), 1 + line.size());
}

void PastedLineTest::aPasteReplacesTheSelection()
{
    m_field->setText(QStringLiteral("a old b"));
    m_field->setSelection(2, 3);
    paste("new\n");
    m_field->paste();
    QCOMPARE(m_field->text(), QStringLiteral("a new b"));
}

void PastedLineTest::aPasteIsUndoneInOneStep()
{
    m_field->setText(QStringLiteral("a old b"));
    m_field->setSelection(2, 3);
    paste("new\n");
    m_field->paste();
    m_field->undo();
    QCOMPARE(m_field->text(), QStringLiteral("a old b"));
    QVERIFY(!m_field->isUndoAvailable());
    m_field->redo();
    QCOMPARE(m_field->text(), QStringLiteral("a new b"));
}

void PastedLineTest::whatWasTypedBeforeStaysWhenAPasteIsUndone()
{
    QTest::keyClicks(m_field.get(), QStringLiteral("ab"));
    paste("c\n");
    m_field->paste();
    QCOMPARE(m_field->text(), QStringLiteral("abc"));
    m_field->undo();
    QCOMPARE(m_field->text(), QStringLiteral("ab"));
}

void PastedLineTest::lineEndsAloneAreAnEmptyPaste()
{
    m_field->setText(QStringLiteral("kept"));
    m_field->selectAll();
    paste("\n\n");
    m_field->paste();
    QCOMPARE(m_field->text(), QString());
}

void PastedLineTest::aTextThatIsSetKeepsItsLineEnds()
{
    const QString text = QStringLiteral("one\ntwo\n");
    QApplication::clipboard()->setText(text);
    m_field->setText(text);
    QCOMPARE(m_field->text(), text);
    QTest::keyClicks(m_field.get(), QStringLiteral("x"));
    QCOMPARE(m_field->text(), text + QStringLiteral("x"));
}

void PastedLineTest::aLineEndThatUndoingBringsBackStays()
{
    m_field->setText(QStringLiteral("one\n"));
    paste("one\n");
    QTest::keyClick(m_field.get(), Qt::Key_Backspace);
    QCOMPARE(m_field->text(), QStringLiteral("one"));
    m_field->undo();
    QCOMPARE(m_field->text(), QStringLiteral("one\n"));
}

void PastedLineTest::everyoneIsToldOfTheLineInTheEnd()
{
    QString seen;
    connect(m_field.get(), &QLineEdit::textChanged, this, [&] { seen = m_field->text(); });
    paste("line\n");
    m_field->paste();
    QCOMPARE(seen, QStringLiteral("line"));
}

void PastedLineTest::aDroppedLineHasNoEnd()
{
    QTest::keyClicks(m_field.get(), QStringLiteral("abc"));
    m_field->show();
    QMimeData data;
    data.setText(QStringLiteral("x\r\ny"));
    const QPoint behind(m_field->width() - 1, m_field->height() / 2);
    QDragEnterEvent enter(behind, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(m_field.get(), &enter);
    QVERIFY(enter.isAccepted());
    QDropEvent drop(behind, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(m_field.get(), &drop);
    QVERIFY(drop.isAccepted());
    QCOMPARE(m_field->text(), QStringLiteral("abcx"));
}

QTEST_MAIN(PastedLineTest)
#include "PastedLineTest.moc"
