#include "options/Options.h"

#include <QtTest/QtTest>

namespace {

ParsedOptions parse(const QString &line)
{
    return parseOptions(QStringList{QStringLiteral("gauge-host")} +
                        line.split(QLatin1Char(' '), Qt::SkipEmptyParts));
}

} // namespace

class OptionsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void withoutArgumentsTheGalleryOpensAsSet()
    {
        const ParsedOptions parsed = parse(QString());
        QCOMPARE(parsed.outcome, ParsedOptions::Outcome::Run);
        QCOMPARE(parsed.options.mode, Options::Mode::Windows);
        QVERIFY(parsed.options.windows.view.isEmpty());
        QVERIFY(parsed.options.session.dashboard.isEmpty());
        QCOMPARE(parsed.options.session.telemetry.demoCars, 1);
        QVERIFY(!parsed.options.session.useMph);
        QVERIFY(parsed.options.session.telemetry.source.isEmpty());
        QCOMPARE(parsed.options.session.hardwareAcceleration, true);
    }

    void everyOptionReachesItsField()
    {
        const ParsedOptions parsed = parse(QStringLiteral(
            "--frames out --count 50 --size 1440x816 --upside-down "
            "--dashboard my.qml --telemetry demo --demo-cars 3 --start-at 12.5 --mph "
            "--no-acceleration --verbose"));
        QCOMPARE(parsed.outcome, ParsedOptions::Outcome::Run);
        const Options &options = parsed.options;
        QCOMPARE(options.mode, Options::Mode::Frames);
        QCOMPARE(options.frames.directory, QStringLiteral("out"));
        QCOMPARE(options.frames.count, 50);
        QCOMPARE(options.frames.size.value_or(QSize()), QSize(1440, 816));
        QVERIFY(options.frames.upsideDown);
        QCOMPARE(options.session.dashboard, QStringLiteral("my.qml"));
        QCOMPARE(options.session.telemetry.demoCars, 3);
        QCOMPARE(options.session.telemetry.startAt, 12.5);
        QCOMPARE(options.session.useMph.value_or(false), true);
        QVERIFY(!options.session.hardwareAcceleration);
        QVERIFY(options.verbose);
    }

    void oneViewAloneIsNamedOrImplied()
    {
        for (const char *line : {"--window", "--view DashboardWindow", "--dashboard my.qml",
                                 "--window --dashboard my.qml --size 480x272 --kmh"}) {
            const ParsedOptions parsed = parse(QString::fromLatin1(line));
            QCOMPARE(parsed.outcome, ParsedOptions::Outcome::Run);
            QCOMPARE(parsed.options.mode, Options::Mode::Windows);
            QCOMPARE(parsed.options.windows.view, QStringLiteral("DashboardWindow"));
        }
        const ParsedOptions editor = parse(QStringLiteral("--view DashboardEditor --path my.qml"));
        QCOMPARE(editor.options.windows.view, QStringLiteral("DashboardEditor"));
        QCOMPARE(editor.options.windows.path, QStringLiteral("my.qml"));
    }

    void gamesAreHeardWhereTheOptionsSay()
    {
        for (const char *line : {"--port 4444", "--listen 0.0.0.0", "--feed a.json", "record a"})
            QCOMPARE(parse(QString::fromLatin1(line)).options.session.telemetry.source,
                     QStringLiteral("auto"));
        const Options options =
            parse(QStringLiteral("--telemetry ego --listen :: --port 65535")).options;
        QCOMPARE(options.session.telemetry.source, QStringLiteral("ego"));
        QCOMPARE(options.session.telemetry.listenAddress, QHostAddress(QHostAddress::AnyIPv6));
        QCOMPARE(int(options.session.telemetry.port), 65'535);
        for (const char *source : {"demo", "auto", "outgauge", "data-out", "ego"}) {
            const ParsedOptions parsed =
                parse(QStringLiteral("--telemetry ") + QLatin1String(source));
            QCOMPARE(parsed.outcome, ParsedOptions::Outcome::Run);
            QVERIFY(parsed.options.session.telemetry.listenAddress.isNull());
        }
    }

    void drivesAndTheirRecordingReachTheirFields()
    {
        const Options record =
            parse(QStringLiteral("record my.pcap --force --duration 2.5 --port 5000 "
                                 "--feed a.json --feed b.json"))
                .options;
        QCOMPARE(record.mode, Options::Mode::Record);
        QCOMPARE(record.record.path, QStringLiteral("my.pcap"));
        QVERIFY(record.record.overwrite);
        QCOMPARE(record.record.seconds, 2.5);
        QCOMPARE(int(record.session.telemetry.port), 5000);
        QCOMPARE(record.session.telemetry.feedFiles,
                 (QStringList{QStringLiteral("a.json"), QStringLiteral("b.json")}));

        const Options play =
            parse(QStringLiteral("--telemetry my.pcap --speed 2.5 --loop")).options;
        QCOMPARE(play.session.telemetry.source, QStringLiteral("my.pcap"));
        QCOMPARE(play.session.telemetry.startAt, 0.0);
        QCOMPARE(play.session.telemetry.speed, 2.5);
        QVERIFY(play.session.telemetry.loop);
        QCOMPARE(
            parse(QStringLiteral("--telemetry my.json --port 7")).options.session.telemetry.source,
            QStringLiteral("my.json"));
    }

    void helpAndVersionArePrinted()
    {
        const ParsedOptions help = parse(QStringLiteral("--help"));
        QCOMPARE(help.outcome, ParsedOptions::Outcome::Print);
        QVERIFY(help.text.contains(QStringLiteral("--upside-down")));
        const ParsedOptions version = parse(QStringLiteral("--version"));
        QCOMPARE(version.outcome, ParsedOptions::Outcome::Print);
        QVERIFY(version.text.startsWith(QStringLiteral("gauge-host ")));
    }

    void wrongArgumentsAreOneClearLine_data()
    {
        QTest::addColumn<QString>("line");
        QTest::addColumn<QString>("mention");
        const auto row = [](const char *line, const char *mention) {
            QTest::newRow(line) << QString::fromLatin1(line) << QString::fromLatin1(mention);
        };
        row("--wrong", "wrong");
        row("stray", "stray");
        row("--frames", "frames");
        row("--frames out --window", "--window");
        row("--frames out --view DashboardEditor", "--view");
        row("--view Cockpit", "'Cockpit'");
        row("--view DashboardWindow --path my.qml", "--path");
        row("--view DashboardEditor --dashboard my.qml", "--path");
        row("--view DashboardEditor --window", "--window");
        row("--path my.qml", "--view");
        row("--mph --kmh", "--kmh");
        row("--size 480x272", "--window");
        row("--upside-down", "--frames");
        row("--count 5", "--frames");
        row("--frames out --count 0", "'0'");
        row("--frames out --count -3", "'-3'");
        row("--frames out --count 1000001", "'1000001'");
        row("--frames out --count ten", "'ten'");
        row("--size 480", "'480'");
        row("--size 480x", "'480x'");
        row("--size 1x1", "'1x1'");
        row("--size -480x272", "'-480x272'");
        row("--size 16385x272", "'16385x272'");
        row("--size 99999999999x2", "'99999999999x2'");
        row("--telemetry crystalball", "'crystalball'");
        row("--telemetry demo --listen 0.0.0.0", "--telemetry");
        row("--telemetry auto --port 0", "'0'");
        row("--telemetry auto --port 65536", "'65536'");
        row("--telemetry auto --listen somewhere", "'somewhere'");
        row("profiles list --listen ::", "--listen");
        row("--demo-cars 0", "'0'");
        row("--demo-cars 4", "'4'");
        row("--json", "profiles list");
        row("profiles vehicles --json", "profiles list");
        row("profiles", "list");
        row("profiles explode", "'explode'");
        row("profiles list stray", "profiles list");
        row("profiles copy Mine", "NEW");
        row("vehicle", "NAME");
        row("preview", "preview NAME|ID|FILE");
        row("lint Road stray", "lint NAME|ID|FILE");
        row("preview Road --size 3x3", "--size");
        row("lint Road --output x.png", "--output");
        row("preview Road --output=", "--output");
        row("profiles list --frames out", "--frames");
        row("profiles list --size 3x3", "--size");
        row("--start-at -1", "'-1'");
        row("--start-at nan", "'nan'");
        row("--start-at inf", "'inf'");
        row("--speed 2", "FILE");
        row("--loop --telemetry auto", "FILE");
        row("--telemetry a.pcap --speed 0.09", "'0.09'");
        row("--telemetry a.pcap --speed 101", "'101'");
        row("--telemetry a.pcap --speed nan", "'nan'");
        row("--telemetry a.pcap --port 4444", "--port");
        row("--telemetry demo --feed a.json", "demo");
        row("record", "record FILE");
        row("record a b", "record FILE");
        row("record a --frames out", "--frames");
        row("record a --telemetry demo", "demo");
        row("record a --telemetry b.pcap", "b.pcap");
        row("record a --duration 0", "'0'");
        row("record a --json", "profiles list");
        row("--duration 5", "record");
        row("--force", "record");
    }

    void wrongArgumentsAreOneClearLine()
    {
        QFETCH(QString, line);
        QFETCH(QString, mention);
        const ParsedOptions parsed = parse(line);
        QCOMPARE(parsed.outcome, ParsedOptions::Outcome::Fail);
        QVERIFY2(parsed.text.contains(mention), qPrintable(parsed.text));
        QVERIFY(!parsed.text.contains(QLatin1Char('\n')));
    }

    void commandsAreRead_data()
    {
        QTest::addColumn<QString>("line");
        QTest::addColumn<int>("verb");
        QTest::addColumn<QStringList>("operands");
        using Verb = ProfileCommand::Verb;
        const auto row = [](const char *line, Verb verb, const QStringList &operands) {
            QTest::newRow(line) << QString::fromLatin1(line) << static_cast<int>(verb) << operands;
        };
        const QString mine = QStringLiteral("Mine");
        const QString other = QStringLiteral("Other");
        row("profiles list", Verb::List, {});
        row("profiles activate Mine", Verb::Activate, {mine});
        row("profiles copy Mine Other", Verb::Copy, {mine, other});
        row("profiles rename Mine Other", Verb::Rename, {mine, other});
        row("profiles remove Mine", Verb::Remove, {mine});
        row("profiles vehicles", Verb::Vehicles, {});
        row("vehicle Mine", Verb::Vehicle, {mine});
    }

    void commandsAreRead()
    {
        QFETCH(QString, line);
        QFETCH(int, verb);
        QFETCH(QStringList, operands);
        const ParsedOptions parsed = parse(line);
        QCOMPARE(parsed.outcome, ParsedOptions::Outcome::Run);
        QCOMPARE(parsed.options.mode, Options::Mode::Profile);
        QCOMPARE(static_cast<int>(parsed.options.profile.verb), verb);
        QCOMPARE(parsed.options.profile.operands, operands);
        QVERIFY(!parsed.options.profile.json);
    }
};

QTEST_GUILESS_MAIN(OptionsTest)
#include "OptionsTest.moc"
