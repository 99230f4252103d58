#include "mainwindow/ViewKeys.h"

#include "settings/AppSettings.h"
#include "tests/support/Patience.h"
#include "tests/support/ScratchFolder.h"
#include "view/GrepEditor.h"

#include <QSplitter>
#include <QtTest>

#include <memory>

class ViewKeysTest : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup() { m_splitter.reset(); }

    void aKeyChangesTheSizeOfTheLetters_data();
    void aKeyChangesTheSizeOfTheLetters();
    void theOtherViewKeepsItsSize();
    void theLettersComeBackAsTheyWereSet();
    void theBorderMoves_data();
    void theBorderMoves();
    void theBorderStopsWhereAViewWouldVanish_data();
    void theBorderStopsWhereAViewWouldVanish();

private:
    GrepEditor *view(bool second) const { return second ? m_preview : m_resultView; }

    const ScratchFolder m_folder;
    std::unique_ptr<QSplitter> m_splitter;
    GrepEditor *m_resultView = nullptr;
    GrepEditor *m_preview = nullptr;
};

void ViewKeysTest::init()
{
    AppSettings::instance().load(m_folder.path());
    m_splitter = std::make_unique<QSplitter>(Qt::Vertical);
    m_splitter->setChildrenCollapsible(false);
    m_resultView = new GrepEditor(true);
    m_preview = new GrepEditor(false);
    for (GrepEditor *view : {m_resultView, m_preview}) {
        m_splitter->addWidget(view);
        ViewKeys::install(view, m_splitter.get());
    }
    m_splitter->resize(400, 600);
    m_splitter->setSizes({300, 300});
    m_splitter->show();
    QVERIFY(QTest::qWaitForWindowActive(m_splitter.get(), kPatienceMilliseconds));
}

void ViewKeysTest::aKeyChangesTheSizeOfTheLetters_data()
{
    QTest::addColumn<bool>("second");
    QTest::addColumn<Qt::Key>("key");
    QTest::addColumn<int>("points");
    for (const bool second : {false, true}) {
        const char *name = second ? "preview" : "result view";
        QTest::addRow("%s, plus", name) << second << Qt::Key_Plus << 1;
        QTest::addRow("%s, the key of plus", name) << second << Qt::Key_Equal << 1;
        QTest::addRow("%s, minus", name) << second << Qt::Key_Minus << -1;
    }
}

void ViewKeysTest::aKeyChangesTheSizeOfTheLetters()
{
    QFETCH(bool, second);
    QFETCH(Qt::Key, key);
    QFETCH(int, points);
    GrepEditor *changed = view(second);
    changed->setFocus();
    const int before = changed->font().pointSize();
    QTest::keyClick(changed, key, Qt::ControlModifier);
    QCOMPARE(changed->font().pointSize(), before + points);
    QTest::keyClick(changed, key, Qt::ControlModifier);
    QCOMPARE(changed->font().pointSize(), before + 2 * points);
}

void ViewKeysTest::theOtherViewKeepsItsSize()
{
    const int before = m_preview->font().pointSize();
    m_resultView->setFocus();
    QTest::keyClick(m_resultView, Qt::Key_Plus, Qt::ControlModifier);
    QCOMPARE(m_preview->font().pointSize(), before);
}

void ViewKeysTest::theLettersComeBackAsTheyWereSet()
{
    m_resultView->setFocus();
    const int before = m_resultView->font().pointSize();
    QTest::keyClick(m_resultView, Qt::Key_Minus, Qt::ControlModifier);
    QTest::keyClick(m_resultView, Qt::Key_Minus, Qt::ControlModifier);
    QTest::keyClick(m_resultView, Qt::Key_0, Qt::ControlModifier);
    QCOMPARE(m_resultView->font().pointSize(), before);
}

void ViewKeysTest::theBorderMoves_data()
{
    QTest::addColumn<bool>("second");
    QTest::addColumn<Qt::Key>("key");
    QTest::addColumn<int>("direction");
    QTest::newRow("up from the result view") << false << Qt::Key_Up << -1;
    QTest::newRow("down from the result view") << false << Qt::Key_Down << 1;
    QTest::newRow("up from the preview") << true << Qt::Key_Up << -1;
    QTest::newRow("down from the preview") << true << Qt::Key_Down << 1;
}

void ViewKeysTest::theBorderMoves()
{
    QFETCH(bool, second);
    QFETCH(Qt::Key, key);
    QFETCH(int, direction);
    view(second)->setFocus();
    const QList<int> before = m_splitter->sizes();
    QTest::keyClick(view(second), key, Qt::AltModifier);
    const QList<int> after = m_splitter->sizes();
    QVERIFY((after[0] - before[0]) * direction > 0);
    QCOMPARE(after[0] + after[1], before[0] + before[1]);
}

void ViewKeysTest::theBorderStopsWhereAViewWouldVanish_data()
{
    QTest::addColumn<int>("pixels");
    QTest::addColumn<int>("shrinking");
    QTest::newRow("up") << -5000 << 0;
    QTest::newRow("down") << 5000 << 1;
}

void ViewKeysTest::theBorderStopsWhereAViewWouldVanish()
{
    QFETCH(int, pixels);
    QFETCH(int, shrinking);
    ViewKeys::moveBorder(m_splitter.get(), pixels);
    const int least = m_splitter->widget(shrinking)->minimumSizeHint().height();
    QCOMPARE(m_splitter->sizes().at(shrinking), least);
    // There it stays.
    ViewKeys::moveBorder(m_splitter.get(), pixels);
    QCOMPARE(m_splitter->sizes().at(shrinking), least);
}

QTEST_MAIN(ViewKeysTest)
#include "ViewKeysTest.moc"
