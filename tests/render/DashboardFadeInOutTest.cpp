#include "render/DashboardFadeInOut.h"
#include "support/FakeCounter.h"

#include <QtQml/QQmlComponent>
#include <QtQml/QQmlEngine>
#include <QtTest/QtTest>

#include <cmath>
#include <limits>
#include <memory>

namespace {

/// A fade at the lengths of the system panel, under a clock in the test's hand.
struct Fade
{
    FakeCounter counter;
    DashboardFadeInOut object{counter};
    QSignalSpy opacityChanges{&object, &DashboardFadeInOut::opacityChanged};
    QSignalSpy visibleChanges{&object, &DashboardFadeInOut::visibleChanged};

    Fade()
    {
        set("fadeIn", 250);
        set("fadeOut", 250);
    }
    void set(const char *name, int value) { object.setProperty(name, value); }
    void updateAt(std::int64_t ms)
    {
        counter.count = ms;
        object.update();
    }
    void showAt(std::int64_t ms)
    {
        counter.count = ms;
        object.show();
    }
};

bool near(float actual, double expected)
{
    return std::abs(static_cast<double>(actual) - expected) < 1e-5;
}

} // namespace

class DashboardFadeInOutTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aNewObjectIsHiddenAndUpdatesLeaveItSo()
    {
        Fade fade;
        fade.updateAt(5000);
        QCOMPARE(fade.object.currentOpacity(), 0.0F);
        QVERIFY(!fade.object.isVisible());
        QVERIFY(fade.opacityChanges.isEmpty());
        QVERIFY(fade.visibleChanges.isEmpty());
    }

    void showAloneMakesItVisibleButStillTransparent()
    {
        Fade fade;
        fade.showAt(10);
        fade.showAt(20);
        QVERIFY(fade.object.isVisible());
        QCOMPARE(fade.object.currentOpacity(), 0.0F);
        QCOMPARE(fade.visibleChanges.count(), 1);
        QVERIFY(fade.opacityChanges.isEmpty());
    }

    void aFadeAt25FramesASecondClimbsHoldsFallsAndHides()
    {
        Fade fade;
        fade.showAt(0);
        for (std::int64_t call = 1; call <= 6; ++call) {
            fade.updateAt(call * 40);
            QVERIFY(near(fade.object.currentOpacity(), 0.16 * static_cast<double>(call)));
        }
        fade.updateAt(280);
        QCOMPARE(fade.object.currentOpacity(), 1.0F);
        QCOMPARE(fade.opacityChanges.count(), 7);

        for (int ms = 320; ms <= 2240; ms += 40)
            fade.updateAt(ms);
        QCOMPARE(fade.object.currentOpacity(), 1.0F);
        QCOMPARE(fade.opacityChanges.count(), 7);

        for (std::int64_t call = 1; call <= 6; ++call) {
            fade.updateAt(2240 + call * 40);
            QVERIFY(near(fade.object.currentOpacity(), 1.0 - 0.16 * static_cast<double>(call)));
        }
        fade.updateAt(2500);
        QVERIFY(fade.object.isVisible());
        QVERIFY(near(fade.object.currentOpacity(), 0.0));
        fade.updateAt(2520);
        QVERIFY(!fade.object.isVisible());
        QCOMPARE(fade.object.currentOpacity(), 0.0F);
        QCOMPARE(fade.visibleChanges.count(), 2);

        fade.updateAt(2560);
        QCOMPARE(fade.opacityChanges.count(), 15);
        QCOMPARE(fade.visibleChanges.count(), 2);
    }

    void boundsBelongToTheEarlierPhaseExceptTheFirst()
    {
        Fade fade;
        fade.showAt(0);
        fade.updateAt(249);
        QVERIFY(fade.object.currentOpacity() < 1.0F);
        fade.updateAt(250);
        QCOMPARE(fade.object.currentOpacity(), 1.0F);
        fade.updateAt(2250);
        QCOMPARE(fade.object.currentOpacity(), 1.0F);
        fade.updateAt(2251);
        QVERIFY(near(fade.object.currentOpacity(), 1.0 - 1.0 / 250));
        fade.updateAt(2500);
        QVERIFY(fade.object.isVisible());
        fade.updateAt(2501);
        QVERIFY(!fade.object.isVisible());
    }

    void idleTimeBeforeAFadeIsNoPartOfItsFirstStep()
    {
        Fade fade;
        fade.updateAt(9990);
        fade.showAt(10'000);
        fade.updateAt(10'015);
        QVERIFY(near(fade.object.currentOpacity(), 25.0 / 250));
    }

    void aLateUpdateGoesStraightToTheHoldOrToTheEnd()
    {
        Fade fade;
        fade.showAt(0);
        fade.updateAt(1000);
        QCOMPARE(fade.object.currentOpacity(), 1.0F);
        QCOMPARE(fade.opacityChanges.count(), 1);

        fade.showAt(1000);
        QStringList order;
        connect(&fade.object, &DashboardFadeInOut::opacityChanged, this, [&] {
            order << (fade.object.isVisible() ? QStringLiteral("shown") : QStringLiteral("hidden"));
        });
        connect(&fade.object, &DashboardFadeInOut::visibleChanged, this,
                [&] { order << QStringLiteral("visible"); });
        fade.updateAt(90'000);
        QCOMPARE(fade.object.currentOpacity(), 0.0F);
        QCOMPARE(order, QStringList({QStringLiteral("hidden"), QStringLiteral("visible")}));
    }

    void showDuringTheFadeOutRisesFromWhereItStands()
    {
        Fade fade;
        fade.showAt(0);
        fade.updateAt(2250);
        fade.updateAt(2425);
        QVERIFY(near(fade.object.currentOpacity(), 0.3));
        fade.showAt(2425);
        fade.updateAt(2450);
        QVERIFY(near(fade.object.currentOpacity(), 0.4));
        QCOMPARE(fade.visibleChanges.count(), 1);
    }

    void repeatedShowKeepsItInTheFadeInAtFullOpacity()
    {
        Fade fade;
        for (int ms = 0; ms < 10'000; ms += 100) {
            fade.showAt(ms);
            fade.updateAt(ms + 100);
        }
        QVERIFY(fade.object.isVisible());
        QCOMPARE(fade.object.currentOpacity(), 1.0F);
        QCOMPARE(fade.opacityChanges.count(), 100);
    }

    void lengthsOfZeroOrLessStandForTheShortestFade()
    {
        Fade fade;
        fade.set("fadeIn", 0);
        fade.set("fadeOut", -5);
        fade.set("duration", -100);
        fade.showAt(0);
        fade.updateAt(0);
        QCOMPARE(fade.object.currentOpacity(), 0.0F);
        fade.updateAt(1);
        QCOMPARE(fade.object.currentOpacity(), 1.0F);
        fade.updateAt(2);
        QCOMPARE(fade.object.currentOpacity(), 0.0F);
        QVERIFY(fade.object.isVisible());
        fade.updateAt(3);
        QVERIFY(!fade.object.isVisible());
    }

    void theLongestLengthsHoldAndDoNotWrap()
    {
        constexpr int Longest = std::numeric_limits<int>::max();
        Fade fade;
        fade.set("fadeOut", Longest);
        fade.set("duration", Longest);
        fade.showAt(0);
        fade.updateAt(250LL + Longest);
        QCOMPARE(fade.object.currentOpacity(), 1.0F);
        fade.updateAt(251LL + Longest);
        QVERIFY(fade.object.isVisible());
        fade.set("fadeIn", Longest);
        fade.updateAt(2LL * Longest + 1);
        QVERIFY(fade.object.isVisible());
        fade.updateAt(2LL * Longest + 2);
        QVERIFY(!fade.object.isVisible());
    }

    void aNewDurationMovesTheEndOfTheHoldAtTheNextUpdate()
    {
        Fade fade;
        fade.showAt(0);
        fade.updateAt(1000);
        fade.set("duration", 500);
        QCOMPARE(fade.object.currentOpacity(), 1.0F);
        fade.updateAt(1001);
        QVERIFY(!fade.object.isVisible());
    }

    void documentsCanMakeOneAndReadItsDefaults()
    {
        DashboardFadeInOut::registerType();
        QQmlEngine engine;
        QQmlComponent component(&engine);
        component.setData("import DashboardFadeInOut 1.0\nDashboardFadeInOut { fadeIn: 250 }",
                          QUrl());
        const std::unique_ptr<QObject> object(component.create());
        QVERIFY2(object, qPrintable(component.errorString()));
        QCOMPARE(object->property("fadeIn").toInt(), 250);
        QCOMPARE(object->property("fadeOut").toInt(), 200);
        QCOMPARE(object->property("duration").toInt(), 2000);
        QVERIFY(!object->setProperty("opacity", 0.5F));
        QVERIFY(!object->setProperty("visible", true));
    }
};

QTEST_GUILESS_MAIN(DashboardFadeInOutTest)
#include "DashboardFadeInOutTest.moc"
