#include "Stage.h"

#include <QtQml/QQmlComponent>
#include <QtQml/QQmlEngine>
#include <QtQml/QQmlExpression>
#include <QtTest/QtTest>

#include <memory>

namespace {

// `line` is a publication at the line, or within a lap if the laps are the same as before. The
// figures are the fuel that a lap takes, the laps left, the lap of the stop and the times kept.
constexpr char Parts[] = R"(
    import QtQml 2.15
    import "Gauges"
    QtObject {
        property Stint stint: Stint {}
        property Trend trend: Trend { perSample: 10; capacity: 8 }
        function line(laps, fuel) {
            stint.laps = laps; stint.lapsKnown = true; stint.fuel = fuel; stint.fuelKnown = true
            stint.lastTime = "of " + laps; ++stint.publication
        }
        function drive(to) { for (let lap = 0; lap < to; ++lap) line(lap, 40 - 5 * lap) }
        function forget(name) { stint[name] = false; ++stint.publication }
        function figures() {
            return [stint.perLap, Math.floor(stint.lapsLeft), stint.boxLap, stint.times.length].join(" ")
        }
        function times() { return stint.times.map(lap => lap.lap + " " + lap.time).join(", ") }
        function follow(value, count) {
            for (trend.value = value; count > 0; --count) ++trend.publication
            return [trend.samples.length, trend.settled, trend.change].join(" ")
        }
    })";

} // namespace

class StintTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void enduranceRemembers_data()
    {
        QTest::addColumn<QString>("script");
        QTest::addColumn<QString>("expected");
        const auto row = [](const char *script, const char *expected) {
            QTest::newRow(script) << QString::fromLatin1(script) << QString::fromLatin1(expected);
        };
        // Consumption is the mean of the whole laps; the first publication is within one.
        row("line(3, 93); line(4, 90); line(5, 84); line(6, 80); figures()", "5 16 22 3");
        // Fuel that sways fills no tank; a filled one keeps what a lap takes.
        row("drive(4); line(3, 26); figures()", "5 5 8 3");
        row("drive(4); line(3, 100); figures()", "5 20 0 3");
        // The lap out of the box isn't a whole one.
        row("drive(4); line(3, 100); line(4, 98); line(5, 92); figures()", "6 15 20 5");
        // Another session begins anew, and what is unknown is forgotten.
        row("drive(4); line(0, 25); figures()", "0 0 0 0");
        row("drive(4); forget('fuelKnown'); figures()", "0 0 0 3");
        row("drive(4); forget('lapsKnown'); figures()", "0 0 0 0");
        row("drive(4); forget('lapsKnown'); line(9, 60); times()", "");
        // The last five laps; a game may tell the time after the lap.
        row("drive(8); times()", "7 of 7, 6 of 6, 5 of 5, 4 of 4, 3 of 3");
        row("drive(3); stint.lastTime = 'late'; ++stint.publication; times()", "2 late, 1 of 1");
        // A trend is the newer half of its means less the older.
        row("follow(80, 59)", "5 false 0");
        row("follow(80, 30); follow(86, 30); trend.resting = true; follow(0, 99)", "6 true 6");
        row("follow(80, 30); follow(90, 80)", "8 true 0");
        row("follow(80, 60); trend.known = false; follow(80, 1)", "0 false 0");
    }

    void enduranceRemembers()
    {
        QFETCH(QString, script);
        QFETCH(QString, expected);
        QQmlEngine engine;
        QQmlComponent component(&engine);
        component.setData(Parts, QUrl::fromLocalFile(folderOf(QStringLiteral("Endurance/"))));
        const std::unique_ptr<QObject> parts(component.create());
        QVERIFY2(parts != nullptr, component.errorString().toUtf8());
        QQmlExpression expression(engine.rootContext(), parts.get(), script);
        QCOMPARE(expression.evaluate().toString(), expected);
        QVERIFY2(!expression.hasError(), expression.error().toString().toUtf8());
    }
};

QTEST_GUILESS_MAIN(StintTest)
#include "StintTest.moc"
