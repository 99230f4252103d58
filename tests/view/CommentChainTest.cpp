#include "view/CommentChain.h"

#include <QTest>
#include <QTextBlock>
#include <QTextCursor>

#include <random>

class CommentChainTest : public QObject {
    Q_OBJECT

private slots:
    void whatIsOpenIsTheLineItBeganIn();
    void severalLevelsCloseOnOneLine();
    void aLineMayCloseAllAndOpenAnother();
    void linesInsideAreCounted();
    void blocksKeepWhetherTheyEndInside();
    void whatIsCutIsWorkedOutAnew();
    void manyCommentsThatNothingEndsTakeLittle();
    void anyLinesNestAsAStackDoes();
};

namespace {

QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

CommentScanner scanner()
{
    return CommentScanner({QRegExp(text("//")), QRegExp(text("/\\*")), QRegExp(text("\\*/"))},
                          StringLiterals());
}

CommentChain chainOf(const QTextDocument &document)
{
    CommentChain chain;
    chain.extendTo(document, scanner(), document.blockCount() - 1);
    return chain;
}

} // namespace

void CommentChainTest::whatIsOpenIsTheLineItBeganIn()
{
    const QTextDocument document(text("a\n/*\nb\n/*\n*/\n*/"));
    const CommentChain chain = chainOf(document);
    QCOMPARE(chain.openAfter(0), QVector<int>());
    QCOMPARE(chain.openAfter(1), QVector<int>{2});
    QCOMPARE(chain.openAfter(2), QVector<int>{2});
    QCOMPARE(chain.openAfter(3), (QVector<int>{2, 4}));
    QCOMPARE(chain.openAfter(4), QVector<int>{2});
    QCOMPARE(chain.openAfter(5), QVector<int>());
    QCOMPARE(chain.depthBefore(0), 0);
    QCOMPARE(chain.depthBefore(3), 1);
    QCOMPARE(chain.depthAfter(3), 2);
}

void CommentChainTest::severalLevelsCloseOnOneLine()
{
    const QTextDocument document(text("/*\n/*\n/*\n*/ */\n/*"));
    const CommentChain chain = chainOf(document);
    QCOMPARE(chain.openAfter(2), (QVector<int>{1, 2, 3}));
    QCOMPARE(chain.openAfter(3), QVector<int>{1});
    QCOMPARE(chain.openAfter(4), (QVector<int>{1, 5}));
}

void CommentChainTest::aLineMayCloseAllAndOpenAnother()
{
    const QTextDocument document(text("/*\n/*\n*/ */ /*"));
    QCOMPARE(chainOf(document).openAfter(2), QVector<int>{3});
}

void CommentChainTest::linesInsideAreCounted()
{
    const QTextDocument document(text("/*\n\n*/\n/*a*/\n/*"));
    CommentChain chain = chainOf(document);
    QCOMPARE(chain.linesInside(), 3);
    chain.cutFrom(1);
    QCOMPARE(chain.linesInside(), 1);
    chain.cutFrom(0);
    QCOMPARE(chain.linesInside(), 0);
}

void CommentChainTest::blocksKeepWhetherTheyEndInside()
{
    QTextDocument document(text("/*\n\n*/"));
    CommentChain chain = chainOf(document);
    QCOMPARE(document.findBlockByNumber(0).userState(), 1);
    QCOMPARE(document.findBlockByNumber(1).userState(), 1);
    QCOMPARE(document.findBlockByNumber(2).userState(), -1);
    chain.clear(document);
    QCOMPARE(document.findBlockByNumber(1).userState(), -1);
    QCOMPARE(chain.elements(), std::size_t(0));
}

void CommentChainTest::whatIsCutIsWorkedOutAnew()
{
    QTextDocument document(text("/*\n/*\n/*"));
    CommentChain chain = chainOf(document);
    QTextCursor cursor(document.findBlockByNumber(1));
    cursor.movePosition(QTextCursor::EndOfBlock, QTextCursor::KeepAnchor);
    cursor.removeSelectedText();
    chain.cutFrom(1);
    chain.extendTo(document, scanner(), 2);
    QCOMPARE(chain.openAfter(2), (QVector<int>{1, 3}));
    QCOMPARE(chain.elements(), chainOf(document).elements());
}

void CommentChainTest::manyCommentsThatNothingEndsTakeLittle()
{
    const int lines = 200000;
    const QTextDocument document(text("/* x\n").repeated(lines));
    const CommentChain chain = chainOf(document);
    QCOMPARE(chain.depthAfter(lines), lines);
    // Of each line its end and its comment, and the end of the empty last line.
    QCOMPARE(chain.elements(), std::size_t(2 * lines + 1));
    const QVector<int> open = chain.openAfter(lines);
    QCOMPARE(open.size(), lines);
    QCOMPARE(open.first(), 1);
    QCOMPARE(open.last(), lines);
}

void CommentChainTest::anyLinesNestAsAStackDoes()
{
    static const char *const pieces[] = {"/*", "/*", "*/", "a", " "};
    std::mt19937 random(11);
    QString all;
    for (int i = 0; i < 5000; ++i) {
        all += text(pieces[random() % std::size(pieces)]);
        if (random() % 3 == 0)
            all += QLatin1Char('\n');
    }
    const QTextDocument document(all);
    const CommentChain chain = chainOf(document);
    QVector<int> stack;
    int deepest = 0;
    for (int line = 0; line < document.blockCount(); ++line) {
        CommentScanner::OpenComments open = {stack.size()};
        scanner().blockComments(document.findBlockByNumber(line).text(), open);
        stack.resize(open.before);
        stack += QVector<int>(open.here, line + 1);
        deepest = qMax(deepest, stack.size());
        QCOMPARE(chain.openAfter(line), stack);
    }
    QVERIFY(deepest > 3);
}

QTEST_GUILESS_MAIN(CommentChainTest)
#include "CommentChainTest.moc"
