#include "render/DashboardRenderer.h"

#include "support/Picture.h"
#include "support/RecordBytes.h"
#include "views/DashboardFadeInOut.h"

#include <QtCore/QDir>
#include <QtGui/QImage>
#include <QtTest/QtTest>

#include <algorithm>
#include <cstdlib>
#include <functional>
#include <iterator>
#include <limits>
#include <vector>

namespace {

constexpr int Width = 480;
constexpr int Height = 272;

/// One moment as it is published; without changes a lap in a race, with all values known.
struct Scene
{
    Scene()
    {
        vehicle.availabilityMask = ~0ULL;
        vehicle.speedKmh = vehicle.groundSpeedKmh = 178;
        vehicle.steeringPercent = -12;
        vehicle.gear = 4;
        vehicle.rpm = 6300;
        vehicle.maxRpm = 8000;
        vehicle.gasPedalPercent = 90;
        vehicle.brakePedalPercent = 5;
        vehicle.clutchPedalPercent = 10;
        vehicle.fuelLevelPercent = 58;
        vehicle.position = 3;
        vehicle.currentTimeMs = 67'412;
        vehicle.lastTimeMs = 104'118;
        vehicle.bestTimeMs = 103'562;
        vehicle.completedLaps = 6;
        vehicle.numberOfLaps = 18;
        vehicle.absLevel = 3;
        vehicle.tractionControlLevel = 4;
        vehicle.swayG = 1.2F;
        vehicle.surgeG = -0.4F;
        vehicle.brakeBiasPercent = 54;
        vehicle.deltaTimeS = -0.384F;
        for (int corner = 0; corner < 4; ++corner) {
            vehicle.tyreTempC[corner] = 80 + corner;
            vehicle.brakeTempC[corner] = 400 + corner;
            vehicle.tyreWearPercent[corner] = static_cast<std::uint8_t>(10 + corner);
            vehicle.tyrePressureKpa[corner] = 170U + static_cast<unsigned>(corner);
        }
        vehicle.statusFlags = Status::AbsInAction | Status::TcInAction | Status::SpeedLimiter;
        vehicle.engineLoadPercent = 70;
    }

    VehicleTelemetry vehicle{};
    DisplayLimits limits{4.5F, 20, 70, 85, 93, 96, {}};
    ExtendedTelemetry extended{};
    bool useMph = false;
    bool showMarkers = false;
    bool paused = false;
};

using Change = std::function<void(Scene &)>;
template<typename Value> struct Named
{
    QByteArray name;
    Value value;
};

void fillBytes(Scene &scene, unsigned char byte)
{
    RecordBytes bytes;
    bytes.vehicle.fill(byte);
    bytes.limits.fill(byte);
    bytes.extended.fill(byte);
    scene.vehicle = bytes.vehicleRecord();
    scene.limits = bytes.limitsRecord();
    scene.extended = bytes.extendedRecord();
}

void setFloats(Scene &scene, float value)
{
    VehicleTelemetry &v = scene.vehicle;
    v.speedKmh = v.groundSpeedKmh = v.heaveG = v.swayG = v.surgeG = v.deltaTimeS = value;
    v.altitudeAboveGroundM = v.altitudeAboveSeaLevelM = v.turnCoordinatorBall = value;
    v.pitchDeg = v.rollDeg = v.headingDeg = scene.limits.steeringScale = value;
}

/// The availability bits, each with a property that it guards.
const std::vector<Named<std::uint64_t>> &guards()
{
    static const std::vector<Named<std::uint64_t>> table{
        {"dash_gasPedal_Percent", Available::Pedals},
        {"dash_brakePedal_Percent", Available::Pedals},
        {"dash_clutchPedal_Percent", Available::Pedals},
        {"dash_fuelLevel_Percent", Available::FuelLevel},
        {"dash_position", Available::Position},
        {"dash_currentTime_str", Available::CurrentTime},
        {"dash_currentTime_ms", Available::CurrentTime},
        {"dash_lastTime_str", Available::LastTime},
        {"dash_lastTime_ms", Available::LastTime},
        {"dash_bestTime_str", Available::BestTime},
        {"dash_bestTime_ms", Available::BestTime},
        {"dash_completedLaps", Available::CompletedLaps},
        {"dash_numberOfLaps", Available::NumberOfLaps},
        {"dash_abs_Level", Available::AbsLevel},
        {"dash_tractionControl_Level", Available::TractionControlLevel},
        {"dash_brakeBias_Percent", Available::BrakeBias},
        {"dash_tyreTemp_C_FL", Available::TyreTemp},
        {"dash_tyreWear_Percent_FL", Available::TyreWear},
        {"dash_brakeTemp_C_FL", Available::BrakeTemp},
        {"dash_tyrePressure_kPa_FL", Available::TyrePressure},
        {"dash_absInAction", Available::AbsInAction},
        {"dash_tcInAction", Available::TcInAction},
        {"dash_speedLimiter", Available::SpeedLimiter},
        {"dash_engineLoad_Percent", Available::EngineLoad},
    };
    return table;
}

std::vector<Named<Change>> changes()
{
    constexpr float Infinity = std::numeric_limits<float>::infinity();
    std::vector<Named<Change>> table{
        {"none", [](Scene &) {}},
        {"zeros", [](Scene &s) { fillBytes(s, 0); }},
        {"all bytes 0xFF", [](Scene &s) { fillBytes(s, 0xFF); }},
        {"no availability bit", [](Scene &s) { s.vehicle.availabilityMask = 0; }},
        {"paused", [](Scene &s) { s.paused = true; }},
        {"mph", [](Scene &s) { s.useMph = true; }},
        {"markers", [](Scene &s) { s.showMarkers = true; }},
        {"reverse", [](Scene &s) { s.vehicle.gear = -1; }},
        {"gear -128", [](Scene &s) { s.vehicle.gear = -128; }},
        {"position 999", [](Scene &s) { s.vehicle.position = 999; }},
        {"no best lap", [](Scene &s) { s.vehicle.bestTimeMs = 0; }},
        {"all status bits", [](Scene &s) { s.vehicle.statusFlags = 0xFFFFFFFF; }},
        {"rpm above the limit", [](Scene &s) { s.vehicle.rpm = 9500; }},
        {"no thresholds", [](Scene &s) { s.limits = {}; }},
        {"NaN", [](Scene &s) { setFloats(s, std::numeric_limits<float>::quiet_NaN()); }},
        {"infinity", [=](Scene &s) { setFloats(s, Infinity); }},
        {"negative infinity", [=](Scene &s) { setFloats(s, -Infinity); }},
        {"speeds of 1e30", [](Scene &s) { s.vehicle.speedKmh = s.vehicle.groundSpeedKmh = 1e30F; }},
        {"speeds of -1e30",
         [](Scene &s) { s.vehicle.speedKmh = s.vehicle.groundSpeedKmh = -1e30F; }},
    };
    const auto limit = [&table](const char *name, std::uint32_t rpm) {
        table.push_back({name, [rpm](Scene &s) { s.vehicle.maxRpm = rpm; }});
    };
    limit("limit 0 rpm", 0);
    limit("limit 1 rpm", 1);
    limit("limit 600 rpm", 600);
    limit("limit 2600 rpm", 2600);
    limit("limit 19000 rpm", 19'000);
    limit("limit 4294967295 rpm", 0xFFFFFFFF);
    for (const Named<std::uint64_t> &guard : guards())
        table.push_back({"without " + guard.name,
                         [&guard](Scene &s) { s.vehicle.availabilityMask &= ~guard.value; }});
    return table;
}

QDir shipped()
{
    return QDir(QStringLiteral(DASHBOARDS_DIRECTORY));
}

std::vector<QString> dashboards()
{
    const QStringList folders = shipped().entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    std::vector<QString> names;
    std::copy_if(
        folders.begin(), folders.end(), std::back_inserter(names),
        [](const QString &name) { return shipped().exists(name + QLatin1String("/Dash.qml")); });
    return names;
}

/// All that the documents of a dashboard say.
QByteArray text(const QString &dashboard)
{
    const QDir folder(shipped().filePath(dashboard));
    const QStringList names = folder.entryList({QStringLiteral("*.qml")});
    QByteArray result;
    for (const QString &name : names) {
        QFile file(folder.filePath(name));
        if (!file.open(QIODevice::ReadOnly))
            qFatal("%s: %s", qPrintable(name), qPrintable(file.errorString()));
        result += file.readAll();
    }
    return result;
}

/// A dashboard under test.
struct Shown
{
    explicit Shown(const QString &dashboard)
        : loaded(renderer.load(shipped().filePath(dashboard + QLatin1String("/Dash.qml")), Width,
                               Height))
    {
    }

    /// After both phases of what blinks, and with averages over this scene alone.
    Picture after(const Scene &s)
    {
        Picture picture{{}, Width, Height};
        for (int i = 0; i < 20; ++i) {
            renderer.publishTelemetry(s.vehicle, s.limits, s.extended, {}, {}, 1.0F, s.useMph,
                                      s.showMarkers, s.paused);
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        }
        if (!renderer.renderFrame(picture.bytes, Width, Height, false))
            picture.bytes.clear();
        return picture;
    }

    QByteArray errors() { return renderer.errors().join(QLatin1Char('\n')).toUtf8(); }

    DashboardRenderer renderer;
    bool loaded;
};

void everyDashboard()
{
    QTest::addColumn<QString>("dashboard");
    for (const QString &dashboard : dashboards())
        QTest::newRow(qPrintable(dashboard)) << dashboard;
}

/// Whether an eye could tell the two apart. Text differs by a shade with the place of its glyphs in
/// their texture.
bool differ(const Picture &one, const Picture &other)
{
    constexpr int Shade = 16;
    return !std::equal(one.bytes.begin(), one.bytes.end(), other.bytes.begin(), other.bytes.end(),
                       [](int a, int b) { return std::abs(a - b) <= Shade; });
}

bool isFlat(const Picture &picture)
{
    return picture.count(picture.at(0, 0)) == Width * Height;
}

} // namespace

Q_DECLARE_METATYPE(Change)

class ShippedDashboardsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        DashboardFadeInOut::registerType();
        QVERIFY(!dashboards().empty());
    }

    void aDashboardTakesAnyTelemetryWithoutAWarning_data()
    {
        QTest::addColumn<QString>("dashboard");
        QTest::addColumn<Change>("change");
        for (const QString &dashboard : dashboards()) {
            for (const Named<Change> &change : changes())
                QTest::addRow("%s: %s", qPrintable(dashboard), change.name.constData())
                    << dashboard << change.value;
        }
    }

    void aDashboardTakesAnyTelemetryWithoutAWarning()
    {
        QFETCH(QString, dashboard);
        QFETCH(Change, change);
        Scene changed;
        change(changed);
        Shown shown(dashboard);
        QVERIFY2(shown.loaded, shown.errors());
        // The change itself is part of it, in both directions.
        for (const Scene &scene : {changed, Scene(), changed}) {
            const Picture picture = shown.after(scene);
            QVERIFY2(shown.renderer.errors().isEmpty(), shown.errors());
            QVERIFY(picture.isWhole());
            QVERIFY(!isFlat(picture));
        }
    }

    void aValueThatIsAskedAfterShowsWhetherItIsKnown_data()
    {
        QTest::addColumn<QString>("dashboard");
        QTest::addColumn<quint64>("missing");
        for (const QString &dashboard : dashboards()) {
            const QByteArray documents = text(dashboard);
            const auto row = [&dashboard](const QByteArray &name, quint64 missing) {
                QTest::addRow("%s: %s", qPrintable(dashboard), name.constData())
                    << dashboard << missing;
            };
            row("everything", ~quint64{0});
            for (const Named<std::uint64_t> &guard : guards()) {
                if (documents.contains(guard.name + "_Available"))
                    row(guard.name, guard.value);
            }
        }
    }

    void aValueThatIsAskedAfterShowsWhetherItIsKnown()
    {
        QFETCH(QString, dashboard);
        QFETCH(quint64, missing);
        const Scene known;
        Scene unknown;
        unknown.vehicle.availabilityMask &= ~missing;
        const Picture picture = Shown(dashboard).after(known);
        QVERIFY(picture.isWhole());
        // Only a picture that is the same each time tells something by being another.
        QVERIFY(!differ(Shown(dashboard).after(known), picture));
        QVERIFY(differ(Shown(dashboard).after(unknown), picture));
    }

    void aDeltaIsShownAgainstABestLapOnly_data() { everyDashboard(); }

    void aDeltaIsShownAgainstABestLapOnly()
    {
        QFETCH(QString, dashboard);
        const auto deltaTells = [&dashboard](Scene scene) {
            scene.vehicle.deltaTimeS = 0;
            const Picture level = Shown(dashboard).after(scene);
            scene.vehicle.deltaTimeS = 1.5F;
            return differ(Shown(dashboard).after(scene), level);
        };
        Scene scene;
        QCOMPARE(deltaTells(scene), text(dashboard).contains("dash_deltaTime_"));
        scene.vehicle.bestTimeMs = 0;
        QVERIFY(!deltaTells(scene));
        scene = Scene();
        scene.vehicle.availabilityMask &= ~Available::BestTime;
        QVERIFY(!deltaTells(scene));
    }

    void aDashboardHasAPreview_data() { everyDashboard(); }

    void aDashboardHasAPreview()
    {
        QFETCH(QString, dashboard);
        const QImage preview = QImage(shipped().filePath(dashboard + QLatin1String("/preview.png")))
                                   .convertToFormat(QImage::Format_RGB32);
        QCOMPARE(preview.size(), QSize(Width, Height));
        const Frame bytes(preview.constBits(), preview.constBits() + preview.sizeInBytes());
        QVERIFY(!isFlat({bytes, Width, Height}));
    }
};

QTEST_MAIN(ShippedDashboardsTest)
#include "ShippedDashboardsTest.moc"
