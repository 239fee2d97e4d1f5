#include "TelemetryStatus.h"

#include "telemetry/VehicleNames.h"

#include <QtCore/QtMath>

#include <chrono>
#include <utility>

namespace {

TelemetryStatus::State shown(TelemetryMonitor::State state)
{
    switch (state) {
    case TelemetryMonitor::State::Live:
        return TelemetryStatus::Live;
    case TelemetryMonitor::State::Paused:
        return TelemetryStatus::Paused;
    case TelemetryMonitor::State::Lost:
        return TelemetryStatus::Lost;
    case TelemetryMonitor::State::Waiting:
        break;
    }
    return TelemetryStatus::Waiting;
}

} // namespace

TelemetryStatus::TelemetryStatus(const TelemetryMonitor &monitor, VehicleNames &vehicles,
                                 QString source, Clock clock)
    : monitor(monitor)
    , sourceName(std::move(source))
    , clock(std::move(clock))
{
    connect(&vehicles, &VehicleNames::vehicleChanged, this, [this](const QString &name) {
        vehicleName = name;
        Q_EMIT vehicleChanged();
    });
    vehicleName = vehicles.recentVehicleName();
    connect(&timer, &QTimer::timeout, this, &TelemetryStatus::refresh);
    timer.start(std::chrono::milliseconds(250));
    refresh();
}

void TelemetryStatus::setSource(const QString &newSource)
{
    sourceName = newSource;
    Q_EMIT sourceChanged();
}

void TelemetryStatus::setAbsent()
{
    isAbsent = true;
    refresh();
}

QString TelemetryStatus::text() const
{
    switch (shownState) {
    case Live:
        return rate > 0 ? tr("Live, %1 Hz").arg(rate) : tr("Live");
    case Paused:
        return tr("Paused");
    case Lost:
        return tr("Lost");
    case Absent:
        return tr("Could not be opened");
    case Waiting:
        break;
    }
    return tr("Waiting for data");
}

void TelemetryStatus::refresh()
{
    const TelemetryMonitor::Reading reading = monitor.reading(clock());
    const State newState = isAbsent ? Absent : shown(reading.state);
    const int newRate = qRound(reading.rate);
    if (newState == shownState && newRate == rate)
        return;
    shownState = newState;
    rate = newRate;
    Q_EMIT changed();
}
