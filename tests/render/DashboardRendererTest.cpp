#include "Documents.h"
#include "Probe.h"
#include "render/DashboardFadeInOut.h"
#include "support/FakeCounter.h"

#include <QtGui/QImage>
#include <QtGui/QPainter>
#include <QtTest/QtTest>

#include <set>

namespace {

constexpr QRgb Bar = 0xFFFF6A00;

FakeCounter &panelCounter()
{
    static FakeCounter counter;
    return counter;
}

/// The panel's fade under a clock in the test's hand.
class TimedFade : public DashboardFadeInOut
{
    Q_OBJECT

public:
    explicit TimedFade(QObject *parent = nullptr)
        : DashboardFadeInOut(panelCounter(), parent)
    {
    }
};

void publish(DashboardRenderer &renderer, const TuneInfo &tune = {}, const QString &profile = {})
{
    renderer.publishTelemetry({}, {}, {}, profile, tune, 1.0F, false, false, false);
}

/// The text as it should stand in the picture of a failed load.
Picture drawn(const QString &text, int width, int height)
{
    QImage image(width, height, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::black);
    QPainter painter(&image);
    painter.setPen(Qt::white);
    QFont font = painter.font();
    font.setPixelSize(width / 25);
    painter.setFont(font);
    painter.drawText(QRect(0, 0, width, height), Qt::TextWordWrap, text);
    painter.end();
    return {Frame(image.constBits(), image.constBits() + image.sizeInBytes()), width, height};
}

TuneInfo wingTune()
{
    TuneInfo tune;
    tune.group = QStringLiteral("Aero");
    tune.name = QStringLiteral("Wing");
    tune.valueMax = 10;
    tune.valueCurrent = 10;
    tune.changeCounter = 1;
    return tune;
}

} // namespace

class DashboardRendererTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        Probe::registerType();
        qmlRegisterType<TimedFade>("DashboardFadeInOut", 1, 0, "DashboardFadeInOut");
    }
    void init() { Probe::reports.clear(); }
    void cleanup() { QCOMPARE(Probe::alive, 0); }

    void aNewRendererHasNothingToShowOrSay()
    {
        DashboardRenderer renderer;
        Frame buffer{1, 2, 3};
        QVERIFY(!renderer.renderFrame(buffer, 480, 272, false));
        QCOMPARE(buffer, Frame({1, 2, 3}));
        QVERIFY(renderer.errors().isEmpty());
        QVERIFY(renderer.publishedFields().empty());
    }

    void aFailedLoadIsAPictureOfItsErrors()
    {
        const DocumentFolder folder;
        DashboardRenderer renderer;
        QVERIFY(!renderer.load(folder.path(QStringLiteral("Missing.qml")), 480, 272));
        QVERIFY(!renderer.errors().isEmpty());
        QVERIFY(renderer.errors().constFirst().contains(QLatin1String("file:///")));
        QVERIFY(renderer.errors().constFirst().contains(QLatin1String("Missing.qml")));

        const Picture picture = frame(renderer, 480, 272);
        QVERIFY(picture.isWhole());
        QVERIFY(picture.count(Black) > 480 * 272 / 2);
        QVERIFY(picture.count(White) > 0);
        // It starts at the top left.
        QVERIFY(picture.count(Black, 100, 272) == 480 * 172);
        QVERIFY(frame(renderer, 480, 272, true) == picture);
    }

    void theErrorsStandOneBelowTheOtherWithoutTheirPrefix_data()
    {
        QTest::addColumn<QSize>("size");
        QTest::newRow("design size") << QSize(480, 272);
        QTest::newRow("large") << QSize(1440, 816);
        QTest::newRow("narrowest") << QSize(26, 100);
        QTest::newRow("one row") << QSize(480, 1);
    }

    void theErrorsStandOneBelowTheOtherWithoutTheirPrefix()
    {
        QFETCH(QSize, size);
        const DocumentFolder folder;
        DashboardRenderer renderer;
        QVERIFY(
            !renderer.load(folder.write(QStringLiteral("Dash.qml"),
                                        document("Item { width: unknownOne; height: unknownTwo }")),
                           480, 272));
        QCOMPARE(renderer.errors().size(), 2);
        QString text;
        for (const QString &error : renderer.errors()) {
            QVERIFY(error.startsWith(QLatin1String("file:///")));
            text += error.mid(8) + QLatin1Char('\n');
        }
        QVERIFY(frame(renderer, size.width(), size.height()) ==
                drawn(text, size.width(), size.height()));
    }

    void withoutRoomForTheErrorsThereIsNoPicture()
    {
        const DocumentFolder folder;
        DashboardRenderer renderer;
        QVERIFY(!renderer.load(folder.path(QStringLiteral("Missing.qml")), 480, 272));
        for (const QSize size : {QSize(25, 272), QSize(1, 1), QSize(0, 272), QSize(480, 0),
                                 QSize(-480, -272), QSize(480, -1)}) {
            Frame buffer{1, 2, 3};
            QVERIFY(!renderer.renderFrame(buffer, size.width(), size.height(), false));
            QCOMPARE(buffer, Frame({1, 2, 3}));
        }
    }

    void aDocumentReadsEveryPropertyAtItsFirstLoad()
    {
        QByteArray names;
        {
            DashboardRenderer other;
            publish(other);
            for (const QString &name : other.publishedFields())
                names += name.toUtf8() + ',';
        }
        const DocumentFolder folder;
        DashboardRenderer renderer;
        QVERIFY(renderer.load(folder.write(QStringLiteral("Dash.qml"),
                                           document("Item { property var all: [" + names + R"(]
                             Component.onCompleted: probe.report(all.length)
                             Probe { id: probe } })")),
                              480, 272));
        QVERIFY(renderer.errors().isEmpty());
        QCOMPARE(Probe::reports.constLast().toInt(), 129);
        QCOMPARE(renderer.publishedFields().size(), std::size_t{129});
    }

    void onlyTheFirstLoadPublishes()
    {
        const DocumentFolder folder;
        const QString path = folder.write(QStringLiteral("Dash.qml"), document(R"(
            Item { Probe { Component.onCompleted: report(dash_frameCounter1000) } })"));
        DashboardRenderer renderer;
        QVERIFY(renderer.load(path, 480, 272));
        QVERIFY(renderer.load(path, 480, 272));
        publish(renderer);
        QVERIFY(renderer.load(path, 480, 272));
        QCOMPARE(Probe::reports, QVariantList({2U, 2U, 4U}));

        DashboardRenderer publishedBefore;
        publish(publishedBefore, wingTune());
        QVERIFY(publishedBefore.load(path, 480, 272));
        QCOMPARE(Probe::reports.constLast(), QVariant(2U));
    }

    void everyRendererCountsForItself()
    {
        const DocumentFolder folder;
        const QString path = folder.write(QStringLiteral("Dash.qml"), document(R"(
            Item {
                property int count: dash_frameCounter1000
                onCountChanged: probe.report(count)
                Probe { id: probe }
            })"));
        DashboardRenderer first;
        DashboardRenderer second;
        QVERIFY(first.load(path, 480, 272));
        for (int i = 0; i < 4; ++i)
            publish(first);
        QCOMPARE(Probe::reports.constLast().toInt(), 10);
        QVERIFY(second.load(path, 480, 272));
        QCOMPARE(Probe::reports.constLast().toInt(), 2);
        publish(second);
        QCOMPARE(Probe::reports.constLast().toInt(), 4);
        publish(first);
        QCOMPARE(Probe::reports.constLast().toInt(), 12);
    }

    void aHandlerSeesEarlierPropertiesNewAndLaterOnesOld()
    {
        const DocumentFolder folder;
        DashboardRenderer renderer;
        QVERIFY(renderer.load(folder.write(QStringLiteral("Dash.qml"), document(R"(
            Item {
                property int count: dash_frameCounter1000
                onCountChanged: probe.report(dash_useMph + dash_tuneName + dash_motionProfileName)
                Probe { id: probe }
            })")),
                              480, 272));
        for (int i = 0; i < 2; ++i)
            renderer.publishTelemetry({}, {}, {}, QStringLiteral("Gentle"), wingTune(), 1.0F, true,
                                      false, false);
        QCOMPARE(Probe::reports.mid(Probe::reports.size() - 2),
                 QVariantList({QStringLiteral("true"), QStringLiteral("trueWingGentle")}));
    }

    void consumersOfBothOrientationsGetTheirOwn()
    {
        const DocumentFolder folder;
        DashboardRenderer renderer;
        QVERIFY(renderer.load(folder.write(QStringLiteral("Dash.qml"), document(R"(
            Rectangle {
                width: 480; height: 272; color: "blue"
                Rectangle { x: 10; y: 20; width: 100; height: 50; color: "white" }
            })")),
                              480, 272));
        const Picture upright = frame(renderer, 480, 272);
        QCOMPARE(upright.count(White, 0, 136), 100 * 50);
        for (int i = 0; i < 3; ++i) {
            QVERIFY(frame(renderer, 480, 272, true) == upright.turned());
            QVERIFY(frame(renderer, 480, 272, false) == upright);
        }
    }

    void aSteadyFrameStaysInItsMemory()
    {
        const DocumentFolder folder;
        DashboardRenderer renderer;
        QVERIFY(renderer.load(folder.write(QStringLiteral("Dash.qml"), filled("blue")), 480, 272));
        Frame buffer;
        QVERIFY(renderer.renderFrame(buffer, 480, 272, false));
        const unsigned char *const address = buffer.data();
        const std::size_t capacity = buffer.capacity();
        for (int i = 0; i < 10; ++i) {
            publish(renderer);
            QVERIFY(renderer.renderFrame(buffer, 480, 272, i % 2 == 0));
            QCOMPARE(buffer.data(), address);
            QCOMPARE(buffer.capacity(), capacity);
        }
    }

    void aFrameThatOpenGlCantGiveIsNoError()
    {
        const DocumentFolder folder;
        DashboardRenderer renderer;
        QVERIFY(renderer.load(folder.write(QStringLiteral("Dash.qml"), filled("blue")), 480, 272));
        QVERIFY(!frame(renderer, 1 << 20, 4).isWhole());
        QVERIFY(!frame(renderer, 0, 0).isWhole());
        QCOMPARE(frame(renderer, 480, 272).count(Blue), 480 * 272);
    }

    void thePanelShowsAChangedTuneAndTurnsWithTheDashboard_data()
    {
        QTest::addColumn<QSize>("size");
        QTest::newRow("design size") << QSize(480, 272);
        QTest::newRow("twice") << QSize(960, 544);
    }

    void thePanelShowsAChangedTuneAndTurnsWithTheDashboard()
    {
        QFETCH(QSize, size);
        const int width = size.width();
        const int height = size.height();
        const int whole = width * height;
        const DocumentFolder folder;
        DashboardRenderer renderer;
        TuneInfo tune = wingTune();
        publish(renderer, tune);
        QVERIFY(renderer.load(folder.write(QStringLiteral("Dash.qml"), filled("blue")), 480, 272));
        for (int i = 0; i < 3; ++i)
            publish(renderer, tune);
        QCOMPARE(frame(renderer, width, height).count(Blue), whole);

        ++tune.changeCounter;
        publish(renderer, tune);
        QCOMPARE(frame(renderer, width, height).count(Blue), whole);
        publish(renderer, tune); // The panel starts to show.
        panelCounter().count += 300;
        publish(renderer, tune);
        const Picture upright = frame(renderer, width, height);
        QCOMPARE(upright.count(Blue), 0);
        QVERIFY(upright.count(Black) > whole / 2);
        QVERIFY(upright.count(Bar, 0, height / 2) > whole / 20);
        QCOMPARE(upright.count(Bar, height / 2, height), 0);
        const Picture turned = frame(renderer, width, height, true);
        QCOMPARE(turned.count(Bar, 0, height / 2), 0);
        // Not to the pixel: smoothed edges of the digits fall differently.
        QVERIFY(turned.count(Bar, height / 2, height) > whole / 20);

        panelCounter().count += 5000;
        publish(renderer, tune);
        QCOMPARE(frame(renderer, width, height).count(Blue), whole);
    }
};

QTEST_MAIN(DashboardRendererTest)
#include "DashboardRendererTest.moc"
