#include "render/DerivedIndicators.h"

#include <QtTest/QtTest>

#include <cmath>
#include <limits>

namespace di = DerivedIndicators;

namespace {

constexpr int IntMin = std::numeric_limits<int>::min();
constexpr int IntMax = std::numeric_limits<int>::max();
constexpr float Inf = std::numeric_limits<float>::infinity();
constexpr float NaN = std::numeric_limits<float>::quiet_NaN();
constexpr int Pause = -1;

} // namespace

class DerivedIndicatorsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void halvesGoUpwardsAndThoseOfTheEngineSpeedAwayFromZero_data()
    {
        QTest::addColumn<float>("value");
        QTest::addColumn<int>("upwards");
        QTest::addColumn<int>("awayFromZero");
        const auto row = [](const char *name, float value, int upwards, int awayFromZero) {
            QTest::newRow(name) << value << upwards << awayFromZero;
        };
        row("zero", 0.0F, 0, 0);
        row("minus zero", -0.0F, 0, 0);
        row("half", 0.5F, 1, 1);
        row("minus half", -0.5F, 0, -1);
        row("beyond minus half", -0.6F, -1, -1);
        row("below half", 0.4999999F, 0, 0);
        // The sum with one half is 1 in single precision.
        row("largest below half", 0.49999997F, 1, 0);
        row("1.5", 1.5F, 2, 2);
        row("2.4", 2.4F, 2, 2);
        row("2.5", 2.5F, 3, 3);
        row("4.5", 4.5F, 5, 5);
        row("-1.49", -1.49F, -1, -1);
        row("-1.5", -1.5F, -1, -2);
        row("-1.51", -1.51F, -2, -2);
        row("-2.5", -2.5F, -2, -3);
        row("-2.6", -2.6F, -3, -3);
        row("whole", 42.0F, 42, 42);
        row("minus whole", -42.0F, -42, -42);
        // Odd and too large for a half: the sum is rounded to even.
        row("2^23 + 1", 8388609.0F, 8388610, 8388609);
        row("-(2^23 + 1)", -8388609.0F, -8388609, -8388609);
        row("largest float in an int", 2147483520.0F, 2147483520, 2147483520);
        row("smallest int", -2147483648.0F, IntMin, IntMin);
        row("next to the smallest int", -2147483520.0F, -2147483520, -2147483520);
        row("2^31", 2147483648.0F, IntMax, IntMax);
        row("huge", 3e38F, IntMax, IntMax);
        row("minus huge", -3e38F, IntMin, IntMin);
        row("infinity", Inf, IntMax, IntMax);
        row("minus infinity", -Inf, IntMin, IntMin);
        row("not a number", NaN, 0, 0);
        row("minus not a number", -NaN, 0, 0);
    }

    void halvesGoUpwardsAndThoseOfTheEngineSpeedAwayFromZero()
    {
        QFETCH(float, value);
        QFETCH(int, upwards);
        QFETCH(int, awayFromZero);
        QCOMPARE(di::rounded(value), upwards);
        QCOMPARE(di::roundedAwayFromZero(value), awayFromZero);
    }

    void gearsHaveTheirTexts_data()
    {
        QTest::addColumn<int>("gear");
        QTest::addColumn<QString>("manual");
        QTest::addColumn<QString>("automatic");
        QTest::newRow("-128") << -128 << "R"
                              << "R";
        QTest::newRow("-1") << -1 << "R"
                            << "R";
        QTest::newRow("0") << 0 << "N"
                           << "N";
        QTest::newRow("1") << 1 << "1"
                           << "D";
        QTest::newRow("10") << 10 << "10"
                            << "D";
        QTest::newRow("127") << 127 << "127"
                             << "D";
    }

    void gearsHaveTheirTexts()
    {
        QFETCH(int, gear);
        QTEST(di::gearText(gear, false), "manual");
        QTEST(di::gearText(gear, true), "automatic");
    }

    void timesAreMinutesSecondsAndMilliseconds_data()
    {
        QTest::addColumn<quint32>("time");
        QTest::addColumn<QString>("text");
        QTest::newRow("none") << 0U << "--:--:---";
        QTest::newRow("1 ms") << 1U << "00:00:001";
        QTest::newRow("1 s") << 1000U << "00:01:000";
        QTest::newRow("before a minute") << 59999U << "00:59:999";
        QTest::newRow("a minute") << 60000U << "01:00:000";
        QTest::newRow("a lap") << 83456U << "01:23:456";
        QTest::newRow("two digits") << 5999999U << "99:59:999";
        QTest::newRow("three digits") << 6000000U << "100:00:000";
        QTest::newRow("above the signed range") << 2147483648U << "35791:23:648";
        QTest::newRow("largest") << 4294967295U << "71582:47:295";
    }

    void timesAreMinutesSecondsAndMilliseconds()
    {
        QFETCH(quint32, time);
        QTEST(di::timeText(time), "text");
    }

    void aRaceWithoutLapsIsADash()
    {
        QCOMPARE(di::lapText(0), QStringLiteral("-"));
        QCOMPARE(di::lapText(1), QStringLiteral("1"));
        QCOMPARE(di::lapText(1234), QStringLiteral("1234"));
        QCOMPARE(di::lapText(-3), QStringLiteral("-3"));
    }

    void deltaStaysWithinTwoDigits_data()
    {
        QTest::addColumn<float>("delta");
        QTest::addColumn<float>("clamped");
        QTest::addColumn<QString>("text");
        QTest::newRow("zero") << 0.0F << 0.0F << "0.000";
        QTest::newRow("slower") << 1.5F << 1.5F << "1.500";
        QTest::newRow("faster") << -0.25F << -0.25F << "-0.250";
        QTest::newRow("third decimal") << 0.0626F << 0.0626F << "0.063";
        QTest::newRow("at the limit") << 99.999F << 99.999F << "99.999";
        QTest::newRow("above it") << 100.0F << 99.999F << "99.999";
        QTest::newRow("below it") << -100.0F << -99.999F << "-99.999";
        QTest::newRow("1000") << 1000.0F << 99.999F << "99.999";
        QTest::newRow("infinity") << Inf << 99.999F << "99.999";
        QTest::newRow("minus infinity") << -Inf << -99.999F << "-99.999";
    }

    void deltaStaysWithinTwoDigits()
    {
        QFETCH(float, delta);
        QFETCH(float, clamped);
        const float actual = di::clampedDelta(delta);
        QVERIFY(actual == clamped);
        QTEST(di::deltaText(actual), "text");
    }

    void aDeltaThatIsNoNumberStaysNone()
    {
        QVERIFY(std::isnan(di::clampedDelta(NaN)));
        QCOMPARE(di::deltaText(NaN), QStringLiteral("nan"));
    }

    void theShareOfTheLimitIsARatioWithoutAClamp()
    {
        QVERIFY(di::rpmShare(4000, 8000) == 0.5F);
        QVERIFY(di::rpmShare(8000, 8000) == 1.0F);
        QVERIFY(di::rpmShare(9000, 6000) == 1.5F);
        QVERIFY(di::rpmShare(4000, 0) == 0.0F);
        // No stand-in for an implausible limit here.
        QVERIFY(di::rpmShare(200, 100) == 2.0F);
        QVERIFY(di::rpmShare(50000, 200000) == 0.25F);
        QVERIFY(di::rpmShare(1000, 4294967295U) == 1000.0F / 4294967296.0F);
    }

    void theWarningComesAtItsShareOfTheLimit_data()
    {
        QTest::addColumn<quint32>("maxRpm");
        QTest::addColumn<int>("percent");
        QTest::addColumn<int>("first");
        QTest::newRow("at the limit itself") << 8000U << 100 << 8000;
        QTest::newRow("at half the limit") << 8000U << 50 << 4000;
        QTest::newRow("95 percent without a threshold") << 8000U << 0 << 7600;
        QTest::newRow("neither limit nor threshold") << 0U << 0 << 9500;
        QTest::newRow("no limit") << 0U << 100 << 10000;
        QTest::newRow("limit 500") << 500U << 100 << 10000;
        QTest::newRow("limit 501") << 501U << 100 << 501;
        QTest::newRow("limit 99999") << 99999U << 100 << 99999;
        QTest::newRow("limit 100000") << 100000U << 100 << 10000;
        QTest::newRow("largest limit") << 4294967295U << 100 << 10000;
        QTest::newRow("1 percent") << 10000U << 1 << 100;
        QTest::newRow("255 percent") << 8000U << 255 << 20400;
    }

    void theWarningComesAtItsShareOfTheLimit()
    {
        QFETCH(quint32, maxRpm);
        QFETCH(int, percent);
        QFETCH(int, first);
        const auto threshold = static_cast<std::uint8_t>(percent);
        QVERIFY(di::rpmWarning(first, maxRpm, threshold));
        QVERIFY(di::rpmWarning(first + 1, maxRpm, threshold));
        QVERIFY(!di::rpmWarning(first - 1, maxRpm, threshold));
        QVERIFY(!di::rpmWarning(0, maxRpm, threshold));
    }

    void theEngineSpeedIsAveragedOverFiveSamples_data()
    {
        QTest::addColumn<QList<int>>("samples");
        QTest::addColumn<QList<int>>("averages");
        using List = QList<int>;
        QTest::newRow("constant from the start")
            << List{8000, 8000, 8000} << List{8000, 8000, 8000};
        QTest::newRow("no ramp from zero")
            << List{100, 200, 300, 400, 500, 600} << List{100, 150, 200, 250, 300, 400};
        QTest::newRow("one zero sample first")
            << List{0, 8000, 8000, 8000, 8000, 8000} << List{0, 4000, 5333, 6000, 6400, 8000};
        QTest::newRow("a full ring of zeros") << List{0, 0, 0, 0, 0, 1000, 1000, 1000, 1000, 1000}
                                              << List{0, 0, 0, 0, 0, 200, 400, 600, 800, 1000};
        QTest::newRow("the highest plausible") << List{100000} << List{100000};
        QTest::newRow("above it enters as zero")
            << List{9000, 100001, 9000, 2000000000} << List{9000, 4500, 6000, 4500};
        QTest::newRow("halves go up") << List{1, 2} << List{1, 2};
        QTest::newRow("a pause wipes it")
            << List{1000, 1000, Pause, 5000, 6000} << List{1000, 1000, 0, 5000, 5500};
        // Five after the pause, so that a sample from before it would show.
        QTest::newRow("a pause leaves nothing in the ring")
            << List{900, 900, 900, 900, 900, 900, 900, Pause, 10, 20, 30, 40, 50, 60}
            << List{900, 900, 900, 900, 900, 900, 900, 0, 10, 15, 20, 25, 30, 40};
    }

    void theEngineSpeedIsAveragedOverFiveSamples()
    {
        QFETCH(QList<int>, samples);
        QFETCH(QList<int>, averages);
        RpmAverage average;
        QList<int> actual;
        for (const int sample : qAsConst(samples)) {
            if (sample == Pause)
                average.reset();
            else
                average.add(static_cast<std::uint32_t>(sample));
            actual.append(di::roundedAwayFromZero(average.average()));
        }
        QCOMPARE(actual, averages);
    }

    void theLongestAverageLosesNothing()
    {
        RpmAverage average;
        for (std::uint32_t i = 0; i < 100'000; ++i)
            average.add(i * 7919 % 100'001);
        for (int i = 0; i < 5; ++i)
            average.add(3);
        QVERIFY(average.average() == 3.0F);
    }

    void theCounterGoesByTwosAndWrapsAt1000()
    {
        FrameCounter counter;
        for (std::uint32_t publication = 1; publication <= 1600; ++publication) {
            QCOMPARE(counter.advance(), publication * 2 % 1000);
            QCOMPARE(counter.blinkPhase(), publication % 2 == 0);
        }
    }
};

QTEST_GUILESS_MAIN(DerivedIndicatorsTest)
#include "DerivedIndicatorsTest.moc"
