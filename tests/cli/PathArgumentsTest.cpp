#include "cli/PathArguments.h"

#include "engine/NativePath.h"
#include "tests/support/ScratchFolder.h"

#include <QFile>
#include <QTest>

#include <sys/stat.h>
#include <unistd.h>

class PathArgumentsTest : public QObject {
    Q_OBJECT

private slots:
    void aFolderGetsASlashAndAFileNone();
    void orderStaysAndDoublesGo();
    void anotherPathToTheSameEntryGoes();
    void slashesAtTheEndBecomeOne();
    void aRelativePathStaysRelative();
    void aNameOfBrokenUtf8IsFound();
    void linksAreFollowed();
    void whatCannotBeSearchedIsRefused_data();
    void whatCannotBeSearchedIsRefused();
    void oneBadPathRefusesAll();
    void aListFileStandsAlone();
    void aListFileIsHandedOnAsItIs();
    void entriesOfAListFileThatCannotBeSearchedAreNamed();
    void aFileWhoseNameBeginsWithAnAtIsReachedByItsFolder();

private:
    ScratchFolder m_scratch;
};

void PathArgumentsTest::aFolderGetsASlashAndAFileNone()
{
    const QString folder = m_scratch.makeFolder(QStringLiteral("folder"));
    const QString file = m_scratch.write(QStringLiteral("file.txt"), "x");
    const PathArguments::Result result = PathArguments::resolve({folder.chopped(1), file});
    QCOMPARE(result.error, QString());
    QCOMPARE(result.pathlist, QStringList({folder, file}));
    QCOMPARE(PathArguments::resolve({folder}).pathlist, QStringList{folder});
}

void PathArgumentsTest::orderStaysAndDoublesGo()
{
    const QString b = m_scratch.makeFolder(QStringLiteral("b"));
    const QString a = m_scratch.makeFolder(QStringLiteral("a"));
    const PathArguments::Result result = PathArguments::resolve({b, a, b.chopped(1), a});
    QCOMPARE(result.pathlist, QStringList({b, a}));
}

void PathArgumentsTest::anotherPathToTheSameEntryGoes()
{
    const QString folder = m_scratch.makeFolder(QStringLiteral("twice"));
    const QString file = m_scratch.write(QStringLiteral("twice/a.txt"), "x");
    const QString hardLink = m_scratch.filePath(QStringLiteral("twice/hard.txt"));
    QCOMPARE(::link(file.toUtf8().constData(), hardLink.toUtf8().constData()), 0);
    const QString link = m_scratch.filePath(QStringLiteral("toTwice"));
    QVERIFY(QFile::link(QStringLiteral("twice"), link));
    const PathArguments::Result result =
        PathArguments::resolve({file, folder + QStringLiteral("./a.txt"), link,
                                folder + QStringLiteral("../twice"), hardLink});
    QCOMPARE(result.error, QString());
    QCOMPARE(result.pathlist, QStringList({file, link + QLatin1Char('/'), hardLink}));
}

void PathArgumentsTest::slashesAtTheEndBecomeOne()
{
    const QString folder = m_scratch.makeFolder(QStringLiteral("slashes"));
    QCOMPARE(PathArguments::resolve({folder + QStringLiteral("//")}).pathlist, QStringList{folder});
    QCOMPARE(PathArguments::resolve({QStringLiteral("//")}).pathlist,
             QStringList{QStringLiteral("/")});
}

void PathArgumentsTest::aRelativePathStaysRelative()
{
    QCOMPARE(PathArguments::resolve({QStringLiteral(".")}).pathlist,
             QStringList{QStringLiteral("./")});
}

void PathArgumentsTest::aNameOfBrokenUtf8IsFound()
{
    const QByteArray name = m_scratch.filePath(QStringLiteral("broken")).toUtf8() + '\x81';
    QCOMPARE(::mkdir(name.constData(), 0700), 0);
    const PathArguments::Result result = PathArguments::resolve({NativePath::fromNative(name)});
    QCOMPARE(result.error, QString());
    QCOMPARE(NativePath::toNative(result.pathlist.value(0)), name + '/');
    ::rmdir(name.constData());
}

void PathArgumentsTest::linksAreFollowed()
{
    m_scratch.makeFolder(QStringLiteral("real"));
    m_scratch.write(QStringLiteral("real.txt"), "x");
    const QString toFolder = m_scratch.filePath(QStringLiteral("toFolder"));
    const QString toFile = m_scratch.filePath(QStringLiteral("toFile"));
    QVERIFY(QFile::link(QStringLiteral("real"), toFolder));
    QVERIFY(QFile::link(QStringLiteral("real.txt"), toFile));
    QCOMPARE(PathArguments::resolve({toFolder, toFile}).pathlist,
             QStringList({toFolder + QLatin1Char('/'), toFile}));
}

void PathArgumentsTest::whatCannotBeSearchedIsRefused_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("reason");
    const QString noSuch = QStringLiteral("no such file or folder: ");
    const QString special = QStringLiteral("neither a file nor a folder: ");
    const QString noFiles = QStringLiteral("the list file holds no \"files\": ");

    m_scratch.write(QStringLiteral("plain.txt"), "x");
    m_scratch.makeFolder(QStringLiteral("plainFolder"));
    QFile::link(QStringLiteral("nowhere"), m_scratch.filePath(QStringLiteral("dangling")));
    ::mkfifo(m_scratch.filePath(QStringLiteral("fifo")).toUtf8().constData(), 0600);
    m_scratch.write(QStringLiteral("other.ini"), "[General]\nfile=a\n[files]\nx=a\n");

    const auto row = [&](const char *name, const QString &path, const QString &reason) {
        QTest::newRow(name) << path << reason + QLatin1Char('\'') + path + QLatin1Char('\'');
    };
    const auto at = [](const QString &path) -> QString {
        return QLatin1Char('@') + path;
    };
    row("missing", m_scratch.filePath(QStringLiteral("missing")), noSuch);
    row("empty", QString(), noSuch);
    row("dangling link", m_scratch.filePath(QStringLiteral("dangling")), noSuch);
    row("below a file", m_scratch.filePath(QStringLiteral("plain.txt/x")), noSuch);
    row("file with a slash", m_scratch.filePath(QStringLiteral("plain.txt/")), noSuch);
    QFile::link(QStringLiteral("itself"), m_scratch.filePath(QStringLiteral("itself")));
    row("loop of links", m_scratch.filePath(QStringLiteral("itself")),
        QStringLiteral("a loop of links: "));
    row("long name", m_scratch.filePath(QString(300, QLatin1Char('n'))),
        QStringLiteral("the name is too long: "));
    row("fifo", m_scratch.filePath(QStringLiteral("fifo")), special);
    row("device", QStringLiteral("/dev/null"), special);
    row("list file missing", at(m_scratch.filePath(QStringLiteral("missing"))), noSuch);
    row("list file without a name", at(QString()), noSuch);
    row("list file is a fifo", at(m_scratch.filePath(QStringLiteral("fifo"))), special);
    row("list file is a folder", at(m_scratch.filePath(QStringLiteral("plainFolder"))),
        QStringLiteral("the list file is a folder: "));
    row("list file without files", at(m_scratch.filePath(QStringLiteral("other.ini"))), noFiles);
    row("list file is a text", at(m_scratch.filePath(QStringLiteral("plain.txt"))), noFiles);
}

void PathArgumentsTest::whatCannotBeSearchedIsRefused()
{
    QFETCH(QString, path);
    const PathArguments::Result result = PathArguments::resolve({path});
    QTEST(result.error, "reason");
    QVERIFY(!result.ok());
}

void PathArgumentsTest::oneBadPathRefusesAll()
{
    const QString file = m_scratch.write(QStringLiteral("good.txt"), "x");
    const QString missing = m_scratch.filePath(QStringLiteral("missing"));
    QCOMPARE(PathArguments::resolve({file, missing, file}).error,
             QStringLiteral("no such file or folder: '%1'").arg(missing));
}

void PathArgumentsTest::aListFileStandsAlone()
{
    const QString list =
        QLatin1Char('@') + m_scratch.write(QStringLiteral("list.ini"), "[General]\nfiles=a, b/\n");
    const QString folder = m_scratch.makeFolder(QStringLiteral("folder"));
    QCOMPARE(PathArguments::resolve({list, folder}).error,
             QStringLiteral("a list file stands alone, without '%1'").arg(folder));
    QCOMPARE(PathArguments::resolve({folder, list}).error,
             QStringLiteral("a list file stands alone: '%1'").arg(list));
}

void PathArgumentsTest::aListFileIsHandedOnAsItIs()
{
    const QString list =
        QLatin1Char('@') + m_scratch.write(QStringLiteral("list.ini"), "[General]\nfiles=a, b/\n");
    const PathArguments::Result result = PathArguments::resolve({list});
    QCOMPARE(result.error, QString());
    QCOMPARE(result.pathlist, QStringList{list});
}

void PathArgumentsTest::entriesOfAListFileThatCannotBeSearchedAreNamed()
{
    const QString folder = m_scratch.makeFolder(QStringLiteral("listed"));
    const QString file = m_scratch.write(QStringLiteral("listed/a.txt"), "x");
    const QString gone = m_scratch.filePath(QStringLiteral("gone.txt"));
    const QStringList entries{file, gone, folder, folder.chopped(1)};
    const QString list = QLatin1Char('@')
        + m_scratch.write(QStringLiteral("old.ini"),
                          "[General]\nfiles=" + entries.join(QStringLiteral(", ")).toUtf8() + "\n");
    const PathArguments::Result result = PathArguments::resolve({list});
    QCOMPARE(result.error, QString());
    QCOMPARE(result.pathlist, QStringList{list});
    QCOMPARE(result.warnings,
             QStringList({QStringLiteral("'%1': no such file or folder: '%2'").arg(list, gone),
                          QStringLiteral("'%1': a folder without \"/\" at its end: '%2'")
                              .arg(list, folder.chopped(1))}));
}

void PathArgumentsTest::aFileWhoseNameBeginsWithAnAtIsReachedByItsFolder()
{
    const QString file = m_scratch.write(QStringLiteral("@odd.txt"), "x");
    QCOMPARE(PathArguments::resolve({file}).pathlist, QStringList{file});
}

QTEST_GUILESS_MAIN(PathArgumentsTest)
#include "PathArgumentsTest.moc"
