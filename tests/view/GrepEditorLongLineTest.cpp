#include <QtTest>
QTEST_MAIN(QObject)
