#include "HostProgram.h"
#include "commands/SourceFindings.h"
#include "system/MessageThrottle.h"

#include <QtCore/QUrl>
#include <QtTest/QtTest>

/// The commands that look at one dashboard, run as its author runs them.
class DashboardCommandsTest : public QObject
{
    Q_OBJECT

private:
    const HostProgram host;
    const QString folder = host.path("a #b"); // A URL must quote it.
    const QString dash = folder + "/Dash.qml"_q;
    const QString preview = folder + "/preview.png"_q;

    /// A dashboard with these lines from the fourth line on.
    void write(const QByteArray &lines) const
    {
        writeFile(dash, "import QtQuick 2.15\nimport DashboardFadeInOut 1.0\n"
                        "Rectangle { width: 480; height: 272; color: 'navy'\n" +
                            lines + "\n}\n");
        writeFile(preview, "old");
    }

private Q_SLOTS:
    void aPreviewIsTheSameBytesEachTime()
    {
        write("Text { y: 60; width: 460; font.pixelSize: 21; wrapMode: Text.WrapAnywhere\n"
              " text: 'The quick brown fox jumps over the lazy dog 0123456789 SPHINX OF BLACK' }\n"
              "property int speed: dash_speed_kmh; onSpeedChanged: fade.show()\n"
              "property int tick: dash_frameCounter1000; onTickChanged: fade.update()\n"
              "DashboardFadeInOut { id: fade; fadeIn: 60; duration: 60000 }\n"
              "Rectangle { width: dash_speed_kmh; height: 50; opacity: fade.opacity }\n");
        QCOMPARE(host.run("preview", {dash}).exitCode, 0);
        const QImage picture(preview);
        QCOMPARE(picture.size(), QSize(480, 272));
        QCOMPARE(picture.pixelColor(5, 5), QColor("white")); // At the end of its fade.
        QCOMPARE(picture.pixelColor(5, 260), QColor("navy"));
        const QString other = host.path("other.png");
        for (int i = 0; i < 2; ++i) {
            QCOMPARE(host.run("preview", {folder, "--output"_q, other}).exitCode, 0);
            QCOMPARE(readFile(other), readFile(preview));
        }
    }

    void theSystemsHintingDoesNotChangeTheWidthOfText()
    {
        // What a user may choose for the desktop, and what Windows does by itself.
        writeFile(host.path("fontconfig/fonts.conf"),
                  "<?xml version='1.0'?><!DOCTYPE fontconfig SYSTEM 'fonts.dtd'><fontconfig>"
                  "<include>/etc/fonts/fonts.conf</include><match target='pattern'><edit name="
                  "'hintstyle' mode='assign'><const>hintfull</const></edit></match></fontconfig>");
        write("Rectangle { width: 9; height: 9; color: plain.width === exact.width ? 'red' : '' }\n"
              "Text { id: plain; text: 'Oil pressure'; font.pixelSize: 11 }\n"
              "Text { id: exact; text: plain.text; font.pixelSize: 11\n"
              " font.hintingPreference: Font.PreferVerticalHinting }\n");
        QCOMPARE(host.run("preview", {dash}).exitCode, 0);
        QCOMPARE(QImage(preview).pixelColor(8, 0), QColor("red"));
    }

    void aFailedPreviewLeavesTheOldOne()
    {
        write("x: nothing");
        const Run broken = host.run("preview", {dash});
        QCOMPARE(broken.exitCode, 1);
        QVERIFY2(broken.errors.contains("Dash.qml:4"_q), qPrintable(broken.errors));
        QCOMPARE(readFile(preview), QByteArray("old"));
        QCOMPARE(host.run("preview none").exitCode, 1);
        const Run unwritable = host.run("preview Road --output", {preview + "/none.png"_q});
        QCOMPARE(unwritable.exitCode, 1);
        QVERIFY2(unwritable.errors.contains("none.png"_q), qPrintable(unwritable.errors));
    }

    void lintPassesWhatIsSound()
    {
        const Run run = host.run("lint Road");
        QVERIFY2(run.exitCode == 0, qPrintable(run.output));
    }

    void lintFindsWhatOnlySomeTelemetryBringsOut()
    {
        write("x: dash_paused ? a : 1; y: dash_gear < 0 ? b : 1; z: dash_useMph ? c : 1\n"
              "visible: !dash_tyreWear_Percent_FL_Available && dash_brakeBias_Percent_Available"
              " ? d : true\nopacity: dash_deltaTime_s > 99.9 ? e : 1; scale: dash_swayG > 1e35"
              " ? f : 1");
        const Run run = host.run("lint", {dash});
        QCOMPARE(run.exitCode, 1);
        for (const char *finding :
             {"4: ReferenceError: a is not defined (paused)", "b is not defined (reverse)",
              "c is not defined (mph)", "5: ReferenceError: d is not defined (nothing known)",
              "e is not defined (delta at its upper end)", "f is not defined (infinity)"})
            QVERIFY2(run.output.contains(QLatin1String(finding)), qPrintable(run.output));
    }

    void whatAScriptLogsIsShownWithItsPlaceAndNotTooOften()
    {
        write("property int tick: dash_frameCounter1000; onTickChanged: { console.log('hello', 7);"
              " console.warn(tick); if (tick === 2) console.log('x'.repeat(20000));"
              " console.assert(false, 'claim') }");
        const QString place = QUrl::fromLocalFile(dash).toString() + ":4: "_q;
        const QStringList frames{"--frames"_q, host.path("frames"), "--dashboard"_q, dash};
        for (const Run &run : {host.run("lint", {dash}), host.run("--count 30", frames)}) {
            QCOMPARE(run.exitCode, 0);
            for (const char *logged : {"hello 7\n", "2\n", "claim\n"})
                QVERIFY2(run.errors.contains(place + QLatin1String(logged)),
                         qPrintable(run.errors));
            QVERIFY(run.errors.size() < 20'000);
            QVERIFY(run.errors.count(place) <= MessageThrottle::TextsPerWindow);
        }
    }

    void lintReadsTheSources_data()
    {
        QTest::addColumn<QString>("finding"); // Empty: nothing is wrong.
        const auto row = [](const char *body, const char *finding) {
            QTest::newRow(body) << QString::fromLatin1(finding);
        };
        row("height: 270", "The root's height is 270, not 272.");
        row("Item { height: 3 }", "The root has no height");
        row("height: 272; Item { width: 3 }", "");
        row("height: 272; Timer { }", "Timer ");
        row("height: 272; Behavior on x { }", "Behavior ");
        row("height: 272; // Timer { }\n /* dash_none\n */", "");
        row("height: 272; property string s: 'dash_geer'", "");
        row("height: 272; property string s: a.replace(/\"'/, '') + dash_geer", "dash_geer ");
        row("height: 272; property real r: 8 / 2; property int gear: dash_geer / 2", "dash_geer ");
        row("height: 272; Image { source: 'none.png' }", "'none.png' is missing.");
        row("height: 272; Image { source: 'preview.png' }", "");
        row("height: 272; Image { source: '../there.png' }", "'../there.png' ");
        row("height: 272; Image { source: 'file:///there.png' }", "'file:///there.png' ");
        row("height: 272; property string s: root + '.png'", "");
        row("height: 272; Text { font.family: 'Arial' }", "'Arial'");
        row("height: 272; Text { }", "no font");
        for (const char *anything : {"\"", "'\\", "/*", "/", "`\n\n", "{{{{", "\\", "1."})
            row(anything, "The root has no height");
    }

    void lintReadsTheSources()
    {
        QFETCH(QString, finding);
        writeFile(preview, "there");
        writeFile(dash, QByteArray("Item {\nwidth: 480; ") + QTest::currentDataTag() + "\n}\n");
        QString found;
        for (const Finding &one : findingsInSources(dash, {"dash_gear"_q}))
            found += one.text + "\n"_q;
        QVERIFY2(finding.isEmpty() ? found.isEmpty() : found.contains(finding), qPrintable(found));
    }
};

QTEST_MAIN(DashboardCommandsTest)
#include "DashboardCommandsTest.moc"
