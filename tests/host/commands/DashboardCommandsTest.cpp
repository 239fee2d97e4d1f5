#include "HostProgram.h"
#include "commands/SourceFindings.h"
#include "system/MessageThrottle.h"

#include <QtCore/QUrl>
#include <QtGui/QImage>
#include <QtTest/QtTest>

namespace {

/// A dashboard of these lines, from the third line of its document on.
QByteArray document(const QByteArray &lines)
{
    return "import QtQuick 2.15\nimport DashboardFadeInOut 1.0\n"
           "Rectangle { width: 480; height: 272; color: 'navy'\n" +
           lines + "\n}\n";
}

/// Fades in when the speed changes, as a dashboard's own message may.
constexpr const char *Fading =
    "property int speed: dash_speed_kmh; onSpeedChanged: fade.show()\n"
    "property int tick: dash_frameCounter1000; onTickChanged: fade.update()\n"
    "DashboardFadeInOut { id: fade; fadeIn: 60; duration: 60000 }\n"
    "Rectangle { width: dash_speed_kmh; height: 50; color: 'white'; opacity: fade.opacity }\n";

constexpr const char *Text = "Text { y: 60; width: 460; font.pixelSize: 21; color: 'white'\n"
                             " wrapMode: Text.WrapAnywhere; text: 'The quick brown fox jumps over"
                             " the lazy dog 0123456789 SPHINX OF BLACK QUARTZ, JUDGE MY VOW' }\n";

} // namespace

/// The commands that look at one dashboard, run as its author runs them.
class DashboardCommandsTest : public QObject
{
    Q_OBJECT

private:
    const HostProgram host;
    const QString folder = host.path("a #b"); // A URL must quote it.
    const QString dash = folder + "/Dash.qml"_q;
    const QString preview = folder + "/preview.png"_q;

private Q_SLOTS:
    void init()
    {
        QDir(folder).removeRecursively();
        writeFile(dash, document(Fading));
        writeFile(preview, "old");
    }

    void aPreviewIsTheSameBytesEachTime()
    {
        writeFile(dash, document(QByteArray(Fading) + Text));
        const Run run = host.run({"preview"_q, dash});
        QVERIFY2(run.exitCode == 0, qPrintable(run.errors));
        const QByteArray bytes = readFile(preview);
        const QImage picture = QImage::fromData(bytes);
        QCOMPARE(picture.size(), QSize(480, 272));
        QCOMPARE(picture.pixelColor(5, 5), QColor("white")); // At the end of its fade.
        QCOMPARE(picture.pixelColor(5, 260), QColor("navy"));
        const QString other = host.path("other.png");
        for (int i = 0; i < 2; ++i) {
            QCOMPARE(host.run({"preview"_q, folder, "--output"_q, other}).exitCode, 0);
            QCOMPARE(readFile(other), bytes);
        }
    }

    void theSystemsHintingDoesNotChangeTheWidthOfText()
    {
        // What a user may choose for the desktop, and what Windows does by itself.
        writeFile(host.path("fontconfig/fonts.conf"),
                  "<?xml version='1.0'?><!DOCTYPE fontconfig SYSTEM 'fonts.dtd'><fontconfig>"
                  "<include>/etc/fonts/fonts.conf</include>"
                  "<match target='pattern'><edit name='hintstyle' mode='assign'>"
                  "<const>hintfull</const></edit></match></fontconfig>");
        writeFile(dash, document("Rectangle { width: 9; height: 9\n"
                                 " color: plain.width === unrounded.width ? 'green' : 'red' }\n"
                                 "Text { id: plain; text: 'Oil pressure'; font.pixelSize: 11 }\n"
                                 "Text { id: unrounded; text: plain.text; font.pixelSize: 11\n"
                                 " font.hintingPreference: Font.PreferVerticalHinting }\n"));
        QCOMPARE(host.run({"preview"_q, dash}).exitCode, 0);
        QCOMPARE(QImage(preview).pixelColor(8, 0), QColor(Qt::darkGreen));
    }

    void aFailedPreviewLeavesTheOldOne()
    {
        const QString nowhere = host.path("none/such.png");
        const Run unwritable = host.run({"preview"_q, dash, "--output"_q, nowhere});
        QCOMPARE(unwritable.exitCode, 1);
        QVERIFY(unwritable.errors.contains(QDir::toNativeSeparators(nowhere)));
        writeFile(dash, document("x: nothing"));
        const Run broken = host.run({"preview"_q, dash});
        QCOMPARE(broken.exitCode, 1);
        QVERIFY2(broken.errors.contains("Dash.qml:4"_q), qPrintable(broken.errors));
        QCOMPARE(host.run("preview none").exitCode, 1);
        QCOMPARE(readFile(preview), QByteArray("old"));
    }

    void lintPassesWhatIsSound()
    {
        for (const QString &sound : {dash, "Road"_q}) {
            const Run run = host.run({"lint"_q, sound});
            QVERIFY2(run.exitCode == 0, qPrintable(run.output));
        }
    }

    void lintFindsWhatOnlySomeTelemetryBringsOut()
    {
        const QVector<QPair<QByteArray, QString>> circumstances{
            {"dash_paused", "(paused)"_q},
            {"dash_useMph", "(mph)"_q},
            {"dash_gear < 0", "(reverse)"_q},
            {"!dash_tyreWear_Percent_FL_Available && dash_brakeBias_Percent_Available",
             "(nothing known)"_q},
            {"dash_deltaTime_s > 99.9", "(delta at its upper end)"_q},
            {"dash_swayG > 1e35", "(infinity)"_q},
        };
        QByteArray lines;
        for (const auto &[condition, circumstance] : circumstances)
            lines += "Item { visible: " + condition + " ? missing : true }\n";
        writeFile(dash, document(lines));
        const Run run = host.run({"lint"_q, dash});
        QCOMPARE(run.exitCode, 1);
        for (int i = 0; i < circumstances.size(); ++i) {
            const QString place = QStringLiteral("Dash.qml:%1: ").arg(4 + i);
            const QRegularExpression finding(
                "^"_q + place + ".*"_q + QRegularExpression::escape(circumstances[i].second),
                QRegularExpression::MultilineOption);
            QVERIFY2(run.output.contains(finding), qPrintable(run.output));
        }
    }

    void whatAScriptLogsIsShownWithItsPlaceAndNotTooOften()
    {
        writeFile(dash, document("property int tick: dash_frameCounter1000; onTickChanged: {"
                                 " console.log('hello', 7); console.warn(tick);"
                                 " if (tick === 2) console.log('x'.repeat(20000));"
                                 " console.assert(false, 'claim') }"));
        for (const QStringList &arguments :
             {QStringList{"lint"_q}, QStringList{"--frames"_q, host.path("frames"), "--count"_q,
                                                 "30"_q, "--dashboard"_q}}) {
            const Run run = host.run(arguments + QStringList{dash});
            QVERIFY2(run.exitCode == 0, qPrintable(run.output + run.errors));
            const QString place = QUrl::fromLocalFile(dash).toString() + ":4: "_q;
            for (const char *logged : {"hello 7\n", "2\n", "claim\n"}) {
                QVERIFY2(run.errors.contains(place + QLatin1String(logged)),
                         qPrintable(run.errors));
            }
            QVERIFY(run.errors.size() < 20'000);
            QVERIFY(run.errors.count(place) <= MessageThrottle::TextsPerWindow);
        }
    }

    void lintReadsTheSources_data()
    {
        QTest::addColumn<QByteArray>("body");
        QTest::addColumn<QString>("finding"); // Empty: nothing is wrong.
        const auto row = [](const char *body, const char *finding) {
            QTest::newRow(body) << QByteArray(body) << finding;
        };
        row("height: 270", "The root's height is 270, not 272.");
        row("Item { height: 3 }", "The root has no height");
        row("height: 272; Item { width: 3 }", "");
        row("height: 272; Timer { }", "Timer ");
        row("height: 272; Behavior on x { }", "Behavior ");
        row("height: 272; NumberAnimation { }", "NumberAnimation ");
        row("height: 272; // Timer { }\n /* dash_none\n */", "");
        row("height: 272; property int gear: dash_geer", "dash_geer ");
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
        QFETCH(QByteArray, body);
        QFETCH(QString, finding);
        writeFile(dash, "import QtQuick 2.15\nItem {\nwidth: 480; " + body + "\n}\n");
        QString found;
        for (const Finding &one : findingsInSources(dash, {"dash_gear"_q}))
            found += one.text + "\n"_q;
        QVERIFY2(finding.isEmpty() ? found.isEmpty() : found.contains(finding), qPrintable(found));
    }
};

QTEST_MAIN(DashboardCommandsTest)
#include "DashboardCommandsTest.moc"
