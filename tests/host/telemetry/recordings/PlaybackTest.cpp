#include "telemetry/contracts/SilenceLimits.h"
#include "telemetry/contracts/TelemetrySource.h"
#include "telemetry/recordings/OpenDrive.h"
#include "telemetry/recordings/PlaybackSource.h"
#include "telemetry/recordings/RecordingWriter.h"

#include <QtCore/QTemporaryDir>
#include <QtCore/QtEndian>
#include <QtTest/QtTest>

#include <algorithm>
#include <atomic>
#include <limits>
#include <utility>
#include <vector>

using namespace std::chrono_literals;
using std::chrono::nanoseconds;

namespace {

/// A drive in memory; each datagram holds its number.
class Drive final : public DatagramReader
{
public:
    explicit Drive(std::vector<nanoseconds> times)
        : times(std::move(times))
    {
    }

    std::optional<Datagram> next() override
    {
        if (at == times.size())
            return std::nullopt;
        const std::size_t number = at++;
        QByteArray payload(2, '\0');
        qToLittleEndian(static_cast<quint16>(number), payload.data());
        return Datagram{times[number], {}, payload};
    }

    void rewind() override { at = 0; }

    QStringList remarks() const override { return {QStringLiteral("dusty")}; }

private:
    const std::vector<nanoseconds> times;
    std::size_t at = 0;
};

int numberIn(const QByteArray &payload)
{
    return qFromLittleEndian<quint16>(payload.constData());
}

Playback play(std::vector<nanoseconds> times, const Playback::Settings &settings = {})
{
    return {std::make_unique<Drive>(std::move(times)), settings};
}

/// The numbers of the datagrams that are due by then.
std::vector<int> due(Playback &playback, nanoseconds elapsed)
{
    std::vector<int> numbers;
    while (const std::optional<Datagram> datagram = playback.take(elapsed))
        numbers.push_back(numberIn(datagram->payload));
    return numbers;
}

using Numbers = std::vector<int>;

/// Takes every datagram and counts them in the position; its number is the rpm.
class CountingFeed final : public Feed
{
public:
    /// Those from `foreign` on are of another format.
    explicit CountingFeed(int foreign = std::numeric_limits<int>::max())
        : foreign(foreign)
    {
    }

    QString name() const override { return QStringLiteral("Counting"); }
    std::vector<quint16> usualPorts() const override { return {}; }
    bool accepts(const QByteArray &payload) const override
    {
        return payload.size() == 2 && numberIn(payload) < foreign;
    }

    std::optional<FeedSample> decode(const QByteArray &payload, TimePoint /*time*/) override
    {
        FeedSample result;
        result.sample.vehicle.rpm = static_cast<quint32>(numberIn(payload));
        result.sample.vehicle.position = ++count;
        result.vehicle = QStringLiteral("Car");
        return result;
    }

private:
    const int foreign;
    int count = 0;
};

/// Writes down what it is told: the rpm, and -1 for silence.
class Notes final : public TelemetrySink
{
public:
    void update(const TelemetrySample &sample, const QString &vehicle) override
    {
        told.push_back(static_cast<int>(sample.vehicle.rpm));
        decoded = sample.vehicle.position;
        lastVehicle = vehicle;
        ++updates;
    }

    void fallSilent() override { told.push_back(-1); }

    Numbers told;
    int decoded = 0;
    QString lastVehicle;
    std::atomic<int> updates{0};
};

DrivePlayer player(std::vector<nanoseconds> times, const Playback::Settings &settings = {})
{
    std::vector<std::unique_ptr<Feed>> feeds;
    feeds.push_back(std::make_unique<CountingFeed>());
    return {std::make_unique<Drive>(std::move(times)), std::move(feeds), settings};
}

} // namespace

class PlaybackTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void datagramsComeAtTheirOwnPace()
    {
        Playback playback = play({100s, 100s + 16ms, 100s + 33ms});
        QVERIFY(playback.remarks().isEmpty());
        QCOMPARE(due(playback, 0s), Numbers{0});
        QCOMPARE(playback.nextDue().value_or(0s), nanoseconds(16ms));
        QCOMPARE(due(playback, 16ms - 1ns), Numbers{});
        QCOMPARE(due(playback, 16ms), Numbers{1});
        QVERIFY(!playback.atEnd());
        QCOMPARE(due(playback, 1s), Numbers{2});
        QVERIFY(playback.atEnd());
        QVERIFY(!playback.startsBeyondEnd());
        QCOMPARE(playback.length(), nanoseconds(33ms));
        QCOMPARE(playback.remarks(), QStringList{QStringLiteral("dusty")});
    }

    void speedScalesThePaceWithinItsLimits_data()
    {
        QTest::addColumn<double>("speed");
        QTest::addColumn<double>("seconds");
        QTest::newRow("half") << 0.5 << 2.0;
        QTest::newRow("fast") << 100.0 << 0.01;
        QTest::newRow("too fast") << 1e9 << 0.01;
        QTest::newRow("too slow") << -3.0 << 10.0;
        QTest::newRow("no number") << std::numeric_limits<double>::quiet_NaN() << 1.0;
    }

    void speedScalesThePaceWithinItsLimits()
    {
        QFETCH(double, speed);
        QFETCH(double, seconds);
        Playback playback = play({0s, 1s}, {speed, 0s, false});
        due(playback, 0s);
        QCOMPARE(std::chrono::duration<double>(playback.nextDue().value_or(0s)).count(), seconds);
    }

    void whatLiesBeforeTheStartIsDueAtOnce()
    {
        Playback playback = play({0s, 1s, 2s, 3s}, {2.0, 1500ms, false});
        QCOMPARE(due(playback, 0s), (Numbers{0, 1}));
        QCOMPARE(due(playback, 249ms), Numbers{});
        QCOMPARE(due(playback, 250ms), Numbers{2});
        QCOMPARE(due(playback, 750ms), Numbers{3});
        QVERIFY(!playback.startsBeyondEnd());

        Playback late = play({0s, 1s}, {1, 90s, true});
        QCOMPARE(due(late, 0s), (Numbers{0, 1}));
        QVERIFY(late.startsBeyondEnd());
        QCOMPARE(late.length(), nanoseconds(1s));
    }

    void aLoopGoesOnWithoutRunningBack()
    {
        Playback playback = play({5s, 6s}, {1, 0s, true});
        QCOMPARE(due(playback, 1s), (Numbers{0, 1}));
        QVERIFY(!playback.atEnd());
        QCOMPARE(due(playback, 1s + Playback::LoopGap), Numbers{0});
        QCOMPARE(due(playback, 2s + Playback::LoopGap), Numbers{1});

        Playback single = play({5s}, {1, 0s, true});
        QCOMPARE(due(single, 10 * Playback::LoopGap), Numbers(11, 0));
        Playback empty = play({}, {1, 0s, true});
        QVERIFY(empty.atEnd());
        QVERIFY(!empty.nextDue());
    }

    void gapsAndStepsBackInTheFileAreTamed()
    {
        constexpr nanoseconds Longest = nanoseconds::max();
        constexpr nanoseconds Least = nanoseconds::min();
        Playback playback = play({1h, 1h - 1s, 1h, Longest, Least, Longest});
        nanoseconds last{-1};
        std::vector<nanoseconds> places;
        while (const std::optional<Datagram> datagram = playback.take(1h)) {
            QVERIFY(datagram->time >= last);
            last = datagram->time;
            places.push_back(last);
        }
        const std::vector<nanoseconds> expected{0s,
                                                0s,
                                                1s,
                                                1s + Playback::LongestGap,
                                                1s + Playback::LongestGap,
                                                1s + 2 * Playback::LongestGap};
        QVERIFY(places == expected);
    }

    void aDriveIsDecodedAsIfItWasLive()
    {
        DrivePlayer drive = player({0s, 16ms, 17ms, 2s});
        Notes notes;
        QCOMPARE(drive.advance(0s, notes).value_or(0s), nanoseconds(16ms));
        // Of several the newest is shown, and each is decoded.
        QCOMPARE(drive.advance(20ms, notes).value_or(0s), nanoseconds(517ms));
        QCOMPARE(notes.told, (Numbers{0, 2}));
        QCOMPARE(notes.decoded, 3);
        QCOMPARE(notes.lastVehicle, QStringLiteral("Car"));
        QCOMPARE(drive.advance(517ms, notes).value_or(0s), nanoseconds(2s));
        QTest::ignoreMessage(QtWarningMsg, "The drive: dusty");
        QTest::ignoreMessage(QtWarningMsg, "The drive is over after 2.0 seconds.");
        drive.advance(2s, notes);
        QCOMPARE(notes.told, (Numbers{0, 2, -1, 3}));
        QVERIFY(drive.advance(2500ms, notes));
        QVERIFY(!drive.advance(7s, notes));
        QCOMPARE(notes.told, (Numbers{0, 2, -1, 3, -1}));
    }

    void aSlowDriveIsNoPause()
    {
        DrivePlayer drive = player({0s, 100ms, 1s}, {0.1, 0s, false});
        Notes notes;
        std::vector<nanoseconds> moments;
        for (std::optional<nanoseconds> now = 0s; now && *now <= 10s;) {
            moments.push_back(*now);
            now = drive.advance(*now, notes);
        }
        // Until the drive itself is silent for half a second nobody waits that long for an update.
        const auto silence = std::find(notes.told.begin(), notes.told.end(), -1);
        QCOMPARE(Numbers(silence, notes.told.end()), (Numbers{-1, 2}));
        for (std::size_t i = 1; i < std::size_t(silence - notes.told.begin()); ++i)
            QVERIFY(moments[i] - moments[i - 1] < SilenceLimits::Paused);
        QCOMPARE(int(std::count(notes.told.begin(), silence, 0)), 4);
        QCOMPARE(notes.decoded, 3);
    }

    void silenceIsNoticedAmongForeignDatagrams()
    {
        std::vector<std::unique_ptr<Feed>> feeds;
        feeds.push_back(std::make_unique<CountingFeed>(1));
        DrivePlayer drive(std::make_unique<Drive>(std::vector<nanoseconds>{0s, 600ms}),
                          std::move(feeds), {});
        Notes notes;
        drive.advance(0s, notes);
        drive.advance(700ms, notes);
        QCOMPARE(notes.told, (Numbers{0, -1}));
    }

    void theWayToTheStartIsDecodedButNotShown()
    {
        constexpr int Count = 25'000;
        std::vector<nanoseconds> times;
        times.reserve(Count);
        for (int i = 0; i < Count; ++i)
            times.emplace_back(std::chrono::milliseconds(i));
        DrivePlayer drive = player(times, {100, 24'900ms, false});
        Notes notes;
        int turns = 0;
        while (drive.advance(0s, notes) == nanoseconds(0)) {
            QVERIFY(notes.told.empty());
            ++turns;
        }
        QVERIFY(turns > 1); // So that the program can end meanwhile.
        QCOMPARE(notes.told, Numbers{24'900});
        QCOMPARE(notes.decoded, 24'901);
    }

    void aStartBeyondTheEndAndForeignDrivesAreTold()
    {
        Notes notes;
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("lasts only 1.0 s")));
        player({0s, 1s}, {1, 90s, true}).advance(0s, notes);
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("no telemetry")));
        DrivePlayer({std::make_unique<Drive>(std::vector<nanoseconds>{0s})}, {}, {})
            .advance(1s, notes);
    }

    void aRecordingOfTwoSendersPlaysAsItWasLive()
    {
        const QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("a.pcap"));
        const Datagram::Sender first{QHostAddress(QHostAddress::LocalHost), 5000, 4444};
        const Datagram::Sender second{QHostAddress(QHostAddress::LocalHostIPv6), 5000, 4444};
        {
            RecordingWriter writer(path);
            for (int i = 0; i < 6; ++i) {
                writer.add({std::chrono::milliseconds(10 * i), i % 2 == 0 ? first : second,
                            QByteArray(1, char(i)) + '\0'});
            }
        }
        QString error;
        std::vector<std::unique_ptr<Feed>> feeds;
        feeds.push_back(std::make_unique<CountingFeed>());
        DrivePlayer drive(openDrive(path, error), std::move(feeds), {});
        QCOMPARE(error, QString());
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("A second game")));
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("is over after 0.1")));
        Notes notes;
        for (nanoseconds now = 0s; now <= 60ms; now += 5ms)
            drive.advance(now, notes);
        QCOMPARE(notes.told, (Numbers{0, 2, 4}));
    }

    void aDrivePlaysOnAThreadOfItsOwn()
    {
        Notes notes;
        std::vector<std::unique_ptr<Feed>> feeds;
        feeds.push_back(std::make_unique<CountingFeed>());
        PlaybackSource source(std::make_unique<Drive>(std::vector<nanoseconds>{0s, 10ms}),
                              std::move(feeds), {10, 0s, true});
        source.start(notes);
        QTRY_VERIFY(notes.updates > 20);
    }
};

QTEST_GUILESS_MAIN(PlaybackTest)
#include "PlaybackTest.moc"
