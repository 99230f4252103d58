#include "engine/WindowsName.h"

#include <QTest>

class WindowsNameTest : public QObject {
    Q_OBJECT

private slots:
    void aPathIsWrittenAsTheSystemTakesIt_data();
    void aPathIsWrittenAsTheSystemTakesIt();
};

void WindowsNameTest::aPathIsWrittenAsTheSystemTakesIt_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("name");
    const auto row = [](const char *name, const char *path, const char *expected) {
        QTest::newRow(name) << QString::fromUtf8(path) << QString::fromUtf8(expected);
    };
    row("a file", "C:/a/b.txt", R"(\\?\C:\a\b.txt)");
    row("Japanese", "c:/灯台/表 十.txt", R"(\\?\c:\灯台\表 十.txt)");
    row("backslashes", R"(C:\a\b.txt)", R"(\\?\C:\a\b.txt)");
    row("a folder loses its slash", "C:/a/", R"(\\?\C:\a)");
    row("a drive keeps its own", "C:/", R"(\\?\C:\)");
    row("doubled slashes", "C://a//b", R"(\\?\C:\a\b)");
    row("way up", "C:/a/../b/./c", R"(\\?\C:\b\c)");
    row("a dot at the end", "C:/a/b.", R"(\\?\C:\a\b.)");
    row("a blank at the end", "C:/a/b ", R"(\\?\C:\a\b )");
    row("a device's name", "C:/a/aux.txt", R"(\\?\C:\a\aux.txt)");
    row("every entry", "C:/a/*.*", R"(\\?\C:\a\*.*)");
    row("a share", "//host/share/a/", R"(\\?\UNC\host\share\a)");
    row("the long form", R"(\\?\C:\a\)", R"(\\?\C:\a\)");
    row("a device", R"(\\.\pipe\a)", R"(\\.\pipe\a)");
    row("a path from here", "a/b", R"(a\b)");
    row("a path from the drive's folder", "C:a", "C:a");
    row("no letter", "1:/a", R"(1:\a)");
    row("nothing", "", "");
}

void WindowsNameTest::aPathIsWrittenAsTheSystemTakesIt()
{
    QFETCH(QString, path);
    QFETCH(QString, name);
    QCOMPARE(QString::fromStdWString(WindowsName::of(path)), name);
}

QTEST_GUILESS_MAIN(WindowsNameTest)
#include "WindowsNameTest.moc"
