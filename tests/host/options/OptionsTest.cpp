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

    void helpListsCommandsAndFeeds()
    {
        const QString help = parse("--help").text;
        for (const char *text : {"--upside-down", "data-out", "profiles copy NAME|ID NEW"})
            QVERIFY2(help.contains(QLatin1String(text)), qPrintable(help));
    }

    void wrongArgumentsAreOneClearLine_data()
    {
        QTest::addColumn<QString>("mention");
        const auto row = [](const char *line, const char *mention) {
            QTest::newRow(line) << QString::fromLatin1(mention);
        };
        row("--wrong", "wrong");
        row("stray", "stray");
        row("--frames=", "directory");
        row("--frames out --window", "--window");
        row("--view Cockpit", "'Cockpit'");
        row("--view DashboardEditor --dashboard my.qml", "--path");
        row("--mph --kmh", "--kmh");
        row("--upside-down", "--frames");
        row("--frames out --count 0", "'0'");
        row("--frames out --count 1000001", "1000000");
        row("--frames out --count 5.5", "'5.5'");
        row("--size 480", "'480'");
        row("--size 1x1", "'1x1'");
        row("--size 16385x272", "16384x16384");
        row("--telemetry crystalball", "data-out");
        row("--telemetry demo --listen 0.0.0.0", "--telemetry");
        row("--telemetry a.pcap --port 4444", "--port");
        row("--telemetry demo --feed a.json", "demo");
        row("--listen somewhere", "'somewhere'");
        row("profiles explode", "activate");
        row("profiles list stray", "profiles list");
        row("profiles list --listen ::", "--listen");
        row("preview Road --size 3x3", "--size");
        row("lint Road --output x.png", "'preview'");
        row("record a --telemetry b.pcap", "b.pcap");
        row("--start-at -1", "'-1'");
        row("--start-at inf", "'inf'");
        row("--telemetry a.pcap --speed 0.09", "'0.09'");
        row("--telemetry a.pcap --speed nan", "'nan'");
    }

    void wrongArgumentsAreOneClearLine()
    {
        QFETCH(QString, mention);
        const ParsedOptions parsed = parse(QTest::currentDataTag());
        QCOMPARE(parsed.outcome, ParsedOptions::Outcome::Fail);
        QVERIFY2(parsed.text.contains(mention), qPrintable(parsed.text));
        QVERIFY(!parsed.text.contains(QLatin1Char('\n')));
    }
};

QTEST_GUILESS_MAIN(OptionsTest)
#include "OptionsTest.moc"
