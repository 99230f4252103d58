#include "settings/ParameterFile.h"

#include "tests/support/NativeLines.h"
#include "tests/support/ScratchFolder.h"

#include <QDir>
#include <QSettings>
#include <QTest>

#include <memory>

class ParameterFileTest : public QObject {
    Q_OBJECT

private slots:
    void init();
    void aMissingFileGivesTheDefaults();
    void anUnreadableFileGivesTheDefaults();
    void aFileWithOnlyTheKeywordGivesNoPaths();
    void aSinglePathIsAListOfOne();
    void severalPathsAreAList();
    void bareCommasInAMaskOrKeywordStay();
    void whatIsWrittenComesBack();
    void emptyValuesComeBackEmpty();
    void japaneseIsEscaped();
    void qtReadsWhatIsWritten();
    void whatQtWroteIsRead();
    void theRestOfTheFileStays();
    void theFileOfAnotherProgramMayBeUtf8();
    void aWriteThatIsImpossibleSaysSo();

private:
    void write(const QByteArray &content);
    ParameterFile::Content read() const;

    std::unique_ptr<ScratchFolder> m_folder;
};

namespace {

const QString kFile = QStringLiteral("sarvikpara.ini");

QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

} // namespace

void ParameterFileTest::init()
{
    m_folder = std::make_unique<ScratchFolder>();
}

void ParameterFileTest::write(const QByteArray &content)
{
    m_folder->write(kFile, content);
}

ParameterFile::Content ParameterFileTest::read() const
{
    return ParameterFile(m_folder->path()).read();
}

void ParameterFileTest::aMissingFileGivesTheDefaults()
{
    QCOMPARE(read().pathlist, QStringList());
    QCOMPARE(read().mask, QString());
    QCOMPARE(read().findword, QString());
    QVERIFY(QDir(m_folder->path()).isEmpty());
}

void ParameterFileTest::anUnreadableFileGivesTheDefaults()
{
    m_folder->makeFolder(kFile);
    QCOMPARE(read().pathlist, QStringList());
    QCOMPARE(read().mask, QString());
    QCOMPARE(read().findword, QString());
}

void ParameterFileTest::aFileWithOnlyTheKeywordGivesNoPaths()
{
    write("findword=abc\n");
    QCOMPARE(read().findword, text("abc"));
    QCOMPARE(read().pathlist, QStringList());
    QCOMPARE(read().mask, QString());
}

void ParameterFileTest::aSinglePathIsAListOfOne()
{
    write("[General]\npathlist=a\n");
    QCOMPARE(read().pathlist, QStringList{text("a")});
}

void ParameterFileTest::severalPathsAreAList()
{
    write("pathlist=C:/a/, \"D:/b, c/\" ,/e f/\n");
    QCOMPARE(read().pathlist, QStringList({text("C:/a/"), text("D:/b, c/"), text("/e f/")}));
}

void ParameterFileTest::bareCommasInAMaskOrKeywordStay()
{
    write("mask=*.c,*.h\nfindword=f(a, b)\n");
    QCOMPARE(read().mask, text("*.c,*.h"));
    QCOMPARE(read().findword, text("f(a, b)"));
}

void ParameterFileTest::whatIsWrittenComesBack()
{
    const ParameterFile::Content content{{text("@list.ini"), text("C:\\検索\\"), text("/a, b/𠮷/")},
                                         text("*.cpp *.h;"),
                                         text(" \"\\d+\t=, 語\" ")};
    QVERIFY(ParameterFile(m_folder->path()).write(content));
    QCOMPARE(read().pathlist, content.pathlist);
    QCOMPARE(read().mask, content.mask);
    QCOMPARE(read().findword, content.findword);
}

void ParameterFileTest::emptyValuesComeBackEmpty()
{
    write("pathlist=a, b\nmask=*.c\nfindword=x\n");
    QVERIFY(ParameterFile(m_folder->path()).write({}));
    QCOMPARE(read().pathlist, QStringList());
    QCOMPARE(read().mask, QString());
    QCOMPARE(read().findword, QString());
}

void ParameterFileTest::japaneseIsEscaped()
{
    QVERIFY(ParameterFile(m_folder->path()).write({{text("/検/")}, text("*"), text("索")}));
    QCOMPARE(m_folder->read(kFile),
             nativeLines("[General]\npathlist=/\\x691c/\nmask=*\nfindword=\\x7d22\n"));
}

void ParameterFileTest::qtReadsWhatIsWritten()
{
    QVERIFY(ParameterFile(m_folder->path())
                .write({{text("/検/"), text("a, b")}, text("*.c;*.h"), text("索")}));
    const QSettings file(m_folder->filePath(kFile), QSettings::IniFormat);
    QCOMPARE(file.value(text("pathlist")).toStringList(),
             QStringList({text("/検/"), text("a, b")}));
    QCOMPARE(file.value(text("mask")).toString(), text("*.c;*.h"));
    QCOMPARE(file.value(text("findword")).toString(), text("索"));
}

void ParameterFileTest::whatQtWroteIsRead()
{
    {
        QSettings file(m_folder->filePath(kFile), QSettings::IniFormat);
        file.setValue(text("pathlist"), QStringList({text("/検/"), text("a, b")}));
        file.setValue(text("mask"), text("*.c, *.h"));
        file.setValue(text("findword"), text("索𠮷"));
    }
    QCOMPARE(read().pathlist, QStringList({text("/検/"), text("a, b")}));
    QCOMPARE(read().mask, text("*.c, *.h"));
    QCOMPARE(read().findword, text("索𠮷"));
}

void ParameterFileTest::theRestOfTheFileStays()
{
    write("; note\n[General]\nmask=x\nextra=1\n");
    QVERIFY(ParameterFile(m_folder->path()).write({{text("p")}, text("m"), text("f")}));
    QCOMPARE(m_folder->read(kFile),
             QByteArray("; note\n[General]\nmask=m\nextra=1\npathlist=p\nfindword=f\n"));
}

void ParameterFileTest::theFileOfAnotherProgramMayBeUtf8()
{
    write("\xef\xbb\xbf"
          "findword=検索\r\n");
    QCOMPARE(read().findword, text("検索"));
}

void ParameterFileTest::aWriteThatIsImpossibleSaysSo()
{
    m_folder->write(QStringLiteral("file"), "content");
    QVERIFY(!ParameterFile(m_folder->filePath(QStringLiteral("file/"))).write({}));
    QCOMPARE(m_folder->read(QStringLiteral("file")), QByteArray("content"));
}

QTEST_GUILESS_MAIN(ParameterFileTest)
#include "ParameterFileTest.moc"
