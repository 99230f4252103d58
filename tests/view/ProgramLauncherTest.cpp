#include "view/ProgramLauncher.h"

#include "engine/NativePath.h"
#include "engine/RegExpEscape.h"
#include "tests/support/RecordingProgram.h"
#include "view/OtherGrepCommand.h"

#include <QtTest>

/// The platform's own launcher, with a program that keeps what it was given.
class ProgramLauncherTest : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void theProgramGetsEachArgumentAsItStands_data() { hostileArguments(); }
    void theProgramGetsEachArgumentAsItStands();
    void bytesThatAreNoTextArriveAsTheyAre();
    void theFolderBecomesTheCurrentOne();
    void aFolderThatIsNotThereStopsNothing();
    void aProgramThatIsNotThereIsTold();
    void aProgramWithoutFolderIsFoundOnThePath();
    void nothingWaitsForTheProgram();
    void openStartsTheProgramToo();
    void aSecondWindowGetsTheFolderAndTheText_data() { hostileArguments(); }
    void aSecondWindowGetsTheFolderAndTheText();

private:
    static void hostileArguments();
    LaunchCommand recorder(const QStringList &arguments) const;

    std::unique_ptr<ScratchFolder> m_folder;
    std::unique_ptr<RecordingProgram> m_program;
    QString m_startDirectory;
};

void ProgramLauncherTest::init()
{
    m_folder = std::make_unique<ScratchFolder>();
    m_program = std::make_unique<RecordingProgram>(*m_folder);
    m_startDirectory = QDir::currentPath();
}

void ProgramLauncherTest::cleanup()
{
    QDir::setCurrent(m_startDirectory);
    m_program.reset();
    m_folder.reset();
}

LaunchCommand ProgramLauncherTest::recorder(const QStringList &arguments) const
{
    LaunchCommand command;
    command.program = m_program->path();
    command.arguments = arguments;
    QStringList quoted;
    for (const QString &argument : arguments)
        quoted.append(LaunchRules::windowsArgument(argument));
    command.parameters = quoted.join(QLatin1Char(' '));
    return command;
}

void ProgramLauncherTest::hostileArguments()
{
    QTest::addColumn<QString>("argument");
    QTest::addColumn<bool>("byOpen");
    const auto rows = [](const char *what, const QString &argument) {
        QTest::newRow(what) << argument << false;
        QTest::addRow("opened: %s", what) << argument << true;
    };
    rows("blanks", QStringLiteral(" a  b "));
    rows("empty", QStringLiteral(""));
    rows("quotes", QStringLiteral("a\" 'b' \"\"\"c"));
    rows("shell", QStringLiteral("$(touch hole);touch hole&`touch hole`|$HOME > hole"));
    rows("command interpreter", QStringLiteral("& echo x>hole ^& %PATH% !PATH! ^"));
    rows("line feeds", QStringLiteral("a\nb\r\nc\n"));
    rows("percent signs", QStringLiteral("%f%l%%s%n"));
    rows("backslashes", QStringLiteral("C:\\a b\\\\\"\\"));
    rows("Japanese", QStringLiteral("表示　能力"));
    rows("outside the basic plane", QStringLiteral("\U00020B9F"));
}

void ProgramLauncherTest::theProgramGetsEachArgumentAsItStands()
{
    QFETCH(QString, argument);
    QFETCH(bool, byOpen);
    ProgramLauncher &launcher = ProgramLauncher::native();
    const LaunchCommand command =
        recorder({QStringLiteral("-l3"), argument, QStringLiteral("last")});
    QVERIFY(byOpen ? launcher.open(command) : launcher.startDetached(command));
    QCOMPARE(m_program->arguments(), QByteArrayList({"-l3", argument.toUtf8(), "last"}));
    QVERIFY(!m_folder->exists(QStringLiteral("hole")));
    QVERIFY(!QFileInfo::exists(QStringLiteral("hole")));
}

void ProgramLauncherTest::bytesThatAreNoTextArriveAsTheyAre()
{
    if (ProgramLauncher::native().pathStyle() != PathStyle::Unix)
        QSKIP("names are text here");
    const QByteArray name = "/tmp/\x82\xa0\xff b\xe3\x81\x82.txt";
    QVERIFY(ProgramLauncher::native().startDetached(recorder({NativePath::fromNative(name)})));
    QCOMPARE(m_program->arguments(), QByteArrayList{name});
}

void ProgramLauncherTest::theFolderBecomesTheCurrentOne()
{
    LaunchCommand command = recorder({});
    command.directory = m_folder->makeFolder(QStringLiteral("some where"));
    QVERIFY(ProgramLauncher::native().startDetached(command));
    QCOMPARE(QFileInfo(QDir::currentPath()).canonicalFilePath(),
             QFileInfo(command.directory).canonicalFilePath());
    QCOMPARE(m_program->arguments(), QByteArrayList());
}

void ProgramLauncherTest::aFolderThatIsNotThereStopsNothing()
{
    LaunchCommand command = recorder({QStringLiteral("x")});
    command.directory = m_folder->filePath(QStringLiteral("nowhere"));
    QVERIFY(ProgramLauncher::native().startDetached(command));
    QCOMPARE(QDir::currentPath(), m_startDirectory);
    QCOMPARE(m_program->arguments(), QByteArrayList{QByteArrayLiteral("x")});
}

void ProgramLauncherTest::aProgramThatIsNotThereIsTold()
{
    LaunchCommand command;
    command.program = m_folder->filePath(QStringLiteral("nothing"));
    QVERIFY(!ProgramLauncher::native().startDetached(command));
    QVERIFY(!ProgramLauncher::native().open(command));
}

void ProgramLauncherTest::aProgramWithoutFolderIsFoundOnThePath()
{
    LaunchCommand command = recorder({QStringLiteral("x")});
    const QByteArray path = qgetenv("PATH");
    const QString folder = QDir::toNativeSeparators(m_folder->path());
    qputenv("PATH", QFile::encodeName(folder + QDir::listSeparator()) + path);
    command.program = QFileInfo(m_program->path()).fileName();
    const bool started = ProgramLauncher::native().startDetached(command);
    qputenv("PATH", path);
    QVERIFY(started);
    QCOMPARE(m_program->arguments(), QByteArrayList{QByteArrayLiteral("x")});
}

void ProgramLauncherTest::nothingWaitsForTheProgram()
{
    m_program->hold();
    QVERIFY(ProgramLauncher::native().startDetached(recorder({QStringLiteral("x")})));
    // It keeps them only after this, so the start did not wait for its end.
    QVERIFY(!m_program->hasKeptAny());
    m_program->letGo();
    QCOMPARE(m_program->arguments(), QByteArrayList{QByteArrayLiteral("x")});
}

void ProgramLauncherTest::openStartsTheProgramToo()
{
    QVERIFY(ProgramLauncher::native().open(recorder({QStringLiteral("a b")})));
    QCOMPARE(m_program->arguments(), QByteArrayList{QByteArrayLiteral("a b")});
}

/// The text is a pattern there, so its marks are escaped.
void ProgramLauncherTest::aSecondWindowGetsTheFolderAndTheText()
{
    QFETCH(QString, argument);
    QFETCH(bool, byOpen);
    const RecordingProgram window(*m_folder, QStringLiteral("sarvik"));
    const QString directory = QFileInfo(window.path()).path();
    ProgramLauncher &launcher = ProgramLauncher::native();
    const LaunchCommand command =
        OtherGrepCommand::build(directory, argument, argument, launcher.pathStyle());
    QVERIFY(byOpen ? launcher.open(command) : launcher.startDetached(command));
    QString keyword = argument;
    escapeRegExpMetaChars(keyword);
    QCOMPARE(window.arguments(), QByteArrayList({argument.toUtf8(), keyword.toUtf8()}));
    QVERIFY(!m_folder->exists(QStringLiteral("hole")));
    QVERIFY(!QFileInfo::exists(QStringLiteral("hole")));
}

QTEST_GUILESS_MAIN(ProgramLauncherTest)

#include "ProgramLauncherTest.moc"
