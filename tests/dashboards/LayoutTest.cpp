#include "Stage.h"
#include "TextFaults.h"
#include "render/DashboardFadeInOut.h"
#include "telemetry/demo/DemoLap.h"

#include <QtCore/QTemporaryDir>
#include <QtTest/QtTest>

namespace {

constexpr quint32 DemoSeed = 64;

/// A document that lives as long as the object.
class Document
{
public:
    explicit Document(const QByteArray &body)
    {
        QFile file(path());
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("import QtQuick 2.15\nRectangle { width: 480; height: 272; color: 'black'\n" +
                   body + "\n}\n");
    }

    QString path() const { return folder.filePath(QStringLiteral("Dash.qml")); }

private:
    QTemporaryDir folder;
};

QByteArray listed(const QStringList &faults)
{
    return faults.join(QLatin1Char('\n')).toUtf8();
}

} // namespace

class LayoutTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        DashboardFadeInOut::registerType();
        useOneFont();
    }

    void textStaysInItsPlaceAllAlongTheDemo_data() { everyDashboard(); }

    void textStaysInItsPlaceAllAlongTheDemo()
    {
        QFETCH(QString, dashboard);
        DemoLap lap(DemoSeed);
        Stage stage(dashboard);
        QVERIFY2(stage.isLoaded(), listed(stage.errors()));
        // The start and two laps, and later a lap with a stop in the pits.
        constexpr int Samples = 576;
        constexpr double Step = 0.52; // s
        for (int i = 0; i < Samples; ++i) {
            const double moment = i < Samples / 2 ? i * Step : 360 + i * Step;
            stage.publishOnce({{}, lap.sampleAt(moment)});
            const QStringList faults = textFaults(stage.root());
            QVERIFY2(faults.isEmpty(), QByteArray::number(moment) + " s: " + listed(faults));
            QVERIFY2(stage.errors().isEmpty(), listed(stage.errors()));
        }
    }

    void whatStaysTheSameIsNotRepainted_data() { everyDashboard(); }

    void whatStaysTheSameIsNotRepainted()
    {
        QFETCH(QString, dashboard);
        Stage stage(dashboard);
        TelemetryState state = previewState();
        for (ExtendedTelemetry::Wheel &wheel : state.sample.extended.wheels)
            wheel = {}; // What slips blinks, and so does change.
        for (const bool paused : {false, true}) {
            state.sample.paused = paused;
            stage.publish(state);
            QVERIFY(!stage.picture().isNull());
            const int before = stage.repaints();
            stage.publish(state);
            QCOMPARE(stage.repaints() - before, 0);
        }
        // Of two counts that differ one is no zero by chance.
        state.sample.paused = false;
        state.sample.vehicle.gear = 1;
        const int before = stage.repaints();
        stage.publish(state);
        QVERIFY(stage.repaints() > before);
    }

    void faultsOfTextAreFound_data()
    {
        QTest::addColumn<QByteArray>("body");
        QTest::addColumn<QString>("fault"); // Empty: there is none.
        const auto row = [](const char *name, const char *body, const char *fault) {
            QTest::newRow(name) << QByteArray(body) << fault;
        };
        row("apart", "Text { text: 'one' }\nText { y: 40; text: 'two' }", "");
        row("one on the other", "Text { text: 'one' }\nText { x: 5; text: 'two' }",
            "lies on 'two'");
        row("line boxes touch, ink doesn't",
            "Text { text: 'xx'; font.pixelSize: 20 }\nText { y: 14; text: 'xx'; font.pixelSize: 20 "
            "}",
            "");
        row("hidden", "Text { text: 'one' }\nText { visible: false; text: 'two' }", "");
        row("transparent", "Text { text: 'one' }\nText { opacity: 0; text: 'two' }", "");
        row("covered",
            "Text { text: 'one' }\nRectangle { width: 99; height: 99; color: 'red' }\n"
            "Text { text: 'two' }",
            "");
        row("veiled only",
            "Text { text: 'one' }\nRectangle { width: 99; height: 99; color: '#80ff0000' }\n"
            "Text { text: 'two' }",
            "lies on");
        row("covered by an earlier one of higher z",
            "Rectangle { z: 1; width: 99; height: 99 }\nText { text: 'one' }\nText { text: 'two' }",
            "");
        row("cut", "Text { x: 10; text: 'long text' }\nRectangle { width: 30; height: 99 }",
            "is cut");
        row("under a needle",
            "Text { text: 'text' }\nRectangle { width: 90; height: 9; rotation: 20 }", "");
        row("out at the right", "Text { x: 470; text: 'long' }", "sticks out");
        row("out at the top, centred",
            "Text { y: -9; width: 480; horizontalAlignment: Text.AlignHCenter; text: 'X' }",
            "sticks out");
        row("too wide for its box", "Text { x: 50; width: 10; text: 'wide' }", "larger");
        row("made to fit",
            "Text { width: 20; text: '123456'; fontSizeMode: Text.HorizontalFit; "
            "minimumPixelSize: 4; font.pixelSize: 30 }",
            "");
        row("right-aligned",
            "Text { x: 380; width: 100; text: 'end'; horizontalAlignment: "
            "Text.AlignRight }",
            "");
    }

    void faultsOfTextAreFound()
    {
        QFETCH(QByteArray, body);
        QFETCH(QString, fault);
        const Document document(body);
        Stage stage(document.path());
        QVERIFY2(stage.isLoaded(), listed(stage.errors()));
        stage.publishOnce(previewState());
        const QStringList faults = textFaults(stage.root());
        if (fault.isEmpty())
            QVERIFY2(faults.isEmpty(), listed(faults));
        else
            QVERIFY2(faults.join(QLatin1Char(' ')).contains(fault), listed(faults));
    }
};

QTEST_MAIN(LayoutTest)
#include "LayoutTest.moc"
