#pragma once

#include "plugin/TelemetryRecords.h"
#include "render/DerivedIndicators.h"
#include "support/Lock.h"

#include <QtCore/QString>

#include <array>
#include <functional>
#include <set>

class QVariant;

/// The input of one publication. Borrowed for the call.
struct Publication
{
    const VehicleTelemetry &vehicle;
    const DisplayLimits &limits;
    const ExtendedTelemetry &extended;
    const QString &motionProfileName;
    const TuneInfo &tune;
    float steeringSmoothing = 1; ///< Weight of the new steering value, 0 to 1.
    bool useMph = false;
    bool showMarkers = false;
    bool paused = false;
};

/// Turns telemetry into the 129 `dash_*` properties. Every publication writes all of them in the
/// same order: a document's handler sees earlier properties new and later ones old. Keeps the state
/// between publications. For one thread, except `publishedFields`.
class TelemetryPublisher
{
public:
    using PropertySink = std::function<void(const QString &name, const QVariant &value)>;

    /// Passes each property to `sink` as it is published.
    explicit TelemetryPublisher(PropertySink sink);

    void publish(const Publication &publication);

    /// All names, fixed by the first publication. Any thread.
    std::set<QString> publishedFields() const;

private:
    /// A property and its twin, which says whether the game provides it.
    struct TwinName
    {
        QString value;
        QString available;
    };
    using CornerNames = std::array<TwinName, 4>;

    void publishArguments(const Publication &publication);
    void publishEngineAndSpeed(const VehicleTelemetry &vehicle);
    void publishTiming(const VehicleTelemetry &vehicle);
    void publishControls(const VehicleTelemetry &vehicle);
    void publishCorners(const VehicleTelemetry &vehicle);
    void publishAssists(const VehicleTelemetry &vehicle);
    void publishMotion(const VehicleTelemetry &vehicle);
    void publishSession(const VehicleTelemetry &vehicle);
    void publishLimits(const DisplayLimits &limits);
    void publishTune(const QString &motionProfileName, const TuneInfo &tune);
    void publishWarnings(const Publication &publication);

    void write(const QString &name, const QVariant &value);
    void write(const TwinName &name, std::uint64_t mask, std::uint64_t guard,
               const QVariant &value);
    template<typename Published>
    void writeCorners(const CornerNames &names, std::uint64_t mask, std::uint64_t guard,
                      const std::array<Published, 4> &values);

    PropertySink sink;
    float smoothedSteering = 0;
    RpmAverage rpmAverage;
    int rpm = 0;
    PublicationCounter publications;
    mutable Lock namesLock;
    bool recordNames = true;
    std::set<QString> publishedNames;
};
