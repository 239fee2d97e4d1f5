#include "ui/ProfileModel.h"

#include "FakeStore.h"
#include "support/TestFiles.h"

#include <QtTest/QAbstractItemModelTester>
#include <QtTest/QtTest>

#include <thread>

namespace {

QString names(const ProfileModel &model)
{
    QStringList list;
    for (int row = 0; row < model.rowCount(); ++row)
        list += model.index(row).data(ProfileModel::NameRole).toString();
    return list.join(u',');
}

} // namespace

class ProfileModelTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void sortsAsPeopleCountAndKeepsTheTemplateOut()
    {
        FakeStore store;
        for (const char *name : {"Rally 10", "circuit", "Rally 9", "template"})
            store.add(QString::fromLatin1(name));
        ProfileModel model(store);
        QCOMPARE(model.templateId(), DashboardProfileHeader::NoId);
        const auto id = store.add("Template"_q, true);
        model.refresh();
        QTRY_COMPARE(model.templateId(), id);
        QCOMPARE(names(model), "circuit,Rally 9,Rally 10,template"_q);
        QCOMPARE(model.total(), 4);
        QCOMPARE(model.rowOf(id), -1);
    }

    void aRowThatMovesLeavesTheOthersInPlace()
    {
        FakeStore store;
        const auto first = store.add("B"_q);
        for (const char *name : {"D", "F", "H"})
            store.add(QString::fromLatin1(name));
        ProfileModel model(store);
        const QAbstractItemModelTester tester(&model);
        const QSignalSpy moves(&model, &QAbstractItemModel::rowsMoved);
        const QSignalSpy insertions(&model, &QAbstractItemModel::rowsInserted);
        for (const auto &[name, order] :
             {std::pair("Z"_q, "D,F,H,Z"_q), std::pair("A"_q, "A,D,F,H"_q)}) {
            store.performAction(first, DashboardProfileAction::Rename, name);
            QTRY_COMPARE(names(model), order);
        }
        QCOMPARE(moves.count(), 2);
        QCOMPARE(insertions.count(), 0);
    }

    void anyChangeOfManyRowsAddsUp()
    {
        FakeStore store;
        QList<FakeStore::Id> ids;
        for (int i = 0; i < 40; ++i)
            ids += store.add("Dash %1"_q.arg(i));
        ProfileModel model(store);
        const QAbstractItemModelTester tester(&model);
        QRandomGenerator chance(64);
        const auto name = [&] { return "Dash %1"_q.arg(chance.bounded(1000)); };
        for (int round = 0; round < 20; ++round) {
            for (int i = 0; i < 5; ++i)
                store.performAction(ids.at(chance.bounded(ids.size())),
                                    DashboardProfileAction::Rename, name());
            store.performAction(ids.takeAt(chance.bounded(ids.size())),
                                DashboardProfileAction::Remove, {});
            ids += store.add(name());
            model.refresh();
            QTRY_COMPARE(names(model), names(ProfileModel(store)));
        }
    }

    void searchFindsNamesAndVehicles()
    {
        FakeStore store;
        store.add("Road"_q, true, {"Auralis Silhouette"_q});
        store.add("Rally"_q, false, {"Citrön R2"_q});
        store.add("Truck"_q, false, {"Dray 8x4"_q});
        ProfileModel model(store);
        for (const auto &[search, found] :
             {std::pair("oa", "Road"), std::pair("RALLY", "Rally"), std::pair("citron", "Rally"),
              std::pair("  road  aura ", "Road"), std::pair("aura dray", ""), std::pair("r.*", ""),
              std::pair("", "Rally,Road,Truck")}) {
            model.setSearchText(QString::fromLatin1(search));
            QCOMPARE(names(model), QString::fromLatin1(found));
            QCOMPARE(model.total(), 3);
        }
    }

    void followsWhatOtherThreadsDo()
    {
        FakeStore store;
        const auto first = store.add("First"_q);
        const auto second = store.add("Second"_q, false, {"Van"_q});
        ProfileModel model(store);
        const QSignalSpy gone(&model, &ProfileModel::profileGone);
        QThread *signalled = nullptr;
        connect(&model, &ProfileModel::activeProfileChanged, &model,
                [&] { signalled = QThread::currentThread(); });
        std::thread([&] {
            store.performAction(second, DashboardProfileAction::Activate, {});
            store.performAction(first, DashboardProfileAction::Remove, {});
        }).join();
        QTRY_COMPARE(names(model), "Second"_q);
        QVERIFY(model.index(0).data(ProfileModel::ActiveRole).toBool());
        QCOMPARE(signalled, thread());
        QCOMPARE(gone.value(0).value(0).toInt(), first);
        QVERIFY(model.profile(first).isEmpty());
        QCOMPARE(model.profile(second).value("name"_q).toString(), "Second"_q);
        QCOMPARE(model.dashboardOf("Van"_q), "Second"_q);
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
