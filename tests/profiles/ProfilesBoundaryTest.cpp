#include "DashboardAbstractProfilesManager.h"
#include "Exports.h"

#include "Fakes.h"
#include "support/TemporaryHome.h"
#include "support/TestFiles.h"

#include <QtCore/QLibrary>
#include <QtTest/QtTest>

class ProfilesBoundaryTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aHostThatKnowsOnlyHeadersUsesTheStore()
    {
        const TemporaryHome home;
        for (const char *const name : {"A", "B"}) {
            const QString directory = home.data("/Dashboards/") + QString::fromUtf8(name);
            writeFile(directory + "/Dash.qml"_q, "");
            writeFile(directory + "/preview.png"_q, "");
        }
        QLibrary library(QStringLiteral(PROFILES_PLUGIN));
        const auto create = reinterpret_cast<CreatePMFunction>(library.resolve("CreatePM"));
        QVERIFY2(create, qUtf8Printable(library.errorString()));
        FakeEngine engine;
        FakeProvider provider;
        provider.name = "Car"_q;
        QVERIFY(create(nullptr, &provider) == nullptr);
        QVERIFY(create(&engine, nullptr) == nullptr);

        using Store = DashboardAbstractProfilesManager;
        const std::unique_ptr<Store> store(create(&engine, &provider));
        QVERIFY(store->inherits("DashboardAbstractProfilesManager"));
        QVERIFY(connect(&provider, &IRecentVehicleNameProvider::vehicleChanged, store.get(),
                        &Store::activateRecentProfileForVehicle));
        QVector<int> activated;
        QVector<int> modified;
        int listChanges = 0;
        QVERIFY(connect(store.get(), &Store::newProfileActivated, this,
                        [&](DashboardProfileHeader::Id id) { activated += id; }));
        QVERIFY(connect(store.get(), &Store::profileModified, this,
                        [&](DashboardProfileHeader::Id id) { modified += id; }));
        QVERIFY(connect(store.get(), &Store::profileListChanged, this, [&] { ++listChanges; }));

        const auto headers = store->profileHeaders();
        QCOMPARE(headers.size(), 2U);
        Q_EMIT provider.vehicleChanged("Truck"_q);
        QVERIFY(store->profile(headers[0].id)->vehicles.contains("Truck"_q));
        const int second = headers[1].id;
        QVERIFY(store->performAction(second, DashboardProfileAction::Activate, {}).ok);
        QVERIFY(store->performAction(second, DashboardProfileAction::Rename, "C"_q).ok);
        QCOMPARE(activated, QVector<int>{second});
        QCOMPARE(modified, (QVector<int>{headers[0].id, second, second}));
        QCOMPARE(listChanges, 1);
        QCOMPARE(engine.documents.last(), home.data("/Dashboards/C/Dash.qml"));
    }
};

QTEST_GUILESS_MAIN(ProfilesBoundaryTest)
#include "ProfilesBoundaryTest.moc"
