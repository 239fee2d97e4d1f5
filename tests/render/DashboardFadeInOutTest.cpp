#include "render/DashboardFadeInOut.h"
#include "support/FakeCounter.h"

#include <QtTest/QtTest>

#include <limits>

namespace {

constexpr int Hidden = -1;
constexpr qint64 Longest = std::numeric_limits<int>::max();
using Permille = QVector<int>;

/// A fade with a fake clock.
struct Fade
{
    FakeCounter counter;
    DashboardFadeInOut object{counter};

    void set(int fadeIn, int duration, int fadeOut)
    {
        object.setProperty("fadeIn", fadeIn);
        object.setProperty("duration", duration);
        object.setProperty("fadeOut", fadeOut);
    }
    void showAt(qint64 ms)
    {
        counter.count = ms;
        object.show();
    }
    /// The opacity after an update at each of these times.
    Permille course(const QVector<qint64> &times)
    {
        Permille result;
        for (const qint64 ms : times) {
            counter.count = ms;
            object.update();
            const auto opacity = double(object.currentOpacity());
            result += object.isVisible() || opacity != 0 ? qRound(1000 * opacity) : Hidden;
        }
        return result;
    }
};

} // namespace

class DashboardFadeInOutTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void climbsHoldsFallsAndHides()
    {
        Fade fade;
        fade.showAt(0);
        QCOMPARE(fade.course({0, 40, 160, 199, 200, 2200, 2201, 2300, 2400, 2401, 9000}),
                 Permille({0, 200, 800, 995, 1000, 1000, 995, 500, 0, Hidden, Hidden}));
        fade.showAt(9010); // Idle time isn't part of the first step.
        QCOMPARE(fade.course({9020, 11'210, 11'350}), Permille({100, 1000, 300}));
        fade.showAt(11'350); // Rises from where it stands.
        QCOMPARE(fade.course({11'370, 11'540}), Permille({400, 1000}));
        fade.showAt(11'540);
        QCOMPARE(fade.course({12'540, 13'750}), Permille({1000, 0})); // Late updates skip phases.
        fade.showAt(13'750);
        QCOMPARE(fade.course({14'000, 99'000}), Permille({1000, Hidden}));
    }

    void lengthsMayBeNothingOrTheLargest()
    {
        Fade fade;
        fade.set(0, -100, -5);
        fade.showAt(0);
        QCOMPARE(fade.course({0, 1, 2, 3}), Permille({0, 1000, 0, Hidden}));
        fade.set(Longest, Longest, Longest);
        fade.showAt(3);
        QCOMPARE(fade.course({3 + 2 * Longest, 4 + 2 * Longest, 5 + 2 * Longest}),
                 Permille({1000, 1000, Hidden}));
    }

    void tellsOfEachChangeOnce()
    {
        Fade fade;
        QStringList told;
        connect(&fade.object, &DashboardFadeInOut::opacityChanged, this,
                [&] { told += QString::number(fade.object.isVisible()); });
        connect(&fade.object, &DashboardFadeInOut::visibleChanged, this,
                [&] { told += QStringLiteral("visible"); });
        fade.course({0});
        fade.showAt(0);
        fade.showAt(0);
        fade.course({1000, 1500}); // Nothing changes while it holds.
        fade.set(200, 500, 200);   // Moves the end of the hold at once.
        fade.course({1501, 1600});
        QCOMPARE(told.join(QLatin1Char(' ')), QStringLiteral("visible 1 0 visible"));
    }
};

QTEST_APPLESS_MAIN(DashboardFadeInOutTest)
#include "DashboardFadeInOutTest.moc"
