#include "ProfilesFixture.h"

#include <QtTest/QtTest>

#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/ptrace.h>
#include <sys/syscall.h>
#include <sys/wait.h>

#include <algorithm>
#include <chrono>
#include <random>
#include <thread>
#include <vector>

namespace {

using Action = DashboardProfileAction::Code;

/// What a process that is going to be killed does: one operation, or all kinds of them for ever.
void operate(const QString &operation, DashboardProfilesManager &store, FakeProvider &provider,
             unsigned seed)
{
    const auto id = [&](const QString &name) {
        for (const auto &header : store.profileHeaders()) {
            if (header.name == name)
                return header.id;
        }
        return DashboardProfileHeader::NoId;
    };
    if (operation == "save"_q) {
        provider.name = "two"_q;
        store.performAction(id("Alpha"_q), Action::Activate, {});
    } else if (operation == "copy"_q) {
        store.performAction(id("Beta"_q), Action::Copy, "Copied"_q);
    } else if (operation == "copy half"_q) {
        QFile::remove(store.profile(id("Gamma"_q))->previewPath);
        store.performAction(id("Gamma"_q), Action::Copy, "Copied"_q);
    } else if (operation == "rename"_q) {
        store.performAction(id("Beta"_q), Action::Rename, "Renamed"_q);
    } else if (operation == "remove"_q) {
        store.performAction(id("Beta"_q), Action::Remove, {});
    }
    while (operation == "renames"_q) {
        store.performAction(id("Beta"_q), Action::Rename, "Renamed"_q);
        store.performAction(id("Renamed"_q), Action::Rename, "Beta"_q);
    }
    std::mt19937 random(seed);
    while (operation == "loop"_q) {
        const QString copy = "Copy%1"_q.arg(random() % 4);
        provider.name = random() % 2 == 0 ? "one"_q : "two"_q;
        store.performAction(id("Alpha"_q), Action::Activate, {});
        store.performAction(id("Beta"_q), Action::Activate, {});
        store.performAction(id("Gamma"_q), Action::Copy, copy);
        store.performAction(id(copy), Action::Rename, copy + "Renamed"_q);
        store.performAction(id(copy + "Renamed"_q), Action::Remove, {});
    }
}

int operateAndEnd(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
    FakeEngine engine;
    FakeProvider provider;
    DashboardProfilesManager store(&engine, &provider);
    std::raise(SIGSTOP);
    const QByteArray seed(argc > 2 ? argv[2] : "0");
    operate(QString::fromLocal8Bit(argv[1]), store, provider, seed.toUInt());
    std::_Exit(0);
}

pid_t spawn(const QByteArray &operation, const QByteArray &seed, bool traced)
{
    const QByteArray program = QFile::encodeName(QCoreApplication::applicationFilePath());
    const pid_t child = fork();
    if (child == 0) {
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        if (traced && ptrace(PTRACE_TRACEME, 0, nullptr, nullptr) != 0)
            _exit(3);
        execl(program.constData(), program.constData(), operation.constData(), seed.constData(),
              nullptr);
        _exit(4);
    }
    return child;
}

/// A process that has its store and waits to be let go.
pid_t spawnStopped(const QByteArray &operation, unsigned seed)
{
    const pid_t child = spawn(operation, QByteArray::number(seed), false);
    int status = 0;
    if (waitpid(child, &status, WUNTRACED) != child || !WIFSTOPPED(status))
        qFatal("a process ended before it was killed");
    return child;
}

/// Lets the processes go, and kills them.
void killAfter(std::chrono::microseconds time, const std::vector<pid_t> &processes)
{
    for (const pid_t process : processes)
        kill(process, SIGCONT);
    std::this_thread::sleep_for(time);
    for (const pid_t process : processes) {
        kill(process, SIGKILL);
        int status = 0;
        if (waitpid(process, &status, 0) != process || !WIFSIGNALED(status))
            qFatal("a process ended before it was killed");
    }
}

/// Whether a system call can change what is on disk.
bool touchesTheDisk(const __ptrace_syscall_info &info)
{
    switch (info.entry.nr) {
    case SYS_openat:
        return (info.entry.args[2] & (O_CREAT | O_TRUNC)) != 0;
#ifdef SYS_rename
    case SYS_open:
        return (info.entry.args[1] & (O_CREAT | O_TRUNC)) != 0;
    case SYS_rename:
    case SYS_mkdir:
    case SYS_rmdir:
    case SYS_unlink:
    case SYS_link:
#endif
    case SYS_renameat:
    case SYS_renameat2:
    case SYS_mkdirat:
    case SYS_unlinkat:
    case SYS_linkat:
    case SYS_write:
    case SYS_ftruncate:
    case SYS_fchmod:
    case SYS_fsync:
    case SYS_fdatasync:
        return true;
    default:
        return false;
    }
}

enum class End { Killed, Finished, Untraceable };

/// Runs `operation` in a process of its own and kills it before its `step`th change on disk.
End killAt(int step, const QByteArray &operation)
{
    const pid_t child = spawn(operation, "0", true);
    int status = 0;
    const auto goOn = [&](__ptrace_request request, int signal) {
        ptrace(request, child, nullptr, signal);
        return waitpid(child, &status, 0) == child && WIFSTOPPED(status);
    };
    if (waitpid(child, &status, 0) != child || !WIFSTOPPED(status))
        return End::Untraceable;
    ptrace(PTRACE_SETOPTIONS, child, nullptr, PTRACE_O_EXITKILL | PTRACE_O_TRACESYSGOOD);
    while (WSTOPSIG(status) != SIGSTOP) {
        if (!goOn(PTRACE_CONT, 0))
            return End::Untraceable;
    }
    while (goOn(PTRACE_SYSCALL, 0)) {
        __ptrace_syscall_info info{};
        ptrace(PTRACE_GET_SYSCALL_INFO, child, sizeof info, &info);
        if (info.op == PTRACE_SYSCALL_INFO_ENTRY && touchesTheDisk(info) && --step == 0) {
            kill(child, SIGKILL);
            waitpid(child, &status, 0);
            return End::Killed;
        }
    }
    return WIFEXITED(status) && WEXITSTATUS(status) == 0 ? End::Finished : End::Untraceable;
}

struct Home : ProfilesFixture
{
    explicit Home(const QString &parent)
        : ProfilesFixture(parent)
    {
        addUser({"Alpha"_q, "Beta"_q, "Gamma"_q});
        setRecentName("Beta"_q);
        writeFile(iniPath(), "[Alpha]\nVehicle.0.Name=one\nVehicleCount=1\n"
                             "[Beta]\nVehicle.0.Name=two\nVehicle.1.Name=three\nVehicleCount=2\n");
    }

    static QString before() { return "Alpha(one) Beta*(three two) Gamma()"_q; }

    /// The list with the active profile and all vehicles, as a start finds them.
    QString state()
    {
        start();
        QStringList result;
        for (const DashboardProfileHeader &header : store->profileHeaders()) {
            QStringList vehicles = assignments().value(header.name).values();
            vehicles.sort();
            const QString active = header.id == store->activeProfileId() ? "*"_q : QString();
            result += header.name + active + u'(' + vehicles.join(u' ') + u')';
        }
        return result.join(u' ');
    }

    bool isWhole(const QString &name) const
    {
        const QStringList files = assets();
        return readFile(userPath(name + "/Dash.qml"_q)) == "Item {}" &&
               readFile(userPath(name + "/preview.png"_q)) == "png" &&
               std::all_of(files.cbegin(), files.cend(), [&](const QString &file) {
                   return readFile(userPath(name + u'/' + file)).size() == 20'000;
               });
    }
};

} // namespace

class ProfileKillTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aKillBeforeAnyChangeOnDiskLeavesTheOldOrTheNew_data()
    {
        QTest::addColumn<QByteArray>("operation");
        QTest::addColumn<QStringList>("after");
        QTest::addColumn<bool>("otherVolume");
        // An activation is two changes: first the dashboard, then the vehicle that goes with it.
        const QStringList activated{"Alpha*(one) Beta(three two) Gamma()"_q,
                                    "Alpha*(one two) Beta(three) Gamma()"_q};
        QTest::newRow("save") << QByteArray("save") << activated << false;
        QTest::newRow("save, two volumes") << QByteArray("save") << activated << true;
        QTest::newRow("copy") << QByteArray("copy")
                              << QStringList{"Alpha(one) Beta*(three two) Copied() Gamma()"_q}
                              << false;
        QTest::newRow("copy half")
            << QByteArray("copy half") << QStringList{"Alpha(one) Beta*(three two)"_q} << false;
        QTest::newRow("rename") << QByteArray("rename")
                                << QStringList{"Alpha(one) Gamma() Renamed*(three two)"_q} << false;
        QTest::newRow("remove") << QByteArray("remove") << QStringList{"Alpha*(one) Gamma()"_q}
                                << false;
    }

    void aKillBeforeAnyChangeOnDiskLeavesTheOldOrTheNew()
    {
        QFETCH(QByteArray, operation);
        QFETCH(QStringList, after);
        QFETCH(bool, otherVolume);
        for (int step = 1;; ++step) {
            Home f(otherVolume ? QDir::tempPath() : fastFolder());
            const QString other = folderOnOtherVolume(f.home.path());
            if (otherVolume && other.isEmpty())
                QSKIP("there is one volume only", );
            const QTemporaryDir away(other + "/gauge-XXXXXX"_q);
            if (otherVolume)
                qputenv("TMPDIR", away.path().toLocal8Bit());

            const End end = killAt(step, operation);
            if (end == End::Untraceable)
                QSKIP("this system doesn't let a test trace its child", );
            const QString state = f.state();
            QVERIFY2(state == Home::before() || after.contains(state), qUtf8Printable(state));
            const QStringList names = f.names();
            for (const QString &name : names)
                QVERIFY2(f.isWhole(name), qUtf8Printable(name));
            // The name that a copy was killed with is free again, and its leavings are gone, as
            // are those of a save.
            if (!f.names().contains("Copied"_q))
                QVERIFY(f.act("Alpha"_q, Action::Copy, "Copied"_q).ok);
            else
                QVERIFY(f.act("Alpha"_q, Action::Copy, "Another"_q).ok);
            QVERIFY(f.leftovers().isEmpty());
            f.store->activateRecentProfileForVehicle("new"_q);
            QVERIFY(QDir(QDir::tempPath()).isEmpty());
            if (end == End::Finished) {
                QCOMPARE(state, after.last());
                QVERIFY(step > 5);
                qInfo() << "killed" << step - 1 << "times";
                return;
            }
        }
    }

    void aKillAtARandomMomentOfRenamesLosesNothing()
    {
        const QStringList possible{Home::before(), "Alpha(one) Gamma() Renamed*(three two)"_q};
        Home f(fastFolder());
        std::mt19937 random(13);
        for (int round = 0; round < 30; ++round) {
            killAfter(std::chrono::microseconds(random() % 30'000), {spawnStopped("renames", 0)});
            const QString state = f.state();
            QVERIFY2(possible.contains(state), qUtf8Printable(state));
        }
    }

    void twoProcessesOnOneFolderKilledAtRandomCorruptNothing()
    {
        Home f(fastFolder());
        std::mt19937 random(64);
        for (unsigned round = 0; round < 60; ++round) {
            const auto time = std::chrono::microseconds(1000 + random() % 30'000);
            const auto seed = static_cast<unsigned>(random());
            killAfter(time, {spawnStopped("loop", seed), spawnStopped("loop", seed + 1)});
            f.start();
            const QStringList names = f.names();
            for (const QString &name : names)
                QVERIFY2(f.isWhole(name), qUtf8Printable(name));
            for (const char *const name : {"Alpha", "Beta", "Gamma"})
                QVERIFY(f.names().contains(QString::fromLatin1(name)));
            QSet<QString> vehicles;
            const Assignments assignments = f.storedAssignments();
            for (const QSet<QString> &stored : assignments)
                vehicles += stored;
            QCOMPARE(vehicles, (QSet<QString>{"one"_q, "two"_q, "three"_q}));
        }
        QVERIFY(f.act("Gamma"_q, Action::Copy, "Last"_q).ok);
        QVERIFY(f.leftovers().isEmpty());
    }
};

int main(int argc, char **argv)
{
    const bool child = argc > 2 && qgetenv("HOME").contains("gauge-home-");
    if (child)
        return operateAndEnd(argc, argv);
    QCoreApplication application(argc, argv);
    ProfileKillTest test;
    return QTest::qExec(&test, argc, argv);
}
#include "ProfileKillTest.moc"
