#include "view/FileLineSearch.h"

#include <QPlainTextDocumentLayout>
#include <QTest>
#include <QTextCursor>
#include <QTextDocument>

#include <algorithm>
#include <random>

class FileLineSearchTest : public QObject {
    Q_OBJECT

private slots:
    void theNearestFileLineAboveIsFound();
    void whatIsRememberedIsWhatAWalkFinds();
};

namespace {

const char *const kLines[] = {"::/a/b.txt", "     1:    1:x", "", ":x", "Warning", "12"};

/// The same by a walk that remembers nothing.
int walkedHead(const QTextDocument &document, int number)
{
    FileLineSearch anew(document);
    return anew.headOf(document.findBlockByNumber(number)).blockNumber();
}

} // namespace

void FileLineSearchTest::theNearestFileLineAboveIsFound()
{
    QTextDocument document(QStringLiteral("::/a\n  1\n  2\n::/b\n  3\n  4\n::/c"));
    FileLineSearch search(document);
    const auto head = [&](int number) {
        return search.headOf(document.findBlockByNumber(number)).blockNumber();
    };
    // In this order the lines between are known, then those above and below are not.
    for (const int number : {4, 5, 3, 6, 2, 0, 1, 5})
        QCOMPARE(head(number), number < 3 ? 0 : number < 6 ? 3 : 6);
}

void FileLineSearchTest::whatIsRememberedIsWhatAWalkFinds()
{
    std::mt19937 random(20);
    const auto upTo = [&random](int count) {
        return int(random() % unsigned(count));
    };
    QTextDocument document;
    document.setDocumentLayout(new QPlainTextDocumentLayout(&document));
    FileLineSearch search(document);
    QTextCursor cursor(&document);
    for (int round = 0; round < 3000; ++round) {
        const QString line = QLatin1Char('\n') + QString::fromLatin1(kLines[upTo(6)]);
        if (round % 3 == 0) { // as hits are listed
            cursor.movePosition(QTextCursor::End);
            cursor.insertText(line);
        } else if (round % 30 == 1) { // as a user edits
            cursor.setPosition(upTo(document.characterCount()));
            cursor.insertText(line);
        } else if (round % 50 == 2) {
            cursor.setPosition(upTo(document.characterCount()));
            const int end = cursor.position() + upTo(40);
            cursor.setPosition(std::min(end, document.characterCount() - 1),
                               QTextCursor::KeepAnchor);
            cursor.removeSelectedText();
        } else if (round % 1000 == 4) {
            document.setPlainText(QStringLiteral("::/x\n  1\n  2"));
        }
        const int number = upTo(document.blockCount());
        const QTextBlock head = search.headOf(document.findBlockByNumber(number));
        QCOMPARE(head.blockNumber(), walkedHead(document, number));
    }
}

QTEST_MAIN(FileLineSearchTest)
#include "FileLineSearchTest.moc"
