#include "support/EngineRig.h"
#include "support/FakeConsumer.h"
#include "support/PaintedText.h"

#include <QtCore/QTranslator>
#include <QtTest/QtTest>

#include <limits>

namespace {

const QString Waiting = QStringLiteral("Waiting for game data");
const QString Message = QStringLiteral("Dashboard requires hardware acceleration");

/// Translates the engine's texts and no others.
class Shouter : public QTranslator
{
public:
    bool isEmpty() const override { return false; }
    QString translate(const char *context, const char *text, const char *, int) const override
    {
        return qstrcmp(context, "DashboardEngine") == 0 ? QString::fromLatin1(text).toUpper()
                                                        : QString();
    }
};

/// What a consumer of this size gets from an engine without renderers.
QImage messageImage(int width, int height)
{
    EngineRig bench(false);
    FakeConsumer consumer(width, height);
    bench.engine->setDashboardFile(QStringLiteral("/no/such/Dash.qml"));
    bench.engine->addConsumer(&consumer);
    bench.freshTick();
    return frameImage(consumer.deliveries.at(0).frame, width);
}

} // namespace

class StatusImagesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theWaitingPictureGrowsWithItsScale_data()
    {
        QTest::addColumn<int>("scale");
        QTest::newRow("1") << 1;
        QTest::newRow("2") << 2;
        QTest::newRow("3") << 3;
    }
    void theWaitingPictureGrowsWithItsScale()
    {
        QFETCH(int, scale);
        for (const bool acceleration : {false, true}) {
            EngineRig bench(acceleration);
            if (acceleration)
                bench.engine->shutdown();
            const std::unique_ptr<QImage> image = bench.engine->createWaitingImage(scale);
            QCOMPARE(image->size(), QSize(480, 272) * scale);
            QCOMPARE(image->format(), QImage::Format_ARGB32_Premultiplied);
            QCOMPARE(*image, paintedText(480 * scale, 272 * scale, Waiting, 25 * scale, 0x84));
        }
    }

    void aScaleThatNoPictureFitsGivesAnEmptyOne_data()
    {
        QTest::addColumn<int>("scale");
        QTest::newRow("0") << 0;
        QTest::newRow("-1") << -1;
        QTest::newRow("lowest") << std::numeric_limits<int>::min();
        QTest::newRow("highest") << std::numeric_limits<int>::max();
    }
    void aScaleThatNoPictureFitsGivesAnEmptyOne()
    {
        QFETCH(int, scale);
        EngineRig bench;
        const std::unique_ptr<QImage> image = bench.engine->createWaitingImage(scale);
        QVERIFY(image != nullptr);
        QVERIFY(image->isNull());
    }

    void theMessagesFontFollowsTheWidth_data()
    {
        QTest::addColumn<int>("width");
        QTest::addColumn<int>("pixels");
        QTest::newRow("100") << 100 << 10;
        QTest::newRow("274") << 274 << 10;
        QTest::newRow("275") << 275 << 11;
        QTest::newRow("300") << 300 << 12;
        QTest::newRow("480") << 480 << 19;
        QTest::newRow("1920") << 1920 << 76;
    }
    void theMessagesFontFollowsTheWidth()
    {
        QFETCH(int, width);
        QFETCH(int, pixels);
        const QImage image = messageImage(width, 200);
        QCOMPARE(image, paintedText(width, 200, Message, pixels, 0x1084));
        for (const int other : {pixels - 1, pixels + 1})
            QVERIFY(image != paintedText(width, 200, Message, other, 0x1084));
    }

    void theMessageWrapsAndTheWaitingPictureDoesNot()
    {
        const QImage narrow = messageImage(120, 50);
        QCOMPARE(narrow, paintedText(120, 50, Message, 10, 0x1084));
        QVERIFY(narrow != paintedText(120, 50, Message, 10, 0x84));
        QCOMPARE(messageImage(2, 2).size(), QSize(2, 2));
    }

    void theTextsAreTheEnginesToTranslate()
    {
        Shouter shouter;
        QCoreApplication::installTranslator(&shouter);
        EngineRig bench(false);
        QCOMPARE(*bench.engine->createWaitingImage(1),
                 paintedText(480, 272, Waiting.toUpper(), 25, 0x84));
        QCOMPARE(messageImage(480, 272), paintedText(480, 272, Message.toUpper(), 19, 0x1084));
        QVERIFY(messageImage(480, 272) != paintedText(480, 272, Message, 19, 0x1084));
        QCoreApplication::removeTranslator(&shouter);
    }
};

QTEST_MAIN(StatusImagesTest)
#include "StatusImagesTest.moc"
