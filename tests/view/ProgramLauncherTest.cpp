#include "view/ProgramLauncher.h"

#include "engine/NativePath.h"
#include "tests/support/ScratchFolder.h"

#include <QtTest>

/// The platform's own launcher, with a script that writes down what it was
/// given: NUL after each argument, because nothing else is impossible in one.
class ProgramLauncherTest : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void theProgramGetsEachArgumentAsItStands_data();
    void theProgramGetsEachArgumentAsItStands();
    void bytesThatAreNoTextArriveAsTheyAre();
    void theFolderBecomesTheCurrentOne();
    void aFolderThatIsNotThereStopsNothing();
    void aProgramThatIsNotThereIsTold();
    void aProgramWithoutFolderIsFoundOnThePath();
    void nothingWaitsForTheProgram();
    void openStartsTheProgramToo();

private:
    LaunchCommand recorder(const QStringList &arguments);
    QByteArray recorded();

    std::unique_ptr<ScratchFolder> m_folder;
    QString m_startDirectory;
};

void ProgramLauncherTest::init()
{
    if (ProgramLauncher::native().pathStyle() != PathStyle::Unix)
        QSKIP("the recording program is a shell script");
    m_folder = std::make_unique<ScratchFolder>();
    m_startDirectory = QDir::currentPath();
}

void ProgramLauncherTest::cleanup()
{
    QDir::setCurrent(m_startDirectory);
    m_folder.reset();
}

LaunchCommand ProgramLauncherTest::recorder(const QStringList &arguments)
{
    // Renamed when it is whole, so that a half of it is never read.
    const QByteArray script = "#!/bin/sh\ncd \"$(dirname \"$0\")\"\n"
                              "printf '%s\\0' \"$@\" > half && mv half record\n";
    LaunchCommand command;
    command.program = m_folder->write(QStringLiteral("my editor.sh"), script);
    QFile::setPermissions(command.program, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    command.arguments = arguments;
    return command;
}

QByteArray ProgramLauncherTest::recorded()
{
    const QString name = QStringLiteral("record");
    return QTest::qWaitFor([&] { return m_folder->exists(name); }) ? m_folder->read(name)
                                                                   : QByteArray("nothing");
}

void ProgramLauncherTest::theProgramGetsEachArgumentAsItStands_data()
{
    QTest::addColumn<QString>("argument");
    QTest::newRow("blanks") << QStringLiteral(" a  b ");
    QTest::newRow("empty") << QStringLiteral("");
    QTest::newRow("quotes") << QStringLiteral("a\" 'b' \"\"\"c");
    QTest::newRow("shell") << QStringLiteral("$(touch hole);touch hole&`touch hole`|$HOME > hole");
    QTest::newRow("line feeds") << QStringLiteral("a\nb\r\nc\n");
    QTest::newRow("percent signs") << QStringLiteral("%f%l%%s%n");
    QTest::newRow("Japanese") << QStringLiteral("表示　能力");
    QTest::newRow("outside the basic plane") << QStringLiteral("\U00020B9F");
}

void ProgramLauncherTest::theProgramGetsEachArgumentAsItStands()
{
    QFETCH(QString, argument);
    const QStringList arguments{QStringLiteral("-l3"), argument, QStringLiteral("last")};
    QVERIFY(ProgramLauncher::native().startDetached(recorder(arguments)));
    QCOMPARE(recorded(), QByteArray("-l3\0", 4) + argument.toUtf8() + QByteArray("\0last\0", 6));
    QVERIFY(!m_folder->exists(QStringLiteral("hole")));
}

void ProgramLauncherTest::bytesThatAreNoTextArriveAsTheyAre()
{
    const QByteArray name = "/tmp/\x82\xa0\xff b\xe3\x81\x82.txt";
    QVERIFY(ProgramLauncher::native().startDetached(recorder({NativePath::fromNative(name)})));
    QCOMPARE(recorded(), name + '\0');
}

void ProgramLauncherTest::theFolderBecomesTheCurrentOne()
{
    LaunchCommand command = recorder({});
    command.directory = m_folder->makeFolder(QStringLiteral("some where"));
    QVERIFY(ProgramLauncher::native().startDetached(command));
    QCOMPARE(QFileInfo(QDir::currentPath()).canonicalFilePath(),
             QFileInfo(command.directory).canonicalFilePath());
    recorded();
}

void ProgramLauncherTest::aFolderThatIsNotThereStopsNothing()
{
    LaunchCommand command = recorder({QStringLiteral("x")});
    command.directory = m_folder->filePath(QStringLiteral("nowhere"));
    QVERIFY(ProgramLauncher::native().startDetached(command));
    QCOMPARE(QDir::currentPath(), m_startDirectory);
    QCOMPARE(recorded(), QByteArray("x\0", 2));
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
    qputenv("PATH", QFile::encodeName(m_folder->path()) + ':' + path);
    command.program = QStringLiteral("my editor.sh");
    const bool started = ProgramLauncher::native().startDetached(command);
    qputenv("PATH", path);
    QVERIFY(started);
    QCOMPARE(recorded(), QByteArray("x\0", 2));
}

void ProgramLauncherTest::nothingWaitsForTheProgram()
{
    const QByteArray script = "#!/bin/sh\ncd \"$(dirname \"$0\")\"\n"
                              "while [ ! -e go ]; do sleep 0.01; done\n"
                              "mv go gone\n";
    LaunchCommand command;
    command.program = m_folder->write(QStringLiteral("slow.sh"), script);
    QFile::setPermissions(command.program, QFile::ReadOwner | QFile::ExeOwner);
    QVERIFY(ProgramLauncher::native().startDetached(command));
    // It ends only after this, so the start did not wait for its end.
    m_folder->write(QStringLiteral("go"), {});
    QTRY_VERIFY(m_folder->exists(QStringLiteral("gone")));
}

void ProgramLauncherTest::openStartsTheProgramToo()
{
    QVERIFY(ProgramLauncher::native().open(recorder({QStringLiteral("a b")})));
    QCOMPARE(recorded(), QByteArray("a b\0", 4));
}

QTEST_GUILESS_MAIN(ProgramLauncherTest)

#include "ProgramLauncherTest.moc"
