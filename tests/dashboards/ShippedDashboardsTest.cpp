#include "PictureComparison.h"
#include "Stage.h"
#include "commands/SourceTokens.h"
#include "render/DashboardFadeInOut.h"

#include <QtCore/QDirIterator>
#include <QtCore/QHash>
#include <QtTest/QtTest>

#include <algorithm>
#include <cstdlib>

namespace {

/// The values that a game may not know: the state without them, and a name that tells of each.
struct Group
{
    const char *state;
    QStringList names; ///< Beginnings of the properties' names.
};

const std::vector<Group> &groups()
{
    const auto names = [](const char *list) {
        return QString::fromLatin1(list).split(QLatin1Char(' '));
    };
    static const std::vector<Group> table{
        {"pedals unknown", names("dash_gasPedal dash_brakePedal dash_clutchPedal")},
        {"fuel level unknown", names("dash_fuelLevel")},
        {"position unknown", names("dash_position")},
        {"current time unknown", names("dash_currentTime")},
        {"last time unknown", names("dash_lastTime")},
        {"best time unknown", names("dash_bestTime")},
        {"completed laps unknown", names("dash_completedLaps")},
        {"number of laps unknown", names("dash_numberOfLaps")},
        {"ABS level unknown", names("dash_abs_Level")},
        {"traction control level unknown", names("dash_tractionControl_Level")},
        {"brake bias unknown", names("dash_brakeBias")},
        {"tyre temperatures unknown", names("dash_tyreTemp")},
        {"tyre wear unknown", names("dash_tyreWear")},
        {"brake temperatures unknown", names("dash_brakeTemp")},
        {"tyre pressures unknown", names("dash_tyrePressure")},
        {"ABS in action unknown", names("dash_absInAction")},
        {"traction control in action unknown", names("dash_tcInAction")},
        {"speed limiter unknown", names("dash_speedLimiter")},
        {"engine load unknown", names("dash_engineLoad")},
    };
    return table;
}

TelemetryState stateOf(const char *name)
{
    const std::vector<TelemetryState> states = telemetryStates();
    const auto found =
        std::find_if(states.begin(), states.end(), [name](const TelemetryState &state) {
            return state.name == QLatin1String(name);
        });
    if (found == states.end())
        qFatal("There is no state '%s'.", name);
    return *found;
}

/// The names that a dashboard's documents read.
QSet<QString> namesIn(const QString &dashboard)
{
    QSet<QString> names;
    QDirIterator files(builtDashboards().filePath(dashboard), {QStringLiteral("*.qml")},
                       QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        QFile file(files.next());
        if (!file.open(QIODevice::ReadOnly))
            qFatal("%s: %s", qPrintable(file.fileName()), qPrintable(file.errorString()));
        for (const SourceToken &token : sourceTokens(QString::fromUtf8(file.readAll())))
            names.insert(token.text);
    }
    return names;
}

bool readsAny(const QString &dashboard, const QStringList &beginnings)
{
    const QSet<QString> names = namesIn(dashboard);
    return std::any_of(names.begin(), names.end(), [&beginnings](const QString &name) {
        return std::any_of(beginnings.begin(), beginnings.end(), [&name](const QString &beginning) {
            return name.startsWith(beginning);
        });
    });
}

QImage picture(const QString &dashboard, const TelemetryState &state)
{
    Stage stage(dashboard);
    stage.publish(state);
    return stage.picture();
}

/// Whether an eye could tell the two apart. Text differs by a shade with the place of its glyphs in
/// their texture.
bool differ(const QImage &one, const QImage &other)
{
    constexpr int Shade = 16;
    return !std::equal(one.constBits(), one.constBits() + one.sizeInBytes(), other.constBits(),
                       other.constBits() + other.sizeInBytes(),
                       [](int a, int b) { return std::abs(a - b) <= Shade; });
}

bool isFlat(const QImage &image)
{
    QImage flat(image.size(), image.format());
    flat.fill(image.pixelColor(0, 0));
    return flat == image;
}

} // namespace

class ShippedDashboardsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        DashboardFadeInOut::registerType();
        QVERIFY(!dashboardNames().isEmpty());
    }

    void aDashboardTakesAnyTelemetryWithoutAWarning_data() { everyDashboard(); }

    void aDashboardTakesAnyTelemetryWithoutAWarning()
    {
        QFETCH(QString, dashboard);
        const std::vector<TelemetryState> states = telemetryStates();
        for (const TelemetryState &state : states) {
            // From the start, and as a change in both directions.
            Stage stage(dashboard);
            QVERIFY2(stage.isLoaded(), stage.errors());
            for (const TelemetryState *shown : {&state, &states.front(), &state}) {
                stage.publish(*shown);
                const QImage image = stage.picture();
                QVERIFY2(stage.errors().isEmpty(), state.name.toUtf8() + ": " + stage.errors());
                QVERIFY2(!image.isNull() && !isFlat(image), qPrintable(state.name));
            }
        }
    }

    void aPictureIsTheSameEachTime_data() { everyDashboard(); }

    /// Only such a picture tells something by being another.
    void aPictureIsTheSameEachTime()
    {
        QFETCH(QString, dashboard);
        const QImage known = knownPicture(dashboard);
        QVERIFY(!known.isNull());
        QVERIFY(!differ(picture(dashboard, previewState()), known));
    }

    void aDashboardShowsWhichValuesAreUnknown_data()
    {
        QTest::addColumn<QString>("dashboard");
        QTest::addColumn<QByteArray>("state");
        const QStringList names = dashboardNames();
        for (const QString &name : names) {
            QTest::addRow("%s: nothing known", qPrintable(name))
                << name << QByteArray("nothing known");
            for (const Group &group : groups()) {
                if (readsAny(name, group.names))
                    QTest::addRow("%s: %s", qPrintable(name), group.state)
                        << name << QByteArray(group.state);
            }
        }
    }

    void aDashboardShowsWhichValuesAreUnknown()
    {
        QFETCH(QString, dashboard);
        QFETCH(QByteArray, state);
        QVERIFY(differ(picture(dashboard, stateOf(state)), knownPicture(dashboard)));
    }

    void modesShow_data()
    {
        QTest::addColumn<QString>("dashboard");
        QTest::addColumn<QByteArray>("state");
        const QStringList names = dashboardNames();
        for (const QString &name : names) {
            for (const char *state : {"paused", "markers", "mph", "yellow flag", "blue flag",
                                      "black flag", "black-and-white flag"})
                QTest::addRow("%s: %s", qPrintable(name), state) << name << QByteArray(state);
        }
    }

    void modesShow()
    {
        QFETCH(QString, dashboard);
        QFETCH(QByteArray, state);
        TelemetryState changed = stateOf(state);
        if (!state.endsWith("flag"))
            changed.sample.vehicle.statusFlags = 0;
        QVERIFY(differ(picture(dashboard, changed), plainPicture(dashboard)));
    }

    void aDeltaIsShownAgainstABestLapOnly_data() { everyDashboard(); }

    void aDeltaIsShownAgainstABestLapOnly()
    {
        QFETCH(QString, dashboard);
        const auto deltaTells = [&dashboard](TelemetryState state) {
            state.sample.vehicle.deltaTimeS = 0;
            const QImage level = picture(dashboard, state);
            state.sample.vehicle.deltaTimeS = 1.5F;
            return differ(picture(dashboard, state), level);
        };
        TelemetryState state = previewState();
        QCOMPARE(deltaTells(state), readsAny(dashboard, {QStringLiteral("dash_deltaTime")}));
        state.sample.vehicle.bestTimeMs = 0;
        QVERIFY(!deltaTells(state));
        QVERIFY(!deltaTells(stateOf("best time unknown")));
    }

    void aPreviewShowsTheDashboardAsItIs_data() { everyDashboard(); }

    void aPreviewShowsTheDashboardAsItIs()
    {
        QFETCH(QString, dashboard);
        const QImage preview(
            builtDashboards().filePath(dashboard + QStringLiteral("/preview.png")));
        QCOMPARE(preview.size(), DashboardSize);
        QVERIFY2(
            showTheSame(preview.convertToFormat(QImage::Format_RGB32), knownPicture(dashboard)),
            "It is out of date: draw it anew with 'gauge-host preview'.");
    }

private:
    /// What the preview shows, drawn once for each dashboard.
    QImage knownPicture(const QString &dashboard)
    {
        QImage &image = known[dashboard];
        if (image.isNull())
            image = picture(dashboard, previewState());
        return image;
    }

    /// The same without any flag or mode.
    QImage plainPicture(const QString &dashboard)
    {
        QImage &image = plain[dashboard];
        if (image.isNull()) {
            TelemetryState state = previewState();
            state.sample.vehicle.statusFlags = 0;
            image = picture(dashboard, state);
        }
        return image;
    }

    QHash<QString, QImage> known;
    QHash<QString, QImage> plain;
};

QTEST_MAIN(ShippedDashboardsTest)
#include "ShippedDashboardsTest.moc"
