#include "PictureComparison.h"
#include "Stage.h"
#include "TextFaults.h"
#include "commands/SourceTokens.h"
#include "render/DashboardFadeInOut.h"
#include "telemetry/demo/DemoLap.h"

#include <QtCore/QDirIterator>
#include <QtGui/QFontDatabase>
#include <QtGui/QGuiApplication>
#include <QtQml/QQmlComponent>
#include <QtQml/QQmlEngine>
#include <QtQuick/QQuickItem>
#include <QtTest/QtTest>

#include <algorithm>
#include <cstdlib>
#include <memory>

namespace {

/// The names that the documents of a folder read.
QSet<QString> namesIn(const QString &folder)
{
    QSet<QString> names;
    QDirIterator files(folder, {QStringLiteral("*.qml"), QStringLiteral("*.js")}, QDir::Files,
                       QDirIterator::Subdirectories);
    while (files.hasNext()) {
        QFile file(files.next());
        if (!file.open(QIODevice::ReadOnly))
            qFatal("%s: %s", qPrintable(file.fileName()), qPrintable(file.errorString()));
        for (const SourceToken &token : sourceTokens(QString::fromUtf8(file.readAll()))) {
            if (token.text.startsWith(QLatin1String("dash_")))
                names.insert(token.text);
        }
    }
    return names;
}

/// Whether a dashboard that reads these names must look otherwise than usual: in each mode, under
/// each flag, and when a value that it reads is unknown.
bool mustShow(const TelemetryState &state, const QSet<QString> &read)
{
    static const QRegularExpression modes(QStringLiteral("^(paused|markers|mph|.* flag)$"));
    bool must = modes.match(state.name).hasMatch();
    TelemetryPublisher publisher([&](const QString &name, const QVariant &value) {
        const int stem = name.lastIndexOf(QLatin1String("_Available"));
        must = must || (stem > 0 && !value.toBool() && read.contains(name.left(stem)));
    });
    publisher.publish({state.sample.vehicle, {}, {}, {}, {}});
    return must;
}

/// Whether an eye could tell the two apart. Text differs by a shade with the place of its glyphs in
/// their texture.
bool differ(const QImage &one, const QImage &other)
{
    constexpr int Shade = 16;
    return !std::equal(one.constBits(), one.constBits() + one.sizeInBytes(), other.constBits(),
                       other.constBits() + other.sizeInBytes(),
                       [](int a, int b) { return std::abs(a - b) <= Shade; });
}

QImage pictureOf(Stage &stage, const TelemetryState &state)
{
    stage.publish(state);
    return stage.picture();
}

bool showsDelta(const QString &dashboard, TelemetryState state)
{
    Stage stage(dashboard);
    state.sample.vehicle.deltaTimeS = 0;
    const QImage level = pictureOf(stage, state);
    state.sample.vehicle.deltaTimeS = 1.5F;
    return differ(pictureOf(stage, state), level);
}

QStringList faultsUnder(const TelemetryState &state, Stage &stage, const QImage &usual, bool shows)
{
    QStringList faults;
    const auto check = [&faults](bool isRight, const char *fault) {
        if (!isRight)
            faults += QLatin1String(fault);
    };
    const int before = stage.repaints();
    const QImage image = pictureOf(stage, state);
    const int repaints = stage.repaints();
    const QImage flat = image.copy(0, 0, 1, 1).scaled(image.size());
    const bool changes = differ(image, usual);
    check(!image.isNull() && image != flat, "There is no picture.");
    check(changes || !shows, "It doesn't show.");
    check(!changes || repaints > before, "It shows without a repaint.");
    faults += stage.errors() + textFaults(stage.root());
    if (state.name == QLatin1String("everything known") || state.sample.paused) {
        stage.publish(state);
        check(stage.repaints() == repaints, "It is repainted without a change.");
    }
    stage.publishOnce(state);
    return faults + textFaults(stage.root()); // In the other phase of what blinks.
}

} // namespace

class ShippedDashboardsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        DashboardFadeInOut::registerType();
        // Text is as large on every system.
        const int id = QFontDatabase::addApplicationFont(
            QStringLiteral(PARTS_DIRECTORY "/fonts/RobotoCondensed-Regular.ttf"));
        QFont font(QFontDatabase::applicationFontFamilies(id).value(0));
        font.setPixelSize(13);
        QGuiApplication::setFont(font);
    }

    void aDashboardTakesAnyTelemetry_data() { everyDashboard(); }

    /// Without a warning, with its text in place, and it shows what is unknown, and each mode.
    void aDashboardTakesAnyTelemetry()
    {
        QFETCH(QString, dashboard);
        const QSet<QString> read = namesIn(folderOf(dashboard));
        const std::vector<TelemetryState> states = telemetryStates();
        auto stage = std::make_unique<Stage>(dashboard);
        const QImage usual = pictureOf(*stage, states.front());
        QVERIFY(!usual.isNull());
        const bool readsDelta = read.contains(QStringLiteral("dash_deltaTime_s")) ||
                                read.contains(QStringLiteral("dash_deltaTime_str"));
        QCOMPARE(showsDelta(dashboard, states.front()), readsDelta);
        QStringList faults;
        for (const TelemetryState &state : states) {
            const QStringList found = faultsUnder(state, *stage, usual, mustShow(state, read));
            for (const QString &fault : found)
                faults += state.name + QStringLiteral(": ") + fault;
            // A delta is one to the best lap.
            const VehicleTelemetry &vehicle = state.sample.vehicle;
            if (vehicle.bestTimeMs == 0 || (vehicle.availabilityMask & Available::BestTime) == 0)
                QVERIFY(!showsDelta(dashboard, state));
            stage->publishOnce(states.front());
            // What remembers a state is loaded anew, so that the next picture tells of its own.
            if (differ(pictureOf(*stage, states.front()), usual) || !found.isEmpty()) {
                stage = std::make_unique<Stage>(dashboard);
                QVERIFY(!differ(pictureOf(*stage, states.front()), usual));
            }
        }
        // The start and two laps of the demo, and later a lap with a stop in the pits.
        const DemoLap demo(64);
        for (int moment = 0; moment < 600; moment += moment < 150 || moment >= 500 ? 1 : 350) {
            stage->publishOnce({{}, demo.sampleAt(moment)});
            const QStringList found = stage->errors() + textFaults(stage->root());
            for (const QString &fault : found)
                faults += QStringLiteral("%1 s: %2").arg(moment).arg(fault);
        }
        const QImage preview(folderOf(dashboard) + QStringLiteral("/preview.png"));
        if (!showTheSame(preview.convertToFormat(QImage::Format_RGB32), usual))
            faults += QStringLiteral("preview.png is out of date: use 'gauge-host preview'.");
        QVERIFY2(faults.isEmpty(), faults.join(QLatin1Char('\n')).toUtf8());
    }

    void telemetryIsReadByDocumentsAndNotByParts()
    {
        QCOMPARE(namesIn(QStringLiteral(PARTS_DIRECTORY)), QSet<QString>());
        // A name that no dashboard shows is one that nobody sees working.
        QSet<QString> unused;
        TelemetryPublisher publisher(
            [&unused](const QString &name, const QVariant &) { unused.insert(name); });
        publisher.publish({{}, {}, {}, {}, {}});
        const QStringList dashboards = dashboardNames();
        for (const QString &dashboard : dashboards)
            unused -= namesIn(folderOf(dashboard));
        QCOMPARE(unused, QSet<QString>());
    }

    void faultsOfTextAreFound_data()
    {
        QTest::addColumn<QByteArray>("body");
        QTest::addColumn<QString>("fault"); // Empty: there is none.
        const auto row = [](const char *fault, const QByteArray &body) {
            QTest::newRow(body) << body << QString::fromLatin1(fault);
        };
        const QByteArray one("Text { text: 'one' } ");
        const QByteArray two("Text { text: 'our' } ");
        row("lies on 'our'", one + two);
        row("", one + "Text { y: 40; text: 'our' }");
        row("", one + "Text { y: 9; text: 'one' }"); // Line boxes touch, ink doesn't.
        row("", one + "Text { visible: false; text: 'our' } Text { opacity: 0; text: 'our' }");
        row("", one + "Rectangle { width: 99; height: 99; color: 'red' }" + two);
        row("lies on", one + "Rectangle { width: 99; height: 99; color: '#80ff0000' }" + two);
        row("", "Rectangle { z: 1; width: 99; height: 99 }" + one + two);
        row("is cut", "Text { x: 10; text: 'long text' } Rectangle { width: 30; height: 99 }");
        row("", "Text { text: 'one' } Rectangle { width: 90; height: 9; rotation: 20 }");
        row("sticks out", "Text { x: 470; text: 'long' }");
        row("sticks out",
            "Text { y: -9; width: 480; horizontalAlignment: Text.AlignHCenter; text: 'X' }");
        row("larger", "Text { x: 50; width: 10; text: 'wide' }");
        row("", "Text { width: 20; text: '123456'; fontSizeMode: Text.HorizontalFit;"
                "minimumPixelSize: 4; font.pixelSize: 30 }");
        row("", "Text { x: 380; width: 100; text: 'end'; horizontalAlignment: Text.AlignRight }");
    }

    void faultsOfTextAreFound()
    {
        QFETCH(QByteArray, body);
        QFETCH(QString, fault);
        QQmlEngine engine;
        QQmlComponent component(&engine);
        component.setData("import QtQuick 2.15\nRectangle { width: 480; height: 272; " + body + "}",
                          QUrl());
        const std::unique_ptr<QObject> document(component.create());
        QVERIFY2(document != nullptr, component.errorString().toUtf8());
        const QString faults =
            textFaults(*qobject_cast<QQuickItem *>(document.get())).join(QLatin1Char('\n'));
        QVERIFY2(fault.isEmpty() ? faults.isEmpty() : faults.contains(fault), faults.toUtf8());
    }
};

QTEST_MAIN(ShippedDashboardsTest)
#include "ShippedDashboardsTest.moc"
