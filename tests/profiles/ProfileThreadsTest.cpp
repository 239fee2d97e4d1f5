#include "ProfilesFixture.h"

#include <QtTest/QtTest>

#include <atomic>
#include <chrono>
#include <random>
#include <thread>
#include <vector>

namespace {

thread_local bool changedTheStore = false;

/// Random operations against one store, and how many of them changed it.
class Worker
{
public:
    Worker(DashboardAbstractProfilesManager &store, unsigned seed)
        : store(store)
        , random(seed)
    {
    }

    int run(std::chrono::steady_clock::time_point end)
    {
        int changes = 0;
        while (std::chrono::steady_clock::now() < end) {
            changedTheStore = false;
            operate();
            changes += changedTheStore ? 1 : 0;
        }
        return changes;
    }

private:
    unsigned below(unsigned limit) { return static_cast<unsigned>(random()) % limit; }
    QString name() { return "P%1"_q.arg(below(16)); }

    DashboardProfileHeader::Id anyId()
    {
        const auto headers = store.profileHeaders();
        const bool wrong = headers.empty() || below(20) == 0;
        return wrong ? 12345 : headers[below(static_cast<unsigned>(headers.size()))].id;
    }

    void operate()
    {
        switch (below(8)) {
        case 0:
            store.performAction(0, DashboardProfileAction::Copy, name());
            break;
        case 1:
            store.performAction(anyId(), DashboardProfileAction::Rename, name());
            break;
        case 2:
            store.performAction(anyId(), DashboardProfileAction::Remove, {});
            break;
        case 3:
        case 4:
            store.performAction(anyId(), DashboardProfileAction::Activate, {});
            break;
        case 5:
        case 6:
            store.activateRecentProfileForVehicle("Car%1"_q.arg(below(10)));
            break;
        default:
            store.profileNameExists(name());
            store.profile(anyId());
            break;
        }
    }

    DashboardAbstractProfilesManager &store;
    std::mt19937 random;
};

/// A vehicle that changes with every question, asked under the store's lock.
class RestlessProvider final : public IRecentVehicleNameProvider
{
public:
    QString recentVehicleName() override { return "Car%1"_q.arg(++count % 10); }

private:
    int count = 0;
};

} // namespace

class ProfileThreadsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void sixThreadsLeaveTheStoreInOrder()
    {
        const auto handler =
            qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
        ProfilesFixture f;
        RestlessProvider provider;
        ProfilesFixture::addBuiltIn("Classic"_q);
        f.addUser({"P0"_q, "P1"_q, "P2"_q});
        f.store = std::make_unique<DashboardProfilesManager>(&f.engine, &provider);
        DashboardAbstractProfilesManager &store = *f.store;
        std::atomic<int> callsBack = 0;
        const auto callBack = [&](DashboardProfileHeader::Id id) {
            changedTheStore = true;
            callsBack += store.profile(id) ? 1 : 0;
        };
        connect(&store, &DashboardAbstractProfilesManager::profileModified, callBack);
        connect(&store, &DashboardAbstractProfilesManager::profileListChanged, [&] {
            changedTheStore = true;
            store.profileHeaders();
        });

        std::atomic<int> changes = 0;
        std::vector<std::thread> threads;
        const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(10);
        for (unsigned seed = 1; seed <= 6; ++seed) {
            threads.emplace_back(
                [&changes, &store, seed, end] { changes += Worker(store, seed).run(end); });
        }
        for (std::thread &thread : threads)
            thread.join();
        qInstallMessageHandler(handler);
        qInfo() << changes << "changes," << callsBack << "calls back";

        QVERIFY(changes > 0);
        QVERIFY(callsBack > 0);
        QCOMPARE(store.revision(), 1 + changes);
        QVERIFY(store.profile(store.activeProfileId()));
        QSet<QString> seen;
        const Assignments assignments = f.assignments();
        for (const QSet<QString> &vehicles : assignments) {
            QVERIFY(!seen.intersects(vehicles));
            seen += vehicles;
        }
        // A removal doesn't write the file, so the last word is an assignment's.
        store.activateRecentProfileForVehicle("Last"_q);
        QCOMPARE(f.storedAssignments(), f.assignments());
        QVERIFY(f.leftovers().isEmpty());
        QStringList onDisk = QDir(f.userPath()).entryList(QDir::Dirs | QDir::NoDotAndDotDot);
        QStringList listed = f.names();
        listed.removeOne("Classic"_q);
        listed.sort();
        onDisk.sort();
        QCOMPARE(listed, onDisk);
    }
};

QTEST_GUILESS_MAIN(ProfileThreadsTest)
#include "ProfileThreadsTest.moc"
