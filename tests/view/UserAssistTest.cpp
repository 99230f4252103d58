#include "view/UserAssist.h"

#include "settings/AppSettings.h"
#include "settings/KeywordHistory.h"
#include "tests/support/AnsweringPrompt.h"
#include "tests/support/Patience.h"
#include "tests/support/ScratchFolder.h"
#include "view/AssistTextEdit.h"
#include "view/UserAssistWindow.h"

#include <QApplication>
#include <QDialog>
#include <QSignalSpy>
#include <QTest>

#include <memory>
#include <random>

class UserAssistTest : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void eachGroupHasItsWindowInOrder();
    void theWindowsAreShown();
    void blanksAroundThePathDoNotCount();
    void aMissingFileShowsNothing();
    void theRequestToCloseIsRelayed();
    void allCloseClosesEveryWindow();
    void closedWindowsAreHeardNoMore();
    void allCloseTwiceIsHarmless();
    void aGroupWithoutAWindowIsReported();
    void itselfIsNeverSeen();
    void deletingItClosesItsWindows();
    void itMayBeDeletedWhenANoteAsksForIt();
    void itGoesWithItsParent();
    void everyWindowFollowsTheParent();
    void anyFileIsSurvived_data();
    void anyFileIsSurvived();

private:
    std::unique_ptr<ScratchFolder> m_folder;
    std::unique_ptr<QDialog> m_parent;

    QString write(const QByteArray &content) const;
};

namespace {

QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

const QByteArray kTwoNotes = "[b]\nwindow=10, 20, 200, 100\n1=second\n"
                             "[a]\nwindow=30, 40, 210, 110\n1=first\n";

int visibleNotes()
{
    int count = 0;
    for (const QWidget *widget : QApplication::topLevelWidgets())
        count += qobject_cast<const UserAssistWindow *>(widget) && widget->isVisible() ? 1 : 0;
    return count;
}

/// Keeps how many notes were seen behind the message.
class CountingPrompt : public AnsweringPrompt {
public:
    int notesBehind = -1;

    QMessageBox::StandardButton message(QWidget *parent, const Message &message) override
    {
        notesBehind = visibleNotes();
        return AnsweringPrompt::message(parent, message);
    }
};

} // namespace

void UserAssistTest::init()
{
    m_folder = std::make_unique<ScratchFolder>();
    AppSettings::instance().load(m_folder->path());
    m_parent = std::make_unique<QDialog>();
    m_parent->setGeometry(100, 120, 200, 200);
    m_parent->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_parent.get(), kPatienceMilliseconds));
}

void UserAssistTest::cleanup()
{
    m_parent.reset();
    QCOMPARE(visibleNotes(), 0);
}

QString UserAssistTest::write(const QByteArray &content) const
{
    return m_folder->write(text("a.help"), content);
}

void UserAssistTest::eachGroupHasItsWindowInOrder()
{
    const UserAssist assist(write(kTwoNotes), m_parent.get());
    const std::vector<UserAssistWindow *> windows = assist.windows();
    QCOMPARE(windows.size(), std::size_t(2));
    QCOMPARE(windows[0]->textEdit()->toPlainText(), text("first"));
    QCOMPARE(windows[1]->textEdit()->toPlainText(), text("second"));
    QCOMPARE(windows[0]->size(), QSize(210, 110));
}

void UserAssistTest::theWindowsAreShown()
{
    const UserAssist assist(write(kTwoNotes), m_parent.get());
    QCOMPARE(visibleNotes(), 2);
}

void UserAssistTest::blanksAroundThePathDoNotCount()
{
    const UserAssist assist(text(" \t") + write(kTwoNotes) + text(" \n"), m_parent.get());
    QCOMPARE(assist.windows().size(), std::size_t(2));
    assist.windows().front()->resize(220, 120);
    QTRY_VERIFY_WITH_TIMEOUT(m_folder->read(text("a.help")).contains("window=30, 40, 220, 120"),
                             kPatienceMilliseconds);
}

void UserAssistTest::aMissingFileShowsNothing()
{
    const UserAssist assist(m_folder->filePath(text("none.help")), m_parent.get());
    QVERIFY(assist.windows().empty());
}

void UserAssistTest::theRequestToCloseIsRelayed()
{
    const UserAssist assist(write(kTwoNotes), m_parent.get());
    QSignalSpy asked(&assist, &UserAssist::UserAssistClose);
    for (UserAssistWindow *window : assist.windows())
        QTest::keyClick(window, Qt::Key_Escape);
    QCOMPARE(asked.count(), 2);
    QCOMPARE(visibleNotes(), 2);
}

void UserAssistTest::allCloseClosesEveryWindow()
{
    UserAssist assist(write(kTwoNotes), m_parent.get());
    const QPointer<UserAssistWindow> window = assist.windows().front();
    assist.AllClose();
    QCOMPARE(visibleNotes(), 0);
    QVERIFY(assist.windows().empty());
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(!window);
}

void UserAssistTest::closedWindowsAreHeardNoMore()
{
    UserAssist assist(write(kTwoNotes), m_parent.get());
    UserAssistWindow *window = assist.windows().front();
    QSignalSpy asked(&assist, &UserAssist::UserAssistClose);
    assist.AllClose();
    emit window->UserAssistWindowAllClose();
    QCOMPARE(asked.count(), 0);
}

void UserAssistTest::allCloseTwiceIsHarmless()
{
    UserAssist assist(write(kTwoNotes), m_parent.get());
    assist.AllClose();
    assist.AllClose();
    QCOMPARE(visibleNotes(), 0);
}

void UserAssistTest::aGroupWithoutAWindowIsReported()
{
    CountingPrompt prompt;
    const UserAssist assist(write("[a]\nwindow=0, 0, 100, 100\n[b]\n1=x\n"), m_parent.get());
    QCOMPARE(prompt.messages.size(), 1);
    const UserPrompt::Message &message = prompt.messages.constFirst();
    QCOMPARE(message.title, text("UserAssistWindow"));
    QCOMPARE(message.text, text("window設定が見つかりません"));
    QCOMPARE(message.icon, QMessageBox::Critical);
    QCOMPARE(message.buttons, QMessageBox::StandardButtons(QMessageBox::Ok));
    QCOMPARE(prompt.notesBehind, 0);
    QVERIFY(assist.windows().empty());
    QCOMPARE(visibleNotes(), 0);
}

void UserAssistTest::itselfIsNeverSeen()
{
    m_parent->hide();
    const UserAssist assist(write(kTwoNotes), m_parent.get());
    m_parent->show();
    QCoreApplication::processEvents();
    QVERIFY(!assist.isVisible());
}

void UserAssistTest::deletingItClosesItsWindows()
{
    auto assist = std::make_unique<UserAssist>(write(kTwoNotes), m_parent.get());
    QCOMPARE(visibleNotes(), 2);
    assist.reset();
    QCOMPARE(visibleNotes(), 0);
}

void UserAssistTest::itMayBeDeletedWhenANoteAsksForIt()
{
    auto *assist = new UserAssist(write(kTwoNotes), m_parent.get());
    UserAssistWindow *window = assist->windows().front();
    connect(assist, &UserAssist::UserAssistClose, assist, [assist]() { delete assist; });
    QTest::keyClick(window, Qt::Key_Escape);
    QCOMPARE(visibleNotes(), 0);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

void UserAssistTest::itGoesWithItsParent()
{
    const QPointer<UserAssist> assist = new UserAssist(write(kTwoNotes), m_parent.get());
    m_parent.reset();
    QVERIFY(!assist);
    QCOMPARE(visibleNotes(), 0);
}

void UserAssistTest::everyWindowFollowsTheParent()
{
    const UserAssist assist(write(kTwoNotes), m_parent.get());
    QCoreApplication::processEvents();
    std::vector<QPoint> before;
    for (const UserAssistWindow *window : assist.windows())
        before.push_back(window->pos());
    m_parent->move(m_parent->pos() + QPoint(12, 34));
    QCoreApplication::processEvents();
    for (std::size_t i = 0; i < before.size(); ++i)
        QCOMPARE(assist.windows()[i]->pos(), before[i] + QPoint(12, 34));
}

void UserAssistTest::anyFileIsSurvived_data()
{
    QTest::addColumn<quint32>("seed");
    for (quint32 seed = 1; seed <= 15; ++seed)
        QTest::addRow("seed %u", seed) << seed;
}

void UserAssistTest::anyFileIsSurvived()
{
    QFETCH(quint32, seed);
    static const char *const pieces[] = {"<b>",
                                         "</p>",
                                         "<table><tr><td>",
                                         "<img src=x>",
                                         "&",
                                         "%1",
                                         "#ff0000",
                                         "red",
                                         "あ",
                                         "\"",
                                         "\\",
                                         ",",
                                         "="};
    std::mt19937 random(seed);
    QByteArray content;
    for (int group = 0; group < 5; ++group) {
        content += "[g" + QByteArray::number(group) + "]\nwindow=";
        for (int i = 0; i < 4; ++i)
            content += QByteArray::number(static_cast<qint32>(random())) + (i < 3 ? "," : "\n");
        for (const char *key : {"borderColor=", "textColor=", "a=", "b="}) {
            content += key;
            for (int i = 0; i < 12; ++i)
                content += pieces[random() % std::size(pieces)];
            content +=
                random() % 4 == 0 ? QByteArray(1, static_cast<char>(random())) : QByteArray();
            content += '\n';
        }
    }
    const AnsweringPrompt prompt;
    const UserAssist assist(write(content), m_parent.get());
    QCoreApplication::processEvents();
    QVERIFY(assist.windows().size() == 5 || !prompt.messages.isEmpty());
}

QTEST_MAIN(UserAssistTest)
#include "UserAssistTest.moc"
