#include "HostProgram.h"
#include "telemetry/Senders.h"

#include <QtNetwork/QUdpSocket>
#include <QtTest/QtTest>

/// What only the real program shows.
class ProgramTest : public QObject
{
    Q_OBJECT

private:
    const HostProgram host{};

    /// A dashboard with a blue quarter, and the options for frames of it.
    QStringList framesOf(const QByteArray &colour, const char *count) const
    {
        writeFile(host.path("Dash.qml"), "import QtQuick 2.15\nRectangle { color: " + colour +
                                             "\n width: 480; height: 272; Rectangle"
                                             " { width: 240; height: 136; color: 'blue' } }\n");
        return {"--frames"_q,         host.path("frames"), "--count"_q,
                QLatin1String(count), "--dashboard"_q,     host.path("Dash.qml")};
    }

    /// Runs commands, each with what it is to print. Only those that print an error fail.
    void walk(const QVector<QPair<const char *, const char *>> &commands) const
    {
        for (const auto &[command, printed] : commands) {
            const Run run = host.run(command);
            QCOMPARE(run.output + run.errors, QString::fromUtf8(printed));
            QCOMPARE(run.exitCode, run.errors.isEmpty() ? 0 : 1);
        }
    }

private Q_SLOTS:
    void init()
    {
        for (const char *name : {"frames", "Documents"})
            QDir(host.path(name)).removeRecursively();
    }

#ifndef Q_OS_WIN // Which always has a display.
    void onlyHelpNeedsNoDisplay()
    {
        const auto program = QStringLiteral(
            "env -u DISPLAY -u WAYLAND_DISPLAY -u QT_QPA_PLATFORM '" GAUGE_HOST "' ");
        QCOMPARE(QProcess::execute("sh"_q, {"-c"_q, program + "--help > /dev/null"_q}), 0);
        QCOMPARE(QProcess::execute("sh"_q, {"-c"_q, program}), 1);
    }
#endif

    void framesAreDrawnAsTheOptionsSay()
    {
        const QVector<QStringList> drawn{// Width, colour at the top left, at the bottom right.
                                         {"--size 960x544"_q, "960"_q, "blue"_q, "green"_q},
                                         {"--upside-down"_q, "480"_q, "green"_q, "blue"_q},
                                         {"--mph"_q, "480"_q, "blue"_q, "red"_q},
                                         {"--no-acceleration"_q, "480"_q, "black"_q, "black"_q}};
        for (const QStringList &row : drawn) {
            const Run run =
                host.run(qPrintable(row[0]), framesOf("dash_useMph ? 'red' : 'green'", "3"));
            QCOMPARE(run.exitCode, 0);
            QCOMPARE(run.errors, QString());
            QVERIFY2(run.output.startsWith("frames 3, size "_q + row[1]), qPrintable(run.output));
            const QList<QImage> frames = host.frames();
            QCOMPARE(frames.size(), 3);
            QCOMPARE(frames[2], frames[0]);
            const QSize size = frames[0].size();
            QCOMPARE(size.width(), row[1].toInt());
            QCOMPARE(frames[0].pixelColor(9, 9), QColor(row[2]));
            QCOMPARE(frames[0].pixelColor(size.width() - 9, size.height() - 9), QColor(row[3]));
        }
    }

    void failuresAreToldAndSetTheExitCode()
    {
        QUdpSocket other;
        QVERIFY(other.bind(QHostAddress(ownAddress()), 0, QAbstractSocket::DontShareAddress));
        const QStringList taken{ownAddress(), "--port"_q, QString::number(other.localPort())};
        const QStringList broken = framesOf("{", "9");
        const auto fails = [this](const Run &run, int exitCode, const char *error) {
            QCOMPARE(run.exitCode, exitCode);
            QVERIFY2(run.errors.contains(QLatin1String(error)), qPrintable(run.errors));
            QVERIFY2(!run.errors.contains("No frame came"_q), qPrintable(run.errors));
            QVERIFY(host.frames().isEmpty());
        };
        fails(host.run("--size huge"), 2, "'huge'");
        fails(host.run("--frames", {host.path("Dash.qml/frames")}), 1, "frames");
        fails(host.run("", broken), 1, "Dashboard: Failed to load: ");
        fails(host.run("--telemetry ego --listen", taken + broken), 1, "another program");
    }

    void aGamesDatagramsReachTheDashboard()
    {
        const char *gauge = "dash_gear === 5 && dash_fuelLevel_Percent === 45 ? 'green' : 'red'";
        QProcess process;
        host.start(process, "--listen", QStringList{ownAddress()} + framesOf(gauge, "25"));
        QUdpSocket game;
        constexpr quint16 UsualPort = 9999;
        while (!process.waitForFinished(16) && process.state() != QProcess::NotRunning)
            game.writeDatagram(Senders::dataOut(), QHostAddress(ownAddress()), UsualPort);
        QCOMPARE(HostProgram::finish(process).exitCode, 0);
        QCOMPARE(host.frames().constLast().pixelColor(470, 260), QColor(Qt::darkGreen));
    }

    void dashboardsAreManagedFromTheCommandLine()
    {
        walk({{"profiles copy 0 Mine", ""},
              {"profiles copy Road Mine", "gauge-host: Dashboard with given name already exists\n"},
              {"profiles rename Mine Other", ""},
              {"profiles activate other", ""},
              {"vehicle Kart", "Other (user)\n"},
              {"profiles activate Road", ""},
              {"profiles vehicles", "Other: Kart\n"},
              {"vehicle Kart", "Other (user)\n"},
              {"profiles activate 99", "gauge-host: Profile not found\n"}});
        const QString list = host.run("profiles list").output;
        const QRegularExpression row(QStringLiteral(R"(\* +\d+  Other +user +1 )"));
        QVERIFY2(list.contains(row), qPrintable(list));
        const QString json = host.run("profiles list --json").output;
        QVERIFY2(json.contains("\"active\": true,\n        \"builtIn\": false,"_q),
                 qPrintable(json));
        const QString folder = host.path("Documents/Orvalentix/Halvorin/Dashboards/Other");
        QVERIFY2(json.contains(folder + "/preview.png"_q), qPrintable(json));
        walk({{"profiles remove Other", ""}});
        QVERIFY(!QFileInfo::exists(folder));
    }

    void aCarKeepsTheDashboardOfItsFormerName()
    {
        walk({{"profiles activate Road", ""},
              {"vehicle \"EGO car 8378-1518-5\"", "Road (built-in)\n"},
              {"vehicle \"EGO car 9425-1047-6\"", "Road (built-in)\n"},
              {"profiles activate GT", ""},
              {"vehicle \"EGO car 9000-1000-6\"", "Road (built-in)\n"}});
        const QString drive = QStringLiteral(GAUGE_DRIVES "/ego-dirt-rally-2.pcap");
        host.run("--count 2 --frames", {host.path("frames"), "--telemetry"_q, drive});
        QVERIFY(host.run("profiles vehicles").output.startsWith("Road: EGO car 8000-1450-5\n"_q));
    }

    void whatTheDiskHoldsIsShownHarmlesslyOrMissed()
    {
        const QString vehicles = host.path("Documents/Orvalentix/Halvorin/dashboardsExtra.ini");
        writeFile(vehicles, "[Road]\nVehicle.0.Name=\"a\\x202e\\x2028\\x1bz\"\nVehicleCount=1");
        walk({{"profiles vehicles", "Road: a???z\n"}, {"profiles activate Road", ""}});
        const QString json = host.run("profiles list --json").output;
        QVERIFY2(json.contains("\"a\\u202e\\u2028\\u001bz\""_q), qPrintable(json));
        QVERIFY(QFile::remove(vehicles) && QDir().mkpath(vehicles));
        walk({{"vehicle Bus", "Road (built-in)\n"
                              "gauge-host: Could not save the vehicle 'Bus'.\n"}});
    }
};

QTEST_GUILESS_MAIN(ProgramTest)
#include "ProgramTest.moc"
