#include "ui/ProfileModel.h"

#include "FakeStore.h"

#include <QtTest/QAbstractItemModelTester>
#include <QtTest/QtTest>

namespace {

QStringList names(const ProfileModel &model)
{
    QStringList list;
    for (int row = 0; row < model.rowCount(); ++row)
        list += model.index(row).data(ProfileModel::NameRole).toString();
    return list;
}

QString joined(const ProfileModel &model)
{
    return names(model).join(QLatin1Char(','));
}

} // namespace

class ProfileModelTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void sortsAsPeopleCount()
    {
        FakeStore store;
        for (const char *name : {"Rally 10", "circuit", "Rally 9", "Aero"})
            store.add(QString::fromLatin1(name));
        const ProfileModel model(store);
        QCOMPARE(joined(model), QStringLiteral("Aero,circuit,Rally 9,Rally 10"));
    }

    void keepsTheTemplateOutOfTheRows()
    {
        FakeStore store;
        store.add(QStringLiteral("Road"), true);
        const auto own = store.add(QStringLiteral("template"));
        ProfileModel model(store);
        QCOMPARE(model.templateId(), DashboardProfileHeader::NoId);
        const auto id = store.add(QStringLiteral("Template"), true);
        model.refresh();
        QTRY_COMPARE(model.templateId(), id);
        QCOMPARE(joined(model), QStringLiteral("Road,template"));
        QCOMPARE(model.total(), 2);
        QVERIFY(model.rowOf(own) >= 0);
        QCOMPARE(model.rowOf(id), -1);
    }

    void changesRowByRow()
    {
        FakeStore store;
        QList<FakeStore::Id> ids;
        for (const char *name : {"B", "D", "F", "H"})
            ids += store.add(QString::fromLatin1(name));
        ProfileModel model(store);
        const QAbstractItemModelTester tester(&model);
        const QPersistentModelIndex kept = model.index(2);
        QSignalSpy resets(&model, &QAbstractItemModel::modelReset);
        QSignalSpy moves(&model, &QAbstractItemModel::rowsMoved);
        QSignalSpy insertions(&model, &QAbstractItemModel::rowsInserted);
        QSignalSpy removals(&model, &QAbstractItemModel::rowsRemoved);

        store.performAction(ids.at(0), DashboardProfileAction::Rename, QStringLiteral("Z"));
        QTRY_COMPARE(joined(model), QStringLiteral("D,F,H,Z"));
        QCOMPARE(moves.count(), 1);
        store.performAction(ids.at(0), DashboardProfileAction::Rename, QStringLiteral("A"));
        QTRY_COMPARE(joined(model), QStringLiteral("A,D,F,H"));
        QCOMPARE(moves.count(), 2);
        store.performAction(ids.at(1), DashboardProfileAction::Copy, QStringLiteral("E"));
        QTRY_COMPARE(joined(model), QStringLiteral("A,D,E,F,H"));
        QCOMPARE(insertions.count(), 1);
        store.performAction(ids.at(1), DashboardProfileAction::Remove, {});
        QTRY_COMPARE(joined(model), QStringLiteral("A,E,F,H"));
        QCOMPARE(removals.count(), 1);
        QCOMPARE(kept.data(ProfileModel::NameRole).toString(), QStringLiteral("F"));
        QCOMPARE(resets.count(), 0);
    }

    void anyChangeOfManyRowsAddsUp()
    {
        FakeStore store;
        QList<FakeStore::Id> ids;
        for (int i = 0; i < 40; ++i)
            ids += store.add(QStringLiteral("Dash %1").arg(i));
        ProfileModel model(store);
        const QAbstractItemModelTester tester(&model);
        QRandomGenerator chance(64);
        for (int round = 0; round < 20; ++round) {
            for (int i = 0; i < 5; ++i) {
                const auto id = ids.at(chance.bounded(ids.size()));
                store.performAction(id, DashboardProfileAction::Rename,
                                    QStringLiteral("Dash %1").arg(chance.bounded(1000)));
            }
            store.drop(ids.takeAt(chance.bounded(ids.size())));
            ids += store.add(QStringLiteral("Dash %1").arg(chance.bounded(1000)));
            model.refresh();
            const ProfileModel fresh(store);
            QTRY_COMPARE(names(model), names(fresh));
        }
    }

    void searchFindsNamesAndVehicles_data()
    {
        QTest::addColumn<QString>("search");
        QTest::addColumn<QString>("found");
        QTest::newRow("nothing typed") << ""
                                       << "Rally,Road,Truck";
        QTest::newRow("a part of a name") << "oa"
                                          << "Road";
        QTest::newRow("any case") << "RALLY"
                                  << "Rally";
        QTest::newRow("a vehicle") << "silhouette"
                                   << "Road";
        QTest::newRow("accents don't matter") << "citron"
                                              << "Rally";
        QTest::newRow("every word counts") << "  road  aura "
                                           << "Road";
        QTest::newRow("words of two vehicles") << "aura dray"
                                               << "";
        QTest::newRow("nothing like it") << "zeppelin"
                                         << "";
        QTest::newRow("no pattern") << "r.*"
                                    << "";
    }

    void searchFindsNamesAndVehicles()
    {
        QFETCH(QString, search);
        QFETCH(QString, found);
        FakeStore store;
        store.add(QStringLiteral("Road"), true, {QStringLiteral("Auralis Silhouette")});
        store.add(QStringLiteral("Rally"), false, {QStringLiteral("Citrön R2")});
        store.add(QStringLiteral("Truck"), false, {QStringLiteral("Dray 8x4")});
        ProfileModel model(store);
        const QAbstractItemModelTester tester(&model);
        model.setSearchText(search);
        QCOMPARE(joined(model), found);
        QCOMPARE(model.total(), 3);
        model.setSearchText({});
        QCOMPARE(model.count(), 3);
    }

    void followsWhatOtherThreadsDo()
    {
        FakeStore store;
        const auto first = store.add(QStringLiteral("First"));
        const auto second = store.add(QStringLiteral("Second"), false, {QStringLiteral("Van")});
        ProfileModel model(store);
        QCOMPARE(model.activeProfile().value(QStringLiteral("name")).toString(),
                 QStringLiteral("First"));
        QSignalSpy gone(&model, &ProfileModel::profileGone);
        QThread *signalled = nullptr;
        connect(&model, &ProfileModel::activeProfileChanged, &model,
                [&] { signalled = QThread::currentThread(); });

        std::thread game([&] {
            store.activateRecentProfileForVehicle(QStringLiteral("Van"));
            store.drop(first);
        });
        game.join();
        QTRY_COMPARE(joined(model), QStringLiteral("Second"));
        QVERIFY(model.index(0).data(ProfileModel::ActiveRole).toBool());
        QCOMPARE(signalled, thread());
        QCOMPARE(gone.count(), 1);
        QCOMPARE(gone.first().first().toInt(), first);
        QVERIFY(model.profile(first).isEmpty());
        QCOMPARE(model.profile(second).value(QStringLiteral("name")).toString(),
                 QStringLiteral("Second"));
        QCOMPARE(model.dashboardOf(QStringLiteral("Van")), QStringLiteral("Second"));
    }

    void mayEndWhileTheStoreIsBusy()
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
};

QTEST_GUILESS_MAIN(ProfileModelTest)
#include "ProfileModelTest.moc"
