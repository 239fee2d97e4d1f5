#pragma once

#include "Senders.h"

#include "telemetry/contracts/TelemetrySource.h"
#include "telemetry/feeds/DataOutFeed.h"
#include "telemetry/feeds/EgoFeed.h"
#include "telemetry/recordings/OpenDrive.h"

#include <atomic>
#include <memory>
#include <vector>

using Numbers = std::vector<int>;

/// Data Out and EGO, which learn nothing from one session to the next.
inline std::vector<std::unique_ptr<Feed>> twoFeeds()
{
    std::vector<std::unique_ptr<Feed>> feeds;
    feeds.push_back(std::make_unique<DataOutFeed>());
    feeds.push_back(std::make_unique<EgoFeed>());
    return feeds;
}

/// Notes what a source tells it, on the source's thread.
class FakeSink final : public TelemetrySink
{
public:
    std::vector<int> told; ///< Each update's rpm, and -1 for silence.
    TelemetrySample last;
    std::atomic<int> updates{0}, silences{0}, rpm{0};

    void update(const TelemetrySample &sample, const QString & /*vehicle*/) override
    {
        last = sample;
        told.push_back(static_cast<int>(sample.vehicle.rpm));
        rpm = told.back();
        ++updates;
    }
    void fallSilent() override
    {
        told.push_back(-1);
        ++silences;
    }
};

template<typename Record> QByteArray bytesOf(const Record &record)
{
    return {reinterpret_cast<const char *>(&record), sizeof record};
}

/// What a file holds.
struct ReadDrive
{
    QString error;
    std::vector<Datagram> datagrams;
    QStringList remarks;

    explicit ReadDrive(const QString &path)
    {
        const auto reader = openDrive(path, error);
        if (reader == nullptr)
            return;
        while (reader->next()) {}
        reader->rewind(); // What comes then is what came at first.
        while (const auto datagram = reader->next())
            datagrams.push_back(*datagram);
        remarks = reader->remarks();
    }
};

/// What a real game sent; `file` is one of drives/.
inline std::vector<Datagram> realDrive(const char *file)
{
    return ReadDrive(QStringLiteral(GAUGE_DRIVES "/") + QLatin1String(file)).datagrams;
}
