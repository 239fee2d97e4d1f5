#include "Drive.h"

#include <QtTest/QtTest>

#include <algorithm>
#include <array>
#include <cmath>
#include <map>

/// The car's motion within itself, step by step.
class DemoDrivingTest : public QObject
{
    Q_OBJECT

    std::vector<VehicleTelemetry> finely; // Three laps.

private Q_SLOTS:
    void initTestCase() { finely = driven(260, DemoLap::StepsPerSecond); }

    void theFirstStepsAreStandingOnTheGrid()
    {
        for (std::size_t i = 0; i < Lights * DemoLap::StepsPerSecond; ++i) {
            QCOMPARE(read(finely[i].groundSpeedKmh), 0.0F);
            QCOMPARE(read(finely[i].currentTimeMs), 0U);
        }
        QVERIFY(finely[std::size_t{10} * DemoLap::StepsPerSecond].groundSpeedKmh > 100);
    }

    void speedIsTheIntegralOfSurge()
    {
        double speed = 0;
        for (std::size_t i = 1; i < finely.size(); ++i) {
            speed += static_cast<double>(finely[i].surgeG) * Gravity / DemoLap::StepsPerSecond;
            QVERIFY(std::abs(speed - metresPerSecond(finely[i])) < 0.02);
        }
    }

    void wheelSpeedLeavesGroundSpeedOnlyBySlip()
    {
        double most = 0;
        for (const VehicleTelemetry &vehicle : finely) {
            const auto ground = static_cast<double>(vehicle.groundSpeedKmh);
            const double slip = static_cast<double>(vehicle.speedKmh) - ground;
            QVERIFY(std::abs(slip) <= 0.06 * ground + 1e-3);
            if (vehicle.brakePedalPercent > 60 && vehicle.gasPedalPercent == 0 && ground > 100)
                QVERIFY(slip < 0);
            most = std::max(most, slip / std::max(ground, 1.0));
        }
        QVERIFY(most > 0.04);
    }

    void engineSpeedFollowsSpeedByOneRatioAGear()
    {
        std::map<int, double> ratios;
        for (const VehicleTelemetry &vehicle : finely) {
            if (vehicle.gear < 1 || vehicle.clutchPedalPercent > 0)
                continue;
            const double ratio = vehicle.rpm / static_cast<double>(vehicle.speedKmh);
            const double known = ratios.emplace(vehicle.gear, ratio).first->second;
            QVERIFY(std::abs(ratio / known - 1) < 0.002);
        }
        QCOMPARE(ratios.size(), std::size_t{6});
        for (int gear = 2; gear <= 6; ++gear)
            QVERIFY(ratios[gear] < 0.9 * ratios[gear - 1]);
    }

    void everyShiftIsByOneGearAndDipsTheClutch()
    {
        int up = 0;
        int down = 0;
        for (std::size_t i = 1; i < finely.size(); ++i) {
            const int change = finely[i].gear - finely[i - 1].gear;
            if (change == 0 || finely[i - 1].gear == 0)
                continue;
            QCOMPARE(std::abs(change), 1);
            int most = 0;
            for (std::size_t j = i; j < std::min(finely.size(), i + 15); ++j)
                most = std::max<int>(most, finely[j].clutchPedalPercent);
            QVERIFY(most > 90);
            QVERIFY(finely[i - 1].rpm > 7900 || change < 0);
            (change > 0 ? up : down) += 1;
        }
        QVERIFY(up > 20);
        QVERIFY(down > 20);
    }

    void lateralAccelerationIsSpeedTimesYawRate()
    {
        int curved = 0;
        for (std::size_t i = 1; i + 1 < finely.size(); ++i) {
            const double turned = std::remainder(static_cast<double>(finely[i + 1].headingDeg) -
                                                     static_cast<double>(finely[i - 1].headingDeg),
                                                 360.0);
            const double yaw = turned * Pi / 180 * DemoLap::StepsPerSecond / 2;
            const auto sway = static_cast<double>(finely[i].swayG);
            QVERIFY(std::abs(sway - metresPerSecond(finely[i]) * yaw / Gravity) < 0.06);
            curved += std::abs(sway) > 0.8 ? 1 : 0;
            if (std::abs(sway) > 0.3) {
                QCOMPARE(finely[i].steeringPercent > 0, sway > 0);
                QCOMPARE(finely[i].steeringPercent < 0, sway < 0);
            }
        }
        QVERIFY(curved > 2000);
    }

    void accelerationStaysWithinTheCircleOfGrip()
    {
        double across = 0;
        double braking = 0;
        for (const VehicleTelemetry &vehicle : finely) {
            const auto surge = static_cast<double>(vehicle.surgeG);
            const auto sway = static_cast<double>(vehicle.swayG);
            // Full grip with the downforce of this speed, and the drag that helps to slow down.
            const double v = metresPerSecond(vehicle);
            const double limit = VehicleModel::gripLimit(v, 1, 1280) / Gravity;
            QVERIFY(std::abs(sway) < 1.08 * limit);
            // A car that ploughs wide pays for it with speed, beyond what its tyres would give.
            if (std::abs(sway) < 0.95 * limit)
                QVERIFY(std::hypot(surge, sway) < limit + 0.00006 * v * v + 0.1);
            across = std::max(across, std::abs(sway));
            braking = std::max(braking, -surge);
        }
        QVERIFY(across > 1.6);
        QVERIFY(braking > 1.6);
    }

    void theDriverNeverBrakesAndAcceleratesAtOnceForLong()
    {
        int both = 0;
        for (const VehicleTelemetry &vehicle : finely) {
            both = vehicle.gasPedalPercent > 5 && vehicle.brakePedalPercent > 5 &&
                           vehicle.groundSpeedKmh > 0
                       ? both + 1
                       : 0;
            QVERIFY(both < 12);
        }
    }

    void absActsOnlyOnTheBrakesAndTractionControlOnlyUnderThrottle()
    {
        int abs = 0;
        int traction = 0;
        DemoLap lap(Seed);
        for (int i = 0; i < 60 * 700; ++i) {
            const TelemetrySample sample = lap.sampleAt(i / 60.0);
            const VehicleTelemetry &vehicle = sample.vehicle;
            bool front = false;
            bool rear = false;
            for (int wheel = 0; wheel < 4; ++wheel) {
                const bool spins = sample.extended.wheels[wheel].wheelFlagA != 0;
                (wheel < 2 ? front : rear) |= spins;
            }
            QCOMPARE(has(vehicle, Status::AbsInAction), front);
            QCOMPARE(has(vehicle, Status::TcInAction), rear);
            if (front) {
                QVERIFY(vehicle.brakePedalPercent > 0);
                ++abs;
            }
            if (rear) {
                QVERIFY(vehicle.gasPedalPercent > 0);
                ++traction;
            }
        }
        QVERIFY(abs > 60);
        QVERIFY(traction > 60);
    }

    void wheelsSlideOnlyInFastCornering()
    {
        DemoLap lap(Seed);
        std::array<int, 4> slides{};
        for (int i = 0; i < 60 * 700; ++i) {
            const TelemetrySample sample = lap.sampleAt(i / 60.0);
            for (std::size_t wheel = 0; wheel < 4; ++wheel) {
                if (sample.extended.wheels[wheel].wheelFlagB == 0)
                    continue;
                QVERIFY(std::abs(sample.vehicle.swayG) > 1.0F);
                // The outer wheels: the left ones in a turn to the right.
                QCOMPARE(wheel % 2 == 0, sample.vehicle.swayG > 0);
                ++slides[wheel];
            }
        }
        QVERIFY(slides[0] + slides[1] + slides[2] + slides[3] > 30);
    }

    void anOpenWingMakesTheCarFaster()
    {
        const RoadPoint flat;
        VehicleState car;
        car.speed = 65;
        car.gear = 6;
        QVERIFY(VehicleModel::resistance(car, flat, true) <
                0.9 * VehicleModel::resistance(car, flat, false));
    }

    void brakingHeatsTheBrakesAndRollingCoolsThem()
    {
        for (std::size_t i = DemoLap::StepsPerSecond; i < finely.size(); ++i) {
            const VehicleTelemetry &now = finely[i];
            const VehicleTelemetry &before = finely[i - 60];
            const auto pedal = [&](const VehicleTelemetry &vehicle) {
                return vehicle.brakePedalPercent > 40 && vehicle.groundSpeedKmh > 100;
            };
            const auto full = [&](const VehicleTelemetry &vehicle) {
                return vehicle.brakePedalPercent == 0 && vehicle.gasPedalPercent == 100;
            };
            if (std::all_of(&before, &now, pedal))
                QVERIFY(now.brakeTempC[0] > before.brakeTempC[0] + 5);
            if (std::all_of(&before, &now, full))
                QVERIFY(now.brakeTempC[0] <= before.brakeTempC[0]);
        }
    }

    void aLapIsAsLongAsItsSpeedSays()
    {
        double driven = -60;
        int laps = 0;
        const Circuit circuit;
        for (std::size_t i = 1; i < finely.size(); ++i) {
            driven += metresPerSecond(finely[i]) / DemoLap::StepsPerSecond;
            if (finely[i].completedLaps == laps)
                continue;
            laps = finely[i].completedLaps;
            QVERIFY(std::abs(driven - laps * circuit.length()) < 2);
        }
        QCOMPARE(laps, 3);
    }

    void theDeltaMovesSmoothlyAfterTheFirstLap()
    {
        QCOMPARE(read(finely[std::size_t{60} * DemoLap::StepsPerSecond].deltaTimeS), 0.0F);
        for (std::size_t i = 1; i < finely.size(); ++i) {
            if (finely[i].completedLaps == finely[i - 1].completedLaps)
                QVERIFY(std::abs(finely[i].deltaTimeS - finely[i - 1].deltaTimeS) < 0.02F);
        }
    }

    void aFrameAtSixtyHertzIsNearTheOneBefore()
    {
        for (std::size_t i = 2; i < finely.size(); ++i) {
            const VehicleTelemetry &now = finely[i];
            const VehicleTelemetry &before = finely[i - 2];
            QVERIFY(std::abs(now.speedKmh - before.speedKmh) < 6);
            QVERIFY(std::abs(now.swayG - before.swayG) < 0.25F);
            QVERIFY(std::abs(now.heaveG - before.heaveG) < 0.3F);
            QVERIFY(std::abs(now.rollDeg - before.rollDeg) < 0.6F);
            QVERIFY(std::abs(now.pitchDeg - before.pitchDeg) < 0.6F);
            QVERIFY(std::abs(now.steeringPercent - before.steeringPercent) <= 3);
            QVERIFY(std::abs(int(now.brakePedalPercent) - int(before.brakePedalPercent)) <= 20);
        }
    }

    void theRoadComesBackToItsStart()
    {
        const Circuit circuit;
        double east = 0;
        double north = 0;
        for (int metre = 0; metre < circuit.length(); ++metre) {
            const RoadPoint road = circuit.at(metre + 0.5);
            east += std::sin(road.heading);
            north += std::cos(road.heading);
        }
        QVERIFY(std::hypot(east, north) < 2);
        const RoadPoint first = circuit.at(0);
        const RoadPoint last = circuit.at(circuit.length() - 1e-6);
        QVERIFY(std::abs(last.heading - first.heading - 2 * Pi) < 1e-3);
        QVERIFY(std::abs(last.elevation - first.elevation) < 0.05);
        QVERIFY(std::abs(circuit.at(-10).elevation - circuit.at(circuit.length() - 10).elevation) <
                1e-9);
    }
};

QTEST_GUILESS_MAIN(DemoDrivingTest)
#include "DemoDrivingTest.moc"
