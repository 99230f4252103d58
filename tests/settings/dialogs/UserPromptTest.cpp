#include "settings/dialogs/prompts/UserPrompt.h"

#include "tests/support/AnsweringPrompt.h"
#include "tests/support/ScratchFolder.h"

#include <QApplication>
#include <QColorDialog>
#include <QFileDialog>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QTest>
#include <QTimer>

namespace {

/// Calls act with the modal dialog, of this class, that comes up next, and closes
/// it when act did not get that far.
template <typename Dialog, typename Act> void whenShown(const Act &act)
{
    QTimer::singleShot(0, qApp, [act] {
        auto *dialog = qobject_cast<Dialog *>(QApplication::activeModalWidget());
        if (!dialog)
            qFatal("no dialog of this class came up");
        const QPointer<Dialog> guard(dialog);
        act(dialog);
        if (guard && guard->isVisible())
            guard->reject();
    });
}

void enter(QFileDialog *dialog, const QString &path)
{
    auto *name = dialog->findChild<QLineEdit *>(QStringLiteral("fileNameEdit"));
    name->setText(path);
    QTest::keyClick(name, Qt::Key_Return);
}

} // namespace

class UserPromptTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();

    void aReplacementAnswersAsLongAsItLives();
    void aMessageShowsWhatItIsGiven();
    void theDefaultButtonAnswersReturn();
    void escapeAnswersNoToAQuestion();
    void aKeyThatIsHeldDownAnswersNothing_data();
    void aKeyThatIsHeldDownAnswersNothing();
    void aChosenFileIsReturned();
    void aCancelledFileIsEmpty();
    void aFolderIsChosenAmongFoldersOnly();
    void aCancelledFolderIsEmpty();
    void theColourChooserHasTheTitleAndStartsOnTheColour();
    void aChosenColourIsOpaque();
    void aCancelledColourIsInvalid();
};

void UserPromptTest::initTestCase()
{
    // The desktop's own choosers cannot be answered from here.
    QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
}

void UserPromptTest::aReplacementAnswersAsLongAsItLives()
{
    UserPrompt *toolkits = &UserPrompt::current();
    {
        AnsweringPrompt user;
        QCOMPARE(&UserPrompt::current(), &user);
        {
            AnsweringPrompt other;
            QCOMPARE(&UserPrompt::current(), &other);
        }
        QCOMPARE(&UserPrompt::current(), &user);
    }
    QCOMPARE(&UserPrompt::current(), toolkits);
}

void UserPromptTest::aMessageShowsWhatItIsGiven()
{
    whenShown<QMessageBox>([](QMessageBox *box) {
        QCOMPARE(box->windowTitle(), QStringLiteral("sarvik"));
        QCOMPARE(box->text(), QStringLiteral("よろしいですか？"));
        QCOMPARE(box->icon(), QMessageBox::Question);
        QCOMPARE(box->standardButtons(), QMessageBox::Yes | QMessageBox::No);
        QTest::mouseClick(box->button(QMessageBox::No), Qt::LeftButton);
    });
    const auto answer = UserPrompt::current().message(
        nullptr,
        {QMessageBox::Question, QStringLiteral("sarvik"), QStringLiteral("よろしいですか？"),
         QMessageBox::Yes | QMessageBox::No, QMessageBox::Yes});
    QCOMPARE(answer, QMessageBox::No);
}

void UserPromptTest::theDefaultButtonAnswersReturn()
{
    whenShown<QMessageBox>([](QMessageBox *box) { QTest::keyClick(box, Qt::Key_Return); });
    const auto answer = UserPrompt::current().message(
        nullptr,
        {QMessageBox::Question, QStringLiteral("sarvik"), QStringLiteral("?"),
         QMessageBox::Yes | QMessageBox::No, QMessageBox::Yes});
    QCOMPARE(answer, QMessageBox::Yes);
}

void UserPromptTest::escapeAnswersNoToAQuestion()
{
    whenShown<QMessageBox>([](QMessageBox *box) { QTest::keyClick(box, Qt::Key_Escape); });
    const auto answer = UserPrompt::current().message(
        nullptr,
        {QMessageBox::Question, QStringLiteral("sarvik"), QStringLiteral("?"),
         QMessageBox::Yes | QMessageBox::No, QMessageBox::Yes});
    QCOMPARE(answer, QMessageBox::No);
}

void UserPromptTest::aKeyThatIsHeldDownAnswersNothing_data()
{
    QTest::addColumn<Qt::Key>("key");
    QTest::newRow("Return") << Qt::Key_Return;
    QTest::newRow("Enter") << Qt::Key_Enter;
    QTest::newRow("Escape") << Qt::Key_Escape;
}

void UserPromptTest::aKeyThatIsHeldDownAnswersNothing()
{
    QFETCH(Qt::Key, key);
    bool answered = true;
    whenShown<QMessageBox>([key, &answered](QMessageBox *box) {
        const QPointer<QMessageBox> guard(box);
        for (QWidget *target :
             {static_cast<QWidget *>(box), static_cast<QWidget *>(box->button(QMessageBox::Yes))}) {
            for (const auto type : {QEvent::KeyPress, QEvent::KeyRelease}) {
                QKeyEvent repeat(type, key, Qt::NoModifier, QString(), true);
                if (guard)
                    QApplication::sendEvent(target, &repeat);
            }
        }
        answered = !guard || !box->isVisible();
        if (!answered)
            QTest::mouseClick(box->button(QMessageBox::No), Qt::LeftButton);
    });
    UserPrompt::current().message(nullptr,
                                  {QMessageBox::Question, QStringLiteral("sarvik"),
                                   QStringLiteral("?"), QMessageBox::Yes | QMessageBox::No,
                                   QMessageBox::Yes});
    QVERIFY(!answered);
}

void UserPromptTest::aChosenFileIsReturned()
{
    const ScratchFolder folder;
    const QString file = folder.write(QStringLiteral("editor.exe"), "x");
    whenShown<QFileDialog>([&](QFileDialog *dialog) {
        QCOMPARE(dialog->windowTitle(), QStringLiteral("title"));
        QCOMPARE(dialog->directory().path() + QLatin1Char('/'), folder.path());
        QCOMPARE(
            dialog->nameFilters(),
            QStringList({QStringLiteral("Exe Files (*.exe)"), QStringLiteral("All Files (*)")}));
        enter(dialog, file);
    });
    QCOMPARE(UserPrompt::current().chooseFile(nullptr, QStringLiteral("title"), folder.path(),
                                              QStringLiteral("Exe Files (*.exe);;All Files (*)")),
             file);
}

void UserPromptTest::aCancelledFileIsEmpty()
{
    const ScratchFolder folder;
    whenShown<QFileDialog>([](QFileDialog *dialog) { dialog->reject(); });
    QCOMPARE(UserPrompt::current().chooseFile(nullptr, QString(), folder.path(), QString()),
             QString());
}

void UserPromptTest::aFolderIsChosenAmongFoldersOnly()
{
    const ScratchFolder folder;
    const QString inner = folder.makeFolder(QStringLiteral("inner"));
    whenShown<QFileDialog>([&](QFileDialog *dialog) {
        QCOMPARE(dialog->windowTitle(), QStringLiteral("title"));
        QVERIFY(dialog->testOption(QFileDialog::ShowDirsOnly));
        enter(dialog, inner);
    });
    QCOMPARE(UserPrompt::current().chooseFolder(nullptr, QStringLiteral("title"), folder.path())
                 + QLatin1Char('/'),
             inner);
}

void UserPromptTest::aCancelledFolderIsEmpty()
{
    const ScratchFolder folder;
    whenShown<QFileDialog>([](QFileDialog *dialog) { dialog->reject(); });
    QCOMPARE(UserPrompt::current().chooseFolder(nullptr, QString(), folder.path()), QString());
}

void UserPromptTest::theColourChooserHasTheTitleAndStartsOnTheColour()
{
    whenShown<QColorDialog>([](QColorDialog *dialog) {
        QCOMPARE(dialog->currentColor().name(), QStringLiteral("#123456"));
        QCOMPARE(dialog->windowTitle(), QStringLiteral("文字色"));
        dialog->accept();
    });
    const QColor chosen = UserPrompt::current().chooseColour(nullptr, QStringLiteral("文字色"),
                                                             QColor(0x12, 0x34, 0x56));
    QCOMPARE(chosen.name(), QStringLiteral("#123456"));
}

void UserPromptTest::aChosenColourIsOpaque()
{
    whenShown<QColorDialog>([](QColorDialog *dialog) { dialog->accept(); });
    const QColor chosen =
        UserPrompt::current().chooseColour(nullptr, QString(), QColor(1, 2, 3, 170));
    QCOMPARE(chosen.alpha(), 255);
}

void UserPromptTest::aCancelledColourIsInvalid()
{
    whenShown<QColorDialog>([](QColorDialog *dialog) { dialog->reject(); });
    QVERIFY(!UserPrompt::current().chooseColour(nullptr, QString(), QColor(1, 2, 3)).isValid());
}

QTEST_MAIN(UserPromptTest)
#include "UserPromptTest.moc"
