#include "tests/mainwindow/WindowFixture.h"

#include "tests/support/Patience.h"

#include <QAbstractItemView>
#include <QAction>
#include <QApplication>
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QTest>
#include <QTimer>

WindowFixture::WindowFixture()
{
    emptyApplicationDirectory();
}

WindowFixture::~WindowFixture()
{
    close();
}

void WindowFixture::emptyApplicationDirectory()
{
    const QStringList written = {
        QStringLiteral("sarvik.ini"),          QStringLiteral("sarvik.ini.bak1"),
        QStringLiteral("sarvikpara.ini"),      QStringLiteral("keywordhistory.ini"),
        QStringLiteral("inputSearchPath.ini"), QStringLiteral("sarvik.log"),
        QStringLiteral("fileDialog.ini")};
    for (const QString &name : written)
        QFile::remove(applicationFile(name));
    for (const char *folder : {"sarviklog", "sarvikrescue"})
        QDir(applicationFile(QLatin1String(folder))).removeRecursively();
}

MainWindow &WindowFixture::open(const QStringList &pathlist, const QString &mask,
                                const QString &findword)
{
    m_window.reset();
    m_window = std::make_unique<MainWindow>(pathlist, mask, findword);
    m_told.clear();
    QObject::connect(m_window->statusBar(), &QStatusBar::messageChanged, m_window.get(),
                     [this](const QString &message) {
                         if (!message.isEmpty())
                             m_told.append(message);
                     });
    m_window->show();
    if (!QTest::qWaitForWindowActive(m_window.get(), kPatienceMilliseconds))
        qFatal("the window does not become active");
    return *m_window;
}

void WindowFixture::fill(const QString &path, const QString &maskText, const QString &keyword)
{
    pathEdit()->setPlainText(path);
    mask()->setEditText(maskText);
    keyword1()->setEditText(keyword);
}

bool WindowFixture::isRunning() const
{
    return searchButton()->text() != QStringLiteral("検索開始");
}

bool WindowFixture::waitUntilIdle() const
{
    return QTest::qWaitFor([this] { return !isRunning(); }, kPatienceMilliseconds);
}

bool WindowFixture::search(const QString &path, const QString &maskText, const QString &keyword)
{
    fill(path, maskText, keyword);
    searchButton()->click();
    return waitUntilIdle();
}

QString WindowFixture::resultText() const
{
    QString text = resultView()->toPlainText();
    const QRegularExpression seconds(QStringLiteral("^処理時間: \\d+\\.\\d\\d 秒$"),
                                     QRegularExpression::MultilineOption);
    return text.replace(seconds, QStringLiteral("処理時間: T 秒"));
}

void WindowFixture::waitForFading()
{
    QTest::qWait(500);
}

QString WindowFixture::applicationFile(const QString &name)
{
    return QCoreApplication::applicationDirPath() + QLatin1Char('/') + name;
}

QByteArray WindowFixture::readApplicationFile(const QString &name)
{
    QFile file(applicationFile(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QDir WindowFixture::logDirectory()
{
    return QDir(applicationFile(QStringLiteral("sarviklog")));
}

bool WindowFixture::chooseLog(const QString &name, LogChoice choice)
{
    bool chosen = false;
    QTimer::singleShot(0, m_window.get(), [&] {
        QWidget *dialog = QApplication::activeModalWidget();
        if (!dialog)
            return;
        auto *list = dialog->findChild<QAbstractItemView *>(QStringLiteral("listFiles"));
        QModelIndex entry;
        chosen = QTest::qWaitFor(
            [&] {
                const QModelIndex root = list->rootIndex();
                for (int row = 0; row < list->model()->rowCount(root); ++row) {
                    if (list->model()->index(row, 0, root).data().toString() == name)
                        entry = list->model()->index(row, 0, root);
                }
                return entry.isValid();
            },
            kPatienceMilliseconds);
        if (!entry.isValid()) {
            QTest::keyClick(list, Qt::Key_Escape);
            return;
        }
        list->setCurrentIndex(entry);
        if (choice == LogChoice::AcceptWhatIsGone)
            chosen = QFile::remove(logDirectory().filePath(name)) && chosen;
        QTest::keyClick(list, choice == LogChoice::Cancel ? Qt::Key_Escape : Qt::Key_Return);
    });
    child<QAction>("actionOpenLog")->trigger();
    return chosen && !QApplication::activeModalWidget();
}
