#pragma once

#include "telemetry/TelemetryMonitor.h"

#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtCore/QTimer>

#include <functional>

class VehicleNames;

/// How the telemetry goes, in words for a window: read four times a second, told when it changes.
class TelemetryStatus final : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QString source READ source NOTIFY sourceChanged)
    Q_PROPERTY(State state READ state NOTIFY changed)
    Q_PROPERTY(QString text READ text NOTIFY changed)
    Q_PROPERTY(QString vehicle READ vehicle NOTIFY vehicleChanged)

public:
    enum State { Waiting, Live, Paused, Lost, Absent };
    Q_ENUM(State)

    using Clock = std::function<TelemetryMonitor::TimePoint()>;

    /// `monitor` and `vehicles` are borrowed. `source` names where the telemetry comes from, for
    /// people.
    TelemetryStatus(const TelemetryMonitor &monitor, VehicleNames &vehicles, QString source,
                    Clock clock = &std::chrono::steady_clock::now);

    QString source() const { return sourceName; }
    void setSource(const QString &newSource);

    /// No telemetry can come, since its source could not be opened.
    void setAbsent();

    State state() const { return shownState; }

    /// The state in a few words, with the rate in Hz while it is live.
    QString text() const;

    /// The vehicle that is driven; empty before one has been reported.
    QString vehicle() const { return vehicleName; }

    /// Reads the state now instead of at the next quarter of a second.
    void refresh();

Q_SIGNALS:
    void sourceChanged();
    void changed();
    void vehicleChanged();

private:
    const TelemetryMonitor &monitor;
    QString sourceName;
    const Clock clock;
    QTimer timer;
    bool isAbsent = false;
    State shownState = Waiting;
    int rate = 0; ///< Hz, as shown.
    QString vehicleName;
};
