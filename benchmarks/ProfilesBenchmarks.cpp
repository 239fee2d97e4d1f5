#include "profiles/DashboardProfilesManager.h"

#include "profiles/FakeProvider.h"
#include "support/FakeCounter.h"
#include "support/FakeEngine.h"
#include "support/TemporaryHome.h"
#include "support/TestFiles.h"

#include <benchmark/benchmark.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QFileInfo>

#include <algorithm>
#include <string>

namespace {

constexpr int VehiclesPerProfile = 5;

/// A user's home with many dashboards, each with vehicles; in memory where possible, to keep the
/// disk out of the figures.
class Collection
{
public:
    explicit Collection(int profiles)
        : home(fastFolder())
    {
        QSettings ini(iniPath(), QSettings::IniFormat);
        for (int profile = 0; profile < profiles; ++profile) {
            const QString name = "Dashboard %1"_q.arg(profile);
            writeFile(root() + u'/' + name + "/Dash.qml"_q, "");
            writeFile(root() + u'/' + name + "/preview.png"_q, "");
            ini.beginGroup(name);
            ini.setValue("VehicleCount"_q, VehiclesPerProfile);
            for (int vehicle = 0; vehicle < VehiclesPerProfile; ++vehicle) {
                ini.setValue("Vehicle.%1.Name"_q.arg(vehicle),
                             "Vehicle %1 of %2"_q.arg(vehicle).arg(profile));
            }
            ini.endGroup();
        }
    }

    QString root() const { return home.data("/Dashboards"); }
    QString iniPath() const { return home.data("/dashboardsExtra.ini"); }

    TemporaryHome home;
    FakeEngine engine;
    FakeProvider provider;
    FakeCounter counter;
};

void createBare(benchmark::State &state)
{
    const Collection collection(int(state.range(0)));
    const QString builtIn = QCoreApplication::applicationDirPath() + "/Dashboards"_q;
    for (auto _ : state) {
        int found = 0;
        for (const QString &root : {builtIn, collection.root()}) {
            const QFileInfoList entries =
                QDir(root).entryInfoList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::NoSort);
            for (const QFileInfo &entry : entries) {
                const QString path = entry.absoluteFilePath();
                found +=
                    QFile::exists(path + "/Dash.qml"_q) && QFile::exists(path + "/preview.png"_q)
                        ? 1
                        : 0;
            }
        }
        QSettings ini(collection.iniPath(), QSettings::IniFormat);
        const QStringList groups = ini.childGroups();
        for (const QString &group : groups) {
            ini.beginGroup(group);
            const int count = ini.value("VehicleCount"_q).toInt();
            for (int vehicle = 0; vehicle < count; ++vehicle)
                found += ini.value("Vehicle.%1.Name"_q.arg(vehicle)).toString().size();
            ini.endGroup();
        }
        benchmark::DoNotOptimize(found);
    }
}

void createOurs(benchmark::State &state)
{
    Collection collection(int(state.range(0)));
    for (auto _ : state) {
        DashboardProfilesManager store(&collection.engine, &collection.provider);
        benchmark::DoNotOptimize(store.revision());
    }
}

void headersBare(benchmark::State &state)
{
    Collection collection(int(state.range(0)));
    DashboardProfilesManager store(&collection.engine, &collection.provider);
    const std::vector<DashboardProfileHeader> headers = store.profileHeaders();
    for (auto _ : state) {
        std::vector<DashboardProfileHeader> copy = headers;
        benchmark::DoNotOptimize(copy.data());
    }
}

void headersOurs(benchmark::State &state)
{
    Collection collection(int(state.range(0)));
    DashboardProfilesManager store(&collection.engine, &collection.provider);
    for (auto _ : state) {
        std::vector<DashboardProfileHeader> copy = store.profileHeaders();
        benchmark::DoNotOptimize(copy.data());
    }
}

/// The worst place for the search: the active profile is the last of the list.
void vehicleOnActiveProfile(benchmark::State &state)
{
    Collection collection(int(state.range(0)));
    DashboardProfilesManager store(&collection.engine, &collection.provider, collection.counter);
    // What came with the program sorts last; the one before it is the user's last.
    const std::vector<DashboardProfileHeader> headers = store.profileHeaders();
    const auto last = std::find_if(headers.rbegin(), headers.rend(),
                                   [](const auto &header) { return !header.builtIn; });
    store.performAction(last->id, DashboardProfileAction::Activate, {});
    const QString vehicle = *store.profile(last->id)->vehicles.cbegin();
    for (auto _ : state)
        store.activateRecentProfileForVehicle(vehicle);
}

const bool registered = [] {
    for (const int profiles : {1000, 10'000}) {
        const std::string name = "CreatePM, " + std::to_string(profiles) + " profiles";
        benchmark::RegisterBenchmark((name + "/bare").c_str(), createBare)
            ->Arg(profiles)
            ->Unit(benchmark::kMillisecond);
        benchmark::RegisterBenchmark((name + "/ours").c_str(), createOurs)
            ->Arg(profiles)
            ->Unit(benchmark::kMillisecond);
    }
    benchmark::RegisterBenchmark("profileHeaders, 1000 profiles/bare", headersBare)->Arg(1000);
    benchmark::RegisterBenchmark("profileHeaders, 1000 profiles/ours", headersOurs)->Arg(1000);
    benchmark::RegisterBenchmark("vehicle on the active profile", vehicleOnActiveProfile)
        ->Arg(1000)
        ->Arg(10'000);
    return true;
}();

} // namespace
