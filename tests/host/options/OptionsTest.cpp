#include "options/Options.h"
#include "support/TestFiles.h"

#include <QtTest/QtTest>

class OptionsTest : public QObject
{
    Q_OBJECT

private:
    static ParsedOptions parse(const char *line)
    {
        return parseOptions(QStringList{"gauge-host"_q} +
                            QString::fromUtf8(line).split(QLatin1Char(' '), Qt::SkipEmptyParts));
    }

    static Options read(const char *line)
    {
        const ParsedOptions parsed = parse(line);
        if (parsed.outcome != ParsedOptions::Outcome::Run)
            qFatal("%s: %s", line, qUtf8Printable(parsed.text));
        return parsed.options;
    }

private Q_SLOTS:
    void everyOptionReachesItsField()
    {
        const Options frames = read("--frames out --count 50 --size 1440x816 --upside-down --mph "
                                    "--dashboard my.qml --demo-cars 3 --start-at 12.5 "
                                    "--no-acceleration --verbose");
        QCOMPARE(frames.mode, Options::Mode::Frames);
        QCOMPARE(frames.frames.directory, "out"_q);
        QCOMPARE(frames.frames.count, 50);
        QVERIFY(frames.frames.size == QSize(1440, 816) && frames.frames.upsideDown);
        QCOMPARE(frames.session.dashboard, "my.qml"_q);
        QCOMPARE(frames.session.telemetry.demoCars, 3);
        QCOMPARE(frames.session.telemetry.startAt, 12.5);
        QVERIFY(frames.session.useMph == true && !frames.session.hardwareAcceleration);
        QVERIFY(frames.verbose);

        const TelemetryRequest drive =
            read("--telemetry a.pcap --speed 2.5 --loop").session.telemetry;
        QCOMPARE(drive.source, "a.pcap"_q);
        QVERIFY(drive.startAt == 0 && drive.speed == 2.5 && drive.loop);

        const TelemetryRequest games =
            read("--telemetry ego --listen :: --port 65535").session.telemetry;
        QCOMPARE(games.source, "ego"_q);
        QCOMPARE(games.listenAddress, QHostAddress(QHostAddress::AnyIPv6));
        QCOMPARE(games.port, quint16(65'535));

        const Options record = read("record my.pcap --force --duration 2.5 --feed a --feed b");
        QCOMPARE(record.mode, Options::Mode::Record);
        QCOMPARE(record.record.path, "my.pcap"_q);
        QVERIFY(record.record.seconds == 2.5 && record.record.overwrite);
        QCOMPARE(record.session.telemetry.feedFiles, (QStringList{"a"_q, "b"_q}));

        QCOMPARE(read("preview Mine --output a.png").preview.output, "a.png"_q);
        QCOMPARE(read("lint Mine").lint.dashboard, "Mine"_q);
        QVERIFY(read("profiles list --json").profile.json);
        QCOMPARE(read("profiles copy Mine Other").profile.operands,
                 (QStringList{"Mine"_q, "Other"_q}));
    }

    void whatIsNotSaidIsImpliedOrLeftOpen()
    {
        const Options options = read("");
        QCOMPARE(options.mode, Options::Mode::Windows);
        QVERIFY(options.windows.view.isEmpty() && options.session.telemetry.source.isEmpty());
        QVERIFY(!options.session.useMph && options.session.hardwareAcceleration);
        for (const char *line : {"--window --size 480x272", "--dashboard my.qml"})
            QCOMPARE(read(line).windows.view, "DashboardWindow"_q);
        QCOMPARE(read("--view DashboardEditor --path my.qml").windows.path, "my.qml"_q);
        for (const char *line : {"--port 4444", "--listen 0.0.0.0", "--feed a.json", "record a"})
            QCOMPARE(read(line).session.telemetry.source, "auto"_q);
    }

    void helpListsFeeds() { QVERIFY(parse("--help").text.contains("data-out"_q)); }

    void wrongArgumentsAreOneClearLine()
    {
        const QVector<QPair<const char *, const char *>> mentions{
            {"--wrong", "wrong"},
            {"stray", "stray"},
            {"--frames=", "directory"},
            {"--frames out --window", "--window"},
            {"--view Cockpit", "'Cockpit'"},
            {"--view DashboardEditor --dashboard my.qml", "--path"},
            {"--mph --kmh", "--kmh"},
            {"--upside-down", "--frames"},
            {"--frames out --count 0", "'0'"},
            {"--frames out --count 1000001", "1000000"},
            {"--frames out --count 5.5", "'5.5'"},
            {"--size 480", "'480'"},
            {"--size 1x1", "'1x1'"},
            {"--size 16385x272", "16384x16384"},
            {"--telemetry crystalball", "data-out"},
            {"--telemetry demo --listen 0.0.0.0", "--telemetry"},
            {"--telemetry a.pcap --port 4444", "--port"},
            {"--listen somewhere", "'somewhere'"},
            {"profiles explode", "activate"},
            {"profiles list stray", "profiles list"},
            {"profiles list --listen ::", "--listen"},
            {"preview Road --size 3x3", "--size"},
            {"lint Road --output x.png", "'preview'"},
            {"record a --telemetry b.pcap", "b.pcap"},
            {"--start-at inf", "'inf'"},
            {"--telemetry a.pcap --speed 0.09", "'0.09'"},
            {"--telemetry a.pcap --speed nan", "'nan'"},
        };
        for (const auto &[line, mention] : mentions) {
            const ParsedOptions parsed = parse(line);
            QVERIFY2(parsed.outcome == ParsedOptions::Outcome::Fail, line);
            QVERIFY2(parsed.text.contains(QLatin1String(mention)), qPrintable(parsed.text));
            QVERIFY2(!parsed.text.contains(QLatin1Char('\n')), qPrintable(parsed.text));
        }
    }
};

QTEST_GUILESS_MAIN(OptionsTest)
#include "OptionsTest.moc"
