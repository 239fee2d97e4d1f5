#include "UdpListener.h"

#include "GameSelector.h"

#include <QtCore/QTimer>
#include <QtNetwork/QNetworkInterface>
#include <QtNetwork/QUdpSocket>

#include <algorithm>
#include <chrono>
#include <utility>

namespace {

using Clock = std::chrono::steady_clock;

constexpr int LongestDatagram = 65'507;
constexpr std::chrono::milliseconds LongestReading{5}; ///< Before an update is handed on.

/// Why a port could not be opened, unless another program has it.
QString problemOf(const QUdpSocket &socket, const QHostAddress &address, quint16 port)
{
    if (socket.error() == QAbstractSocket::SocketAddressNotAvailableError)
        return QStringLiteral("%1 is not an address of this computer, so nothing can be received "
                              "there.")
            .arg(address.toString());
    return QStringLiteral("UDP port %1 of %2 could not be opened: %3.")
        .arg(QString::number(port), address.toString(), socket.errorString());
}

QHostAddress anyOfItsKind(const QHostAddress &address)
{
    const bool isIpv4 = address.protocol() == QAbstractSocket::IPv4Protocol;
    return isIpv4 ? QHostAddress::AnyIPv4 : QHostAddress::AnyIPv6;
}

/// Joins a group on every network interface. True if any joined.
bool join(QUdpSocket &socket, const QHostAddress &group)
{
    bool isMember = false;
    const QList<QNetworkInterface> all = QNetworkInterface::allInterfaces();
    for (const QNetworkInterface &each : all) {
        const QNetworkInterface::InterfaceFlags flags = each.flags();
        const bool carries = (flags & QNetworkInterface::CanMulticast) != 0 ||
                             (flags & QNetworkInterface::IsLoopBack) != 0;
        if (carries && (flags & QNetworkInterface::IsUp) != 0)
            isMember = socket.joinMulticastGroup(group, each) || isMember;
    }
    return isMember;
}

/// Ports that other programs use, and the addresses on which they do.
struct PortsInUse
{
    QStringList ports;
    QStringList addresses;
};

/// One sentence for all of them, since a second host finds every port in use.
QString problemOf(const PortsInUse &inUse)
{
    const QString comma = QStringLiteral(", ");
    return QStringLiteral(
               "UDP %1 of %2: in use by another program, so no telemetry comes in there. "
               "'ss -lunp sport = :%3' shows which one; on Windows 'netstat -ano -p udp'.")
        .arg(inUse.ports.join(comma), inUse.addresses.join(comma), inUse.ports.constFirst());
}

/// Receives datagrams on the listening thread.
class Receiver final : public QObject
{
public:
    Receiver(std::vector<std::unique_ptr<Feed>> feeds, std::function<void(const Datagram &)> tap,
             const std::atomic<TelemetrySink *> &taker)
        : games(std::move(feeds))
        , tap(std::move(tap))
        , taker(taker)
        , buffer(LongestDatagram, Qt::Uninitialized)
    {
        silence.setSingleShot(true);
        silence.setTimerType(Qt::PreciseTimer);
        connect(&silence, &QTimer::timeout, this, [this] { checkSilence(); });
    }

    /// Opens a port and gives its number. If that fails it is 0, and the port is added to `inUse`
    /// or the reason to `errors`.
    quint16 open(const QHostAddress &address, quint16 port, QStringList &inUse, QStringList &errors)
    {
        auto socket = std::make_unique<QUdpSocket>();
        // Windows can't bind to a group.
        const QHostAddress bound = !address.isMulticast() ? address : anyOfItsKind(address);
        if (!socket->bind(bound, port, QAbstractSocket::DontShareAddress)) {
            if (socket->error() == QAbstractSocket::AddressInUseError)
                inUse += QString::number(port);
            // Where a computer has no IPv6, no game uses it.
            else if (address != QHostAddress(QHostAddress::LocalHostIPv6))
                errors += problemOf(*socket, address, port);
            return 0;
        }
        if (address.isMulticast() && !join(*socket, address)) {
            errors += QStringLiteral("The multicast group %1 could not be joined: %2.")
                          .arg(address.toString(), socket->errorString());
            return 0;
        }
        QUdpSocket *const opened = socket.get();
        connect(opened, &QUdpSocket::readyRead, this, [this, opened] { read(*opened); });
        sockets.push_back(std::move(socket));
        return opened->localPort();
    }

private:
    void read(QUdpSocket &socket)
    {
        Datagram::Sender sender;
        sender.toPort = socket.localPort();
        const Clock::time_point begin = Clock::now();
        Clock::time_point now = begin;
        while (socket.hasPendingDatagrams() && now - begin < LongestReading) {
            const qint64 length =
                socket.readDatagram(buffer.data(), buffer.size(), &sender.address, &sender.port);
            if (length < 0)
                break;
            const auto datagram =
                QByteArray::fromRawData(buffer.constData(), static_cast<int>(length));
            if (tap)
                tap({now - start, sender, QByteArray(buffer.constData(), datagram.size())});
            games.offer(datagram, sender, now);
            now = Clock::now();
        }
        TelemetrySink *const sink = taker;
        const std::optional<FeedSample> newest = games.takeNewest();
        if (!newest || sink == nullptr)
            return;
        sink->update(newest->sample, newest->vehicle);
        if (!silence.isActive() || std::exchange(isSilent, false))
            watchSilence();
    }

    void checkSilence()
    {
        TelemetrySink *const sink = taker;
        if (games.checkSilence(Clock::now()) == GameSelector::Silence::Paused) {
            isSilent = true;
            if (sink != nullptr)
                sink->fallSilent();
        }
        watchSilence();
    }

    /// The timer isn't restarted for every datagram; if it fires too early, it is set again.
    void watchSilence()
    {
        const std::optional<GameSelector::TimePoint> due = games.nextSilenceCheck();
        if (!due)
            return;
        const auto wait = std::chrono::ceil<std::chrono::milliseconds>(*due - Clock::now());
        silence.start(std::max(wait, std::chrono::milliseconds(0)));
    }

    GameSelector games;
    const std::function<void(const Datagram &)> tap;
    const Clock::time_point start = Clock::now();
    const std::atomic<TelemetrySink *> &taker;
    QByteArray buffer;
    QTimer silence;
    bool isSilent = false; ///< The pause is reported, so the timer waits for the longer limit.
    std::vector<std::unique_ptr<QUdpSocket>> sockets;
};

} // namespace

UdpListener::UdpListener(std::vector<std::unique_ptr<Feed>> feeds, const Settings &settings)
{
    std::promise<Opened> promise;
    std::future<Opened> future = promise.get_future();
    thread.start([this, &feeds, &settings, &promise] {
        run(std::move(feeds), settings, std::move(promise));
    });
    Opened opened = future.get();
    openPorts = std::move(opened.ports);
    openAddresses = std::move(opened.addresses);
    problems = std::move(opened.errors);
}

void UdpListener::start(TelemetrySink &sink)
{
    taker = &sink;
}

void UdpListener::run(std::vector<std::unique_ptr<Feed>> feeds, const Settings &settings,
                      std::promise<Opened> opened)
{
    Receiver receiver(std::move(feeds), settings.tap, taker);
    Opened result;
    std::vector<PortsInUse> allInUse;
    for (const QHostAddress &address : settings.addresses) {
        QStringList inUse;
        const std::size_t openBefore = result.ports.size();
        for (const quint16 port : settings.ports) {
            if (const quint16 open = receiver.open(address, port, inUse, result.errors))
                result.ports.push_back(open);
        }
        if (result.ports.size() > openBefore)
            result.addresses.push_back(address);
        if (inUse.isEmpty())
            continue;
        const auto same =
            std::find_if(allInUse.begin(), allInUse.end(),
                         [&inUse](const auto &other) { return other.ports == inUse; });
        if (same != allInUse.end())
            same->addresses += address.toString();
        else
            allInUse.push_back({inUse, {address.toString()}});
    }
    for (const PortsInUse &inUse : allInUse)
        result.errors += problemOf(inUse);
    // An address that isn't this computer's gives the same error for each port.
    result.errors.removeDuplicates();
    opened.set_value(std::move(result));
    // From here on the constructor's arguments may be gone.
    thread.serveUntilStopped();
}
