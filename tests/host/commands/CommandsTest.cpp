#include "HostProgram.h"
#include "commands/FrameWriter.h"
#include "commands/SourceFindings.h"
#include "system/MessageThrottle.h"
#include "telemetry/recordings/OpenDrive.h"

#include <QtCore/QUrl>
#include <QtNetwork/QUdpSocket>
#include <QtTest/QtTest>

/// The commands, run as a driver or an author runs them, and what they are made of.
class CommandsTest : public QObject
{
    Q_OBJECT

private:
    const HostProgram host{};
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

    static int datagramsIn(const QString &file)
    {
        QString error;
        const auto drive = openDrive(file, error);
        int count = 0;
        while (drive != nullptr && drive->next())
            ++count;
        return count;
    }

private Q_SLOTS:
    void aPreviewIsTheSameBytesEachTimeWhateverTheDesktopWants()
    {
        // What a user may choose for the desktop, and what Windows does by itself.
        writeFile(host.path("fontconfig/fonts.conf"),
                  "<?xml version='1.0'?><!DOCTYPE fontconfig SYSTEM 'fonts.dtd'><fontconfig>"
                  "<include>/etc/fonts/fonts.conf</include><match target='pattern'><edit name="
                  "'hintstyle' mode='assign'><const>hintfull</const></edit></match></fontconfig>");
        write("Text { id: plain; y: 60; font.pixelSize: 11; text: 'The quick brown fox jumps' }\n"
              "Text { id: unhinted; y: 90; font.pixelSize: 11; text: plain.text\n"
              " font.hintingPreference: Font.PreferVerticalHinting }\n"
              "property int speed: dash_speed_kmh; onSpeedChanged: fade.show()\n"
              "property int tick: dash_frameCounter1000; onTickChanged: fade.update()\n"
              "DashboardFadeInOut { id: fade; fadeIn: 60; duration: 60000 }\n"
              "Rectangle { width: dash_speed_kmh; height: 50; opacity: fade.opacity\n"
              " color: plain.width === unhinted.width ? 'white' : 'red' }\n");
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

    void lintFindsWhatSomeTelemetryBringsOut()
    {
        write("x: dash_paused ? a : 1; y: dash_gear < 0 ? b : 1; z: dash_useMph ? c : 1\n"
              "visible: !dash_tyreWear_Percent_FL_Available && dash_brakeBias_Percent_Available"
              " ? d : true\nopacity: dash_deltaTime_s > 99.9 ? e : 1; scale: dash_swayG > 1e35"
              " ? f : 1");
        QCOMPARE(host.run("lint Road").exitCode, 0);
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

    void lintReadsTheSources()
    {
        const QByteArray sound = "height: 272; Item { width: 3 } // Timer { }\n /* dash_none\n\n */"
                                 "property string s: a.replace(/\"'/, '') + 'dash_geer' + '.png'\n"
                                 "Image { source: 'preview.png' }\n";
        std::vector<std::pair<QByteArray, QString>> sources{
            {sound, ""_q},
            {sound + "x: dash_geer", "8: dash_geer "_q},
            {sound + "x: 8 / 2; y: dash_geer / 2", "8: dash_geer "_q},
            {sound + "Timer { }", "8: Timer "_q},
            {sound + "Behavior on x { }", "8: Behavior "_q},
            {sound + "Image { source: 'none.png' }", "8: 'none.png' is missing."_q},
            {sound + "Image { source: '../there.png' }", "8: '../there.png' "_q},
            {sound + "Image { source: 'file:///there.png' }", "8: 'file:///there.png' "_q},
            {sound + "Text { font.family: 'Arial' }", "8: No font 'Arial'"_q},
            {"height: 270", "3: The root's height is 270, not 272."_q},
            {"Item { height: 3 }", "0: The root has no height"_q},
        };
        for (const char *anything : {"\"", "'\\", "/*", "/", "`\n\n", "{{{{", "\\", "1."})
            sources.emplace_back(anything, "0: The root has no height"_q);
        for (const auto &[source, finding] : sources) {
            writeFile(preview, "there");
            writeFile(dash, "Item {\n\nwidth: 480; " + source + "\n}\n");
            QString found;
            for (const Finding &one : findingsInSources(dash, {"dash_gear"_q}))
                found += "%1: "_q.arg(one.line) + one.text;
            QVERIFY2(finding.isEmpty() ? found.isEmpty() : found.contains(finding),
                     source + ": " + found.toUtf8());
        }
    }

    void writesAsManyFramesAsItWasAskedForAndTellsThoseItCannot()
    {
        constexpr QSize Size(4, 2);
        const QTemporaryDir folder;
        QVERIFY(QDir(folder.path()).mkdir("frame-000003.png"_q));
        FrameWriter writer(folder.path(), 4, Size, false);
        QSignalSpy failed(&writer, &FrameWriter::failed);
        for (const unsigned char byte : {10, 0, 30, 40, 50}) { // 0 is transparent: no picture.
            Frame frame(frameBytes(Size.width(), Size.height()), byte);
            writer.deliverFrame(frame, Size.width());
            writer.flush();
        }
        QTRY_COMPARE(failed.count(), 1);
        QVERIFY2(writer.error().contains("Frame 2"_q), qPrintable(writer.error()));
        QCOMPARE(writer.delivered(), 4);
        QCOMPARE(writer.written(), 2);
        QCOMPARE(QDir(folder.path()).entryList(QDir::Files).size(), 2);
        const QImage last(folder.filePath("frame-000004.png"_q));
        QCOMPARE(qAlpha(last.pixel(3, 1)), 40);
    }

    void whatComesInIsRecordedUntilTheEnd()
    {
#ifdef Q_OS_WIN
        QSKIP("Ends the program by a signal.");
#endif
        for (const char *end : {"terminated", "killed"}) {
            const QStringList command{host.path(end), "--listen"_q, ownAddress()};
            const bool killed = qstrcmp(end, "killed") == 0;
            QProcess process;
            host.start(process, "record", command);
            QByteArray errors;
            QTRY_VERIFY2((errors += process.readAllStandardError()).contains("Ctrl+C"), errors);
            QUdpSocket game;
            constexpr quint16 Port = 9999; // A usual one.
            for (int i = 0; i < 10; ++i)
                game.writeDatagram(QByteArray(5 * i, char(i)), QHostAddress(ownAddress()), Port);
            QTRY_COMPARE(datagramsIn(host.path(end)), 10);
            killed ? process.kill() : process.terminate();
            const Run run = HostProgram::finish(process);
            QCOMPARE(run.exitCode, killed ? -1 : 0);
            QVERIFY2(killed || run.output.startsWith("datagrams 10, "_q), qPrintable(run.output));
            const Run again = host.run("record", command);
            QCOMPARE(again.exitCode, 1);
            QVERIFY2(again.errors.contains("--force"_q), qPrintable(again.errors));
            QCOMPARE(datagramsIn(host.path(end)), 10);
        }
    }

    void aRecordingOfNothingLeavesNoFile()
    {
        const QString file = host.path("nothing.pcap");
        const Run nothing = host.run("record --duration 1 --listen", {ownAddress(), file});
        QCOMPARE(nothing.exitCode, 1);
        QVERIFY2(nothing.errors.contains("No datagrams arrived"_q), qPrintable(nothing.errors));
        QVERIFY(!QFileInfo::exists(file));
    }
};

QTEST_MAIN(CommandsTest)
#include "CommandsTest.moc"
