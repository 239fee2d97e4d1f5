#include "ui/ProfileActions.h"

#include "FakeStore.h"

#include <QtTest/QtTest>

class ProfileActionsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void oneActionAtATimeAndNoneOnThisThread()
    {
        FakeStore store;
        const auto id = store.add(QStringLiteral("Road"), true);
        ProfileActions actions(store);
        QSignalSpy copied(&actions, &ProfileActions::copied);
        QSignalSpy succeeded(&actions, &ProfileActions::succeeded);
        store.gated = true;

        QVERIFY(actions.copy(id, QStringLiteral("Mine")));
        QVERIFY(actions.isBusy());
        QVERIFY(actions.busyText().contains(QStringLiteral("Mine")));
        QTRY_COMPARE(store.waitingActions.load(), 1);
        QVERIFY(!actions.copy(id, QStringLiteral("Again")));
        QVERIFY(!actions.remove(id, QStringLiteral("Road")));
        QCoreApplication::processEvents();
        QCOMPARE(succeeded.count(), 0);

        store.gate.release();
        QTRY_COMPARE(copied.count(), 1);
        QVERIFY(!actions.isBusy());
        QCOMPARE(succeeded.count(), 1);
        QCOMPARE(store.calls(), QStringList{QStringLiteral("1 0 Mine")});
        QCOMPARE(copied.first().at(1).toString(), QStringLiteral("/dashboards/Mine/Dash.qml"));
        QVERIFY(copied.first().at(0).toInt() != id);
    }

    void tellsTheStoresOwnMessage()
    {
        FakeStore store;
        const auto id = store.add(QStringLiteral("Mine"));
        store.refusal = QStringLiteral("The disk says no");
        ProfileActions actions(store);
        QSignalSpy failed(&actions, &ProfileActions::failed);
        QSignalSpy succeeded(&actions, &ProfileActions::succeeded);
        actions.rename(id, QStringLiteral("Yours"));
        QTRY_COMPARE(failed.count(), 1);
        QVERIFY(!actions.isBusy());
        actions.activate(id);
        QTRY_COMPARE(failed.count(), 2);
        for (const QList<QVariant> &failure : failed)
            QCOMPARE(failure.first().toString(), store.refusal);
        QCOMPARE(succeeded.count(), 0);
    }

    void endsOnlyAfterWhatIsUnderWay()
    {
        FakeStore store;
        const auto id = store.add(QStringLiteral("Mine"));
        store.gated = true;
        std::thread opener;
        {
            ProfileActions actions(store);
            actions.remove(id, QStringLiteral("Mine"));
            QTRY_COMPARE(store.waitingActions.load(), 1);
            opener = std::thread([&] { store.gate.release(); });
        }
        opener.join();
        QVERIFY(!store.profileNameExists(QStringLiteral("Mine")));
    }

    void namesAreJudgedAsOneTypes()
    {
        FakeStore store;
        store.add(QStringLiteral("Road"), true);
        store.add(QStringLiteral("Mine"));
        const ProfileActions actions(store);
        QVERIFY(!actions.nameProblem(QString(), {}).isEmpty());
        QVERIFY(!actions.nameProblem(QStringLiteral("ROAD"), {}).isEmpty());
        QVERIFY(!actions.nameProblem(QStringLiteral("Mine"), QStringLiteral("Mine")).isEmpty());
        QCOMPARE(actions.nameProblem(QStringLiteral("MINE"), QStringLiteral("Mine")), QString());
        QCOMPARE(actions.nameProblem(QStringLiteral("Rally"), {}), QString());
        QCOMPARE(actions.freeName(QStringLiteral("Rally")), QStringLiteral("Rally"));
        QCOMPARE(actions.freeName(QStringLiteral("road")), QStringLiteral("road 2"));
    }
};

QTEST_GUILESS_MAIN(ProfileActionsTest)
#include "ProfileActionsTest.moc"
