#include "PictureComparison.h"
#include "Stage.h"
#include "TextFaults.h"
#include "commands/SourceTokens.h"
#include "render/DashboardFadeInOut.h"
#include "telemetry/demo/DemoLap.h"

#include <QtCore/QDirIterator>
#include <QtCore/QRegularExpression>
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

QSet<QString> namesOf(const QString &dashboard)
{
    return namesIn(builtDashboards().filePath(dashboard));
}

/// All names that are published, with their values in a state.
QVariantMap published(const TelemetryState &state)
{
    QVariantMap values;
    TelemetryPublisher publisher(
        [&values](const QString &name, const QVariant &value) { values[name] = value; });
    const TelemetrySample &sample = state.sample;
    publisher.publish({sample.vehicle, sample.limits, sample.extended, {}, {}});
    return values;
}

/// Whether a dashboard that reads these names must look otherwise than usual: in each mode, under
/// each flag, and when a value that it reads is unknown.
bool mustShow(const TelemetryState &state, const QSet<QString> &read)
{
    static const QRegularExpression modes(QStringLiteral("^(paused|markers|mph|.* flag)$"));
    const QVariantMap values = published(state);
    return modes.match(state.name).hasMatch() ||
           std::any_of(read.begin(), read.end(), [&values](const QString &name) {
               return !values.value(name + QStringLiteral("_Available"), true).toBool();
           });
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

bool isFlat(const QImage &image)
{
    QImage flat(image.size(), image.format());
    flat.fill(image.pixelColor(0, 0));
    return flat == image;
}

QImage pictureOf(Stage &stage, const TelemetryState &state)
{
    stage.publish(state);
    return stage.picture();
}

} // namespace

class ShippedDashboardsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        DashboardFadeInOut::registerType();
        QVERIFY(!dashboardNames().isEmpty());
    }

    void aDashboardTakesAnyTelemetry_data() { everyDashboard(); }

    /// Without a warning, with its text in place, and it shows what is unknown, and each mode.
    void aDashboardTakesAnyTelemetry()
    {
        QFETCH(QString, dashboard);
        const QSet<QString> read = namesOf(dashboard);
        const std::vector<TelemetryState> states = telemetryStates();
        const TelemetryState &usual = states.front();
        QStringList faults;
        auto stage = std::make_unique<Stage>(dashboard);
        const QImage plain = pictureOf(*stage, usual);
        QVERIFY(!plain.isNull());
        for (const TelemetryState &state : states) {
            const int before = stage->repaints();
            const QImage image = pictureOf(*stage, state);
            const int repaints = stage->repaints();
            QStringList found = stage->errors() + textFaults(stage->root());
            const auto check = [&found](bool isRight, const char *fault) {
                if (!isRight)
                    found += QLatin1String(fault);
            };
            check(!image.isNull() && !isFlat(image), "There is no picture.");
            const bool changes = differ(image, plain);
            check(changes || !mustShow(state, read), "It doesn't show.");
            check(!changes || repaints > before, "It shows without a repaint.");
            if (state.name == usual.name || state.sample.paused) {
                stage->publish(state);
                check(stage->repaints() == repaints, "It is repainted without a change.");
            }
            stage->publishOnce(state);
            found += textFaults(stage->root()); // In the other phase of what blinks.
            for (const QString &fault : found)
                faults += state.name + QStringLiteral(": ") + fault;

            stage->publishOnce(usual);
            // What remembers a state is loaded anew, so that the next picture tells of its own.
            if (differ(pictureOf(*stage, usual), plain) || !found.isEmpty()) {
                stage = std::make_unique<Stage>(dashboard);
                QVERIFY(!differ(pictureOf(*stage, usual), plain));
            }
        }
        QVERIFY2(faults.isEmpty(), faults.join(QLatin1Char('\n')).toUtf8());
    }

    void textStaysInItsPlaceAllAlongTheDemo_data() { everyDashboard(); }

    void textStaysInItsPlaceAllAlongTheDemo()
    {
        QFETCH(QString, dashboard);
        const DemoLap demo(64);
        Stage stage(dashboard);
        // The start and two laps, and later a lap with a stop in the pits.
        for (double moment = 0; moment < 600; moment += moment < 150 || moment > 500 ? 1 : 350) {
            stage.publishOnce({{}, demo.sampleAt(moment)});
            const QStringList faults = stage.errors() + textFaults(stage.root());
            QVERIFY2(faults.isEmpty(),
                     QByteArray::number(moment) + " s: " + faults.join(QLatin1Char('\n')).toUtf8());
        }
    }

    void aDeltaIsShownAgainstABestLapOnly_data() { everyDashboard(); }

    void aDeltaIsShownAgainstABestLapOnly()
    {
        QFETCH(QString, dashboard);
        const auto deltaTells = [&dashboard](TelemetryState state) {
            Stage stage(dashboard);
            state.sample.vehicle.deltaTimeS = 0;
            const QImage level = pictureOf(stage, state);
            state.sample.vehicle.deltaTimeS = 1.5F;
            return differ(pictureOf(stage, state), level);
        };
        TelemetryState state = previewState();
        const QSet<QString> names = namesOf(dashboard);
        QCOMPARE(deltaTells(state), names.contains(QStringLiteral("dash_deltaTime_s")) ||
                                        names.contains(QStringLiteral("dash_deltaTime_str")));
        state.sample.vehicle.bestTimeMs = 0;
        QVERIFY(!deltaTells(state));
        state = previewState();
        state.sample.vehicle.availabilityMask &= ~Available::BestTime;
        QVERIFY(!deltaTells(state));
    }

    void aPreviewShowsTheDashboardAsItIs_data() { everyDashboard(); }

    void aPreviewShowsTheDashboardAsItIs()
    {
        QFETCH(QString, dashboard);
        const QImage preview(
            builtDashboards().filePath(dashboard + QStringLiteral("/preview.png")));
        QCOMPARE(preview.size(), DashboardSize);
        Stage stage(dashboard);
        QVERIFY2(showTheSame(preview.convertToFormat(QImage::Format_RGB32),
                             pictureOf(stage, previewState())),
                 "It is out of date: draw it anew with 'gauge-host preview'.");
    }

    void telemetryIsReadByDocumentsAndNotByParts()
    {
        QCOMPARE(namesIn(QStringLiteral(PARTS_DIRECTORY)), QSet<QString>());
        // A name that no dashboard shows is one that nobody sees working.
        const QStringList names = published(previewState()).keys();
        QSet<QString> unused(names.begin(), names.end());
        for (const QString &dashboard : dashboardNames())
            unused -= namesOf(dashboard);
        QCOMPARE(unused, QSet<QString>());
    }
};

QTEST_MAIN(ShippedDashboardsTest)
#include "ShippedDashboardsTest.moc"
