#include "engine/NativePath.h"

#include <QTest>

/// Names there are UTF-16, in which a half of a surrogate pair may stand alone.
class WindowsNativePathTest : public QObject {
    Q_OBJECT

private slots:
    void aNameIsItsUtf8_data();
    void aNameIsItsUtf8();
    void everyUnitComesBack();
    void everyTwoHalvesComeBack();
    void aByteOrderMarkIsPartOfTheName();
    void onlyTheGivenNumberOfBytesIsRead();
};

namespace {

QString units(std::initializer_list<int> codes)
{
    QString text;
    for (const int code : codes)
        text += QChar(ushort(code));
    return text;
}

} // namespace

void WindowsNativePathTest::aNameIsItsUtf8_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QByteArray>("bytes");
    const QString a = QStringLiteral("a");
    QTest::newRow("empty") << QString() << QByteArray();
    QTest::newRow("ASCII") << QStringLiteral("C:/readme.txt") << QByteArray("C:/readme.txt");
    QTest::newRow("Japanese") << QStringLiteral("日本") << QByteArray("\xE6\x97\xA5\xE6\x9C\xAC");
    QTest::newRow("a pair") << QStringLiteral("𠮷.txt") << QByteArray("\xF0\xA0\xAE\xB7.txt");
    QTest::newRow("the first half") << units({0xD800}) << QByteArray("\xED\xA0\x80");
    QTest::newRow("the last half") << units({0xDFFF}) << QByteArray("\xED\xBF\xBF");
    QTest::newRow("a high half between characters")
        << a + units({0xDBFF}) + QStringLiteral("灯") << QByteArray("a\xED\xAF\xBF\xE7\x81\xAF");
    QTest::newRow("a low half between characters") << a + units({0xDC00}) + a
                                                   << QByteArray("a\xED\xB0\x80"
                                                                 "a");
    QTest::newRow("halves in the wrong order")
        << units({0xDFB7, 0xD842}) << QByteArray("\xED\xBE\xB7\xED\xA1\x82");
    QTest::newRow("a high half before a pair")
        << units({0xD842, 0xD842, 0xDFB7}) << QByteArray("\xED\xA1\x82\xF0\xA0\xAE\xB7");
    QTest::newRow("a low half behind a pair")
        << units({0xD842, 0xDFB7, 0xDFB7}) << QByteArray("\xF0\xA0\xAE\xB7\xED\xBE\xB7");
    QTest::newRow("a character beside the halves")
        << units({0xD7FF, 0xE000}) << QByteArray("\xED\x9F\xBF\xEE\x80\x80");
}

void WindowsNativePathTest::aNameIsItsUtf8()
{
    QFETCH(QString, text);
    QFETCH(QByteArray, bytes);
    QCOMPARE(NativePath::toNative(text).toHex(' '), bytes.toHex(' '));
    QCOMPARE(NativePath::fromNative(bytes), text);
}

void WindowsNativePathTest::everyUnitComesBack()
{
    for (int code = 1; code <= 0xFFFF; ++code) {
        const QString name = QLatin1Char('a') + QString(QChar(ushort(code))) + QLatin1Char('b');
        const QByteArray bytes = NativePath::toNative(name);
        QVERIFY2(bytes.size()
                     == 2
                         + (code < 0x80        ? 1
                                : code < 0x800 ? 2
                                               : 3),
                 qPrintable(QString::number(code, 16)));
        if (NativePath::fromNative(bytes) != name)
            QFAIL(qPrintable(QString::number(code, 16)));
    }
}

void WindowsNativePathTest::everyTwoHalvesComeBack()
{
    for (int first = 0xD800; first <= 0xDFFF; first += 37) {
        for (int second = 0xD800; second <= 0xDFFF; ++second) {
            const QString name = units({first, second});
            if (NativePath::fromNative(NativePath::toNative(name)) != name)
                QFAIL(qPrintable(QString::number(first, 16) + QString::number(second, 16)));
        }
    }
}

void WindowsNativePathTest::aByteOrderMarkIsPartOfTheName()
{
    const QByteArray mark("\xEF\xBB\xBF");
    const QString sign = units({0xFEFF});
    QCOMPARE(NativePath::fromNative(mark + "a.txt"), sign + QStringLiteral("a.txt"));
    QCOMPARE(NativePath::fromNative(mark + mark), sign + sign);
    QCOMPARE(NativePath::fromNative(QByteArray("\xED\xA0\x80") + mark), units({0xD800, 0xFEFF}));
    QCOMPARE(NativePath::toNative(sign), mark);
}

void WindowsNativePathTest::onlyTheGivenNumberOfBytesIsRead()
{
    QCOMPARE(NativePath::fromNative("abcdef", 3), QStringLiteral("abc"));
    QCOMPARE(NativePath::fromNative("a\xED\xA0\x80", 4), QLatin1Char('a') + units({0xD800}));
}

QTEST_GUILESS_MAIN(WindowsNativePathTest)
#include "WindowsNativePathTest.moc"
