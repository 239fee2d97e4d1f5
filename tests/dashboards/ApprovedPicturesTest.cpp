#include "PictureComparison.h"
#include "Stage.h"
#include "render/DashboardFadeInOut.h"

#include <QtCore/QTemporaryDir>
#include <QtQuick/QQuickWindow>
#include <QtTest/QtTest>

#include <algorithm>

namespace {

/// Large enough to tell the smallest digits apart, small enough to keep.
constexpr QSize PictureSize = 2 * DashboardSize;

/// The states whose pictures are approved.
const QStringList &moments()
{
    static const QStringList names{QStringLiteral("everything known"),
                                   QStringLiteral("nothing known"), QStringLiteral("paused"),
                                   QStringLiteral("every flag and lamp")};
    return names;
}

TelemetryState stateOf(const QString &name)
{
    const std::vector<TelemetryState> states = telemetryStates();
    return *std::find_if(states.begin(), states.end(),
                         [&name](const TelemetryState &state) { return state.name == name; });
}

QString fileName(const QString &dashboard, const QString &moment)
{
    return QStringLiteral("%1-%2.png")
        .arg(dashboard, QString(moment).replace(QLatin1Char(' '), QLatin1Char('-')));
}

QImage render(const QString &document, const TelemetryState &state)
{
    Stage stage(document);
    stage.publish(state);
    return stage.errors().isEmpty() ? stage.picture(PictureSize) : QImage();
}

/// A row of small digits, as fine as anything on a dashboard.
class Digits
{
public:
    QString path() const { return folder.filePath(QStringLiteral("Dash.qml")); }

    void write(const QString &digits, int pixelSize) const
    {
        QFile file(path());
        QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        const QString font =
            QStringLiteral("file://" PARTS_DIRECTORY "/fonts/RobotoCondensed-Regular.ttf");
        file.write(QStringLiteral("import QtQuick 2.15\n"
                                  "Rectangle { width: 480; height: 272; color: '#11151a'\n"
                                  "FontLoader { id: font; source: '%1' }\n"
                                  "Text { x: 20; y: 20; color: '#98a2ad'; text: '%2'\n"
                                  "font.family: font.name; font.pixelSize: %3\n"
                                  "font.hintingPreference: Font.PreferVerticalHinting } }\n")
                       .arg(font, digits, QString::number(pixelSize))
                       .toUtf8());
    }

    QImage picture() const
    {
        return render(path(), previewState()).copy(0, 0, PictureSize.width() / 2, 200);
    }

private:
    QTemporaryDir folder;
};

/// Text drawn by the platform's rasteriser instead of from distance fields, while it lives.
class OtherRasteriser
{
public:
    OtherRasteriser() { QQuickWindow::setTextRenderType(QQuickWindow::NativeTextRendering); }
    ~OtherRasteriser() { QQuickWindow::setTextRenderType(QQuickWindow::QtTextRendering); }
    OtherRasteriser(const OtherRasteriser &) = delete;
    OtherRasteriser &operator=(const OtherRasteriser &) = delete;
};

} // namespace

class ApprovedPicturesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        DashboardFadeInOut::registerType();
        // What scripts/approve shows.
        QVERIFY(QDir(QStringLiteral(PICTURES_DIRECTORY)).removeRecursively());
        QVERIFY(QDir().mkpath(QStringLiteral(PICTURES_DIRECTORY)));
    }

    void dashboardsLookAsApproved_data()
    {
        QTest::addColumn<QString>("dashboard");
        QTest::addColumn<QString>("moment");
        const QStringList names = dashboardNames();
        for (const QString &name : names) {
            for (const QString &moment : moments())
                QTest::addRow("%s: %s", qPrintable(name), qPrintable(moment)) << name << moment;
        }
    }

    void dashboardsLookAsApproved()
    {
        QFETCH(QString, dashboard);
        QFETCH(QString, moment);
        const QImage now = render(dashboard, stateOf(moment));
        QVERIFY(!now.isNull());
        const QString file = fileName(dashboard, moment);
        const QImage approved(QStringLiteral(APPROVED_DIRECTORY "/") + file);
        if (showTheSame(approved.convertToFormat(QImage::Format_RGB32), now))
            return;
        const QDir pictures(QStringLiteral(PICTURES_DIRECTORY));
        QVERIFY(now.save(pictures.filePath(file)));
        QFAIL("It looks otherwise; see both with scripts/approve.");
    }

    void everyApprovedPictureHasItsDashboard()
    {
        const QStringList names = dashboardNames();
        QStringList expected;
        for (const QString &name : names) {
            for (const QString &moment : moments())
                expected.append(fileName(name, moment));
        }
        const QStringList files = QDir(QStringLiteral(APPROVED_DIRECTORY)).entryList(QDir::Files);
        for (const QString &file : files)
            QVERIFY2(expected.contains(file), qPrintable(file));
    }

    void aDigitIsToldFromOthersAndNotFromItself_data()
    {
        QTest::addColumn<int>("pixelSize");
        for (const int size : {11, 13, 20, 40})
            QTest::addRow("%d pixels", size) << size;
    }

    void aDigitIsToldFromOthersAndNotFromItself()
    {
        QFETCH(int, pixelSize);
        const Digits digits;
        std::vector<QImage> ours;
        std::vector<QImage> theirs;
        for (char digit = '0'; digit <= '9'; ++digit) {
            digits.write(QStringLiteral("01:43:5") + QLatin1Char(digit), pixelSize);
            ours.push_back(digits.picture());
            const OtherRasteriser other;
            theirs.push_back(digits.picture());
            QVERIFY(ours.back() != theirs.back());
            QVERIFY2(showTheSame(ours.back(), theirs.back()), QByteArray(1, digit));
            for (std::size_t i = 0; i + 1 < ours.size(); ++i)
                QVERIFY2(!showTheSame(ours[i], ours.back()),
                         qPrintable(QStringLiteral("%1 for %2").arg(i).arg(QLatin1Char(digit))));
        }
    }
};

QTEST_MAIN(ApprovedPicturesTest)
#include "ApprovedPicturesTest.moc"
