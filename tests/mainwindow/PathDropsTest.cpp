#include "mainwindow/PathDrops.h"

#include "mainwindow/PathEdit.h"
#include "tests/mainwindow/WindowTest.h"

#include <QApplication>
#include <QDropEvent>
#include <QLineEdit>
#include <QMimeData>
#include <QTest>
#include <QUrl>

/// Drops on the whole window, as the window system makes them.
class PathDropsTest : public WindowTest {
    Q_OBJECT

private slots:
    void init();

    void aFolderThatIsDroppedAnywhereIsASearchPath_data();
    void aFolderThatIsDroppedAnywhereIsASearchPath();
    void ofAFileItIsTheFolder();
    void aListedFolderIsNotAddedAgain();
    void aFolderWithANoBreakSpaceIsListedOnce();
    void whoDragsIsToldThatItIsACopy();
    void anEditablePreviewTakesNoAddress();
    void aTextIsForTheFieldUnderTheMouse();
    void aTextIsForNobodyElse();

private:
    QWidget *widget(const QString &name) const;
    Qt::DropAction drop(QWidget *target, const QMimeData &data) const;

    QString m_folder;
};

namespace {

void setFile(QMimeData &data, const QString &path)
{
    data.setUrls({QUrl::fromLocalFile(path)});
    // As file managers do.
    data.setText(QUrl::fromLocalFile(path).toString());
}

} // namespace

void PathDropsTest::init()
{
    m_fixture = std::make_unique<WindowFixture>();
    m_folder = m_fixture->tree.path();
    m_fixture->tree.write(QStringLiteral("a.txt"), "text\n");
    m_fixture->open();
}

/// What is under the mouse there.
QWidget *PathDropsTest::widget(const QString &name) const
{
    auto *found = m_fixture->window().findChild<QWidget *>(name);
    if (auto *view = qobject_cast<QAbstractScrollArea *>(found))
        return view->viewport();
    if (auto *combo = qobject_cast<QComboBox *>(found))
        return combo->lineEdit();
    return found ? found : &m_fixture->window();
}

Qt::DropAction PathDropsTest::drop(QWidget *target, const QMimeData &data) const
{
    const QPoint point(3, 3);
    const Qt::DropActions actions = Qt::CopyAction | Qt::MoveAction;
    QDragEnterEvent enter(point, actions, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(target, &enter);
    if (!enter.isAccepted())
        return Qt::IgnoreAction;
    QDragMoveEvent move(point, actions, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(target, &move);
    if (!move.isAccepted())
        return Qt::IgnoreAction;
    QDropEvent dropped(point, actions, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(target, &dropped);
    return dropped.isAccepted() ? dropped.dropAction() : Qt::IgnoreAction;
}

void PathDropsTest::aFolderThatIsDroppedAnywhereIsASearchPath_data()
{
    QTest::addColumn<QString>("name");
    for (const char *name : {"window", "pathEdit", "maskCombo", "keyword1Combo", "resultView",
                             "preview", "toolBar", "statusBar", "subdirCheck", "pushButton"})
        QTest::newRow(name) << QString::fromLatin1(name);
}

void PathDropsTest::aFolderThatIsDroppedAnywhereIsASearchPath()
{
    QFETCH(QString, name);
    QMimeData data;
    setFile(data, m_folder);
    QVERIFY(drop(widget(name), data) != Qt::IgnoreAction);
    QCOMPARE(m_fixture->pathEdit()->toPlainText(), m_folder);
    QCOMPARE(m_fixture->mask()->currentText(), QString());
    QCOMPARE(m_fixture->keyword1()->currentText(), QString());
}

void PathDropsTest::ofAFileItIsTheFolder()
{
    QMimeData data;
    setFile(data, m_folder + QStringLiteral("a.txt"));
    drop(widget(QStringLiteral("resultView")), data);
    QCOMPARE(m_fixture->pathEdit()->toPlainText(), m_folder);
}

void PathDropsTest::aListedFolderIsNotAddedAgain()
{
    QMimeData data;
    setFile(data, m_folder);
    drop(widget(QStringLiteral("window")), data);
    drop(widget(QStringLiteral("window")), data);
    QCOMPARE(m_fixture->pathEdit()->toPlainText(), m_folder);
}

void PathDropsTest::aFolderWithANoBreakSpaceIsListedOnce()
{
    const QString folder = m_fixture->tree.makeFolder(QStringLiteral("a\u00A0b"));
    QMimeData data;
    setFile(data, folder);
    for (int times = 0; times < 2; ++times)
        QVERIFY(drop(widget(QStringLiteral("pathEdit")), data) != Qt::IgnoreAction);
    QCOMPARE(m_fixture->child<PathEdit>("pathEdit")->text(), folder);
}

void PathDropsTest::whoDragsIsToldThatItIsACopy()
{
    QMimeData data;
    setFile(data, m_folder);
    QCOMPARE(drop(widget(QStringLiteral("resultView")), data), Qt::CopyAction);
}

void PathDropsTest::anEditablePreviewTakesNoAddress()
{
    GrepEditor *preview = m_fixture->preview();
    preview->setReadOnly(false);
    QMimeData data;
    setFile(data, m_folder);
    drop(preview->viewport(), data);
    QCOMPARE(preview->toPlainText(), QString());
    QCOMPARE(m_fixture->pathEdit()->toPlainText(), m_folder);
    // A text is a text.
    QMimeData words;
    words.setText(QStringLiteral("words"));
    drop(preview->viewport(), words);
    QCOMPARE(preview->toPlainText(), QStringLiteral("words"));
}

void PathDropsTest::aTextIsForTheFieldUnderTheMouse()
{
    QMimeData words;
    words.setText(QStringLiteral("words"));
    drop(widget(QStringLiteral("keyword1Combo")), words);
    QCOMPARE(m_fixture->keyword1()->currentText(), QStringLiteral("words"));
    QCOMPARE(m_fixture->pathEdit()->toPlainText(), QString());
}

void PathDropsTest::aTextIsForNobodyElse()
{
    QMimeData words;
    words.setText(QStringLiteral("words"));
    QCOMPARE(drop(widget(QStringLiteral("toolBar")), words), Qt::IgnoreAction);
    QMimeData address;
    address.setUrls({QUrl(QStringLiteral("https://example.org/"))});
    QCOMPARE(drop(widget(QStringLiteral("toolBar")), address), Qt::IgnoreAction);
    QCOMPARE(m_fixture->pathEdit()->toPlainText(), QString());
}

QTEST_MAIN(PathDropsTest)
#include "PathDropsTest.moc"
