#include "Options.h"
#include "Dashboards.h"

#include <QtCore/QDir>
#include <QtCore/QTemporaryDir>
#include <QtTest/QtTest>

namespace {

ParsedOptions parse(const QString &line)
{
    return parseOptions(QStringList{QStringLiteral("gauge-host")} +
                        line.split(QLatin1Char(' '), Qt::SkipEmptyParts));
}

void touch(const QString &path)
{
    QVERIFY(QDir().mkpath(QFileInfo(path).absolutePath()));
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
}

} // namespace

class OptionsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void withoutArgumentsTheRoadDashboardIsShownInAWindow()
    {
        const ParsedOptions parsed = parse(QString());
        QCOMPARE(parsed.outcome, ParsedOptions::Outcome::Run);
        QCOMPARE(parsed.options.mode, Options::Mode::Window);
        QCOMPARE(parsed.options.dashboard, QStringLiteral("Road"));
        QCOMPARE(parsed.options.useMph, false);
        QCOMPARE(parsed.options.hardwareAcceleration, true);
    }

    void everyOptionReachesItsField()
    {
        const ParsedOptions parsed =
            parse(QStringLiteral("--frames out --count 50 --size 1440x816 --upside-down "
                                 "--dashboard my.qml --telemetry demo --start-at 12.5 --mph "
                                 "--no-acceleration --verbose"));
        QCOMPARE(parsed.outcome, ParsedOptions::Outcome::Run);
        const Options &options = parsed.options;
        QCOMPARE(options.mode, Options::Mode::Frames);
        QCOMPARE(options.framesDirectory, QStringLiteral("out"));
        QCOMPARE(options.frameCount, 50);
        QCOMPARE(options.frameSize, QSize(1440, 816));
        QVERIFY(options.upsideDown);
        QCOMPARE(options.dashboard, QStringLiteral("my.qml"));
        QCOMPARE(options.startAt, 12.5);
        QVERIFY(options.useMph);
        QVERIFY(!options.hardwareAcceleration);
        QVERIFY(options.verbose);
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
        row("--start-at -1", "'-1'");
        row("--start-at nan", "'nan'");
        row("--start-at inf", "'inf'");
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

    void aDashboardIsFoundByNameAndByFile()
    {
        const QTemporaryDir folder;
        const QString root = folder.filePath(QStringLiteral("Dashboards"));
        touch(root + QStringLiteral("/Road/Dash.qml"));
        touch(root + QStringLiteral("/Zulu/Dash.qml"));
        touch(root + QStringLiteral("/Empty/readme.txt"));
        const Dashboards dashboards(root);
        QCOMPARE(dashboards.names(), QStringList({QStringLiteral("Road"), QStringLiteral("Zulu")}));
        QCOMPARE(dashboards.documentFor(QStringLiteral("Road")),
                 root + QStringLiteral("/Road/Dash.qml"));

        const QString file = folder.filePath(QStringLiteral("Road"));
        touch(file);
        QCOMPARE(dashboards.documentFor(file), file);
        const QString missing = folder.filePath(QStringLiteral("missing.qml"));
        QCOMPARE(dashboards.documentFor(missing), missing);
        QVERIFY(QDir::isAbsolutePath(dashboards.documentFor(QStringLiteral("Empty"))));
    }
};

QTEST_GUILESS_MAIN(OptionsTest)
#include "OptionsTest.moc"
