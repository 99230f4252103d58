#include "engine/NativePath.h"
#include "engine/TextGrepCore.h"
#include "tests/engine_support/EngineRun.h"
#include "tests/engine_support/SearchRequests.h"
#include "tests/support/ScratchFolder.h"
#include "tests/support/TestLength.h"

#include <QDir>
#include <QFile>
#include <QTest>

#include <atomic>
#include <random>
#include <thread>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

/// Searches and line counts while somebody else changes the tree.
class ChangingTreeTest : public QObject {
    Q_OBJECT

private slots:
    void whatIsSteadyIsFoundWhileTheRestChanges_data();
    void whatIsSteadyIsFoundWhileTheRestChanges();
};

namespace {

constexpr int kSteadyFiles = 150;
constexpr int kChangingNames = 25;

/// Never looks at what it gets: an entry may just have turned into another kind.
class Vandal {
public:
    using Act = void (Vandal::*)();

    Vandal(const QByteArray &root, Act act) : m_root(root), m_act(act), m_thread([this] { run(); })
    {
    }
    ~Vandal()
    {
        m_stop = true;
        m_thread.join();
        // Every name becomes free for the folder's own removal.
        for (int i = 0; i < kChangingNames; ++i)
            clear(name(i));
    }
    Vandal(const Vandal &) = delete;
    Vandal &operator=(const Vandal &) = delete;

    int acts() const { return m_acts; }

    void grow()
    {
        const QByteArray line(1 + number(40000), 'g');
        append(anyName(), O_APPEND, line + "\nneedle\n");
    }
    void shrink()
    {
        const QByteArray path = anyName();
        append(path, O_APPEND, QByteArray(100000, 's') + '\n');
        ::truncate(path.constData(), number(100000));
    }
    void vanish()
    {
        const QByteArray path = anyName();
        append(path, O_TRUNC, "needle\n");
        ::unlink(path.constData());
    }
    void changeKind()
    {
        const QByteArray path = anyName();
        clear(path);
        switch (number(5)) {
        case 0:
            ::mkdir(path.constData(), 0755);
            append(path + "/inside.txt", O_TRUNC, "needle\n");
            break;
        case 1:
            ::mkfifo(path.constData(), 0644);
            break;
        case 2:
            (void)!::symlink(m_root.constData(), path.constData());
            break;
        case 3:
            (void)!::symlink(anyName().constData(), path.constData());
            break;
        default:
            append(path, O_TRUNC, "needle\n");
        }
    }
    void move()
    {
        append(anyName(), O_TRUNC, "needle\n");
        ::rename(anyName().constData(), anyName().constData());
    }
    void everything()
    {
        const Act acts[] = {&Vandal::grow, &Vandal::shrink, &Vandal::vanish, &Vandal::changeKind,
                            &Vandal::move};
        (this->*acts[number(5)])();
    }

private:
    void run()
    {
        while (!m_stop) {
            (this->*m_act)();
            ++m_acts;
        }
    }
    int number(int limit) { return static_cast<int>(m_random() % static_cast<unsigned>(limit)); }
    QByteArray name(int i) const { return m_root + "changing/" + QByteArray::number(i) + ".txt"; }
    QByteArray anyName() { return name(number(kChangingNames)); }

    static void append(const QByteArray &path, int flag, const QByteArray &bytes)
    {
        const int descriptor =
            ::open(path.constData(), O_WRONLY | O_CREAT | O_NONBLOCK | O_CLOEXEC | flag, 0644);
        if (descriptor < 0)
            return;
        struct stat status = {};
        constexpr off_t kMost = 3 << 20;
        if (::fstat(descriptor, &status) == 0 && status.st_size > kMost)
            (void)!::ftruncate(descriptor, 0);
        (void)!::write(descriptor, bytes.constData(), static_cast<size_t>(bytes.size()));
        ::close(descriptor);
    }
    static void clear(const QByteArray &path)
    {
        ::unlink(QByteArray(path + "/inside.txt").constData());
        ::unlink(path.constData());
        ::rmdir(path.constData());
    }

    const QByteArray m_root;
    const Act m_act;
    std::mt19937 m_random{20251224};
    std::atomic<bool> m_stop{false};
    std::atomic<int> m_acts{0};
    std::thread m_thread; // last: it uses all the others
};

} // namespace

Q_DECLARE_METATYPE(Vandal::Act)

void ChangingTreeTest::whatIsSteadyIsFoundWhileTheRestChanges_data()
{
    QTest::addColumn<Vandal::Act>("act");
    QTest::newRow("files grow") << &Vandal::grow;
    QTest::newRow("files shrink") << &Vandal::shrink;
    QTest::newRow("files vanish") << &Vandal::vanish;
    QTest::newRow("files turn into folders, links and FIFOs") << &Vandal::changeKind;
    QTest::newRow("files change their names") << &Vandal::move;
    QTest::newRow("all of it") << &Vandal::everything;
}

void ChangingTreeTest::whatIsSteadyIsFoundWhileTheRestChanges()
{
    QFETCH(Vandal::Act, act);
    const ScratchFolder tree;
    tree.makeFolder(QStringLiteral("changing"));
    QStringList steady;
    for (int i = 0; i < kSteadyFiles; ++i)
        steady.append(tree.write(QStringLiteral("%1/%2.txt").arg(i % 10).arg(i), "a\nneedle\n"));
    std::sort(steady.begin(), steady.end());
    const Vandal vandal(QFile::encodeName(tree.path()), act);

    const auto ofSteady = [&](const QStringList &paths) {
        QStringList found;
        for (const QString &path : paths) {
            if (!path.startsWith(tree.path() + QStringLiteral("changing/")))
                found.append(path);
        }
        std::sort(found.begin(), found.end());
        return found;
    };
    for (int round = 0; round < TestLength::rounds(8, 100); ++round) {
        EngineRun run;
        QVERIFY(run.run(searchFor(QStringLiteral("needle"), {tree.path()})));
        QCOMPARE(run.finishedFlags, QVector<bool>{false});
        QStringList found;
        for (const auto &list : qAsConst(run.lists)) {
            for (int i = 0; i < list.second.size(); ++i)
                found.append(list.first);
        }
        QCOMPARE(ofSteady(found), steady);

        QVERIFY(run.run(countLinesIn({tree.path()})));
        QCOMPARE(run.lcntFinishedFlags, QVector<bool>{false});
        QStringList counted;
        for (const auto &count : qAsConst(run.lineCounts))
            counted.append(count.first);
        QCOMPARE(ofSteady(counted), steady);
    }
    QVERIFY(vandal.acts() > 0);
}

QTEST_GUILESS_MAIN(ChangingTreeTest)
#include "ChangingTreeTest.moc"
