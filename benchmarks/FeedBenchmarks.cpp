#include "IdleRenderer.h"
#include "SwappingConsumer.h"

#include "engine/DashboardEngine.h"
#include "host/telemetry/Senders.h"
#include "telemetry/TelemetryMonitor.h"
#include "telemetry/feeds/DataOutFeed.h"
#include "telemetry/feeds/EgoFeed.h"
#include "telemetry/feeds/OutGaugeFeed.h"
#include "telemetry/feeds/RevLimitStore.h"
#include "telemetry/feeds/UdpListener.h"

#include <benchmark/benchmark.h>

#include <QtCore/QSemaphore>
#include <QtCore/QTemporaryDir>
#include <QtNetwork/QUdpSocket>

#include <algorithm>
#include <chrono>
#include <ctime>
#include <functional>
#include <thread>

#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

namespace {

using Clock = std::chrono::steady_clock;
using Seconds = std::chrono::duration<double>;

std::unique_ptr<Feed> outGaugeFeed(const QTemporaryDir &folder)
{
    return std::make_unique<OutGaugeFeed>(
        std::make_unique<RevLimitStore>(folder.filePath(QStringLiteral("cars.ini"))));
}

void decode(benchmark::State &state, Feed &feed, const QByteArray &datagram)
{
    for (auto _ : state) {
        const std::optional<FeedSample> sample =
            feed.decode(datagram, std::chrono::steady_clock::now());
        benchmark::DoNotOptimize(&sample);
        benchmark::ClobberMemory();
    }
}

void decodeOutGauge(benchmark::State &state)
{
    const QTemporaryDir folder;
    decode(state, *outGaugeFeed(folder), Senders::outGauge());
}

void decodeDataOut(benchmark::State &state)
{
    DataOutFeed feed;
    decode(state, feed, Senders::dataOut(331));
}

void decodeEgo(benchmark::State &state)
{
    EgoFeed feed;
    decode(state, feed, Senders::ego());
}

/// An engine that renders nothing, fed as the host feeds it, without vehicle names.
class FedEngine final : public TelemetrySink
{
public:
    /// `handedOn` is called on the source's thread when an update has returned.
    explicit FedEngine(std::function<void()> handedOn)
        : handedOn(std::move(handedOn))
    {
        engine.setDashboardFile(QStringLiteral(ROAD_DOCUMENT));
        engine.addConsumer(&consumer);
        QMetaObject::invokeMethod(&engine, "startTimer", Qt::DirectConnection);
    }

    void update(const TelemetrySample &sample, const QString & /*vehicle*/) override
    {
        static_cast<IDashboardEngine &>(engine).updateTelemetry(sample.vehicle, sample.limits,
                                                                sample.extended, sample.paused);
        monitor.update(sample.paused, Clock::now());
        handedOn();
    }
    void fallSilent() override {}

private:
    std::function<void()> handedOn;
    SwappingConsumer consumer;
    DashboardEngine engine{
        false, true, {[] { return quint64{1}; }, [] { return std::make_unique<IdleRenderer>(); }}};
    TelemetryMonitor monitor;
};

/// The simplest listener: it waits in recv() and decodes.
class BareListener final : public TelemetrySource
{
public:
    BareListener()
        : descriptor(socket(AF_INET, SOCK_DGRAM, 0))
    {
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t length = sizeof address;
        auto *const any = reinterpret_cast<sockaddr *>(&address);
        if (bind(descriptor, any, length) == 0 && getsockname(descriptor, any, &length) == 0)
            port = ntohs(address.sin_port);
    }
    ~BareListener() override
    {
        QUdpSocket().writeDatagram(QByteArray(), QHostAddress::LocalHost, port);
        thread.join();
        close(descriptor);
    }

    void start(TelemetrySink &sink) override
    {
        thread = std::thread([this, &sink] {
            DataOutFeed feed;
            char bytes[2048];
            ssize_t length = 0;
            while ((length = recv(descriptor, bytes, sizeof bytes, 0)) > 0) {
                const auto now = std::chrono::steady_clock::now();
                if (const auto sample =
                        feed.decode(QByteArray(bytes, static_cast<int>(length)), now))
                    sink.update(sample->sample, sample->vehicle);
            }
        });
    }

    quint16 port = 0;

private:
    int descriptor;
    std::thread thread;
};

/// Time from before a datagram is sent until its update has returned. Datagrams come one by one to
/// a sleeping thread, as games send them.
void measureWay(benchmark::State &state, std::unique_ptr<TelemetrySource> source, quint16 port)
{
    QSemaphore arrived;
    Clock::time_point end;
    FedEngine engine([&] {
        end = Clock::now();
        arrived.release();
    });
    const std::unique_ptr<TelemetrySource> flowing = std::move(source);
    flowing->start(engine);
    QUdpSocket game;
    const QByteArray datagram = Senders::dataOut(331);
    std::vector<double> ways; // s
    for (auto _ : state) {
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
        const Clock::time_point begin = Clock::now();
        game.writeDatagram(datagram, QHostAddress::LocalHost, port);
        if (!arrived.tryAcquire(1, 1000)) {
            state.SkipWithError("a datagram was lost");
            return;
        }
        ways.push_back(Seconds(end - begin).count());
        state.SetIterationTime(ways.back());
    }
    std::sort(ways.begin(), ways.end());
    state.counters["p50_us"] = 1e6 * ways[ways.size() / 2];
    state.counters["p99_us"] = 1e6 * ways[ways.size() * 99 / 100];
}

void wayBare(benchmark::State &state)
{
    auto listener = std::make_unique<BareListener>();
    const quint16 port = listener->port;
    measureWay(state, std::move(listener), port);
}

std::unique_ptr<UdpListener> listenToAll(const QTemporaryDir &folder)
{
    std::vector<std::unique_ptr<Feed>> feeds;
    feeds.push_back(outGaugeFeed(folder));
    feeds.push_back(std::make_unique<DataOutFeed>());
    feeds.push_back(std::make_unique<EgoFeed>());
    const UdpListener::Settings settings{{QHostAddress(QHostAddress::LocalHost)}, {0}, {}};
    return std::make_unique<UdpListener>(std::move(feeds), settings);
}

void wayOurs(benchmark::State &state)
{
    const QTemporaryDir folder;
    auto listener = listenToAll(folder);
    const quint16 port = listener->ports()[0];
    measureWay(state, std::move(listener), port);
}

double threadSeconds()
{
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + 1e-9 * static_cast<double>(time.tv_nsec);
}

/// Cost of the listening thread, in percent of a core, with three games at 60 datagrams a second
/// each, of which two are rejected.
void threeGames(benchmark::State &state)
{
    const QTemporaryDir folder;
    auto listener = listenToAll(folder);
    const quint16 port = listener->ports()[0];
    double before = 0;
    double after = 0;
    Clock::time_point first;
    Clock::time_point last;
    FedEngine engine([&] {
        after = threadSeconds();
        last = Clock::now();
        if (before == 0) {
            before = after;
            first = last;
        }
    });
    listener->start(engine);
    QUdpSocket games[3];
    const QByteArray datagrams[] = {Senders::dataOut(331), Senders::outGauge(), Senders::ego()};
    for (auto _ : state) {
        constexpr int Frames = 300;
        Clock::time_point next = Clock::now();
        for (int frame = 0; frame < Frames; ++frame) {
            for (std::size_t i = 0; i < 3; ++i)
                games[i].writeDatagram(datagrams[i], QHostAddress::LocalHost, port);
            next += std::chrono::microseconds(16'667);
            std::this_thread::sleep_until(next);
        }
    }
    listener.reset(); // The numbers are the other thread's until here.
    state.counters["cpu_percent"] = 100 * (after - before) / Seconds(last - first).count();
}

BENCHMARK(decodeOutGauge)->Name("decode OutGauge");
BENCHMARK(decodeDataOut)->Name("decode Data Out");
BENCHMARK(decodeEgo)->Name("decode EGO extradata");
BENCHMARK(wayBare)
    ->Name("datagram to updateTelemetry/bare")
    ->UseManualTime()
    ->Iterations(500)
    ->Unit(benchmark::kMicrosecond);
BENCHMARK(wayOurs)
    ->Name("datagram to updateTelemetry/ours")
    ->UseManualTime()
    ->Iterations(500)
    ->Unit(benchmark::kMicrosecond);
BENCHMARK(threeGames)
    ->Name("three games at 60 Hz")
    ->Iterations(1)
    ->Repetitions(1)
    ->Unit(benchmark::kSecond);

} // namespace
