#include "HostProgram.h"
#include "telemetry/Senders.h"

#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QRegularExpression>
#include <QtGui/QImage>
#include <QtNetwork/QUdpSocket>
#include <QtTest/QtTest>

namespace {

QStringList words(const QString &line)
{
    return line.split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

/// A dashboard of one colour.
QByteArray plain(const QByteArray &colour)
{
    return "import QtQuick 2.15\nRectangle { width: 480; height: 272; color: " + colour + " }\n";
}

QList<QImage> framesIn(const QString &folder)
{
    QList<QImage> frames;
    const QDir directory(folder);
    for (const QString &name : directory.entryList({"frame-*.png"_q}, QDir::Files, QDir::Name))
        frames += QImage(directory.filePath(name));
    return frames;
}

} // namespace

/// What only the real program shows.
class ProgramTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void onlyHelpAndVersionNeedNoDisplay()
    {
        const HostProgram host;
        const QStringList display{"DISPLAY"_q, "WAYLAND_DISPLAY"_q, "QT_QPA_PLATFORM"_q};
        QCOMPARE(host.run({"--help"_q}, display).exitCode, 0);
        QCOMPARE(host.run({"--version"_q}, display).exitCode, 0);
#ifndef Q_OS_WIN
        const Run window = host.run(QStringList(), display);
        QCOMPARE(window.exitCode, 1);
        QVERIFY2(window.errors.contains("isplay"_q), qPrintable(window.errors));
#endif
    }

    void framesAreDrawnAsTheOptionsSay_data()
    {
        QTest::addColumn<QString>("options");
        QTest::addColumn<QSize>("size");
        QTest::addColumn<QString>("topLeft");
        QTest::addColumn<QString>("bottomRight");
        const QSize usual(480, 272);
        QTest::newRow("none") << "" << usual << "blue"
                              << "green";
        QTest::newRow("size") << "--size 960x544" << QSize(960, 544) << "blue"
                              << "green";
        QTest::newRow("upside down") << "--upside-down" << usual << "green"
                                     << "blue";
        QTest::newRow("miles") << "--mph" << usual << "blue"
                               << "red";
        QTest::newRow("no OpenGL") << "--no-acceleration" << usual << "black"
                                   << "black";
    }

    void framesAreDrawnAsTheOptionsSay()
    {
        QFETCH(QString, options);
        QFETCH(QSize, size);
        QFETCH(QString, topLeft);
        QFETCH(QString, bottomRight);
        const HostProgram host;
        const QString document = host.path("Dash.qml");
        writeFile(document, "import QtQuick 2.15\nRectangle { width: 480; height: 272\n"
                            " color: dash_useMph ? 'red' : 'green'\n"
                            " Rectangle { width: 240; height: 136; color: 'blue' } }\n");
        const Run run =
            host.run(words(options) + QStringList{"--frames"_q, host.path("frames"), "--count"_q,
                                                  "3"_q, "--dashboard"_q, document});
        QCOMPARE(run.exitCode, 0);
        QCOMPARE(run.errors, QString());
        const auto summary = QStringLiteral("frames 3, size %1x%2, rate ");
        QVERIFY2(run.output.startsWith(summary.arg(size.width()).arg(size.height())),
                 qPrintable(run.output));
        const QList<QImage> frames = framesIn(host.path("frames"));
        QCOMPARE(frames.size(), 3);
        QCOMPARE(frames.first().size(), size);
        QCOMPARE(frames.first().pixelColor(9, 9), QColor(topLeft));
        QCOMPARE(frames.first().pixelColor(size.width() - 9, size.height() - 9),
                 QColor(bottomRight));
        QCOMPARE(frames.last(), frames.first());
    }

    void failuresAreToldAndSetTheExitCode()
    {
        const HostProgram host;
        const QString document = host.path("broken dash.qml");
        writeFile(document, "import QtQuick 2.15\nItem {");
        writeFile(host.path("file"), "in a folder's place");
        QUdpSocket other;
        QVERIFY(other.bind(QHostAddress(ownAddress()), 0, QAbstractSocket::DontShareAddress));
        const auto fails = [&host](const QStringList &arguments, int code, const QString &error) {
            const Run run = host.run(arguments);
            QCOMPARE(run.exitCode, code);
            QVERIFY2(run.errors.contains(error), qPrintable(run.errors));
            QVERIFY(framesIn(host.path("frames")).isEmpty());
        };
        fails({"--size"_q, "huge"_q}, 2, "'huge'"_q);
        fails({"--frames"_q, host.path("file/frames")}, 1, "frames"_q);
        fails({"--frames"_q, host.path("frames"), "--dashboard"_q, document}, 1,
              "Dashboard: Failed to load: "_q + QDir::toNativeSeparators(document));
        fails({"--frames"_q, host.path("frames"), "--telemetry"_q, "ego"_q, "--listen"_q,
               ownAddress(), "--port"_q, QString::number(other.localPort())},
              1, "in use by another program"_q);
    }

    void aDocumentThatBreaksWhileItIsShownEndsTheFrames()
    {
        const HostProgram host;
        const QString document = host.path("Dash.qml");
        writeFile(document, plain("'red'"));
        QProcess process;
        host.start(process, {"--frames"_q, host.path("frames"), "--count"_q, "100000"_q,
                             "--dashboard"_q, document});
        QTRY_VERIFY_WITH_TIMEOUT(!framesIn(host.path("frames")).isEmpty(), 60'000);
        writeFile(document, "import QtQuick 2.15\nItem {");
        const Run run = HostProgram::finish(process);
        QCOMPARE(run.exitCode, 1);
        QVERIFY2(run.errors.count(QLatin1Char('\n')) >= 2, qPrintable(run.errors));
        QVERIFY2(run.output.startsWith("frames "_q), qPrintable(run.output));
    }

    void dashboardsAreManagedFromTheCommandLine()
    {
        const HostProgram host;
        const QString first = host.run("profiles list").output;
        QVERIFY2(first.contains(QRegularExpression("\\* +0  \\w+ +built-in"_q)), qPrintable(first));
        struct Step
        {
            const char *line;
            const char *output;
            const char *error = nullptr; ///< Null where it succeeds.
        };
        const auto goes = [&host](const Step &step) {
            const Run run = host.run(step.line);
            QCOMPARE(run.exitCode, step.error == nullptr ? 0 : 1);
            QCOMPARE(run.output, QString::fromUtf8(step.output));
            const QString told = step.error == nullptr
                                     ? QString()
                                     : "gauge-host: "_q + QLatin1String(step.error) + "\n"_q;
            QCOMPARE(run.errors, told);
        };
        for (const Step &step : {
                 Step{"profiles copy road Mine", ""},
                 Step{"profiles copy Road Mine", "", "Dashboard with given name already exists"},
                 Step{"profiles rename Mine Other", ""},
                 Step{"profiles activate Road", ""},
                 Step{"vehicle Kart", "Road (built-in)\n"},
                 Step{"profiles activate Other", ""},
                 Step{"vehicle Kart", "Road (built-in)\n"},
                 Step{"profiles vehicles", "Road: Kart\n"},
                 Step{"profiles activate Nobody", "", "Profile not found"},
                 Step{"profiles activate 99", "", "Profile not found"},
             })
            goes(step);

        const auto list = QJsonDocument::fromJson(host.run("profiles list --json").output.toUtf8());
        QMap<QString, QJsonObject> profiles;
        for (const QJsonValue profile : list.array())
            profiles.insert(profile["name"_q].toString(), profile.toObject());
        const QJsonObject other = profiles["Other"_q];
        QVERIFY(!other["builtIn"_q].toBool(true) && !other["active"_q].toBool(true));
        QCOMPARE(other["preview"_q].toString(), host.dashboard("Other/preview.png"_q));
        QVERIFY(profiles["Road"_q]["active"_q].toBool());
        QCOMPARE(profiles["Road"_q]["vehicles"_q], QJsonArray{"Kart"_q});

        const QString id = QString::number(other["id"_q].toInt());
        QCOMPARE(host.run({"profiles"_q, "remove"_q, id}).exitCode, 0);
        QVERIFY(!QFileInfo::exists(host.dashboard("Other"_q)));

        const QString assignments = host.dashboard("../dashboardsExtra.ini"_q);
        writeFile(assignments, R"([Road]
Vehicle.0.Name="a\x202e\x2028\x200f\x1bz"
VehicleCount=1)");
        goes({"profiles vehicles", "Road: a????z\n"});
        QVERIFY(host.run("profiles list --json")
                    .output.contains(QStringLiteral(R"("a\u202e\u2028\u200f\u001bz")")));
        QVERIFY(QFile::remove(assignments) && QDir().mkpath(assignments));
        goes({"vehicle Bus", "Road (built-in)\n", "Could not save the vehicle 'Bus'."});
    }

    void aCarKeepsTheDashboardOfItsFormerName()
    {
        const QString now = "EGO car 8000-1450-5"_q;
        const QString formerly = "EGO car 8378-1518-5"_q;
        // The vehicles after a drive in that car, which came to the dashboards in this order.
        const auto drivenAfter = [](const QVector<QPair<QString, QString>> &assignments) {
            const HostProgram host;
            for (const auto &[dashboard, vehicle] : assignments) {
                const QDir folder(host.dashboard(dashboard));
                writeFile(folder.filePath("Dash.qml"_q), plain('\'' + dashboard.toUtf8() + '\''));
                writeFile(folder.filePath("preview.png"_q), {});
                host.run({"profiles"_q, "activate"_q, dashboard});
                host.run({"vehicle"_q, vehicle});
            }
            host.run({"--frames"_q, host.path("frames"), "--count"_q, "2"_q, "--telemetry"_q,
                      QStringLiteral(GAUGE_DRIVES "/ego-dirt-rally-2.pcap")});
            return host.run("profiles vehicles").output;
        };
        QCOMPARE(drivenAfter({{"red"_q, formerly}, {"blue"_q, "Another"_q}}),
                 QStringLiteral("blue: Another\nred: %1\nred: %2\n").arg(now, formerly));
        QCOMPARE(drivenAfter({{"blue"_q, now}, {"red"_q, formerly}}),
                 QStringLiteral("blue: %1\nred: %2\n").arg(now, formerly));
        // Reported on the command line it is the same car.
        QCOMPARE(drivenAfter({{"red"_q, formerly}, {"blue"_q, now}}),
                 QStringLiteral("red: %1\nred: %2\n").arg(now, formerly));
    }

    void aGamesDatagramsReachTheDashboard()
    {
        const HostProgram host;
        writeFile(host.path("Dash.qml"), plain("dash_gear === 5 && dash_fuelLevel_Percent === 45"
                                               " ? 'green' : 'red'"));
        QProcess process;
        host.start(process, {"--frames"_q, host.path("frames"), "--count"_q, "25"_q,
                             "--dashboard"_q, host.path("Dash.qml"), "--listen"_q, ownAddress()});
        QUdpSocket game;
        constexpr quint16 UsualPort = 9999;
        while (!process.waitForFinished(16) && process.state() != QProcess::NotRunning)
            game.writeDatagram(Senders::dataOut(), QHostAddress(ownAddress()), UsualPort);
        const Run run = HostProgram::finish(process);
        QCOMPARE(run.exitCode, 0);
        QCOMPARE(framesIn(host.path("frames")).last().pixelColor(9, 9), QColor(Qt::darkGreen));
    }
};

QTEST_GUILESS_MAIN(ProgramTest)
#include "ProgramTest.moc"
