#include "Drive.h"

#include <QtTest/QtTest>

#include <algorithm>
#include <array>
#include <cmath>

/// The race around the car: laps, stops, flags and the running order.
class DemoRaceTest : public QObject
{
    Q_OBJECT

    std::vector<VehicleTelemetry> race; // One race at 10 Hz.

private Q_SLOTS:
    void initTestCase() { race = wholeRace(); }

    void theRunningOrderIsThatOfARace_data()
    {
        QTest::addColumn<quint32>("seed");
        for (quint32 seed : {1U, 2U, 3U, 4U, 64U, 65U, 66U})
            QTest::addRow("seed %u", seed) << seed;
    }
    void theRunningOrderIsThatOfARace()
    {
        QFETCH(quint32, seed);
        const std::vector<VehicleTelemetry> samples = wholeRace(seed);
        QCOMPARE(read(samples.front().position), 9);
        int opening = 0;
        int changes = 0;
        std::size_t changed = 0;
        for (std::size_t i = 1; i < samples.size(); ++i) {
            const VehicleTelemetry &now = samples[i];
            const int change = std::abs(now.position - samples[i - 1].position);
            if (change == 0)
                continue;
            QCOMPARE(change, 1);
            QVERIFY(!has(now, Status::FlagYellow));
            QVERIFY(now.completedLaps < now.numberOfLaps);
            // Three seconds, to the sample.
            QVERIFY(changed == 0 || i - changed >= 29);
            changed = i;
            opening += now.completedLaps == 0 ? 1 : 0;
            ++changes;
        }
        QVERIFY(opening <= 3);
        QVERIFY(changes > 20);
        QVERIFY(changes < 110);
    }

    void aStopCostsPlacesThatComeBack_data() { theRunningOrderIsThatOfARace_data(); }
    void aStopCostsPlacesThatComeBack()
    {
        QFETCH(quint32, seed);
        const std::vector<VehicleTelemetry> samples = wholeRace(seed);
        std::array<int, 37> worst{};
        std::array<int, 37> best{};
        best.fill(99);
        std::vector<std::size_t> stops;
        for (std::size_t i = 1; i < samples.size(); ++i) {
            const auto lap = std::size_t(samples[i].completedLaps);
            worst[lap] = std::max(worst[lap], int(samples[i].position));
            best[lap] = std::min(best[lap], int(samples[i].position));
            if (has(samples[i], Status::SpeedLimiter) && !has(samples[i - 1], Status::SpeedLimiter))
                stops.push_back(lap);
        }
        QCOMPARE(stops.size(), std::size_t{4}); // The last one is after the flag.
        stops.pop_back();
        // Between these laps everybody stops once.
        const std::array<std::array<std::size_t, 2>, 3> phases{{{4, 12}, {14, 23}, {25, 35}}};
        for (std::size_t i = 0; i < phases.size(); ++i) {
            const auto [before, after] = phases[i];
            QVERIFY(stops[i] > before && stops[i] < after);
            const int lost = std::max(worst[stops[i]], worst[stops[i] + 1]);
            QVERIFY(lost >= best[stops[i]] + 4);
            QVERIFY(worst[after] <= lost - 2);
            QVERIFY(std::abs(worst[after] - worst[before]) <= 4);
        }
        // Before the first car comes in, and between the last one's return and the next stops.
        for (std::size_t lap : {0, 1, 2, 3, 4, 12, 13, 14, 23, 24, 25}) {
            QVERIFY(best[lap] >= 4);
            QVERIFY(worst[lap] <= 13);
        }
    }

    void theFuelForTheRaceIsWhatItBurns()
    {
        const auto flag = std::find_if(race.begin(), race.end(), [](const VehicleTelemetry &now) {
            return now.completedLaps == now.numberOfLaps;
        });
        QVERIFY(flag != race.end());
        // The spare is a tenth of the tank.
        QVERIFY(flag->fuelLevelPercent >= 8);
        QVERIFY(flag->fuelLevelPercent <= 12);
    }

    void theWingOpensOnlyWhereItMay()
    {
        int available = 0;
        int engaged = 0;
        for (const VehicleTelemetry &vehicle : race) {
            available += has(vehicle, Status::DrsAvailable) ? 1 : 0;
            if (!has(vehicle, Status::DrsEngaged))
                continue;
            QVERIFY(has(vehicle, Status::DrsAvailable));
            QVERIFY(!has(vehicle, Status::FlagYellow));
            QVERIFY(std::abs(vehicle.swayG) < 0.5F);
            QCOMPARE(read(vehicle.brakePedalPercent), std::uint8_t{0});
            QVERIFY(vehicle.completedLaps > 0);
            ++engaged;
        }
        QVERIFY(engaged > 300);
        QVERIFY(engaged < available);
        QVERIFY(available < static_cast<int>(race.size()) / 5);
    }

    void fuelOnlyFallsOutsideThePitLane()
    {
        int filled = 0;
        int burnt = 0;
        for (std::size_t i = 1; i < race.size(); ++i) {
            const int change = race[i].fuelLevelPercent - race[i - 1].fuelLevelPercent;
            if (change > 0) {
                QVERIFY(has(race[i], Status::SpeedLimiter));
                QCOMPARE(read(race[i].groundSpeedKmh), 0.0F);
                filled += change;
            } else {
                burnt -= change;
            }
            QVERIFY(race[i].fuelLevelPercent > 0);
        }
        QVERIFY(filled > 50);
        QVERIFY(burnt > 100);
    }

    void thePitLaneIsDrivenWithinItsSpeedLimit()
    {
        int stops = 0;
        for (std::size_t i = 1; i < race.size(); ++i) {
            if (!has(race[i], Status::SpeedLimiter))
                continue;
            QVERIFY(race[i].groundSpeedKmh < 61.5F);
            stops += race[i].groundSpeedKmh <= 0 && race[i - 1].groundSpeedKmh > 0 ? 1 : 0;
        }
        QVERIFY(stops >= 3);
        QVERIFY(stops <= 8);
    }

    void aPitStopGivesFreshTyres()
    {
        int changes = 0;
        for (std::size_t i = 1; i < race.size(); ++i) {
            for (int wheel = 0; wheel < 4; ++wheel) {
                if (race[i].tyreWearPercent[wheel] >= race[i - 1].tyreWearPercent[wheel])
                    continue;
                QCOMPARE(read(race[i].groundSpeedKmh), 0.0F);
                QCOMPARE(read(race[i].tyreWearPercent[wheel]), std::uint8_t{0});
                ++changes;
            }
        }
        QVERIFY(changes >= 8);
    }

    void harderWorkHeatsAndWearsMore()
    {
        std::array<double, 4> heat{};
        std::array<double, 4> tyre{};
        std::array<int, 4> wear{};
        for (const VehicleTelemetry &vehicle : race) {
            for (std::size_t wheel = 0; wheel < 4; ++wheel) {
                heat[wheel] += vehicle.brakeTempC[wheel];
                tyre[wheel] += vehicle.tyreTempC[wheel];
                wear[wheel] = std::max<int>(wear[wheel], vehicle.tyreWearPercent[wheel]);
            }
        }
        // A clockwise course leans on the left tyres; the front brakes do the larger part.
        QVERIFY(heat[0] > 1.05 * heat[2]);
        QVERIFY(heat[1] > 1.05 * heat[3]);
        QVERIFY(tyre[0] > 1.05 * tyre[1]);
        QVERIFY(tyre[2] > 1.05 * tyre[3]);
        QVERIFY(wear[0] > wear[1]);
        QVERIFY(wear[2] > wear[3]);
    }

    void lapTimesFollowFromTheLapsDriven()
    {
        std::uint32_t best = 0;
        int laps = 0;
        double together = 0; // ms
        for (std::size_t i = 1; i < race.size(); ++i) {
            const VehicleTelemetry &now = race[i];
            const VehicleTelemetry &before = race[i - 1];
            QVERIFY(now.completedLaps == before.completedLaps ||
                    now.completedLaps == before.completedLaps + 1);
            if (now.completedLaps == before.completedLaps) {
                QCOMPARE(read(now.lastTimeMs), read(before.lastTimeMs));
                QCOMPARE(read(now.bestTimeMs), read(before.bestTimeMs));
                if (before.currentTimeMs > 0)
                    QVERIFY(std::abs(int(now.currentTimeMs - before.currentTimeMs) - 100) <= 9);
                continue;
            }
            ++laps;
            // The lap ended between the samples; both show what the clock had at their moment.
            const std::uint32_t through = before.currentTimeMs + 100 - now.currentTimeMs;
            QVERIFY(std::abs(int(now.lastTimeMs) - int(through)) <= 2);
            // No time is lost between two laps: all of them together are the time since the start.
            together += now.lastTimeMs;
            const double since = static_cast<double>(i) * 100 - Lights * 1000;
            QVERIFY(std::abs(together + now.currentTimeMs - since) <= laps + 2);
            QVERIFY(now.currentTimeMs <= 110);
            best = best == 0 ? now.lastTimeMs : std::min(best, read(now.lastTimeMs));
            QCOMPARE(read(now.bestTimeMs), best);
            QVERIFY(now.lastTimeMs > 75'000);
            QVERIFY(now.lastTimeMs < 130'000);
        }
        QCOMPARE(laps, 36);
        QCOMPARE(read(race.back().numberOfLaps), 36);
        QVERIFY(best < 85'000);
    }

    void theRaceStartsOverWhenItHasEnded()
    {
        DemoLap lap(Seed, 2);
        double end = 0;
        int most = 0;
        for (int i = 1; i < 6000 && end <= 0; ++i) {
            const VehicleTelemetry now = lap.sampleAt(i / 10.0).vehicle;
            if (now.completedLaps < most)
                end = i / 10.0;
            most = std::max(most, int(now.completedLaps));
        }
        QCOMPARE(most, 2);
        QVERIFY(end > 240);
        const VehicleTelemetry parked = lap.sampleAt(end - 1).vehicle;
        QCOMPARE(read(parked.groundSpeedKmh), 0.0F);
        QCOMPARE(int(parked.gear), 0);
        QVERIFY(has(parked, Status::SpeedLimiter));
        QCOMPARE(read(lap.sampleAt(end).vehicle.lastTimeMs), 0U);
        QCOMPARE(read(lap.sampleAt(end).vehicle.position), read(lap.sampleAt(0).vehicle.position));
    }

    void everySeedDrivesItsRaceToTheEnd()
    {
        for (std::uint32_t seed = 0; seed < 25; ++seed) {
            DemoLap lap(seed, 8);
            int most = 0;
            int stops = 0;
            bool wasLimited = false;
            for (int second = 0; second < 1000; ++second) {
                const VehicleTelemetry now = lap.sampleAt(second).vehicle;
                if (now.completedLaps < most)
                    break;
                most = now.completedLaps;
                stops += has(now, Status::SpeedLimiter) && !wasLimited ? 1 : 0;
                wasLimited = has(now, Status::SpeedLimiter);
            }
            QCOMPARE(most, 8);
            QVERIFY(stops >= 2);
        }
    }

    void theBlackFlagIsRareAndBringsTheCarIn()
    {
        const Circuit circuit;
        int flags = 0;
        std::uint32_t flaggedSeed = 0;
        std::uint32_t flaggedLap = 0;
        for (std::uint32_t seed = 0; seed < 300; ++seed) {
            const Driver driver(circuit, seed);
            for (std::uint32_t lap = 0; lap < 34; ++lap) {
                if (driver.mistakes(lap) < 4)
                    continue;
                ++flags;
                if (lap < 12) {
                    flaggedSeed = seed;
                    flaggedLap = lap + 1;
                }
            }
        }
        QVERIFY(flags > 1);
        QVERIFY(flags < 60);
        QVERIFY(flaggedLap > 0);

        bool shown = false;
        bool stopped = false;
        for (const VehicleTelemetry &vehicle : driven(1300, 5, 36, flaggedSeed)) {
            const bool flagged = has(vehicle, Status::FlagBlack);
            QVERIFY(!flagged || vehicle.completedLaps == int(flaggedLap));
            shown = shown || flagged;
            stopped =
                stopped || (vehicle.completedLaps == int(flaggedLap) &&
                            has(vehicle, Status::SpeedLimiter) && vehicle.groundSpeedKmh <= 0);
        }
        QVERIFY(shown);
        QVERIFY(stopped);
    }

    void theDeltaIsTheGapToTheBestLapAtTheSamePlace()
    {
        for (std::size_t i = 1; i < race.size(); ++i) {
            const VehicleTelemetry &end = race[i - 1];
            const VehicleTelemetry &next = race[i];
            if (next.completedLaps == end.completedLaps || end.completedLaps == 0)
                continue;
            // At the line, the delta is the lap's time less the best that stood while it was
            // driven.
            const double gap = (double(next.lastTimeMs) - double(end.bestTimeMs)) / 1000;
            QVERIFY(std::abs(static_cast<double>(end.deltaTimeS) - gap) < 0.15);
        }
    }
};

QTEST_GUILESS_MAIN(DemoRaceTest)
#include "DemoRaceTest.moc"
