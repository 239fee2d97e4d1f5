#include "ui/TelemetryStatus.h"

#include "telemetry/VehicleNames.h"

#include <QtTest/QtTest>

#include <thread>

using namespace std::chrono_literals;

class TelemetryStatusTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void saysHowItGoes()
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
        for (int update = 0; update < 200; ++update) {
            monitor.update(false, now);
            now += 20ms;
        }
        QCOMPARE(stateAfter(0ms), TelemetryStatus::Live);
        QVERIFY(status.text().contains(QLatin1String("50 Hz")));
        stateAfter(0ms);
        QCOMPARE(changed.count(), 1);
        QCOMPARE(stateAfter(1s), TelemetryStatus::Paused);
        QCOMPARE(stateAfter(5s), TelemetryStatus::Lost);
        status.setAbsent();
        QCOMPARE(stateAfter(0ms), TelemetryStatus::Absent);
    }

    void followsTheVehicle()
    {
        const TelemetryMonitor monitor;
        VehicleNames vehicles;
        vehicles.report(QStringLiteral("Van"));
        const TelemetryStatus status(monitor, vehicles, {});
        QCOMPARE(status.vehicle(), QStringLiteral("Van"));
        std::thread([&] { vehicles.report(QStringLiteral("Truck")); }).join();
        QTRY_COMPARE(status.vehicle(), QStringLiteral("Truck"));
    }
};

QTEST_GUILESS_MAIN(TelemetryStatusTest)
#include "TelemetryStatusTest.moc"
