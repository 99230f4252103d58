#include "mainwindow/AssistNotes.h"

#include "settings/AppSettings.h"
#include "settings/KeywordHistory.h"
#include "settings/dialogs/InputFolderDialog.h"
#include "tests/support/Patience.h"
#include "tests/support/ScratchFolder.h"
#include "view/AssistTextEdit.h"
#include "view/UserAssistWindow.h"

#include <QApplication>
#include <QMessageBox>
#include <QTest>
#include <QTimer>
#include <QToolButton>

#include <memory>

namespace {

const QString kTitle = QStringLiteral("追加する検索パス");
const QString kHelp = QStringLiteral("input_追加する検索パス.help");
const QByteArray kTwoNotes = "[1_keys]\nwindow=450, 0, 200, 100\n1=Enter\n"
                             "[2_path]\nwindow=450, 110, 200, 100\n1=C:/\n";

QList<UserAssistWindow *> visibleNotes()
{
    QList<UserAssistWindow *> notes;
    for (QWidget *widget : QApplication::topLevelWidgets()) {
        auto *note = qobject_cast<UserAssistWindow *>(widget);
        if (note && note->isVisible())
            notes.append(note);
    }
    return notes;
}

/// Answers every message box and keeps their texts.
class MessageBoxAnswers {
public:
    MessageBoxAnswers()
    {
        QObject::connect(&m_timer, &QTimer::timeout, [this]() {
            auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
            if (!box)
                return;
            texts.append(box->text());
            box->accept();
        });
        m_timer.start(10);
    }

    QStringList texts;

private:
    QTimer m_timer;
};

} // namespace

class AssistNotesTest : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void f1ShowsTheNotesAndHidesThemAgain();
    void theButtonDoesWhatF1Does();
    void f1InANoteHidesThem();
    void theNotesGoWithTheDialog();
    void notesThatOutliveTheirWindowAreHarmless();
    void aMissingFileSaysNothing();
    void aFileWithoutNotesSaysNothing();
    void aBrokenFileIsReportedEachTime();
    void theFileMayComeLater();

private:
    void write(const QByteArray &content) { m_folder->write(kHelp, content); }
    void pressF1() const;
    void clickHelp() const
    {
        QTest::mouseClick(m_dialog->findChild<QToolButton *>(QStringLiteral("btnHelp")),
                          Qt::LeftButton);
    }

    std::unique_ptr<ScratchFolder> m_folder;
    std::unique_ptr<InputFolderDialog> m_dialog;
};

void AssistNotesTest::init()
{
    m_folder = std::make_unique<ScratchFolder>();
    AppSettings::instance().load(m_folder->path());
    AssistNotes::install();
    m_dialog = std::make_unique<InputFolderDialog>(QString(), kTitle, QStringLiteral("SearchPath"),
                                                   m_folder->path());
    m_dialog->show();
    m_dialog->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_dialog.get(), kPatienceMilliseconds));
}

void AssistNotesTest::cleanup()
{
    m_dialog.reset();
    QVERIFY(visibleNotes().isEmpty());
    AssistWindow::setFactory({});
}

void AssistNotesTest::pressF1() const
{
    // The offscreen platform makes every new window the active one.
    m_dialog->activateWindow();
    QTRY_COMPARE_WITH_TIMEOUT(QApplication::activeWindow(), m_dialog.get(), kPatienceMilliseconds);
    QTest::keyClick(m_dialog->findChild<QWidget *>(QStringLiteral("lineEdit")), Qt::Key_F1);
}

void AssistNotesTest::f1ShowsTheNotesAndHidesThemAgain()
{
    write(kTwoNotes);
    pressF1();
    // A button that is pressed by its key goes down visibly, and acts then.
    QTRY_COMPARE_WITH_TIMEOUT(visibleNotes().size(), 2, kPatienceMilliseconds);
    QStringList texts;
    for (const UserAssistWindow *note : visibleNotes()) {
        QCOMPARE(note->parentWidget(), m_dialog.get());
        texts.append(note->textEdit()->toPlainText());
    }
    texts.sort();
    QCOMPARE(texts, QStringList({QStringLiteral("C:/"), QStringLiteral("Enter")}));
    pressF1();
    QTRY_VERIFY_WITH_TIMEOUT(visibleNotes().isEmpty(), kPatienceMilliseconds);
    pressF1();
    QTRY_COMPARE_WITH_TIMEOUT(visibleNotes().size(), 2, kPatienceMilliseconds);
}

void AssistNotesTest::theButtonDoesWhatF1Does()
{
    write(kTwoNotes);
    clickHelp();
    QCOMPARE(visibleNotes().size(), 2);
    clickHelp();
    QTRY_VERIFY_WITH_TIMEOUT(visibleNotes().isEmpty(), kPatienceMilliseconds);
}

void AssistNotesTest::f1InANoteHidesThem()
{
    write(kTwoNotes);
    clickHelp();
    QCOMPARE(visibleNotes().size(), 2);
    QTest::keyClick(visibleNotes().first(), Qt::Key_F1);
    QTRY_VERIFY_WITH_TIMEOUT(visibleNotes().isEmpty(), kPatienceMilliseconds);
    clickHelp();
    QCOMPARE(visibleNotes().size(), 2);
}

void AssistNotesTest::theNotesGoWithTheDialog()
{
    write(kTwoNotes);
    clickHelp();
    QCOMPARE(visibleNotes().size(), 2);
    m_dialog.reset();
    QVERIFY(visibleNotes().isEmpty());
}

void AssistNotesTest::notesThatOutliveTheirWindowAreHarmless()
{
    write(kTwoNotes);
    auto window = std::make_unique<QWidget>();
    window->show();
    const AssistNotes notes(m_folder->filePath(kHelp), window.get());
    QVERIFY(!notes.isEmpty());
    window.reset();
    QVERIFY(notes.isEmpty());
}

void AssistNotesTest::aMissingFileSaysNothing()
{
    MessageBoxAnswers answers;
    clickHelp();
    clickHelp();
    QVERIFY(visibleNotes().isEmpty());
    QCOMPARE(answers.texts, QStringList());
}

void AssistNotesTest::aFileWithoutNotesSaysNothing()
{
    MessageBoxAnswers answers;
    write("; nothing yet\n");
    clickHelp();
    QVERIFY(visibleNotes().isEmpty());
    QCOMPARE(answers.texts, QStringList());
}

void AssistNotesTest::aBrokenFileIsReportedEachTime()
{
    MessageBoxAnswers answers;
    write("[1_keys]\nwindow=0, 0, 100, 100\n[2_path]\n1=x\n");
    const QString told = QStringLiteral("window設定が見つかりません");
    clickHelp();
    QCOMPARE(answers.texts, QStringList({told}));
    QVERIFY(visibleNotes().isEmpty());
    clickHelp();
    QCOMPARE(answers.texts, QStringList({told, told}));
}

void AssistNotesTest::theFileMayComeLater()
{
    clickHelp();
    QVERIFY(visibleNotes().isEmpty());
    write(kTwoNotes);
    clickHelp();
    QCOMPARE(visibleNotes().size(), 2);
}

QTEST_MAIN(AssistNotesTest)
#include "AssistNotesTest.moc"
