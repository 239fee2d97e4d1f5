#include "telemetry/demo/DemoCars.h"

#include <QtTest/QtTest>

#include <cmath>
#include <limits>

namespace {

template<typename Record> QByteArray bytesOf(const Record &record)
{
    return {reinterpret_cast<const char *>(&record), int(sizeof(record))};
}

bool same(const TelemetrySample &a, const TelemetrySample &b)
{
    return bytesOf(a.vehicle) == bytesOf(b.vehicle) && bytesOf(a.extended) == bytesOf(b.extended);
}

} // namespace

class DemoCarsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void oneCarIsDrivenForEver()
    {
        DemoCars cars(7);
        DemoLap lap(7);
        for (const double moment : {0.0, 19.9, 20.1, 500.0}) {
            QVERIFY(same(cars.sampleAt(moment), lap.sampleAt(moment)));
            QCOMPARE(cars.vehicleNameAt(moment), cars.vehicleNameAt(0));
        }
    }

    void eachCarGoesOnWhereItsLastTurnEnded()
    {
        DemoCars cars(7, 3, 10);
        DemoLap first(7);
        DemoLap second(8);
        QVERIFY(same(cars.sampleAt(9.5), first.sampleAt(9.5)));
        QVERIFY(same(cars.sampleAt(12), second.sampleAt(2)));
        QVERIFY(same(cars.sampleAt(31), first.sampleAt(11)));
        QVERIFY(same(cars.sampleAt(44), second.sampleAt(14)));
    }

    void theCarsHaveNamesOfTheirOwnAndTakeTurns()
    {
        DemoCars cars(7, 3, 10);
        const QString names[] = {cars.vehicleNameAt(0), cars.vehicleNameAt(10),
                                 cars.vehicleNameAt(20)};
        QVERIFY(names[0] != names[1] && names[1] != names[2] && names[0] != names[2]);
        QCOMPARE(cars.vehicleNameAt(9.99), names[0]);
        QCOMPARE(cars.vehicleNameAt(30), names[0]);
        QCOMPARE(cars.vehicleNameAt(59.99), names[2]);
    }

    void oddMomentsAreTheFirstCars()
    {
        DemoCars cars(7, 2);
        for (const double moment : {-1.0, std::nan(""), std::numeric_limits<double>::infinity()})
            QCOMPARE(cars.vehicleNameAt(moment), cars.vehicleNameAt(0));
        QVERIFY(!cars.vehicleNameAt(1e300).isEmpty());
    }
};

QTEST_GUILESS_MAIN(DemoCarsTest)
#include "DemoCarsTest.moc"
