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

/// Receives games' telemetry on UDP ports, on a thread of its own. When datagrams come faster than
/// they can be handed on, only the newest counts.
class UdpListener final : public TelemetrySource
{
public:
    using Tap = std::function<void(const Datagram &)>;

    struct Settings
    {
        std::vector<QHostAddress> addresses; ///< Each with all ports.
        std::vector<quint16> ports;          ///< 0 is any free one.

        /// Gets every datagram as it comes, whatever is in it, on the listening thread.
        Tap tap = {};
    };

    /// Opens the ports, and returns once that is done.
    UdpListener(std::vector<std::unique_ptr<Feed>> feeds, const Settings &settings);

    /// Whether any port is open.
    bool isListening() const { return !openPorts.empty(); }

    /// The open ports, in the order of `Settings`; one that is open on two addresses comes twice.
    const std::vector<quint16> &ports() const { return openPorts; }

    /// The addresses on which any of them is open.
    const std::vector<QHostAddress> &addresses() const { return openAddresses; }

    /// What went wrong, for the driver, a sentence each.
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
