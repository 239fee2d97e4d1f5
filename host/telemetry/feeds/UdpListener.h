#pragma once

#include "Datagram.h"
#include "Feed.h"
#include "system/StoppableThread.h"
#include "telemetry/contracts/TelemetrySource.h"

#include <QtCore/QStringList>
#include <QtNetwork/QHostAddress>

#include <atomic>
#include <functional>
#include <future>
#include <memory>
#include <vector>

/// Listens for the telemetry of games on UDP ports, on a thread of its own. What comes faster than
/// it can be handed on is skipped in favour of the newest.
class UdpListener final : public TelemetrySource
{
public:
    using Tap = std::function<void(const Datagram &)>;

    struct Settings
    {
        std::vector<QHostAddress> addresses; ///< Each with all the ports.
        std::vector<quint16> ports;          ///< 0 is any that is free.

        /// Gets every datagram as it comes, whatever is in it, on the listening thread.
        Tap tap = {};
    };

    /// Opens the ports.
    UdpListener(std::vector<std::unique_ptr<Feed>> feeds, const Settings &settings);

    /// Whether any port is open.
    bool isListening() const { return !openPorts.empty(); }

    /// The open ports, one for each address and port that was wished for and is open, in order.
    const std::vector<quint16> &ports() const { return openPorts; }

    /// The addresses on which any of them is open.
    const std::vector<QHostAddress> &addresses() const { return openAddresses; }

    /// What went wrong, a sentence each, for the driver.
    const QStringList &errors() const { return problems; }

    void start(TelemetrySink &sink) override;

private:
    struct Opened
    {
        std::vector<quint16> ports;
        std::vector<QHostAddress> addresses;
        QStringList errors;
    };

    void run(std::vector<std::unique_ptr<Feed>> feeds, const Settings &settings,
             std::promise<Opened> opened);

    std::atomic<TelemetrySink *> taker{nullptr}; ///< Null until it starts.
    std::vector<quint16> openPorts;
    std::vector<QHostAddress> openAddresses;
    QStringList problems;
    StoppableThread thread;
};
