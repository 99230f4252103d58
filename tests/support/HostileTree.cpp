#include "tests/support/HostileTree.h"

#include <QFile>

HostileTree::HostileTree() : m_builder(QFile::encodeName(m_folder.path()))
{
    steadyFile("plain.txt");
    addSpecialFiles();
    addLinks();
    addNames();
    addDepth();
}

QString HostileTree::keyword()
{
    return QStringLiteral("needle");
}

QByteArray HostileTree::content()
{
    return QByteArrayLiteral("first line\nthe needle is here\nthird line\n");
}

int HostileTree::linesOfContent()
{
    return content().count('\n') + 1;
}

void HostileTree::steadyFile(const QByteArray &name)
{
    m_builder.file(name, content());
    expect(name);
}

void HostileTree::addSpecialFiles()
{
    constexpr qint64 kHundredGigabytes = Q_INT64_C(100) << 30;
    m_specialFiles.append(m_builder.fifo("special/fifo.txt") ? "a FIFO" : "");
    m_specialFiles.append(m_builder.socket("special/socket.txt") ? "a socket" : "");
    m_specialFiles.append(m_builder.device("special/device.txt") ? "a device" : "");
    m_specialFiles.removeAll("");
    m_builder.file("special/empty.txt", QByteArray());
    if (m_builder.sparseFile("special/huge.txt", kHundredGigabytes))
        m_hugeFile = m_builder.path("special/huge.txt");
    m_builder.folder("special/empty folder.txt");
    steadyFile("special/plain.txt");
}

void HostileTree::addLinks()
{
    m_builder.link("links/to itself", "to itself");
    m_builder.link("links/one of two", "other of two");
    m_builder.link("links/other of two", "one of two");
    m_builder.link("links/to nothing.txt", "nothing");
    m_builder.link("links/to the fifo.txt", "../special/fifo.txt");
    m_builder.link("links/to the root", "..");
    m_builder.link("links/deep/down/up again", "../..");
    m_builder.link("links/here", ".");
    // These the system has for everybody, also for who may make none.
    for (const QByteArray device : {"zero", "null"}) {
        if (m_builder.link("links/to " + device + ".txt", "/dev/" + device))
            m_specialFiles.append("/dev/" + device);
    }
    if (m_builder.link("links/to a file.txt", "../plain.txt"))
        expect("links/to a file.txt");
    steadyFile("links/deep/down/plain.txt");
    m_builder.link("links/to a folder", "deep/down");
}

void HostileTree::addNames()
{
    constexpr int kLongestName = 255;
    const QByteArray suffix = ".txt";
    const QByteArray japanese = QByteArray("\xe8\xa1\xa8").repeated(83) + "ab";
    const QByteArrayList names{" ",
                               "  blanks  ",
                               "line\nfeed",
                               "\n",
                               "\r\n::",
                               "tab\t",
                               "quotes \" ' `",
                               "$(touch hole);&|<>*?[a]{b}\\",
                               "%f%l%1%2",
                               "-rf",
                               "...",
                               "~",
                               "a:b",
                               "::",
                               "\xe8\xa1\xa8\xe7\xa4\xba", // Japanese in UTF-8
                               "\xe3\x82\xab\xe3\x82\x99", // decomposed
                               "\x95\x5c\x8e\xa6", // in Shift-JIS, with a backslash in it
                               "\xff\xfe",
                               "half \xe8\xa1",
                               "\xed\xa0\x80 half a pair",
                               "\xc0\xaf overlong",
                               "\xef\xbb\xbf mark",
                               "\xe2\x80\xa8\xe2\x80\xa9 separators",
                               "\x01\x1b[31m\x7f controls",
                               QByteArray(kLongestName - suffix.size(), 'x'),
                               japanese};
    for (const QByteArray &name : names) {
        steadyFile("names/" + name + suffix);
        // A folder has the name without the suffix.
        steadyFile("folders/" + name.left(kLongestName) + "/plain.txt");
    }
}

void HostileTree::addDepth()
{
    constexpr int kLevels = 300;
    steadyFile("deep/" + QByteArray("d/").repeated(kLevels) + "plain.txt");
}
