#include "telemetry/DemoLap.h"

#include <QtTest/QtTest>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <limits>
#include <map>
#include <vector>

namespace {

constexpr std::uint32_t Seed = 1;
constexpr double Lights = 5; // s until the car may go

using Bytes =
    std::array<char, sizeof(VehicleTelemetry) + sizeof(DisplayLimits) + sizeof(ExtendedTelemetry)>;

Bytes bytesOf(const TelemetrySample &sample)
{
    Bytes bytes{};
    char *to = bytes.data();
    std::memcpy(to, &sample.vehicle, sizeof(VehicleTelemetry));
    std::memcpy(to + sizeof(VehicleTelemetry), &sample.limits, sizeof(DisplayLimits));
    std::memcpy(to + sizeof(VehicleTelemetry) + sizeof(DisplayLimits), &sample.extended,
                sizeof(ExtendedTelemetry));
    return bytes;
}

/// Samples of a drive at `hertz`, from its start on.
std::vector<VehicleTelemetry> driven(double seconds, int hertz, std::uint32_t laps = 36,
                                     std::uint32_t seed = Seed)
{
    DemoLap lap(seed, laps);
    std::vector<VehicleTelemetry> samples;
    const int count = static_cast<int>(seconds * hertz);
    samples.reserve(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i)
        samples.push_back(lap.sampleAt(static_cast<double>(i) / hertz).vehicle);
    return samples;
}

bool has(const VehicleTelemetry &vehicle, std::uint32_t flag)
{
    return (vehicle.statusFlags & flag) != 0;
}

/// A copy, since nothing may be bound to a field of a packed record.
template<typename T> T read(T field)
{
    return field;
}

double metresPerSecond(const VehicleTelemetry &vehicle)
{
    return static_cast<double>(vehicle.groundSpeedKmh) / 3.6;
}

/// The part of an hour at 10 Hz that comes before the race starts over.
std::vector<VehicleTelemetry> wholeRace()
{
    std::vector<VehicleTelemetry> samples = driven(3600, 10);
    const auto again = std::adjacent_find(samples.begin(), samples.end(),
                                          [](const VehicleTelemetry &a, const VehicleTelemetry &b) {
                                              return b.completedLaps < a.completedLaps;
                                          });
    if (again != samples.end())
        samples.erase(again + 1, samples.end());
    return samples;
}

} // namespace

class DemoLapTest : public QObject
{
    Q_OBJECT

    std::vector<VehicleTelemetry> race;   // One race at 10 Hz.
    std::vector<VehicleTelemetry> finely; // Three laps, step by step.

private Q_SLOTS:
    void initTestCase()
    {
        race = wholeRace();
        finely = driven(260, DemoLap::StepsPerSecond);
    }

    void theSameSeedGivesTheSameBytesInAnyOrderOfRequests()
    {
        const std::vector<double> moments{0, 3.2, 41.5, 41.6, 120, 299.99, 300, 611.25, 1800, 3599};
        std::vector<Bytes> forwards;
        forwards.reserve(moments.size());
        DemoLap first(7);
        for (double moment : moments)
            forwards.push_back(bytesOf(first.sampleAt(moment)));

        DemoLap second(7);
        for (std::size_t i = moments.size(); i-- > 0;)
            QVERIFY(bytesOf(second.sampleAt(moments[i])) == forwards[i]);
        for (std::size_t i = 0; i < moments.size(); ++i) {
            const std::size_t shuffled = (i * 7) % moments.size();
            QVERIFY(bytesOf(second.sampleAt(moments[shuffled])) == forwards[shuffled]);
            DemoLap alone(7);
            QVERIFY(bytesOf(alone.sampleAt(moments[i])) == forwards[i]);
        }
    }

    void anotherSeedGivesAnotherRace()
    {
        DemoLap one(1);
        DemoLap two(2);
        QVERIFY(bytesOf(one.sampleAt(200)) != bytesOf(two.sampleAt(200)));
    }

    void playingThroughAMomentGivesWhatJumpingThereGives()
    {
        DemoLap played(Seed);
        DemoLap jumping(Seed);
        for (int i = 0; i <= 60 * 100; ++i)
            played.sampleAt(i / 60.0);
        QVERIFY(bytesOf(played.sampleAt(100)) == bytesOf(jumping.sampleAt(100)));
        // One step back is a step back, and forwards again the same as before.
        const double stepBefore = 100 - 1.0 / DemoLap::StepsPerSecond;
        DemoLap fresh(Seed);
        QVERIFY(bytesOf(played.sampleAt(stepBefore)) == bytesOf(fresh.sampleAt(stepBefore)));
        QVERIFY(bytesOf(played.sampleAt(stepBefore)) != bytesOf(played.sampleAt(100)));
        // Every frame at 60 Hz is two steps further on, none is shown twice.
        for (int i = 60 * 20; i < 60 * 40; ++i)
            QVERIFY(bytesOf(played.sampleAt(i / 60.0)) != bytesOf(played.sampleAt((i + 1) / 60.0)));
    }

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

    void anOpenWingMakesTheCarFaster()
    {
        const RoadPoint flat;
        VehicleState car;
        car.speed = 65;
        car.gear = 6;
        QVERIFY(VehicleModel::resistance(car, flat, true) <
                0.9 * VehicleModel::resistance(car, flat, false));
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

    void theDeltaIsTheGapToTheBestLapAtTheSamePlace()
    {
        QCOMPARE(read(finely[std::size_t{60} * DemoLap::StepsPerSecond].deltaTimeS), 0.0F);
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
        for (std::size_t i = 1; i < finely.size(); ++i) {
            if (finely[i].completedLaps == finely[i - 1].completedLaps)
                QVERIFY(std::abs(finely[i].deltaTimeS - finely[i - 1].deltaTimeS) < 0.02F);
        }
    }

    void everyFieldMoves()
    {
        std::map<QByteArray, std::pair<double, double>> ranges;
        const auto note = [&ranges](const char *name, double value) {
            const auto known = ranges.emplace(name, std::make_pair(value, value)).first;
            known->second.first = std::min(known->second.first, value);
            known->second.second = std::max(known->second.second, value);
        };
        for (const VehicleTelemetry &v : race) {
            note("speedKmh", double(v.speedKmh));
            note("groundSpeedKmh", double(v.groundSpeedKmh));
            note("steeringPercent", v.steeringPercent);
            note("gear", v.gear);
            note("rpm", v.rpm);
            note("gasPedalPercent", v.gasPedalPercent);
            note("brakePedalPercent", v.brakePedalPercent);
            note("clutchPedalPercent", v.clutchPedalPercent);
            note("fuelLevelPercent", v.fuelLevelPercent);
            note("position", v.position);
            note("currentTimeMs", v.currentTimeMs);
            note("lastTimeMs", v.lastTimeMs);
            note("bestTimeMs", v.bestTimeMs);
            note("completedLaps", v.completedLaps);
            note("absLevel", v.absLevel);
            note("tractionControlLevel", v.tractionControlLevel);
            note("heaveG", double(v.heaveG));
            note("swayG", double(v.swayG));
            note("surgeG", double(v.surgeG));
            note("brakeBiasPercent", v.brakeBiasPercent);
            note("deltaTimeS", double(v.deltaTimeS));
            for (int wheel = 0; wheel < 4; ++wheel) {
                const QByteArray corner = QByteArray::number(wheel);
                note(("tyreTempC" + corner).constData(), v.tyreTempC[wheel]);
                note(("brakeTempC" + corner).constData(), v.brakeTempC[wheel]);
                note(("tyreWearPercent" + corner).constData(), v.tyreWearPercent[wheel]);
                note(("tyrePressureKpa" + corner).constData(), v.tyrePressureKpa[wheel]);
            }
            note("altitudeAboveGroundM", double(v.altitudeAboveGroundM));
            note("altitudeAboveSeaLevelM", double(v.altitudeAboveSeaLevelM));
            note("turnCoordinatorBall", double(v.turnCoordinatorBall));
            note("pitchDeg", double(v.pitchDeg));
            note("rollDeg", double(v.rollDeg));
            note("headingDeg", double(v.headingDeg));
            note("engineLoadPercent", v.engineLoadPercent);
            for (int bit : {0, 1, 3, 4, 5, 8, 12, 14})
                note(("statusFlags bit " + QByteArray::number(bit)).constData(),
                     (v.statusFlags >> bit) & 1U);
            QCOMPARE(v.statusFlags & ~0x517BU, 0U);
        }
        QCOMPARE(ranges.size(), std::size_t{52});
        for (const auto &[name, range] : ranges)
            QVERIFY2(range.second > range.first, name.constData());
        QVERIFY(ranges["headingDeg"].second - ranges["headingDeg"].first > 350);
        QVERIFY(ranges["speedKmh"].second > 240);
    }

    void valuesStayPlausibleForAnHour_data()
    {
        QTest::addColumn<quint32>("seed");
        for (quint32 seed : {Seed, 2U, 77U, 4'294'967'295U})
            QTest::addRow("seed %u", seed) << seed;
    }
    void valuesStayPlausibleForAnHour()
    {
        QFETCH(quint32, seed);
        DemoLap lap(seed);
        for (int i = 0; i < 36'000; ++i) {
            const TelemetrySample sample = lap.sampleAt(i / 10.0);
            const VehicleTelemetry &v = sample.vehicle;
            const auto within = [](double value, double least, double most) {
                return value >= least && value <= most;
            };
            QVERIFY(!sample.paused);
            QVERIFY(within(double(v.speedKmh), 0, 290));
            QVERIFY(within(double(v.groundSpeedKmh), 0, 290));
            QVERIFY(within(v.steeringPercent, -60, 60));
            QVERIFY(within(v.gear, 0, 6));
            QVERIFY(within(v.rpm, 900, v.maxRpm + 100));
            QVERIFY(within(v.gasPedalPercent, 0, 100));
            QVERIFY(within(v.brakePedalPercent, 0, 100));
            QVERIFY(within(v.clutchPedalPercent, 0, 100));
            QVERIFY(within(v.engineLoadPercent, 0, 100));
            QVERIFY(within(v.fuelLevelPercent, 1, 100));
            QVERIFY(within(v.position, 1, 18));
            QVERIFY(within(double(v.heaveG), -0.8, 0.8));
            QVERIFY(within(double(v.swayG), -2.2, 2.2));
            QVERIFY(within(double(v.surgeG), -2.8, 1.3));
            QVERIFY(within(v.brakeBiasPercent, 50, 60));
            QVERIFY(within(double(v.deltaTimeS), -20, 60));
            QVERIFY(within(double(v.altitudeAboveGroundM), 0.03, 0.12));
            QVERIFY(within(double(v.altitudeAboveSeaLevelM), 190, 230));
            QVERIFY(within(double(v.turnCoordinatorBall), -1, 1));
            QVERIFY(within(double(v.pitchDeg), -8, 8));
            QVERIFY(within(double(v.rollDeg), -6, 6));
            QVERIFY(within(double(v.headingDeg), 0, 360));
            for (int wheel = 0; wheel < 4; ++wheel) {
                QVERIFY(within(v.tyreTempC[wheel], 55, 120));
                QVERIFY(within(v.brakeTempC[wheel], 80, 780));
                QVERIFY(within(v.tyreWearPercent[wheel], 0, 30));
                QVERIFY(within(v.tyrePressureKpa[wheel], 160, 220));
            }
            QVERIFY(std::all_of(std::begin(v.reserved8), std::end(v.reserved8),
                                [](std::uint8_t byte) { return byte == 0; }));
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

    void theMaskNamesEveryFieldThatHasABit()
    {
        QCOMPARE(quint64(race.front().availabilityMask), Q_UINT64_C(0x9C7A7BF000));
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

    void oddMomentsAreAnswered()
    {
        DemoLap lap(Seed, 2);
        const auto start = bytesOf(lap.sampleAt(0));
        QVERIFY(bytesOf(lap.sampleAt(-1)) == start);
        QVERIFY(bytesOf(lap.sampleAt(std::numeric_limits<double>::quiet_NaN())) == start);
        QVERIFY(bytesOf(lap.sampleAt(std::numeric_limits<double>::infinity())) == start);
        QVERIFY(bytesOf(lap.sampleAt(-std::numeric_limits<double>::infinity())) == start);
        QCOMPARE(read(lap.sampleAt(std::numeric_limits<double>::max()).vehicle.numberOfLaps), 2);
        QCOMPARE(read(lap.sampleAt(1e12).vehicle.numberOfLaps), 2);
        QCOMPARE(read(DemoLap(Seed, 0).sampleAt(10).vehicle.numberOfLaps), 1);
        QCOMPARE(read(DemoLap(Seed, 4'000'000'000).sampleAt(10).vehicle.numberOfLaps),
                 int(DemoLap::LongestRace));
        QVERIFY(!lap.vehicleNameAt(1).isEmpty());
        QCOMPARE(lap.vehicleNameAt(-5), lap.vehicleNameAt(1e9));
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

QTEST_GUILESS_MAIN(DemoLapTest)
#include "DemoLapTest.moc"
