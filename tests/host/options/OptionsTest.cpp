#include "options/Options.h"
#include "support/TestFiles.h"

#include <QtTest/QtTest>

class OptionsTest : public QObject
{
    Q_OBJECT

private:
    static ParsedOptions parse(const QString &line)
    {
        return parseOptions(QStringList{"gauge-host"_q} +
                            line.split(QLatin1Char(' '), Qt::SkipEmptyParts));
    }

    static Options read(const char *line)
    {
        const ParsedOptions parsed = parse(QString::fromUtf8(line));
        if (parsed.outcome != ParsedOptions::Outcome::Run)
            qFatal("%s: %s", line, qUtf8Printable(parsed.text));
        return parsed.options;
    }

private Q_SLOTS:
    void whatIsNotSaidIsLeftOpen()
    {
        const Options options = read("");
        QCOMPARE(options.mode, Options::Mode::Windows);
        QVERIFY(options.windows.view.isEmpty() && options.session.dashboard.isEmpty());
        QVERIFY(!options.session.useMph && options.session.telemetry.source.isEmpty());
        QVERIFY(options.session.telemetry.listenAddress.isNull());
        QVERIFY(options.session.hardwareAcceleration && !options.verbose);
    }

    void everyOptionReachesItsField()
    {
        const Options frames = read("--frames out --count 50 --size 1440x816 --upside-down --mph "
                                    "--dashboard my.qml --demo-cars 3 --start-at 12.5 "
                                    "--no-acceleration --verbose");
        QCOMPARE(frames.mode, Options::Mode::Frames);
        QCOMPARE(frames.frames.directory, "out"_q);
        QCOMPARE(frames.frames.count, 50);
        QCOMPARE(frames.frames.size.value_or(QSize()), QSize(1440, 816));
        QCOMPARE(frames.session.dashboard, "my.qml"_q);
        QCOMPARE(frames.session.telemetry.demoCars, 3);
        QCOMPARE(frames.session.telemetry.startAt, 12.5);
        QVERIFY(frames.session.useMph == true && frames.frames.upsideDown);
        QVERIFY(!frames.session.hardwareAcceleration && frames.verbose);

        const Options play = read("--telemetry my.pcap --speed 2.5 --loop --kmh");
        QCOMPARE(play.session.telemetry.source, "my.pcap"_q);
        QCOMPARE(play.session.telemetry.startAt, 0.0);
        QCOMPARE(play.session.telemetry.speed, 2.5);
        QVERIFY(play.session.telemetry.loop && play.session.useMph == false);

        const Options hear = read("--telemetry ego --listen :: --port 65535");
        QCOMPARE(hear.session.telemetry.source, "ego"_q);
        QCOMPARE(hear.session.telemetry.listenAddress, QHostAddress(QHostAddress::AnyIPv6));
        QCOMPARE(hear.session.telemetry.port, quint16(65'535));

        const Options record = read("record my.pcap --force --duration 2.5 --feed a --feed b");
        QCOMPARE(record.mode, Options::Mode::Record);
        QCOMPARE(record.record.path, "my.pcap"_q);
        QCOMPARE(record.record.seconds, 2.5);
        QCOMPARE(record.session.telemetry.feedFiles, (QStringList{"a"_q, "b"_q}));
        QVERIFY(record.record.overwrite);

        QCOMPARE(read("preview Mine --output a.png").preview.output, "a.png"_q);
        QCOMPARE(read("lint Mine").lint.dashboard, "Mine"_q);
        QVERIFY(read("profiles list --json").profile.json);
        const Options copy = read("profiles copy Mine Other");
        QCOMPARE(copy.mode, Options::Mode::Profile);
        QCOMPARE(copy.profile.verb, ProfileCommand::Verb::Copy);
        QCOMPARE(copy.profile.operands, (QStringList{"Mine"_q, "Other"_q}));
    }

    void someOptionsImplyOthers()
    {
        for (const char *line : {"--window", "--view DashboardWindow", "--dashboard my.qml",
                                 "--window --dashboard my.qml --size 480x272"})
            QCOMPARE(read(line).windows.view, "DashboardWindow"_q);
        QCOMPARE(read("--view DashboardEditor --path my.qml").windows.path, "my.qml"_q);
        for (const char *line : {"--port 4444", "--listen 0.0.0.0", "--feed a.json", "record a"})
            QCOMPARE(read(line).session.telemetry.source, "auto"_q);
    }

    void helpAndVersionArePrinted()
    {
        const ParsedOptions help = parse("--help"_q);
        QCOMPARE(help.outcome, ParsedOptions::Outcome::Print);
        for (const char *word : {"--upside-down", "data-out", "profiles copy NAME|ID NEW"})
            QVERIFY2(help.text.contains(QLatin1String(word)), word);
        QVERIFY(parse("--version"_q).text.startsWith("gauge-host "_q));
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
        row("--view DashboardWindow --path my.qml", "--path");
        row("--view DashboardEditor --dashboard my.qml", "--path");
        row("--view DashboardEditor --window", "--window");
        row("--mph --kmh", "--kmh");
        row("--size 480x272", "--window");
        row("--upside-down", "--frames");
        row("--frames out --count 0", "'0'");
        row("--frames out --count 1000001", "'1000001'");
        row("--frames out --count 5.5", "'5.5'");
        row("--size 480", "'480'");
        row("--size 1x1", "'1x1'");
        row("--size 16385x272", "'16385x272'");
        row("--telemetry crystalball", "data-out");
        row("--telemetry demo --listen 0.0.0.0", "--telemetry");
        row("--port 65536", "'65536'");
        row("--listen somewhere", "'somewhere'");
        row("--demo-cars 4", "'4'");
        row("--json", "profiles list");
        row("profiles vehicles --json", "profiles list");
        row("profiles explode", "activate");
        row("profiles list stray", "profiles list");
        row("profiles copy Mine", "NEW");
        row("profiles list --listen ::", "--listen");
        row("lint Road --output x.png", "'preview'");
        row("preview Road --output=", "a file");
        row("preview Road --size 3x3", "--size");
        row("--start-at -1", "'-1'");
        row("--start-at inf", "'inf'");
        row("--loop --telemetry auto", "FILE");
        row("--telemetry a.pcap --speed 0.09", "'0.09'");
        row("--telemetry a.pcap --speed nan", "'nan'");
        row("--telemetry a.pcap --port 4444", "--port");
        row("--telemetry demo --feed a.json", "demo");
        row("record a --telemetry b.pcap", "b.pcap");
        row("record a --duration 0", "1000000");
        row("--force", "record");
    }

    void wrongArgumentsAreOneClearLine()
    {
        QFETCH(QString, mention);
        const ParsedOptions parsed = parse(QString::fromUtf8(QTest::currentDataTag()));
        QCOMPARE(parsed.outcome, ParsedOptions::Outcome::Fail);
        QVERIFY2(parsed.text.contains(mention), qPrintable(parsed.text));
        QVERIFY(!parsed.text.contains(QLatin1Char('\n')));
    }
};

QTEST_GUILESS_MAIN(OptionsTest)
#include "OptionsTest.moc"
