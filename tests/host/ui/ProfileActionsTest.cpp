#include "ui/ProfileActions.h"

#include "FakeStore.h"
#include "support/TestFiles.h"

#include <QtTest/QtTest>

#include <thread>

class ProfileActionsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void oneActionAtATimeAndNoneOnThisThread()
    {
        FakeStore store;
        const auto id = store.add("Road"_q, true);
        store.gated = true;
        std::thread opener;
        {
            ProfileActions actions(store);
            const QSignalSpy copied(&actions, &ProfileActions::copied);
            QVERIFY(actions.copy(id, "Mine"_q));
            QVERIFY(actions.busyText().contains("Mine"_q));
            QTRY_COMPARE(store.waitingActions.load(), 1);
            QVERIFY(!actions.copy(id, "Again"_q) && !actions.remove(id, "Road"_q));
            store.gate.release();
            QTRY_COMPARE(copied.count(), 1);
            QVERIFY(!actions.isBusy());
            QCOMPARE(store.calls(), QStringList{"1 0 Mine"_q});
            QCOMPARE(copied.constFirst(), QVariantList({1, "/dashboards/Mine/Dash.qml"_q}));

            // Its end waits for what is under way.
            QVERIFY(actions.remove(id, "Road"_q));
            QTRY_COMPARE(store.waitingActions.load(), 2);
            opener = std::thread([&] { store.gate.release(); });
        }
        opener.join();
        QVERIFY(!store.profileNameExists("Road"_q));
    }

    void tellsTheStoresOwnMessage()
    {
        FakeStore store;
        store.refusal = "The disk says no"_q;
        ProfileActions actions(store);
        const QSignalSpy failed(&actions, &ProfileActions::failed);
        actions.rename(0, "Yours"_q);
        QTRY_COMPARE(failed.count(), 1);
        QVERIFY(!actions.isBusy());
        actions.activate(0);
        QTRY_COMPARE(failed.count(), 2);
        QCOMPARE(failed.at(0).constFirst().toString() + failed.at(1).constFirst().toString(),
                 store.refusal.repeated(2));
    }

    void namesAreJudgedAsOneTypes()
    {
        FakeStore store;
        store.add("Road"_q, true);
        store.add("Mine"_q);
        const ProfileActions actions(store);
        QVERIFY(!actions.nameProblem({}, {}).isEmpty());
        QVERIFY(!actions.nameProblem("ROAD"_q, {}).isEmpty());
        QVERIFY(!actions.nameProblem("Mine"_q, "Mine"_q).isEmpty());
        QCOMPARE(actions.nameProblem("MINE"_q, "Mine"_q), QString());
        QCOMPARE(actions.nameProblem("Rally"_q, {}), QString());
        QCOMPARE(actions.freeName("Rally"_q), "Rally"_q);
        QCOMPARE(actions.freeName("road"_q), "road 2"_q);
    }
};

QTEST_GUILESS_MAIN(ProfileActionsTest)
#include "ProfileActionsTest.moc"
