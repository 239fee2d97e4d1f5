#include "ui/TelemetryStatus.h"

#include "telemetry/VehicleNames.h"

#include <QtTest/QtTest>

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
        TelemetryStatus status(monitor, vehicles, QStringLiteral("Demo lap"), [&] { return now; });
        QSignalSpy changed(&status, &TelemetryStatus::changed);
        QCOMPARE(status.state(), TelemetryStatus::Waiting);

        for (int update = 0; update < 200; ++update) {
            monitor.update(false, now);
            now += 20ms;
        }
        status.refresh();
        QCOMPARE(status.state(), TelemetryStatus::Live);
        QVERIFY(status.text().contains(QStringLiteral("50 Hz")));
        QCOMPARE(changed.count(), 1);
        status.refresh();
        QCOMPARE(changed.count(), 1);

        now += 1s;
        status.refresh();
        QCOMPARE(status.state(), TelemetryStatus::Paused);
        now += 5s;
        status.refresh();
        QCOMPARE(status.state(), TelemetryStatus::Lost);
        QVERIFY(!status.text().contains(QStringLiteral("Hz")));
    }

    void aSourceThatCouldNotBeOpenedIsNotWaitedFor()
    {
        const TelemetryMonitor monitor;
        VehicleNames vehicles;
        TelemetryStatus status(monitor, vehicles, {});
        const QString waiting = status.text();
        QSignalSpy changed(&status, &TelemetryStatus::changed);
        status.setAbsent();
        QCOMPARE(status.state(), TelemetryStatus::Absent);
        QVERIFY(status.text() != waiting);
        QCOMPARE(changed.count(), 1);
        status.refresh();
        QCOMPARE(status.state(), TelemetryStatus::Absent);
    }

    void followsTheVehicle()
    {
        const TelemetryMonitor monitor;
        VehicleNames vehicles;
        vehicles.report(QStringLiteral("Van"));
        const TelemetryStatus status(monitor, vehicles, {});
        QCOMPARE(status.vehicle(), QStringLiteral("Van"));
        std::thread game([&] { vehicles.report(QStringLiteral("Truck")); });
        game.join();
        QTRY_COMPARE(status.vehicle(), QStringLiteral("Truck"));
    }
};

QTEST_GUILESS_MAIN(TelemetryStatusTest)
#include "TelemetryStatusTest.moc"
