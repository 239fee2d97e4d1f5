#include "PictureComparison.h"
#include "Stage.h"
#include "render/DashboardFadeInOut.h"

#include <QtTest/QtTest>

#include <utility>

namespace {

QImage render(const QString &dashboard, const TelemetryState &state)
{
    constexpr int Scale =
        2; // Large enough to tell the smallest digits apart, small enough to keep.
    Stage stage(dashboard);
    stage.publish(state);
    return stage.errors().isEmpty() ? stage.picture(Scale * DashboardSize) : QImage();
}

QString fileName(const QString &dashboard, const TelemetryState &moment)
{
    QString name = QStringLiteral("%1-%2.png").arg(dashboard, moment.name);
    return name.replace(QLatin1Char(' '), QLatin1Char('-'));
}

} // namespace

class ApprovedPicturesTest : public QObject
{
    Q_OBJECT

    std::vector<TelemetryState> moments; // Those whose pictures are approved.

private Q_SLOTS:
    void initTestCase()
    {
        DashboardFadeInOut::registerType();
        // What scripts/approve shows.
        QDir drawn(QStringLiteral(PICTURES_DIRECTORY));
        QVERIFY(drawn.removeRecursively() && drawn.mkpath(drawn.path()));
        const QStringList names{QStringLiteral("everything known"), QStringLiteral("nothing known"),
                                QStringLiteral("paused"), QStringLiteral("every flag and lamp")};
        for (const TelemetryState &state : telemetryStates()) {
            if (names.contains(state.name))
                moments.push_back(state);
        }
    }

    void dashboardsLookAsApproved_data() { everyDashboard(); }

    void dashboardsLookAsApproved()
    {
        QFETCH(QString, dashboard);
        QStringList others;
        for (const TelemetryState &moment : moments) {
            const QImage now = render(dashboard, moment);
            QVERIFY2(!now.isNull(), qPrintable(moment.name));
            const QString file = fileName(dashboard, moment);
            const QImage approved(QStringLiteral(APPROVED_DIRECTORY "/") + file);
            if (showTheSame(approved.convertToFormat(QImage::Format_RGB32), now))
                continue;
            others.append(file);
            QVERIFY(now.save(QStringLiteral(PICTURES_DIRECTORY "/") + file));
        }
        QVERIFY2(others.isEmpty(), "It looks otherwise: " + others.join(QLatin1Char(' ')).toUtf8());
    }

    void everyApprovedPictureHasItsDashboard()
    {
        QStringList files;
        const QStringList dashboards = dashboardNames();
        for (const QString &dashboard : dashboards) {
            for (const TelemetryState &moment : moments)
                files.append(fileName(dashboard, moment));
        }
        files.sort();
        QCOMPARE(QDir(QStringLiteral(APPROVED_DIRECTORY)).entryList(QDir::Files, QDir::Name),
                 files);
    }

    /// The digits that look alike most, at the smallest size on any dashboard.
    void aDigitIsToldFromAnother()
    {
        TelemetryState state = previewState();
        const auto shown = [&state](std::uint32_t digit) {
            state.sample.vehicle.currentTimeMs = 43'210 + digit;
            return render(QStringLiteral("Engineer"), state);
        };
        for (const auto &[one, other] : {std::pair(3, 8), {8, 9}, {6, 8}, {5, 6}, {0, 8}, {1, 7}})
            QVERIFY2(!showTheSame(shown(one), shown(other)), QByteArray::number(10 * one + other));
    }
};

QTEST_MAIN(ApprovedPicturesTest)
#include "ApprovedPicturesTest.moc"
