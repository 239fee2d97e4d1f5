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

private Q_SLOTS:
    void everyOptionReachesItsField()
    {
        const Options frames = parse("--frames out --count 50 --size 1440x816 --upside-down --mph "
                                     "--dashboard my.qml --demo-cars 3 --start-at 12.5 "
                                     "--no-acceleration --verbose")
                                   .options;
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
            parse("--telemetry a.pcap --speed 2.5 --loop").options.session.telemetry;
        QCOMPARE(drive.source, "a.pcap"_q);
        QVERIFY(drive.startAt == 0 && drive.speed == 2.5 && drive.loop);

        const TelemetryRequest games =
            parse("--telemetry ego --listen :: --port 65535").options.session.telemetry;
        QCOMPARE(games.source, "ego"_q);
        QCOMPARE(games.listenAddress, QHostAddress(QHostAddress::AnyIPv6));
        QCOMPARE(games.port, quint16(65'535));

        const Options record =
            parse("record my.pcap --force --duration 2.5 --feed a --feed b").options;
        QCOMPARE(record.mode, Options::Mode::Record);
        QCOMPARE(record.record.path, "my.pcap"_q);
        QVERIFY(record.record.seconds == 2.5 && record.record.overwrite);
        QCOMPARE(record.session.telemetry.feedFiles, (QStringList{"a"_q, "b"_q}));

        QCOMPARE(parse("preview Mine --output a.png").options.preview.output, "a.png"_q);
        QCOMPARE(parse("lint Mine").options.lint.dashboard, "Mine"_q);
        QVERIFY(parse("profiles list --json").options.profile.json);
        QCOMPARE(parse("profiles copy Mine Other").options.profile.operands,
                 (QStringList{"Mine"_q, "Other"_q}));
    }

    void whatIsNotSaidIsImpliedOrLeftOpen()
    {
        const Options options = parse("").options;
        QCOMPARE(parse("").outcome, ParsedOptions::Outcome::Run);
        QCOMPARE(options.mode, Options::Mode::Windows);
        QVERIFY(options.windows.view.isEmpty() && options.session.telemetry.source.isEmpty());
        QVERIFY(!options.session.useMph && options.session.hardwareAcceleration);
        for (const char *line : {"--window --size 480x272", "--dashboard my.qml"})
            QCOMPARE(parse(line).options.windows.view, "DashboardWindow"_q);
        QCOMPARE(parse("--view DashboardEditor --path my.qml").options.windows.path, "my.qml"_q);
        for (const char *line : {"--port 4444", "--listen 0.0.0.0", "--feed a.json", "record a"})
            QCOMPARE(parse(line).options.session.telemetry.source, "auto"_q);
    }

    void helpListsFeeds() { QVERIFY(parse("--help").text.contains("data-out"_q)); }

    void wrongArgumentsAreOneClearLine()
    {
        const QVector<QPair<const char *, const char *>> mentions{
            {"stray", "stray"},
            {"--frames=", "directory"},
            {"--view Cockpit", "'Cockpit'"},
            {"--upside-down", "--frames"},
            {"--frames out --count 0", "'0'"},
            {"--frames out --count 1000001", "1000000"},
            {"--size 1x1", "'1x1'"},
            {"--size 16385x272", "16384x16384"},
            {"--telemetry crystalball", "data-out"},
            {"--telemetry demo --listen 0.0.0.0", "--telemetry"},
            {"--listen somewhere", "'somewhere'"},
            {"profiles explode", "activate"},
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
