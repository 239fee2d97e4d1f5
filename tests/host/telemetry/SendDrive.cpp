#include "Senders.h"

#include <QtCore/QCommandLineParser>
#include <QtCore/QCoreApplication>
#include <QtNetwork/QUdpSocket>

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <thread>

// Plays a game: sends a made-up drive in one of the formats, laid out as the games' documentation
// says. It prints what a dashboard should show.

namespace {

constexpr double Round = 20;        ///< s: 14 of acceleration, braking, and a rest at the line.
constexpr double Braking = 14;      ///< s into the round
constexpr double Deceleration = 12; ///< m/s²
constexpr double Limit = 7200;      ///< 1/min
constexpr double Idle = 900;
constexpr double ShiftLight = 6700;
constexpr std::array GearSpeeds{12.0, 20.0, 29.0, 39.0, 50.0, 62.0}; ///< m/s at the limit

struct Moment
{
    double time = 0;
    double lapTime = 0;
    int lap = 0;
    double speed = 0; ///< m/s
    double rpm = Idle;
    int gear = 0;
    double throttle = 0;
    double brake = 0;
    double steer = 0; ///< -1 to 1, right is positive.
    double fuel = 1;
};

double gained(double seconds)
{
    return 60 * (1 - std::exp(-seconds / 8));
}

Moment momentAt(double time)
{
    Moment now;
    now.time = time;
    now.lap = static_cast<int>(time / Round);
    now.lapTime = std::fmod(time, Round);
    now.fuel = std::max(0.8 - time / 600, 0.0);
    if (now.lapTime < Braking) {
        now.speed = gained(now.lapTime);
        now.throttle = 1;
        now.steer = 0.4 * std::sin(now.lapTime);
    } else {
        now.speed = std::max(gained(Braking) - Deceleration * (now.lapTime - Braking), 0.0);
        now.brake = now.speed > 0 ? 0.8 : 0;
    }
    if (now.speed > 0) {
        const auto *const gear =
            std::upper_bound(GearSpeeds.begin(), GearSpeeds.end() - 1, now.speed);
        now.gear = static_cast<int>(gear - GearSpeeds.begin()) + 1;
        now.rpm = std::max(Limit * now.speed / *gear, Idle);
    }
    return now;
}

QByteArray outGauge(const Moment &now)
{
    const bool brakesHard = now.brake > 0;
    const bool spins = now.throttle > 0 && now.lapTime < 1.5;
    const bool waits = now.speed == 0;
    Packet packet(92);
    packet.put<quint32>(0, static_cast<quint32>(now.time * 1000)).text(4, "XRT");
    packet.put<quint16>(8, 0x4000).put<quint8>(10, static_cast<quint8>(now.gear + 1));
    packet.reals(12, now.speed, now.rpm, 0.6, 88, now.fuel, 4, 95);
    packet.put<quint32>(40, 0x1 | 0x8 | 0x10 | 0x400);
    packet.put<quint32>(44, (now.rpm > ShiftLight ? 0x1U : 0) | (waits ? 0x8U : 0) |
                                (spins ? 0x10U : 0) | (brakesHard ? 0x400U : 0));
    packet.reals(48, now.throttle, now.brake, waits ? 1 : 0);
    return packet;
}

/// "Dash" of 2023.
QByteArray dataOut(const Moment &now)
{
    const double push = now.throttle > 0 ? 7.5 * std::exp(-now.lapTime / 8) : -15 * now.brake;
    const double share = 100 * now.lapTime / Round;
    Packet packet(331);
    packet.put<qint32>(0, 1).put<quint32>(4, static_cast<quint32>(now.time * 1000));
    packet.reals(8, Limit + 300, Idle, now.rpm, 8 * now.steer, 0, push, 0, 0, now.speed);
    packet.put<qint32>(212, 2402).put<qint32>(216, 5).put<qint32>(220, 812);
    packet.put<qint32>(224, 1).put<qint32>(228, 8);
    packet.reals(232 + 12, now.speed, 300'000, 400, 180 + share / 4, 182 + share / 4, 190, 192, 1.1,
                 now.fuel, 800 * now.lap);
    packet.reals(232 + 52, now.lap > 0 ? 19.4 : 0, now.lap > 0 ? Round : 0, now.lapTime, now.time);
    packet.put<quint16>(232 + 68, static_cast<quint16>(now.lap)).put<quint8>(232 + 70, 4);
    packet.put<quint8>(232 + 71, static_cast<quint8>(255 * now.throttle));
    packet.put<quint8>(232 + 72, static_cast<quint8>(255 * now.brake));
    packet.put<quint8>(232 + 75, now.gear == 0 ? 11 : static_cast<quint8>(now.gear));
    packet.put<qint8>(232 + 76, static_cast<qint8>(127 * now.steer));
    packet.reals(311, 0.05, 0.06, 0.08, 0.09).put<qint32>(327, 510);
    return packet;
}

/// Extradata 3.
QByteArray ego(const Moment &now)
{
    const double heading = now.lapTime / Round * 6.283185;
    Packet packet(264);
    packet.reals(0, now.time, now.lapTime, 50 * now.lapTime, 900 * now.lap).reals(28, now.speed);
    packet.reals(44, std::cos(heading), 0, -std::sin(heading));
    packet.reals(56, std::sin(heading), 0, std::cos(heading));
    packet.reals(116, now.throttle, now.steer, now.brake, 0, now.gear, 0.8 * now.steer,
                 0.7 * now.throttle - 1.2 * now.brake, now.lap, now.rpm / 10);
    packet.reals(156, 2).reals(172, 2, 1, 45 * now.fuel, 45, 0);
    packet.reals(204, 290 + 250 * now.brake, 295 + 250 * now.brake, 380 + 250 * now.brake,
                 385 + 250 * now.brake);
    packet.reals(220, 25.8, 26, 27.2, 27.5).reals(236, now.lap, 10, 900);
    packet.reals(248, now.lap > 0 ? Round : 0, Limit / 10, Idle / 10, 6);
    return packet;
}

struct Format
{
    const char *name;
    quint16 port;
    QByteArray (*make)(const Moment &now);
};

constexpr std::array Formats{Format{"outgauge", 30000, outGauge}, Format{"data-out", 9999, dataOut},
                             Format{"ego", 20777, ego}};

void send(const Format &format, quint16 port, double seconds, double hertz)
{
    using Clock = std::chrono::steady_clock;
    QUdpSocket socket;
    const Clock::time_point start = Clock::now();
    for (int i = 0; i < seconds * hertz; ++i) {
        const Moment now = momentAt(i / hertz);
        std::this_thread::sleep_until(start + std::chrono::duration_cast<Clock::duration>(
                                                  std::chrono::duration<double>(now.time)));
        socket.writeDatagram(format.make(now), QHostAddress::LocalHost, port);
        if (i % static_cast<int>(hertz) == 0) {
            std::printf("%5.1f s: %5.1f km/h, %4.0f/min, gear %d, throttle %3.0f %%, brake %3.0f "
                        "%%, fuel %2.0f %%, lap %d\n",
                        now.time, now.speed * 3.6, now.rpm, now.gear, now.throttle * 100,
                        now.brake * 100, now.fuel * 100, now.lap);
            std::fflush(stdout);
        }
    }
}

} // namespace

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    QCommandLineParser parser;
    parser.addHelpOption();
    parser.addPositionalArgument(QStringLiteral("format"),
                                 QStringLiteral("outgauge, data-out or ego"));
    const QCommandLineOption port(QStringLiteral("port"), QStringLiteral("Send there."),
                                  QStringLiteral("N"));
    const QCommandLineOption seconds(QStringLiteral("seconds"),
                                     QStringLiteral("Length of the drive."), QStringLiteral("N"),
                                     QStringLiteral("60"));
    const QCommandLineOption hertz(QStringLiteral("hertz"), QStringLiteral("Datagrams a second."),
                                   QStringLiteral("N"), QStringLiteral("60"));
    parser.addOptions({port, seconds, hertz});
    parser.process(application);
    const QString name = parser.positionalArguments().value(0);
    const auto *const format =
        std::find_if(Formats.begin(), Formats.end(),
                     [&name](const Format &known) { return name == QLatin1String(known.name); });
    if (format == Formats.end())
        parser.showHelp(2);
    const quint16 wished = parser.value(port).toUShort();
    send(*format, wished != 0 ? wished : format->port, parser.value(seconds).toDouble(),
         std::clamp(parser.value(hertz).toDouble(), 1.0, 1000.0));
    return 0;
}
