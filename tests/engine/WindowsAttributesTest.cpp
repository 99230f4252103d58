#include "engine/WindowsAttributes.h"

#include <QTest>

class WindowsAttributesTest : public QObject {
    Q_OBJECT

private slots:
    void kindOfAnEntry_data();
    void kindOfAnEntry();
};

void WindowsAttributesTest::kindOfAnEntry_data()
{
    QTest::addColumn<quint32>("attributes");
    QTest::addColumn<quint32>("reparseTag");
    QTest::addColumn<int>("kind");
    const auto row = [](const char *name, quint32 attributes, quint32 tag, FolderEntry::Kind kind) {
        QTest::newRow(name) << attributes << tag << int(kind);
    };
    row("file", 0x20, 0, FolderEntry::File);
    row("normal file", 0x80, 0, FolderEntry::File);
    row("read-only, hidden file", 0x23, 0, FolderEntry::File);
    row("device", 0x40, 0, FolderEntry::Other);
    row("folder", 0x10, 0, FolderEntry::Folder);
    // Nobody says what stands there without a reparse point.
    row("folder, some number for a tag", 0x10, 0xA0000003, FolderEntry::Folder);
    row("junction", 0x410, 0xA0000003, FolderEntry::FolderLink);
    row("symbolic link to a folder", 0x410, 0xA000000C, FolderEntry::FolderLink);
    row("folder of cloud storage", 0x410, 0x9000001A, FolderEntry::Folder);
    row("another folder of cloud storage", 0x410, 0x9000301A, FolderEntry::Folder);
    row("symbolic link to a file", 0x420, 0xA000000C, FolderEntry::File);
    row("deduplicated file", 0x420, 0x80000013, FolderEntry::File);
}

void WindowsAttributesTest::kindOfAnEntry()
{
    QFETCH(quint32, attributes);
    QFETCH(quint32, reparseTag);
    QTEST(int(WindowsAttributes::kindOf(attributes, reparseTag)), "kind");
}

QTEST_GUILESS_MAIN(WindowsAttributesTest)
#include "WindowsAttributesTest.moc"
