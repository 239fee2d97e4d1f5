#include "render/DerivedIndicators.h"

#include <QtTest/QtTest>

#include <limits>

namespace di = DerivedIndicators;

namespace {

constexpr int IntMin = std::numeric_limits<int>::min();
constexpr int IntMax = std::numeric_limits<int>::max();
constexpr float Inf = std::numeric_limits<float>::infinity();
constexpr float NaN = std::numeric_limits<float>::quiet_NaN();
constexpr std::uint32_t UintMax = std::numeric_limits<std::uint32_t>::max();
constexpr std::uint32_t Pause = UintMax;

} // namespace

class DerivedIndicatorsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void halvesGoUpwardsAndThoseOfTheEngineSpeedAwayFromZero()
    {
        using Row = std::tuple<float, int, int>; // Value, rounded upwards, and away from zero.
        // Where one half can't be added exactly, the sum is rounded to even.
        for (const auto &[value, upwards, awayFromZero] :
             {Row(0.5F, 1, 1), Row(-0.5F, 0, -1), Row(-0.6F, -1, -1), Row(0.49999997F, 1, 0),
              Row(2.4F, 2, 2), Row(2.5F, 3, 3), Row(-1.49F, -1, -1), Row(-1.51F, -2, -2),
              Row(-2.5F, -2, -3), Row(8388609.0F, 8388610, 8388609),
              Row(-2147483520.0F, -2147483520, -2147483520), Row(-2147483648.0F, IntMin, IntMin),
              Row(2147483648.0F, IntMax, IntMax), Row(Inf, IntMax, IntMax),
              Row(-Inf, IntMin, IntMin), Row(NaN, 0, 0)}) {
            QCOMPARE(di::rounded(value), upwards);
            QCOMPARE(di::roundedAwayFromZero(value), awayFromZero);
        }
    }

    void valuesHaveTheirTexts()
    {
        QStringList texts;
        for (const int gear : {-128, -1, 0, 1, 10})
            texts << di::gearText(gear, false) << di::gearText(gear, true);
        for (const std::uint32_t time : {0U, 1U, 59'999U, 83'456U, 6'000'000U, UintMax})
            texts << di::timeText(time);
        for (const int laps : {0, 1, -3})
            texts << di::lapText(laps);
        for (const float delta : {0.0F, 0.0626F, -0.25F, 100.0F, -Inf, NaN})
            texts << di::deltaText(di::clampedDelta(delta));
        QCOMPARE(texts.join(u' '),
                 QStringLiteral("R R R R N N 1 D 10 D "
                                "--:--:--- 00:00:001 00:59:999 01:23:456 100:00:000 71582:47:295 "
                                "- 1 -3 0.000 0.063 -0.250 99.999 -99.999 nan"));
    }

    void theShareOfTheLimitHasNoClampAndNoStandIn()
    {
        QVERIFY(di::rpmShare(4000, 8000) == 0.5F && di::rpmShare(4000, 0) == 0.0F);
        QVERIFY(di::rpmShare(200, 100) == 2.0F);
        QVERIFY(di::rpmShare(1000, UintMax) == 1000.0F / 4294967296.0F);
    }

    void theWarningComesAtItsShareOfTheLimit()
    {
        using Row = std::tuple<std::uint32_t, std::uint8_t, int>; // Limit, percent, first warning.
        for (const auto &[maxRpm, percent, first] :
             {Row(8000, 100, 8000), Row(8000, 50, 4000), Row(8000, 0, 7600), Row(0, 0, 9500),
              Row(500, 100, 10000), Row(501, 100, 501), Row(99999, 100, 99999),
              Row(100000, 100, 10000), Row(UintMax, 100, 10000), Row(8000, 255, 20400)}) {
            QVERIFY(di::rpmWarning(first, maxRpm, percent));
            QVERIFY(!di::rpmWarning(first - 1, maxRpm, percent));
        }
    }

    void theEngineSpeedIsAveragedOverFiveSamples()
    {
        // Five samples after a pause, so that one from before it would show.
        using Row = std::pair<QList<std::uint32_t>, QList<int>>; // Samples and their averages.
        for (const auto &[samples, averages] :
             {Row({100, 200, 300, 400, 500, 600}, {100, 150, 200, 250, 300, 400}),
              Row({0, 8000, 8000, 8000, 8000, 8000}, {0, 4000, 5333, 6000, 6400, 8000}),
              Row({100000, 100001, 9000, 2000000000}, {100000, 50000, 36333, 27250}),
              Row({1000, 1000, Pause, 5000, 6000}, {1000, 1000, 0, 5000, 5500}),
              Row({900, 900, 900, 900, 900, 900, Pause, 10, 20, 30, 40, 50, 60},
                  {900, 900, 900, 900, 900, 900, 0, 10, 15, 20, 25, 30, 40})}) {
            RpmAverage average;
            QList<int> actual;
            for (const std::uint32_t sample : samples) {
                if (sample == Pause)
                    average.reset();
                else
                    average.add(sample);
                actual.append(di::roundedAwayFromZero(average.average()));
            }
            QCOMPARE(actual, averages);
        }
    }
};

QTEST_GUILESS_MAIN(DerivedIndicatorsTest)
#include "DerivedIndicatorsTest.moc"
