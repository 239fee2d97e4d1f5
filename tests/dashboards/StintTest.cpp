#include "Stage.h"

#include <QtQml/QQmlComponent>
#include <QtQml/QQmlEngine>
#include <QtTest/QtTest>

#include <memory>

namespace {

/// A component of the built Endurance dashboard.
class Memory
{
public:
    explicit Memory(const QString &type)
        : component(&engine, QUrl::fromLocalFile(builtDashboards().filePath(
                                 QStringLiteral("Endurance/Gauges/%1.qml").arg(type))))
        , object(component.create())
    {
        if (object == nullptr)
            qFatal("%s", qPrintable(component.errorString()));
    }

    void publish(const QVariantMap &values, int times = 1)
    {
        for (auto value = values.begin(); value != values.end(); ++value)
            QVERIFY(object->setProperty(value.key().toUtf8(), value.value()));
        for (int i = 0; i < times; ++i)
            object->setProperty("publication", ++publication);
    }

    QVariant value(const char *name) const { return object->property(name); }
    double number(const char *name) const { return value(name).toDouble(); }
    QVariantList list(const char *name) const
    {
        return value(name).value<QJSValue>().toVariant().toList();
    }

private:
    QQmlEngine engine;
    QQmlComponent component;
    std::unique_ptr<QObject> object;
    int publication = 0;
};

QVariantMap atLine(int laps, int fuel)
{
    return {{QStringLiteral("laps"), laps},
            {QStringLiteral("lapsKnown"), true},
            {QStringLiteral("fuel"), fuel},
            {QStringLiteral("fuelKnown"), true},
            {QStringLiteral("lastTime"), QStringLiteral("lap %1").arg(laps)}};
}

} // namespace

class StintTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void consumptionIsTheMeanOfWholeLaps()
    {
        Memory stint(QStringLiteral("Stint"));
        stint.publish(atLine(3, 93)); // Somewhere in a lap.
        stint.publish(atLine(4, 90));
        QCOMPARE(stint.number("perLap"), 0.0);
        QCOMPARE(stint.number("boxLap"), 0.0);
        stint.publish(atLine(5, 84));
        QCOMPARE(stint.number("perLap"), 6.0);
        stint.publish(atLine(6, 80));
        QCOMPARE(stint.number("perLap"), 5.0);
        QCOMPARE(stint.number("lapsLeft"), 16.0);
        QCOMPARE(stint.number("boxLap"), 22.0);
        QCOMPARE(stint.list("times").size(), 3);
        QCOMPARE(stint.list("times").constFirst().toMap().value(QStringLiteral("lap")).toInt(), 6);
    }

    void aFilledTankKeepsWhatALapTakes()
    {
        Memory stint(QStringLiteral("Stint"));
        for (int lap = 0; lap < 4; ++lap)
            stint.publish(atLine(lap, 40 - 5 * lap));
        stint.publish(atLine(3, 26)); // Fuel that sways fills no tank.
        QCOMPARE(stint.number("boxLap"), 8.0);
        stint.publish(atLine(3, 100));
        QCOMPARE(stint.number("perLap"), 5.0);
        QCOMPARE(stint.number("lapsLeft"), 20.0);
        QCOMPARE(stint.number("boxLap"), 0.0);
        // The lap out of the box isn't a whole one.
        stint.publish(atLine(4, 98));
        QCOMPARE(stint.number("perLap"), 5.0);
        stint.publish(atLine(5, 92));
        QCOMPARE(stint.number("perLap"), 6.0);
    }

    void anotherSessionBeginsAnew()
    {
        Memory stint(QStringLiteral("Stint"));
        for (int lap = 0; lap < 4; ++lap)
            stint.publish(atLine(lap, 40 - 5 * lap));
        stint.publish(atLine(0, 25));
        QCOMPARE(stint.number("perLap"), 0.0);
        QCOMPARE(stint.number("boxLap"), 0.0);
        QVERIFY(stint.list("times").isEmpty());
    }

    void whatIsUnknownIsForgotten()
    {
        Memory stint(QStringLiteral("Stint"));
        for (int lap = 0; lap < 4; ++lap)
            stint.publish(atLine(lap, 40 - 5 * lap));
        stint.publish({{QStringLiteral("fuelKnown"), false}});
        QCOMPARE(stint.number("perLap"), 0.0);
        QCOMPARE(stint.number("lapsLeft"), 0.0);
        QCOMPARE(stint.number("boxLap"), 0.0);
        QCOMPARE(stint.list("times").size(), 3);
        stint.publish({{QStringLiteral("lapsKnown"), false}});
        QVERIFY(stint.list("times").isEmpty());
        // Lap 9 comes out of nowhere and is no lap of this stint.
        stint.publish(atLine(9, 60));
        QVERIFY(stint.list("times").isEmpty());
    }

    void aTimeThatComesLateIsCorrected()
    {
        Memory stint(QStringLiteral("Stint"));
        for (int lap = 0; lap < 9; ++lap)
            stint.publish(atLine(lap, 50));
        stint.publish({{QStringLiteral("lastTime"), QStringLiteral("late")}});
        const QVariantList times = stint.list("times");
        QCOMPARE(times.size(), stint.value("capacity").toInt());
        QCOMPARE(times.at(0).toMap().value(QStringLiteral("time")).toString(),
                 QStringLiteral("late"));
        QCOMPARE(times.at(1).toMap().value(QStringLiteral("time")).toString(),
                 QStringLiteral("lap 7"));
    }

    void aTrendComparesTheHalvesOfItsMeans()
    {
        Memory trend(QStringLiteral("Trend"));
        const QString value = QStringLiteral("value");
        trend.publish({{QStringLiteral("perSample"), 10}, {QStringLiteral("capacity"), 8}});
        trend.publish({{value, 80.0}}, 29);
        QCOMPARE(trend.list("samples").size(), 3);
        QVERIFY(!trend.value("settled").toBool());
        trend.publish({{value, 86.0}}, 30);
        QVERIFY(trend.value("settled").toBool());
        QCOMPARE(trend.number("change"), 86.0 - 80.0 * 29 / 30);
        trend.publish({{QStringLiteral("resting"), true}, {value, 0.0}}, 100);
        QCOMPARE(trend.list("samples").size(), 6);
        trend.publish({{QStringLiteral("resting"), false}, {value, 90.0}}, 200);
        QCOMPARE(trend.list("samples").size(), 8);
        QCOMPARE(trend.number("change"), 0.0);
        trend.publish({{QStringLiteral("known"), false}});
        QVERIFY(trend.list("samples").isEmpty());
        QVERIFY(!trend.value("settled").toBool());
    }
};

QTEST_GUILESS_MAIN(StintTest)
#include "StintTest.moc"
