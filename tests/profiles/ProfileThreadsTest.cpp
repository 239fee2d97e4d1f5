#include "ProfilesFixture.h"

#include <QtCore/QLoggingCategory>
#include <QtTest/QtTest>

#include <atomic>
#include <random>
#include <thread>
#include <vector>

using Store = DashboardAbstractProfilesManager;

class ProfileThreadsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void sixThreadsLeaveTheStoreInOrder()
    {
        ProfilesFixture f({"P0"_q, "P1"_q, "P2"_q}, {"Classic"_q});
        f.provider.name = "Car0"_q;
        f.store = std::make_unique<DashboardProfilesManager>(&f.engine, &f.provider);
        Store &store = *f.store;
        connect(&store, &Store::profileModified, [&](int id) {
            // While a slot runs the lock is free for others, and for the slot itself.
            std::thread([&] { store.profile(id); }).join();
            store.profile(id);
        });
        QLoggingCategory::setFilterRules("default.info=false"_q);
        const QString taken = "Dashboard with given name already exists"_q;
        std::atomic<int> strangeFailures = 0;
        std::vector<std::thread> threads;
        for (unsigned seed = 1; seed <= 6; ++seed) {
            threads.emplace_back([&, random = std::mt19937(seed)]() mutable {
                for (int i = 0; i < 1000; ++i) {
                    const QString name = "P%1"_q.arg(random() % 8);
                    const auto headers = store.profileHeaders();
                    const int id = headers[random() % headers.size()].id; // Perhaps gone by now.
                    const int action = int(random() % 4);
                    store.performAction(id, action, name);
                    store.profileHeader(id);
                    store.profileNameExists(name);
                    store.activateRecentProfileForVehicle("Car%1"_q.arg(random() % 10));
                    const auto copy = store.performAction(0, DashboardProfileAction::Copy, name);
                    strangeFailures += !copy.ok && copy.message != taken ? 1 : 0;
                }
            });
        }
        for (std::thread &thread : threads)
            thread.join();

        QCOMPARE(strangeFailures.load(), 0);
        QVERIFY(store.revision() > 1000);
        QSet<QString> seen;
        for (const DashboardProfileHeader &header : store.profileHeaders()) {
            const auto profile = store.profile(header.id);
            QVERIFY(!seen.intersects(profile->vehicles));
            seen += profile->vehicles;
            QVERIFY(profile->builtIn || f.isWhole(profile->name));
        }
        // A removal doesn't write the file, so the last word is an assignment's.
        f.report("Last"_q);
        QStringList state = f.state().split(u' ');
        QStringList saved = f.savedState().split(u' ');
        state.sort();
        saved.sort();
        QCOMPARE(saved, state);
        QVERIFY(f.leftovers().isEmpty());
    }
};

QTEST_GUILESS_MAIN(ProfileThreadsTest)
#include "ProfileThreadsTest.moc"
