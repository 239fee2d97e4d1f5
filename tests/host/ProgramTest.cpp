#include <QtCore/QDir>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QProcess>
#include <QtCore/QRegularExpression>
#include <QtCore/QTemporaryDir>
#include <QtGui/QImage>
#include <QtNetwork/QUdpSocket>
#include <QtTest/QtTest>

#include "ProgramHome.h"
#include "support/SystemLimits.h"
#include "telemetry/Senders.h"

namespace {

struct Run
{
    int exitCode = -1;
    QString output;
    QString errors;
};

/// A dashboard of one colour, among the user's own.
void addDashboard(const ProgramHome &home, const QString &name)
{
    const QDir folder(home.userFolder() + QLatin1Char('/') + name);
    QVERIFY(folder.mkpath(QStringLiteral(".")));
    QFile document(folder.filePath(QStringLiteral("Dash.qml")));
    QVERIFY(document.open(QIODevice::WriteOnly));
    document.write("import QtQuick 2.15\nRectangle { width: 480; height: 272; color: '" +
                   name.toLatin1() + "' }\n");
    QFile preview(folder.filePath(QStringLiteral("preview.png")));
    QVERIFY(preview.open(QIODevice::WriteOnly));
}

void prepare(QProcess &process, const QMap<QString, QString> &environment, const ProgramHome &home)
{
    QProcessEnvironment variables = home.environment();
    for (auto variable = environment.begin(); variable != environment.end(); ++variable) {
        if (variable.value().isNull())
            variables.remove(variable.key());
        else
            variables.insert(variable.key(), variable.value());
    }
    process.setProcessEnvironment(variables);
}

Run finish(QProcess &process)
{
    constexpr int LongestRunMs = 120'000;
    if (!process.waitForFinished(LongestRunMs) || process.exitStatus() != QProcess::NormalExit)
        return {};
    const auto text = [](QByteArray bytes) {
        return QString::fromUtf8(bytes.replace("\r\n", "\n"));
    };
    return {process.exitCode(), text(process.readAllStandardOutput()),
            text(process.readAllStandardError())};
}

Run runHost(const QStringList &arguments, const QMap<QString, QString> &environment = {},
            const ProgramHome &home = {})
{
    QProcess process;
    prepare(process, environment, home);
    process.start(QStringLiteral(GAUGE_HOST), arguments);
    return finish(process);
}

void write(const QString &path, const QByteArray &content)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(content);
}

QStringList framesIn(const QTemporaryDir &folder)
{
    return QDir(folder.path()).entryList({QStringLiteral("frame-*.png")}, QDir::Files, QDir::Name);
}

int coloursIn(const QImage &image)
{
    QSet<QRgb> colours;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            colours.insert(image.pixel(x, y));
    }
    return colours.size();
}

} // namespace

class ProgramTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void helpAndVersionNeedNoDisplay()
    {
        const QMap<QString, QString> noDisplay{{QStringLiteral("DISPLAY"), QString()},
                                               {QStringLiteral("WAYLAND_DISPLAY"), QString()},
                                               {QStringLiteral("QT_QPA_PLATFORM"), QString()}};
        QCOMPARE(runHost({QStringLiteral("--help")}, noDisplay).exitCode, 0);
        QCOMPARE(runHost({QStringLiteral("--version")}, noDisplay).exitCode, 0);
    }

    void aWindowNeedsADisplay()
    {
        NEEDS_POSIX();
        const Run window = runHost({}, {{QStringLiteral("DISPLAY"), QString()},
                                        {QStringLiteral("WAYLAND_DISPLAY"), QString()},
                                        {QStringLiteral("QT_QPA_PLATFORM"), QString()}});
        QCOMPARE(window.exitCode, 1);
        QVERIFY(window.errors.contains(QStringLiteral("no display")));
    }

    void aWrongArgumentIsOneLineAndExitCode2()
    {
        const Run run = runHost({QStringLiteral("--size"), QStringLiteral("huge")});
        QCOMPARE(run.exitCode, 2);
        QCOMPARE(run.errors.count(QLatin1Char('\n')), 1);
        QVERIFY(run.errors.contains(QStringLiteral("'huge'")));
    }

    void framesOfTheShippedDashboardAreWritten()
    {
        const QTemporaryDir folder;
        const Run run =
            runHost({QStringLiteral("--frames"), folder.path(), QStringLiteral("--count"),
                     QStringLiteral("3"), QStringLiteral("--size"), QStringLiteral("960x544")});
        QVERIFY2(run.exitCode == 0, qPrintable(run.errors));
        QCOMPARE(run.errors, QString());
        QVERIFY2(run.output.startsWith(QStringLiteral("3 frames, 960x544 pixels, ")),
                 qPrintable(run.output));
        QCOMPARE(run.output.count(QLatin1Char('\n')), 1);
        QCOMPARE(framesIn(folder).size(), 3);
        const QImage frame(folder.filePath(framesIn(folder).constLast()));
        QCOMPARE(frame.size(), QSize(960, 544));
        QVERIFY(coloursIn(frame) > 50);
    }

    void anUpsideDownFrameStandsOnItsHead()
    {
        const QTemporaryDir folder;
        const QString document = folder.filePath(QStringLiteral("Dash.qml"));
        write(document, "import QtQuick 2.15\n"
                        "Rectangle { width: 480; height: 272; color: 'red'\n"
                        "  Rectangle { width: 240; height: 136; color: 'blue' } }\n");
        const Run run =
            runHost({QStringLiteral("--frames"), folder.path(), QStringLiteral("--count"),
                     QStringLiteral("1"), QStringLiteral("--upside-down"),
                     QStringLiteral("--dashboard"), document});
        QVERIFY2(run.exitCode == 0, qPrintable(run.errors));
        const QImage frame(folder.filePath(framesIn(folder).constFirst()));
        QCOMPARE(frame.pixelColor(10, 10), QColor(Qt::red));
        QCOMPARE(frame.pixelColor(470, 262), QColor(Qt::blue));
    }

    void milesPerHourReachTheDashboard()
    {
        const QTemporaryDir folder;
        const QString document = folder.filePath(QStringLiteral("Dash.qml"));
        write(document, "import QtQuick 2.15\nRectangle { width: 480; height: 272\n"
                        "  color: dash_useMph ? 'red' : 'blue' }\n");
        for (const bool mph : {false, true}) {
            QStringList arguments{QStringLiteral("--frames"),    folder.path(),
                                  QStringLiteral("--count"),     QStringLiteral("1"),
                                  QStringLiteral("--dashboard"), document};
            if (mph)
                arguments += QStringLiteral("--mph");
            const Run run = runHost(arguments);
            QVERIFY2(run.exitCode == 0, qPrintable(run.errors));
            QVERIFY2(run.output.startsWith(QStringLiteral("1 frame, ")), qPrintable(run.output));
            QCOMPARE(QImage(folder.filePath(framesIn(folder).constFirst())).pixelColor(9, 9),
                     QColor(mph ? Qt::red : Qt::blue));
        }
    }

    void aDocumentThatBreaksInMidDriveEndsTheRecording()
    {
        const QTemporaryDir folder;
        const ProgramHome home;
        const QString document = folder.filePath(QStringLiteral("Dash.qml"));
        write(document, "import QtQuick 2.15\nItem { width: 480; height: 272 }\n");
        QProcess process;
        prepare(process, {}, home);
        process.start(QStringLiteral(GAUGE_HOST),
                      {QStringLiteral("--frames"), folder.path(), QStringLiteral("--count"),
                       QStringLiteral("100000"), QStringLiteral("--dashboard"), document});
        QTRY_VERIFY_WITH_TIMEOUT(!framesIn(folder).isEmpty(), 60'000);
        write(document, "import QtQuick 2.15\nItem {");
        const Run run = finish(process);
        QCOMPARE(run.exitCode, 1);
        QVERIFY(run.errors.contains(QStringLiteral("Dashboard: Failed to load: ") +
                                    QDir::toNativeSeparators(document)));
        QVERIFY2(run.output.contains(QStringLiteral("480x272 pixels")), qPrintable(run.output));
    }

    void withoutAccelerationEveryFrameIsTheMessage()
    {
        const QTemporaryDir folder;
        const Run run =
            runHost({QStringLiteral("--frames"), folder.path(), QStringLiteral("--count"),
                     QStringLiteral("4"), QStringLiteral("--no-acceleration")});
        QVERIFY2(run.exitCode == 0, qPrintable(run.errors));
        const QStringList frames = framesIn(folder);
        QCOMPARE(frames.size(), 4);
        const QImage first(folder.filePath(frames.constFirst()));
        QCOMPARE(first.pixelColor(0, 0), QColor(Qt::black));
        QVERIFY(coloursIn(first) > 1);
        QCOMPARE(QImage(folder.filePath(frames.constLast())), first);
    }

    void aBrokenDocumentPrintsItsErrorsAndExitsWith1_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::newRow("syntax") << QByteArray("import QtQuick 2.15\nItem {");
        QTest::newRow("empty") << QByteArray();
        QTest::newRow("unknown name")
            << QByteArray("import QtQuick 2.15\nItem { width: dash_noSuchThing }\n");
    }

    void aBrokenDocumentPrintsItsErrorsAndExitsWith1()
    {
        QFETCH(QByteArray, content);
        const QTemporaryDir folder;
        const QString document = folder.filePath(QStringLiteral("broken dash.qml"));
        write(document, content);
        const Run run = runHost(
            {QStringLiteral("--frames"), folder.path(), QStringLiteral("--dashboard"), document});
        QCOMPARE(run.exitCode, 1);
        QVERIFY(run.errors.contains(QStringLiteral("Dashboard: Failed to load: ") +
                                    QDir::toNativeSeparators(document)));
        QVERIFY2(run.errors.count(QLatin1Char('\n')) >= 2, qPrintable(run.errors));
        QVERIFY(framesIn(folder).isEmpty());
    }

    void aDirectoryThatCannotBeMadeExitsWith1()
    {
        const QTemporaryDir folder;
        write(folder.filePath(QStringLiteral("file")), "in the folder's place");
        const Run run =
            runHost({QStringLiteral("--frames"), folder.filePath(QStringLiteral("file/frames"))});
        QCOMPARE(run.exitCode, 1);
        QVERIFY(run.errors.contains(QStringLiteral("frames")));
    }

    void theCollectionIsHandledFromTheCommandLine()
    {
        const ProgramHome home;
        const auto run = [&home](const char *line) {
            return runHost(QString::fromLatin1(line).split(QLatin1Char(' ')), {}, home);
        };
        Run result = run("profiles list");
        QCOMPARE(result.exitCode, 0);
        QVERIFY(QFileInfo(home.userFolder()).isDir());
        QVERIFY2(
            result.output.contains(QRegularExpression(QStringLiteral("\\* +0  \\w+ +built-in"))),
            qPrintable(result.output));

        QCOMPARE(run("profiles copy road Mine").exitCode, 0);
        result = run("profiles copy Road Mine");
        QCOMPARE(result.exitCode, 1);
        QCOMPARE(result.errors,
                 QStringLiteral("gauge-host: Dashboard with given name already exists\n"));
        const QRegularExpression own(QStringLiteral("(\\d+)  Mine +user"));
        const QString id = own.match(run("profiles list").output).captured(1);
        QCOMPARE(run(qPrintable(QStringLiteral("profiles rename %1 Other").arg(id))).exitCode, 0);
        QCOMPARE(run("profiles activate Road").exitCode, 0);
        QCOMPARE(run("vehicle Kart").output, QStringLiteral("Road (built-in)\n"));
        QCOMPARE(run("profiles vehicles").output, QStringLiteral("Road: Kart\n"));
        QCOMPARE(run("profiles activate Other").exitCode, 0);
        QCOMPARE(run("vehicle Kart").output, QStringLiteral("Road (built-in)\n"));

        QMap<QString, QJsonObject> list;
        const QJsonArray entries =
            QJsonDocument::fromJson(run("profiles list --json").output.toUtf8()).array();
        for (const auto &entry : entries)
            list.insert(entry[QLatin1String("name")].toString(), entry.toObject());
        const QJsonObject other = list.value(QStringLiteral("Other"));
        QCOMPARE(other.value(QLatin1String("builtIn")).toBool(true), false);
        QCOMPARE(other.value(QLatin1String("active")).toBool(true), false);
        QCOMPARE(other.value(QLatin1String("preview")).toString(),
                 home.userFolder() + QStringLiteral("/Other/preview.png"));
        const QJsonObject road = list.value(QStringLiteral("Road"));
        QCOMPARE(road.value(QLatin1String("active")).toBool(), true);
        QCOMPARE(road.value(QLatin1String("vehicles")).toArray(),
                 QJsonArray({QStringLiteral("Kart")}));

        QCOMPARE(run("profiles remove Other").exitCode, 0);
        result = run("profiles activate Nobody");
        QCOMPARE(result.exitCode, 1);
        QCOMPARE(result.errors, QStringLiteral("gauge-host: Profile not found\n"));
        QVERIFY(!QFileInfo::exists(home.userFolder() + QStringLiteral("/Other")));
        for (const char *line :
             {"profiles remove Road", "profiles remove Missing", "profiles activate 99"}) {
            result = run(line);
            QCOMPARE(result.exitCode, 1);
            QCOMPARE(result.errors.count(QLatin1Char('\n')), 1);
        }

        const QString assignments = home.userFolder() + QStringLiteral("/../dashboardsExtra.ini");
        write(assignments, R"([Road]
Vehicle.0.Name="a\x202e\x2028\x200f\x1bz"
VehicleCount=1)");
        QCOMPARE(run("profiles vehicles").output, QStringLiteral("Road: a????z\n"));
        QVERIFY(run("profiles list --json")
                    .output.contains(QStringLiteral(R"("a\u202e\u2028\u200f\u001bz")")));
        QVERIFY(QFile::remove(assignments) && QDir().mkpath(assignments));
        result = run("vehicle Bus");
        QCOMPARE(result.exitCode, 1);
        QCOMPARE(result.errors,
                 QStringLiteral("gauge-host: Could not keep 'Bus' for the next start.\n"));
    }

    void aChangeOfCarChangesTheDashboard()
    {
        const ProgramHome home;
        addDashboard(home, QStringLiteral("red"));
        addDashboard(home, QStringLiteral("blue"));
        const auto command = [&home](const QStringList &words) {
            QCOMPARE(runHost(words, {}, home).exitCode, 0);
        };
        command({QStringLiteral("profiles"), QStringLiteral("activate"), QStringLiteral("red")});
        command({QStringLiteral("vehicle"), QStringLiteral("Auralis Silhouette")});
        command({QStringLiteral("profiles"), QStringLiteral("activate"), QStringLiteral("blue")});
        command({QStringLiteral("vehicle"), QStringLiteral("Borealis Touring")});

        // The first car's turn ends a second after the start.
        const QTemporaryDir folder;
        const Run run =
            runHost({QStringLiteral("--frames"), folder.path(), QStringLiteral("--count"),
                     QStringLiteral("75"), QStringLiteral("--size"), QStringLiteral("48x27"),
                     QStringLiteral("--demo-cars"), QStringLiteral("2"),
                     QStringLiteral("--start-at"), QStringLiteral("19")},
                    {}, home);
        QVERIFY2(run.exitCode == 0, qPrintable(run.errors));
        const auto colourOf = [&folder](int number) {
            return QImage(folder.filePath(framesIn(folder).at(number))).pixelColor(5, 5);
        };
        QCOMPARE(colourOf(1), QColor(Qt::red));
        QCOMPARE(colourOf(74), QColor(Qt::blue));
    }

    void aCarKeepsTheDashboardOfItsFormerName()
    {
        const QString now = QStringLiteral("EGO car 8000-1450-5");
        const QString formerly = QStringLiteral("EGO car 8378-1518-5");
        // The vehicles after a drive in that car, which came to the dashboards in this order.
        const auto drivenAfter = [](const QVector<QPair<QString, QString>> &assignments) {
            const ProgramHome home;
            addDashboard(home, QStringLiteral("red"));
            addDashboard(home, QStringLiteral("blue"));
            for (const auto &[dashboard, vehicle] : assignments) {
                runHost({QStringLiteral("profiles"), QStringLiteral("activate"), dashboard}, {},
                        home);
                runHost({QStringLiteral("vehicle"), vehicle}, {}, home);
            }
            runHost({QStringLiteral("--frames"), home.filePath(QStringLiteral("frames")),
                     QStringLiteral("--count"), QStringLiteral("2"), QStringLiteral("--telemetry"),
                     QStringLiteral(GAUGE_DRIVES "/ego-dirt-rally-2.pcap")},
                    {}, home);
            return runHost({QStringLiteral("profiles"), QStringLiteral("vehicles")}, {}, home)
                .output;
        };
        const QString red = QStringLiteral("red");
        const QString blue = QStringLiteral("blue");
        QCOMPARE(drivenAfter({{red, formerly}, {blue, QStringLiteral("Another")}}),
                 QStringLiteral("blue: Another\nred: %1\nred: %2\n").arg(now, formerly));
        QCOMPARE(drivenAfter({{blue, now}, {red, formerly}}),
                 QStringLiteral("blue: %1\nred: %2\n").arg(now, formerly));
        // Reported on the command line it is the same car.
        QCOMPARE(drivenAfter({{red, formerly}, {blue, now}}),
                 QStringLiteral("red: %1\nred: %2\n").arg(now, formerly));
    }

    void aGamesDatagramsReachTheDashboard()
    {
        QTemporaryDir folder;
        const QString document = folder.filePath(QStringLiteral("Dash.qml"));
        write(document,
              "import QtQuick 2.15\nRectangle { width: 480; height: 272; color: dash_gear === 5 && "
              "dash_fuelLevel_Percent_Available && dash_fuelLevel_Percent === 45 "
              "? '#00ff00' : '#ff0000' }\n");
        QUdpSocket free;
        QVERIFY(free.bind(QHostAddress::LocalHost));
        const quint16 port = free.localPort();
        free.close();

        QProcess process;
        const ProgramHome home;
        prepare(process, {}, home);
        process.start(QStringLiteral(GAUGE_HOST),
                      {QStringLiteral("--frames"), folder.path(), QStringLiteral("--count"),
                       QStringLiteral("25"), QStringLiteral("--dashboard"), document,
                       QStringLiteral("--telemetry"), QStringLiteral("auto"),
                       QStringLiteral("--port"), QString::number(port)});
        QUdpSocket game;
        const QByteArray datagram = Senders::dataOut();
        QVERIFY(process.waitForStarted());
        while (!process.waitForFinished(16) && process.state() != QProcess::NotRunning)
            game.writeDatagram(datagram, QHostAddress::LocalHost, port);
        const Run run{process.exitCode(), {}, QString::fromUtf8(process.readAllStandardError())};
        QVERIFY2(run.exitCode == 0, qPrintable(run.errors));
        QVERIFY(run.errors.contains(QStringLiteral("port %1").arg(port)));
        const QImage last(folder.filePath(framesIn(folder).constLast()));
        QCOMPARE(QColor(last.pixel(0, 0)).name(), QStringLiteral("#00ff00"));
    }

    void aPortInUseIsTheEndWhereNoOtherIsOpen()
    {
        QUdpSocket other;
        QVERIFY(other.bind(QHostAddress(QHostAddress::LocalHost), 0,
                           QAbstractSocket::DontShareAddress));
        const QTemporaryDir folder;
        const Run run =
            runHost({QStringLiteral("--frames"), folder.path(), QStringLiteral("--telemetry"),
                     QStringLiteral("ego"), QStringLiteral("--listen"), QStringLiteral("127.0.0.1"),
                     QStringLiteral("--port"), QString::number(other.localPort())});
        QCOMPARE(run.exitCode, 1);
        QVERIFY2(run.errors.contains(QStringLiteral("in use by another program")),
                 qPrintable(run.errors));
        QVERIFY(framesIn(folder).isEmpty());
    }
};

QTEST_GUILESS_MAIN(ProgramTest)
#include "ProgramTest.moc"
