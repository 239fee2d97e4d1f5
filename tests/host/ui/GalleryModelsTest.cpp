#include "FakeStore.h"
#include "support/TestFiles.h"
#include "telemetry/VehicleNames.h"
#include "ui/ProfileActions.h"
#include "ui/ProfileModel.h"
#include "ui/TelemetryStatus.h"

#include <QtTest/QAbstractItemModelTester>
#include <QtTest/QtTest>

#include <thread>

using namespace std::chrono_literals;

namespace {

QString names(const ProfileModel &model)
{
    QStringList list;
    for (int row = 0; row < model.rowCount(); ++row)
        list += model.index(row).data(ProfileModel::NameRole).toString();
    return list.join(u',');
}

} // namespace

/// What the gallery shows and does, without its window.
class GalleryModelsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void anyChangeOfManyRowsAddsUp()
    {
        FakeStore store;
        QList<FakeStore::Id> ids;
        for (int i = 0; i < 40; ++i)
            ids += store.add("Dash %1"_q.arg(i));
        ProfileModel model(store);
        const QAbstractItemModelTester tester(&model);
        const QSignalSpy resets(&model, &QAbstractItemModel::modelReset);
        QRandomGenerator chance(64);
        const auto act = [&](FakeStore::Id id, int action) {
            store.performAction(id, action, "Dash %1"_q.arg(chance.bounded(1000)));
        };
        for (int round = 0; round < 20; ++round) {
            for (int i = 0; i < 5; ++i)
                act(ids.at(chance.bounded(ids.size())), DashboardProfileAction::Rename);
            act(ids.takeAt(chance.bounded(ids.size())), DashboardProfileAction::Remove);
            act(ids.last(), DashboardProfileAction::Copy);
            QTRY_COMPARE(names(model), names(ProfileModel(store)));
        }
        QCOMPARE(resets.count(), 0);
    }

    void dashboardsAreSortedAsPeopleCountAndFoundByNameAndVehicle()
    {
        FakeStore store;
        for (const char *name : {"Truck 10", "circuit", "template"}) // A user's own template.
            store.add(QString::fromLatin1(name));
        store.add("Template"_q, true);
        store.add("Road"_q, true, {"Auralis Silhouette"_q});
        store.add("Rally"_q, false, {"Citrön R2"_q});
        store.add("Truck 9"_q, false, {"Dray 8x4"_q});
        ProfileModel model(store);
        for (const auto &[search, found] :
             {std::pair("oa", "Road"), std::pair("RALLY", "Rally"), std::pair("citron", "Rally"),
              std::pair("  road  aura ", "Road"), std::pair("aura dray", ""), std::pair("r.*", ""),
              std::pair("", "circuit,Rally,Road,template,Truck 9,Truck 10")}) {
            model.setSearchText(QString::fromLatin1(search));
            QCOMPARE(names(model), QString::fromLatin1(found));
        }
    }

    void theModelMayEndWhileTheStoreIsBusy()
    {
        FakeStore store;
        for (int i = 0; i < 200; ++i)
            store.add(QString::number(i));
        std::atomic<bool> stop{false};
        std::thread game([&] {
            while (!stop)
                Q_EMIT store.profileListChanged();
        });
        for (int i = 0; i < 20; ++i) {
            ProfileModel model(store);
            model.refresh();
            QCoreApplication::processEvents();
        }
        stop = true;
        game.join();
    }

    void oneActionRunsAtATimeAndNoneOnThisThread()
    {
        FakeStore store;
        const auto id = store.add("Road"_q, true);
        store.gated = true;
        std::thread opener;
        {
            ProfileActions actions(store);
            const QSignalSpy copied(&actions, &ProfileActions::copied);
            QVERIFY(actions.copy(id, "Mine"_q));
            QTRY_COMPARE(store.waitingActions.load(), 1);
            QVERIFY(!actions.copy(id, "Again"_q) && !actions.remove(id, "Road"_q));
            store.gate.release();
            QTRY_COMPARE(copied.count(), 1);
            QCOMPARE(copied.constFirst(), QVariantList({1, "/dashboards/Mine/Dash.qml"_q}));
            QCOMPARE(store.calls(), QStringList{"1 0 Mine"_q});
            // Its end waits for what is under way.
            QVERIFY(actions.remove(id, "Road"_q));
            QTRY_COMPARE(store.waitingActions.load(), 2);
            opener = std::thread([&] { store.gate.release(); });
        }
        opener.join();
        QVERIFY(!store.profileNameExists("Road"_q));
    }

    void namesAreJudgedAsOneTypes()
    {
        FakeStore store;
        store.add("Mine"_q);
        const ProfileActions actions(store);
        for (const auto &[name, old] :
             {std::pair(""_q, ""_q), std::pair("MINE"_q, ""_q), std::pair("Mine"_q, "Mine"_q)})
            QVERIFY2(!actions.nameProblem(name, old).isEmpty(), qUtf8Printable(name));
        QCOMPARE(actions.nameProblem("MINE"_q, "Mine"_q), QString());
        QCOMPARE(actions.freeName("Rally"_q), "Rally"_q);
        QCOMPARE(actions.freeName("mine"_q), "mine 2"_q);
    }

    void theStatusSaysHowTheTelemetryGoes()
    {
        TelemetryMonitor monitor;
        VehicleNames vehicles;
        TelemetryMonitor::TimePoint now;
        TelemetryStatus status(monitor, vehicles, {}, [&] { return now; });
        const QSignalSpy changed(&status, &TelemetryStatus::changed);
        const auto stateAfter = [&](std::chrono::milliseconds time) {
            now += time;
            status.refresh();
            return status.state();
        };
        QCOMPARE(stateAfter(0ms), TelemetryStatus::Waiting);
        for (const int hertz : {50, 100}) {
            for (int update = 0; update < 4 * hertz; ++update) {
                monitor.update(false, now);
                now += 1000ms / hertz;
            }
            QCOMPARE(stateAfter(0ms), TelemetryStatus::Live);
            QVERIFY(status.text().contains("%1 Hz"_q.arg(hertz)));
        }
        stateAfter(0ms);
        QCOMPARE(changed.count(), 2);
        QCOMPARE(stateAfter(1s), TelemetryStatus::Paused);
        QCOMPARE(stateAfter(5s), TelemetryStatus::Lost);
        status.setAbsent();
        QCOMPARE(stateAfter(0ms), TelemetryStatus::Absent);
    }
};

QTEST_GUILESS_MAIN(GalleryModelsTest)
#include "GalleryModelsTest.moc"
