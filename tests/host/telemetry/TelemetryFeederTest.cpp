#include "telemetry/TelemetryFeeder.h"

#include "IDashboardEngine.h"
#include "IDashboardRenderer.h"
#include "telemetry/TelemetryMonitor.h"
#include "telemetry/VehicleNames.h"

#include <QtGui/QImage>
#include <QtTest/QtTest>

namespace {

/// Notes the updates.
class Engine final : public IDashboardEngine
{
public:
    struct Update
    {
        std::uint32_t rpm;
        bool paused;
        bool operator==(const Update &other) const
        {
            return rpm == other.rpm && paused == other.paused;
        }
    };
    std::vector<Update> updates;

    void updateTelemetry(const VehicleTelemetry &vehicle, const DisplayLimits & /*limits*/,
                         const ExtendedTelemetry & /*extended*/, bool paused) override
    {
        updates.push_back({vehicle.rpm, paused});
    }
    void setDashboardFile(const QString & /*path*/) override {}
    void shutdown() override {}
    std::unique_ptr<IDashboardRenderer> createRenderer() override { return {}; }
    void addConsumer(IDashboardConsumer * /*consumer*/) override {}
    void removeConsumer(IDashboardConsumer * /*consumer*/) override {}
    bool hasConsumers() override { return true; }
    std::unique_ptr<QImage> createWaitingImage(int /*scale*/) override { return {}; }
    void setMotionProfileName(const QString & /*name*/) override {}
    void setTuneInfo(const QString & /*group*/, const QString & /*name*/,
                     const TuneValue & /*value*/) override
    {
    }
};

/// Hands its sink to the test.
class Source final : public TelemetrySource
{
public:
    explicit Source(TelemetrySink *&sink)
        : sink(sink)
    {
    }
    void start(TelemetrySink &taker) override { sink = &taker; }

private:
    TelemetrySink *&sink;
};

} // namespace

class TelemetryFeederTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void silenceRepeatsTheLastTelemetryAsPaused()
    {
        Engine engine;
        VehicleNames vehicles;
        TelemetryMonitor monitor;
        TelemetrySink *sink = nullptr;
        const TelemetryFeeder feeder(std::make_unique<Source>(sink), engine, vehicles, monitor);
        TelemetrySample sample;
        sample.vehicle.rpm = 5000;
        sink->update(sample, QStringLiteral("Kart"));
        sink->fallSilent();
        sample.paused = true;
        sample.vehicle.rpm = 900;
        sink->update(sample, QStringLiteral("Kart"));
        QVERIFY((engine.updates ==
                 std::vector<Engine::Update>{{5000, false}, {5000, true}, {900, true}}));
        QCOMPARE(feeder.updatesSent(), 3);
        QCOMPARE(vehicles.recentVehicleName(), QStringLiteral("Kart"));
        const auto now = std::chrono::steady_clock::now();
        QCOMPARE(monitor.reading(now).state, TelemetryMonitor::State::Paused);
    }
};

QTEST_GUILESS_MAIN(TelemetryFeederTest)
#include "TelemetryFeederTest.moc"
