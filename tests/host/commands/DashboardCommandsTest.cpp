#include "ProgramHome.h"
#include "commands/SourceFindings.h"
#include "system/MessageThrottle.h"

#include <QtCore/QDir>
#include <QtCore/QUrl>
#include <QtGui/QImage>
#include <QtTest/QtTest>

namespace {

struct Run
{
    int exitCode = -1;
    QString output;
    QString errors;
};

/// A user's home, and a dashboard in a folder of its own.
class Author
{
public:
    Author() { write(QStringLiteral("Dash.qml"), Sound); }

    void write(const QString &name, const QByteArray &content) const
    {
        const QString path = folder() + QLatin1Char('/') + name;
        QVERIFY(QFileInfo(path).dir().mkpath(QStringLiteral(".")));
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        QCOMPARE(file.write(content), content.size());
    }

    QByteArray read(const QString &name) const
    {
        QFile file(folder() + QLatin1Char('/') + name);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    QString folder() const { return home.filePath(QStringLiteral("Mine")); }
    QString document() const { return folder() + QStringLiteral("/Dash.qml"); }

    Run run(const QStringList &arguments) const
    {
        QProcess process;
        process.setProcessEnvironment(home.environment());
        process.start(QStringLiteral(GAUGE_HOST), arguments);
        constexpr int LongestRunMs = 120'000;
        if (!process.waitForFinished(LongestRunMs) || process.exitStatus() != QProcess::NormalExit)
            return {};
        return {process.exitCode(), QString::fromUtf8(process.readAllStandardOutput()),
                QString::fromUtf8(process.readAllStandardError().replace("\r\n", "\n"))};
    }

    /// Fades in when the speed changes, as a dashboard's own message may.
    static constexpr const char *Sound =
        "import QtQuick 2.15\nimport DashboardFadeInOut 1.0\n"
        "Rectangle {\n width: 480; height: 272; color: 'navy'\n"
        " property int speed: dash_speed_kmh\n onSpeedChanged: fade.show()\n"
        " property int tick: dash_frameCounter1000\n onTickChanged: fade.update()\n"
        " DashboardFadeInOut { id: fade; fadeIn: 60; duration: 60000 }\n"
        " Rectangle { width: dash_speed_kmh; height: 50; color: 'white'; opacity: fade.opacity }\n"
        "}\n";

private:
    ProgramHome home;
};

} // namespace

class DashboardCommandsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aPreviewIsTheSameBytesEachTime()
    {
        const Author author;
        const Run first = author.run({QStringLiteral("preview"), author.document()});
        QVERIFY2(first.exitCode == 0, qPrintable(first.errors));
        const QByteArray bytes = author.read(QStringLiteral("preview.png"));
        const QImage picture = QImage::fromData(bytes);
        QCOMPARE(picture.size(), QSize(480, 272));
        QCOMPARE(picture.pixel(5, 5), qRgb(255, 255, 255)); // At the end of its fade.
        QCOMPARE(picture.pixel(5, 200), QColor("navy").rgb());

        const QString other = author.folder() + QStringLiteral("/other.png");
        QCOMPARE(author
                     .run({QStringLiteral("preview"), author.folder(), QStringLiteral("--output"),
                           other})
                     .exitCode,
                 0);
        QCOMPARE(author.read(QStringLiteral("other.png")), bytes);
    }

    void aPreviewWithTextIsTheSameBytesEachTime()
    {
        const Author author;
        author.write(QStringLiteral("Dash.qml"),
                     "import QtQuick 2.15\n"
                     "Rectangle { width: 480; height: 272\n Text { width: 460; font.pixelSize: 21;"
                     " wrapMode: Text.WrapAnywhere; text: 'The quick brown fox jumps over"
                     " the lazy dog 0123456789 SPHINX OF BLACK QUARTZ, JUDGE MY VOW' } }\n");
        QByteArray bytes;
        for (int i = 0; i < 3; ++i) {
            QCOMPARE(author.run({QStringLiteral("preview"), author.document()}).exitCode, 0);
            if (i > 0)
                QCOMPARE(author.read(QStringLiteral("preview.png")), bytes);
            bytes = author.read(QStringLiteral("preview.png"));
        }
        QVERIFY(!bytes.isEmpty());
    }

    void theSystemsHintingDoesNotChangeTheWidthOfText()
    {
        const Author author;
        // What a user may choose for the desktop, and what Windows does by itself.
        author.write(QStringLiteral("../fontconfig/fonts.conf"),
                     "<?xml version='1.0'?><!DOCTYPE fontconfig SYSTEM 'fonts.dtd'><fontconfig>"
                     "<include>/etc/fonts/fonts.conf</include>"
                     "<match target='pattern'><edit name='hintstyle' mode='assign'>"
                     "<const>hintfull</const></edit></match></fontconfig>");
        author.write(
            QStringLiteral("Dash.qml"),
            "import QtQuick 2.15\n"
            "Rectangle { width: 480; height: 272\n"
            " color: plain.implicitWidth === unrounded.implicitWidth ? 'green' : 'red'\n"
            " Text { id: plain; visible: false; text: 'Oil pressure'; font.pixelSize: 11 }\n"
            " Text { id: unrounded; visible: false; text: plain.text\n"
            "  font.pixelSize: 11; font.hintingPreference: Font.PreferVerticalHinting } }\n");
        QCOMPARE(author.run({QStringLiteral("preview"), author.document()}).exitCode, 0);
        const QImage image = QImage::fromData(author.read(QStringLiteral("preview.png")));
        QCOMPARE(image.pixelColor(1, 1), QColor(Qt::darkGreen));
    }

    void aFailedPreviewLeavesTheOldOne()
    {
        const Author author;
        author.write(QStringLiteral("preview.png"), "old");
        author.write(QStringLiteral("Dash.qml"), "import QtQuick 2.15\nItem { width: nothing }\n");
        const Run broken = author.run({QStringLiteral("preview"), author.document()});
        QCOMPARE(broken.exitCode, 1);
        QVERIFY(broken.errors.contains(QStringLiteral("Dash.qml:2")));
        QCOMPARE(author.run({QStringLiteral("preview"), QStringLiteral("none such")}).exitCode, 1);
        QCOMPARE(author.read(QStringLiteral("preview.png")), QByteArray("old"));

        author.write(QStringLiteral("Dash.qml"), Author::Sound);
        const QString nowhere = author.folder() + QStringLiteral("/none/such.png");
        const Run unwritable = author.run(
            {QStringLiteral("preview"), author.document(), QStringLiteral("--output"), nowhere});
        QCOMPARE(unwritable.exitCode, 1);
        QVERIFY(unwritable.errors.contains(QDir::toNativeSeparators(nowhere)));
    }

    void lintPassesWhatIsSound()
    {
        const Author author;
        author.write(QStringLiteral("preview.png"), "there");
        const Run sound = author.run({QStringLiteral("lint"), author.document()});
        QVERIFY2(sound.exitCode == 0, qPrintable(sound.output));
        for (const char *name : {"Road", "Template"}) {
            const Run shipped = author.run({QStringLiteral("lint"), QLatin1String(name)});
            QVERIFY2(shipped.exitCode == 0, qPrintable(shipped.output));
        }
    }

    void lintFindsWhatOnlySomeTelemetryBringsOut_data()
    {
        QTest::addColumn<QByteArray>("condition");
        QTest::addColumn<QString>("circumstance");
        const auto row = [](const char *condition, const char *circumstance) {
            QTest::newRow(circumstance) << QByteArray(condition) << circumstance;
        };
        row("dash_paused", "paused");
        row("dash_useMph", "mph");
        row("dash_gear < 0", "reverse");
        row("!dash_tyreWear_Percent_FL_Available && dash_brakeBias_Percent_Available",
            "nothing known");
        row("dash_rpmPercent > 1.1", "rpm above the limit");
        row("dash_completedLaps === 100", "lap 100 of 999");
        row("dash_deltaTime_s > 99.9", "delta at its upper end");
        row("dash_swayG > 1e35", "infinity");
        row("dash_gear_str === 'D'", "every flag and lamp");
    }

    void lintFindsWhatOnlySomeTelemetryBringsOut()
    {
        QFETCH(QByteArray, condition);
        QFETCH(QString, circumstance);
        const Author author;
        author.write(QStringLiteral("preview.png"), "there");
        author.write(QStringLiteral("Dash.qml"),
                     "import QtQuick 2.15\nRectangle { width: 480; height: 272\n visible: " +
                         condition + " ? missing : true\n}\n");
        const Run run = author.run({QStringLiteral("lint"), author.document()});
        QCOMPARE(run.exitCode, 1);
        QVERIFY2(run.output.contains(QStringLiteral("Dash.qml:3: ")), qPrintable(run.output));
        QVERIFY2(run.output.contains(QLatin1Char('(') + circumstance), qPrintable(run.output));
    }

    void whatAScriptLogsIsShownWithItsPlace_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::newRow("preview") << QStringList{QStringLiteral("preview")};
        QTest::newRow("lint") << QStringList{QStringLiteral("lint")};
        QTest::newRow("frames") << QStringList{QStringLiteral("--count"), QStringLiteral("30"),
                                               QStringLiteral("--dashboard")};
    }

    /// Also in a folder whose name a URL must quote; and in every frame, which is too often.
    void whatAScriptLogsIsShownWithItsPlace()
    {
        QFETCH(QStringList, arguments);
        const Author author;
        author.write(QStringLiteral("a #b/preview.png"), "there");
        author.write(QStringLiteral("a #b/Dash.qml"),
                     "import QtQuick 2.15\nRectangle { width: 480; height: 272\n"
                     " property int tick: dash_frameCounter1000\n"
                     " onTickChanged: { console.log('hello', 7); console.warn(tick);"
                     " if (tick === 2) console.log('x'.repeat(20000));"
                     " console.assert(false, 'claim') }\n}\n");
        const QString document = author.folder() + QStringLiteral("/a #b/Dash.qml");
        arguments += document;
        if (arguments.size() > 2)
            arguments += {QStringLiteral("--frames"), author.folder()};
        const Run run = author.run(arguments);
        QVERIFY2(run.exitCode == 0, qPrintable(run.output + run.errors));
        const QString place = QUrl::fromLocalFile(document).toString() + QStringLiteral(":4: ");
        QVERIFY2(run.errors.contains(place + QStringLiteral("hello 7\n")), qPrintable(run.errors));
        QVERIFY2(run.errors.contains(place + QStringLiteral("2\n")), qPrintable(run.errors));
        QVERIFY2(run.errors.contains(place + QStringLiteral("claim\n")), qPrintable(run.errors));
        QVERIFY2(run.errors.size() < 20'000, qPrintable(run.errors.left(1000)));
        QVERIFY2(run.errors.count(place) <= MessageThrottle::TextsPerWindow,
                 qPrintable(run.errors));
    }

    void lintReadsTheSources_data()
    {
        QTest::addColumn<QByteArray>("body");
        QTest::addColumn<QString>("finding"); // Empty: nothing is wrong.
        const auto row = [](const char *body, const char *finding) {
            QTest::newRow(body) << QByteArray(body) << finding;
        };
        row("width: 480; height: 270", "The root's height is 270 and not 272.");
        row("width: 480", "The root has no height");
        row("width: 480; height: 272; Item { width: 3 }", "");
        row("width: 480; height: 272; Timer { }", "Timer moves");
        row("width: 480; height: 272; Behavior on x { }", "Behavior moves");
        row("width: 480; height: 272; NumberAnimation { }", "NumberAnimation moves");
        row("width: 480; height: 272; // Timer { }\n /* dash_none\n */", "");
        row("width: 480; height: 272; property int gear: dash_geer", "dash_geer is not published");
        row("width: 480; height: 272; property string s: 'dash_geer'", "");
        row("width: 480; height: 272; property string s: a.replace(/\"'/, '') + dash_geer",
            "dash_geer is not published");
        row("width: 480; height: 272; Image { source: 'none.png' }", "'none.png' is missing.");
        row("width: 480; height: 272; Image { source: 'there.png' }", "");
        row("width: 480; height: 272; Image { source: '../there.png' }", "lies outside");
        row("width: 480; height: 272; Image { source: 'file:///there.png' }", "lies outside");
        row("width: 480; height: 272; property string s: root + '.png'", "");
        row("width: 480; height: 272; Text { font.family: 'Arial' }", "'Arial' doesn't lie");
        row("width: 480; height: 272; Text { }", "no font lies in the folder");
    }

    void lintReadsTheSources()
    {
        QFETCH(QByteArray, body);
        QFETCH(QString, finding);
        const Author author;
        author.write(QStringLiteral("preview.png"), "there");
        author.write(QStringLiteral("there.png"), "there");
        author.write(QStringLiteral("Dash.qml"), "import QtQuick 2.15\nItem {\n" + body + "\n}\n");
        QString found;
        for (const Finding &one :
             findingsInSources(author.document(), {QStringLiteral("dash_gear")}))
            found += one.text + QLatin1Char('\n');
        QVERIFY2(finding.isEmpty() ? found.isEmpty() : found.contains(finding), qPrintable(found));
    }

    void aSourceMayBeAnything()
    {
        for (const char *source :
             {"", "\"", "'\\", "/*", "//", "/", "`\n\n", "{{{{", "}", "\\", "1."}) {
            const Author author;
            author.write(QStringLiteral("Dash.qml"), source);
            QVERIFY(!findingsInSources(author.document(), {}).empty());
        }
    }
};

QTEST_MAIN(DashboardCommandsTest)
#include "DashboardCommandsTest.moc"
