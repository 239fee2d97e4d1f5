#include "support/EngineRig.h"
#include "support/FakeConsumer.h"
#include "support/LogCapture.h"
#include "support/PaintedText.h"

#include <QtTest/QtTest>

#include <limits>
#include <new>
#include <set>

namespace {

constexpr int Largest = std::numeric_limits<int>::max();
constexpr quint64 Now = 1'000'000;

bool allBytesAre(const Frame &frame, unsigned char value)
{
    return std::all_of(frame.cbegin(), frame.cend(),
                       [value](unsigned char byte) { return byte == value; });
}

/// A bench with a document, ready to deliver.
class DeliveryBench : public EngineRig
{
public:
    explicit DeliveryBench(bool hardwareAcceleration = true)
        : EngineRig(hardwareAcceleration)
    {
        engine->setDashboardFile(QStringLiteral("/no/such/Dash.qml"));
    }
};

/// How much light two pictures of one size have apart, on a scale coarse enough to see words rather
/// than the edges of their letters.
int difference(const QImage &a, const QImage &b)
{
    const auto coarse = [](const QImage &image) {
        return image.scaled(image.size() / 8, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    };
    const QImage first = coarse(a);
    const QImage second = coarse(b);
    int sum = 0;
    for (int y = 0; y < first.height(); ++y) {
        for (int x = 0; x < first.width(); ++x)
            sum += std::abs(qGray(first.pixel(x, y)) - qGray(second.pixel(x, y)));
    }
    return sum;
}

} // namespace

class DeliveryTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void onlyAUsableSizeIsRendered_data()
    {
        QTest::addColumn<int>("width");
        QTest::addColumn<int>("height");
        QTest::addColumn<int>("bytes");
        QTest::addColumn<bool>("rendered");
        QTest::newRow("0x0") << 0 << 0 << 4 << false;
        QTest::newRow("negative") << -7 << std::numeric_limits<int>::min() << 4 << false;
        QTest::newRow("1x300") << 1 << 300 << 1200 << false;
        QTest::newRow("300x1") << 300 << 1 << 1200 << false;
        QTest::newRow("-3x5") << -3 << 5 << 20 << false;
        QTest::newRow("5x0") << 5 << 0 << 20 << false;
        QTest::newRow("2x2") << 2 << 2 << 16 << true;
        QTest::newRow("480x272") << 480 << 272 << 522'240 << true;
    }
    void onlyAUsableSizeIsRendered()
    {
        QFETCH(int, width);
        QFETCH(int, height);
        QFETCH(int, bytes);
        QFETCH(bool, rendered);
        DeliveryBench bench;
        FakeConsumer consumer(width, height);
        bench.engine->addConsumer(&consumer);
        bench.freshTick();
        bench.freshTick();
        QCOMPARE(consumer.deliveries.size(), 2U); // On every pass, usable or not.
        QCOMPARE(bench.script.renderCalls.size(), rendered ? 2U : 0U);
        for (const Delivery &delivery : consumer.deliveries) {
            QCOMPARE(delivery.width, std::max(width, 1));
            QCOMPARE(delivery.frame.size(), std::size_t(bytes));
            QVERIFY(allBytesAre(delivery.frame, rendered ? 1 : 0));
        }
    }

    void asksEveryConsumerInOrderAndHonoursItsTurn()
    {
        DeliveryBench bench;
        FakeConsumer upright(10, 20);
        FakeConsumer turned(30, 40);
        turned.upsideDown = true;
        bench.engine->addConsumer(&upright);
        bench.engine->addConsumer(&turned);
        bench.freshTick();
        QCOMPARE(upright.asked, QStringList({QStringLiteral("turn"), QStringLiteral("width"),
                                             QStringLiteral("height"), QStringLiteral("life")}));
        QCOMPARE(bench.script.renderCalls.size(), 2U);
        for (const RenderCall &call : bench.script.renderCalls) {
            QCOMPARE(call.upsideDown, call.width == 30);
            QCOMPARE(call.height, call.width + 10);
        }
        QCOMPARE(upright.deliveries.at(0).width, 10);
        QCOMPARE(turned.deliveries.at(0).width, 30);
    }

    void aFailedFrameIsZerosOfTheRightSize()
    {
        DeliveryBench bench;
        FakeConsumer consumer(8, 8);
        bench.engine->addConsumer(&consumer);
        bench.freshTick();
        QVERIFY(allBytesAre(consumer.deliveries.back().frame, 1));
        for (const auto &[width, height] : {std::pair{8, 8}, {3, 5}, {20, 9}}) {
            bench.script.renders = false;
            consumer.width = width;
            consumer.height = height;
            bench.freshTick();
            QCOMPARE(consumer.deliveries.back().width, width);
            QCOMPARE(consumer.deliveries.back().frame.size(), std::size_t(width * height * 4));
            QVERIFY(allBytesAre(consumer.deliveries.back().frame, 0));
            bench.script.renders = true;
            bench.freshTick();
            QVERIFY(allBytesAre(consumer.deliveries.back().frame, 1));
        }
        QCOMPARE(bench.script.renderCalls.size(), 7U); // Tried again each time.
    }

    void swappingSendsTheSameTwoVectorsRoundForEver()
    {
        DeliveryBench bench;
        FakeConsumer consumer(64, 32, BufferUse::Swap);
        bench.engine->addConsumer(&consumer);
        for (int i = 0; i < 20; ++i)
            bench.freshTick();
        const auto &deliveries = consumer.deliveries;
        QVERIFY(deliveries[0].address != deliveries[1].address);
        for (std::size_t i = 2; i < deliveries.size(); ++i)
            QCOMPARE(deliveries[i].address, deliveries[i - 2].address);
        QVERIFY(bench.script.renderCalls.back().sizeBefore == 8192U);
    }

    void aFrameOfNoSizeKeepsItsVectorToo()
    {
        DeliveryBench bench;
        bench.script.renders = false;
        FakeConsumer consumer(64, 32, BufferUse::Swap);
        bench.engine->addConsumer(&consumer);
        for (int i = 0; i < 10; ++i)
            bench.freshTick();
        for (std::size_t i = 2; i < consumer.deliveries.size(); ++i)
            QCOMPARE(consumer.deliveries[i].address, consumer.deliveries[i - 2].address);
    }

    void takesBackWhateverTheConsumerLeaves()
    {
        DeliveryBench bench;
        FakeConsumer leaving(6, 6);
        FakeConsumer careless(7, 7, BufferUse::ThrowAway);
        FakeConsumer odd(8, 8, BufferUse::Swap);
        odd.own.assign(5, 0xEE);
        for (FakeConsumer *consumer : {&leaving, &careless, &odd})
            bench.engine->addConsumer(consumer);
        for (int i = 0; i < 4; ++i)
            bench.freshTick();
        for (const FakeConsumer *consumer : {&leaving, &careless, &odd}) {
            QCOMPARE(consumer->deliveries.size(), 4U);
            for (const Delivery &delivery : consumer->deliveries) {
                QCOMPARE(delivery.frame.size(), std::size_t(consumer->width * consumer->width * 4));
                QVERIFY(allBytesAre(delivery.frame, 1));
            }
        }
        for (const Delivery &delivery : leaving.deliveries)
            QCOMPARE(delivery.address, leaving.deliveries[0].address);
        QCOMPARE(bench.script.count(QStringLiteral("render")), 12);
        for (const RenderCall &call : bench.script.renderCalls) {
            if (call.width == careless.width)
                QCOMPARE(call.sizeBefore, 0U);
        }
    }

    void consumersNeverShareVectorsOrPixels()
    {
        DeliveryBench bench;
        // Each picture carries its consumer's width in every byte; a third fails every other time.
        bench.script.duringRender = [&bench] {
            const int width = bench.script.renderCalls.back().width;
            bench.script.fill = static_cast<unsigned char>(width);
            bench.script.renders = width != 30 || bench.script.renderCalls.size() % 2 == 0;
        };
        FakeConsumer first(10, 9, BufferUse::Swap);
        FakeConsumer second(20, 9, BufferUse::Leave);
        FakeConsumer third(30, 9, BufferUse::Swap);
        for (FakeConsumer *consumer : {&first, &second, &third})
            bench.engine->addConsumer(consumer);
        for (int i = 0; i < 12; ++i)
            bench.freshTick();
        std::set<const unsigned char *> addresses;
        std::size_t vectors = 0;
        for (const FakeConsumer *consumer : {&first, &second, &third}) {
            std::set<const unsigned char *> own;
            for (const Delivery &delivery : consumer->deliveries) {
                own.insert(delivery.address);
                QCOMPARE(delivery.frame.size(), std::size_t(consumer->width * 9 * 4));
                QVERIFY(allBytesAre(delivery.frame, delivery.frame[0]));
                QVERIFY(delivery.frame[0] == consumer->width ||
                        (consumer == &third && delivery.frame[0] == 0));
            }
            vectors += own.size();
            addresses.merge(own);
        }
        QCOMPARE(addresses.size(), vectors);
    }

    void aFrameBeyondMemoryCostsOnlyItsOwnConsumer_data()
    {
        QTest::addColumn<bool>("acceleration");
        QTest::addColumn<bool>("renders");
        QTest::newRow("renderer throws") << true << true;
        QTest::newRow("zeros throw") << true << false;
        QTest::newRow("message throws") << false << false;
    }
    void aFrameBeyondMemoryCostsOnlyItsOwnConsumer()
    {
        QFETCH(bool, acceleration);
        QFETCH(bool, renders);
        const LogCapture log;
        DeliveryBench bench(acceleration);
        bench.script.renders = renders;
        FakeConsumer absurd(Largest, Largest);
        FakeConsumer others[6];
        bench.engine->addConsumer(&absurd);
        for (FakeConsumer &other : others)
            bench.engine->addConsumer(&other);
        bench.freshTick();
        bench.freshTick();
        QCOMPARE(absurd.deliveries.size(), 0U);
        for (const FakeConsumer &other : others)
            QCOMPARE(other.deliveries.size(), acceleration ? 2U : 1U);
        QCOMPARE(log.critical().size(), 1);
        absurd.width = absurd.height = 50;
        bench.freshTick();
        QCOMPARE(absurd.deliveries.size(), 1U);
        QCOMPARE(absurd.deliveries[0].frame.size(), 10'000U);
    }

    void outOfMemoryInARenderCostsOnlyItsOwnConsumer()
    {
        DeliveryBench bench;
        FakeConsumer greedy(100, 100);
        FakeConsumer others[6];
        bench.script.duringRender = [&bench] {
            if (bench.script.renderCalls.back().width == 100)
                throw std::bad_alloc();
        };
        bench.engine->addConsumer(&greedy);
        for (FakeConsumer &other : others)
            bench.engine->addConsumer(&other);
        bench.freshTick();
        QCOMPARE(greedy.deliveries.size(), 0U);
        for (const FakeConsumer &other : others)
            QCOMPARE(other.deliveries.size(), 1U);
    }

    void whatAConsumerThrowsPasses()
    {
        const LogCapture log;
        DeliveryBench bench;
        FakeConsumer consumer;
        bool throws = true;
        consumer.during = [&throws](const QString &call) {
            if (throws && call == QLatin1String("delivery"))
                throw std::bad_alloc();
        };
        bench.engine->addConsumer(&consumer);
        QVERIFY_EXCEPTION_THROWN(bench.freshTick(), std::bad_alloc);
        QCOMPARE(log.critical(), QStringList());
        throws = false;
        bench.freshTick();
        QCOMPARE(consumer.deliveries.size(), 1U);
    }

    void aConsumerMayTakeOutAndPutInAnyWhileItIsCalled_data()
    {
        QTest::addColumn<QString>("call");
        for (const char *call : {"turn", "width", "height", "life", "delivery"})
            QTest::newRow(call) << QString::fromLatin1(call);
    }
    void aConsumerMayTakeOutAndPutInAnyWhileItIsCalled()
    {
        QFETCH(QString, call);
        DeliveryBench bench;
        FakeConsumer crowd[4];
        FakeConsumer newcomers[50]; // Enough to lay out the registry anew.
        bool replaced = false;
        int callsAfterwards = 0;
        for (FakeConsumer &consumer : crowd) {
            bench.engine->addConsumer(&consumer);
            consumer.during = [&](const QString &present) {
                callsAfterwards += replaced ? 1 : 0;
                if (present != call)
                    return;
                replaced = true;
                for (FakeConsumer &each : crowd)
                    bench.engine->removeConsumer(&each);
                QVERIFY(!bench.engine->hasConsumers());
                for (FakeConsumer &newcomer : newcomers)
                    bench.engine->addConsumer(&newcomer);
            };
        }
        bench.freshTick();
        bench.freshTick();
        QCOMPARE(callsAfterwards, 0);
        for (const FakeConsumer &consumer : crowd) {
            for (const Delivery &delivery : consumer.deliveries)
                QVERIFY(allBytesAre(delivery.frame, 1)); // Lent to the end of the call.
        }
        for (const FakeConsumer &newcomer : newcomers)
            QCOMPARE(newcomer.deliveries.size(), 1U);
    }

    void aConsumerThatComesBackWhileItIsServedStartsAnew()
    {
        DeliveryBench bench(false);
        FakeConsumer consumer;
        bench.engine->addConsumer(&consumer);
        consumer.during = [&](const QString &) {
            bench.engine->removeConsumer(&consumer);
            bench.engine->addConsumer(&consumer);
            bench.freshTick(); // As in an event loop of its own; no pass runs within a pass.
        };
        for (std::size_t ticks = 1; ticks <= 3; ++ticks) {
            bench.freshTick();
            QCOMPARE(consumer.deliveries.size(), ticks);
        }
    }

    void expiresAConsumerAfterMoreThanASecondOfSilence_data()
    {
        QTest::addColumn<quint64>("seen");
        QTest::addColumn<bool>("stays");
        QTest::newRow("never expires") << quint64(0) << true;
        QTest::newRow("now") << Now << true;
        QTest::newRow("exactly a second") << Now - 1000 << true;
        QTest::newRow("a millisecond more") << Now - 1001 << false;
        QTest::newRow("since the start") << quint64(1) << false;
        QTest::newRow("ahead") << Now + 1 << true;
        QTest::newRow("far ahead") << std::numeric_limits<quint64>::max() << true;
    }
    void expiresAConsumerAfterMoreThanASecondOfSilence()
    {
        QFETCH(quint64, seen);
        QFETCH(bool, stays);
        DeliveryBench bench;
        FakeConsumer consumer;
        consumer.seen = seen;
        bench.engine->addConsumer(&consumer);
        bench.freshTick();
        QCOMPARE(bench.engine->hasConsumers(), stays);
        QCOMPARE(consumer.deliveries.size(), stays ? 1U : 0U);
        QCOMPARE(bench.script.renderCalls.size(), stays ? 1U : 0U);
    }

    void anExpiredConsumerLeavesTheOthersAloneAndMayComeBack()
    {
        DeliveryBench bench;
        FakeConsumer others[6];
        FakeConsumer quiet;
        bench.engine->addConsumer(&quiet);
        for (FakeConsumer &other : others)
            bench.engine->addConsumer(&other);
        bench.freshTick();
        quiet.seen = Now - 5000;
        bench.freshTick();
        QCOMPARE(quiet.deliveries.size(), 1U);
        for (const FakeConsumer &other : others)
            QCOMPARE(other.deliveries.size(), 2U);
        QVERIFY(bench.engine->hasConsumers());
        const int asked = quiet.asked.size();
        bench.freshTick();
        QCOMPARE(quiet.asked.size(), asked); // It is gone, not skipped.

        for (FakeConsumer &other : others)
            bench.engine->removeConsumer(&other);
        QVERIFY(!bench.engine->hasConsumers());
        quiet.seen = Now;
        bench.engine->addConsumer(&quiet);
        bench.freshTick();
        QCOMPARE(quiet.deliveries.size(), 2U);
        QCOMPARE(bench.script.renderCalls.back().sizeBefore, 0U); // A new slot.
    }

    void allConsumersOfAPassAreHeldAgainstOneMoment()
    {
        DeliveryBench bench;
        FakeConsumer consumers[2];
        for (FakeConsumer &consumer : consumers) {
            consumer.seen = Now - 900;
            consumer.during = [&bench](const QString &) { bench.now += 5000; };
            bench.engine->addConsumer(&consumer);
        }
        bench.freshTick();
        for (const FakeConsumer &consumer : consumers)
            QCOMPARE(consumer.deliveries.size(), 1U);
    }

    void expiryGoesBeforeEveryPicture()
    {
        for (const bool acceleration : {false, true}) {
            DeliveryBench bench(acceleration);
            FakeConsumer consumer(0, 0);
            consumer.seen = Now - 2000;
            bench.engine->addConsumer(&consumer);
            bench.freshTick();
            QCOMPARE(consumer.deliveries.size(), 0U);
            QVERIFY(!bench.engine->hasConsumers());
        }
    }

    void theMessageIsDeliveredUntilTheConsumerHasIt_data()
    {
        QTest::addColumn<int>("use");
        QTest::addColumn<int>("perSize");
        QTest::newRow("leaves it") << int(BufferUse::Leave) << 1;
        QTest::newRow("swaps") << int(BufferUse::Swap) << 2;
        QTest::newRow("throws it away") << int(BufferUse::ThrowAway) << 10;
    }
    void theMessageIsDeliveredUntilTheConsumerHasIt()
    {
        QFETCH(int, use);
        QFETCH(int, perSize);
        DeliveryBench bench(false);
        FakeConsumer consumer(200, 50, static_cast<BufferUse>(use));
        bench.engine->addConsumer(&consumer);
        int delivered = 0;
        for (const auto &[width, height] : {std::pair{200, 50}, {480, 272}, {0, 0}}) {
            consumer.width = width;
            consumer.height = height;
            for (int i = 0; i < 10; ++i)
                bench.freshTick();
            delivered += perSize;
            QCOMPARE(int(consumer.deliveries.size()), delivered);
            const int w = std::max(width, 1);
            const QImage expected = paintedText(
                w, std::max(height, 1), QStringLiteral("Dashboard requires hardware acceleration"),
                std::max(w / 25, 10), 0x1084);
            for (int i = delivered - perSize; i < delivered; ++i) {
                QCOMPARE(consumer.deliveries[i].width, w);
                QCOMPARE(frameImage(consumer.deliveries[i].frame, w), expected);
            }
        }
        QCOMPARE(consumer.deliveries.back().frame.size(), 4U);
    }

    void theMessageAwaitsADocument()
    {
        EngineRig bench(false);
        FakeConsumer consumer(200, 50);
        bench.engine->addConsumer(&consumer);
        bench.freshTick();
        QCOMPARE(consumer.deliveries.size(), 0U);
    }

    void theUpsideDownMessageIsTheUprightOneTurned_data()
    {
        QTest::addColumn<QSize>("size");
        QTest::newRow("design") << QSize(480, 272);
        QTest::newRow("odd") << QSize(301, 77);
    }
    void theUpsideDownMessageIsTheUprightOneTurned()
    {
        QFETCH(QSize, size);
        DeliveryBench bench(false);
        FakeConsumer upright(size.width(), size.height());
        FakeConsumer turned(size.width(), size.height());
        turned.upsideDown = true;
        bench.engine->addConsumer(&upright);
        bench.engine->addConsumer(&turned);
        bench.freshTick();
        const QImage first = frameImage(upright.deliveries.at(0).frame, size.width());
        const QImage second = frameImage(turned.deliveries.at(0).frame, size.width());
        QCOMPARE(second, paintedText(size.width(), size.height(),
                                     QStringLiteral("Dashboard requires hardware acceleration"),
                                     std::max(size.width() / 25, 10), 0x1084, true));
        // Glyphs on their heads are hinted otherwise, so their edges differ from the turned ones.
        QImage blank(size, first.format());
        blank.fill(Qt::black);
        const int light = difference(first, blank);
        const int apart = difference(first.mirrored(true, true), second);
        QVERIFY2(apart < light / 4, qPrintable(QStringLiteral("%1 of %2").arg(apart).arg(light)));
        QVERIFY(difference(first, second) > light / 3);
    }
};

QTEST_MAIN(DeliveryTest)
#include "DeliveryTest.moc"
