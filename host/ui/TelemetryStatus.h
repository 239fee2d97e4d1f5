#pragma once

#include "telemetry/TelemetryMonitor.h"

#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtCore/QTimer>

#include <functional>

class VehicleNames;

/// The state of the telemetry in words, polled four times a second. Emits changes only.
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

    /// `monitor` and `vehicles` are borrowed. `source` is the telemetry source's name, as shown.
    TelemetryStatus(const TelemetryMonitor &monitor, VehicleNames &vehicles, QString source,
                    Clock clock = &std::chrono::steady_clock::now);

    QString source() const { return sourceName; }
    void setSource(const QString &newSource);

    /// Shows that the source could not be opened.
    void setAbsent();

    State state() const { return shownState; }

    /// The state in a few words, with the rate in Hz while it is live.
    QString text() const;

    /// The vehicle that is driven; empty before one has been reported.
    QString vehicle() const { return vehicleName; }

    /// Polls now.
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
