#include "support/EngineRig.h"
#include "support/LogCapture.h"
#include "support/PaintedText.h"
#include "support/Shouter.h"
#include "support/TestFiles.h"

#include <limits>
#include <new>
#include <set>

namespace {

constexpr int Largest = std::numeric_limits<int>::max();
constexpr quint64 Now = 1'000'000;
constexpr int Centred = 0x84; // The flags as numbers, which must not change.
constexpr int Wrapped = 0x1084;

} // namespace

/// Which frames consumers get, and what consumers may do meanwhile.
class DeliveryTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void onlyAUsableSizeIsRendered()
    {
        using Row = std::tuple<int, int, int, bool>; // Width, height, bytes, rendered.
        for (const auto &[width, height, bytes, rendered] :
             {Row(0, -Largest, 4, false), Row(1, 300, 1200, false), Row(300, 1, 1200, false),
              Row(-3, 5, 20, false), Row(2, 2, 16, true), Row(480, 272, 522'240, true)}) {
            EngineRig rig;
            rig.consumer.width = width;
            rig.consumer.height = height;
            rig.show();
            rig.freshTick(2);
            const Delivery &delivery = rig.consumer.deliveries.at(1);
            QCOMPARE(delivery.width, std::max(width, 1));
            QCOMPARE(delivery.frame, Frame(bytes, rendered ? 1 : 0));
            QCOMPARE(rig.script.renderCalls.size(), rendered ? 2U : 0U);
        }
    }

    void asksEveryConsumerInOrderAndHonoursItsTurn()
    {
        EngineRig rig;
        FakeConsumer turned(30, 29);
        turned.upsideDown = true;
        rig.show({&turned});
        rig.freshTick();
        QCOMPARE(turned.asked.join(u' '), "turn width height life delivery"_q);
        QCOMPARE(rig.script.renderCalls.size(), 2U);
        for (const RenderCall &call : rig.script.renderCalls)
            QVERIFY(call.upsideDown == (call.width == 30) && call.height == call.width - 1);
    }

    void everyConsumerHasVectorsOfItsOwnAndGetsThemBack()
    {
        EngineRig rig;
        FakeConsumer swapping(10, 9, BufferUse::Swap);
        FakeConsumer careless(30, 9, BufferUse::ThrowAway);
        rig.show({&swapping, &careless});
        // A picture carries its consumer's width. The swapping one's fails now and then, which
        // gives zeros.
        rig.script.duringRender = [&rig] {
            const int width = rig.script.renderCalls.back().width;
            rig.script.fill = static_cast<unsigned char>(width);
            rig.script.renders = width != 10 || rig.script.renderCalls.size() % 4 != 0;
        };
        rig.freshTick(12);
        std::set<const unsigned char *> addresses;
        int zeros = 0;
        for (const FakeConsumer *consumer : {&swapping, &rig.consumer, &careless}) {
            QCOMPARE(consumer->deliveries.size(), 12U);
            for (const Delivery &delivery : consumer->deliveries) {
                const unsigned char first = delivery.frame.at(0);
                QCOMPARE(delivery.frame,
                         Frame(frameBytes(consumer->width, consumer->height), first));
                QVERIFY(first == 0 || first == consumer->width);
                zeros += first == 0 ? 1 : 0;
                if (consumer != &careless)
                    addresses.insert(delivery.address);
            }
        }
        QCOMPARE(zeros, 3);
        // Two vectors go round with the one that swaps, and one with the one that leaves it.
        QCOMPARE(addresses.size(), 3U);
    }

    void aFrameBeyondMemoryCostsOnlyItsOwnConsumer()
    {
        using Row = std::tuple<bool, bool, bool>; // Acceleration, render succeeds, or throws.
        for (const auto &[acceleration, renders, throws] :
             {Row(true, true, true), Row(true, true, false), Row(true, false, false),
              Row(false, false, false)}) {
            const LogCapture log;
            EngineRig rig(acceleration);
            FakeConsumer absurd(Largest, Largest);
            rig.show({&absurd});
            rig.script.renders = renders;
            rig.script.duringRender = [&rig, throws = throws] {
                if (throws && rig.script.renderCalls.back().width == Largest)
                    throw std::bad_alloc();
            };
            rig.freshTick(2);
            QCOMPARE(absurd.deliveries.size(), 0U);
            QCOMPARE(rig.consumer.deliveries.size(), acceleration ? 2U : 1U);
            QCOMPARE(log.critical().size(), 1);
            absurd.width = absurd.height = 50;
            rig.freshTick();
            QCOMPARE(absurd.deliveries.size(), 1U);
        }
    }

    void whatAConsumerThrowsPasses()
    {
        EngineRig rig;
        rig.show();
        rig.consumer.during = [](const QString &) { throw std::bad_alloc(); };
        QVERIFY_EXCEPTION_THROWN(rig.freshTick(), std::bad_alloc);
        rig.consumer.during = nullptr;
        rig.freshTick();
        QCOMPARE(rig.consumer.deliveries.size(), 1U);
    }

    void aConsumerMayTakeOutAndPutInAnyWhileItIsCalled()
    {
        for (const QString &call :
             {"turn"_q, "width"_q, "height"_q, "life"_q, "render"_q, "delivery"_q}) {
            EngineRig rig;
            FakeConsumer another;
            FakeConsumer newcomers[50]; // Enough to lay out the registry anew.
            rig.show({&another});
            bool replaced = false;
            const auto replace = [&](const QString &present) {
                QVERIFY(!replaced);
                if (present != call)
                    return;
                replaced = true;
                rig.engine->removeConsumer(&rig.consumer);
                rig.engine->removeConsumer(&another);
                QVERIFY(!rig.engine->hasConsumers());
                for (FakeConsumer &newcomer : newcomers)
                    rig.engine->addConsumer(&newcomer);
            };
            rig.consumer.during = another.during = replace;
            rig.script.duringRender = [&] {
                if (!replaced)
                    replace("render"_q);
            };
            rig.freshTick(2);
            // A frame is lent to the end of the call.
            for (const FakeConsumer *served : {&rig.consumer, &another}) {
                if (!served->deliveries.empty())
                    QCOMPARE(served->deliveries[0].frame, Frame(48, 1));
            }
            for (const FakeConsumer &newcomer : newcomers)
                QCOMPARE(newcomer.deliveries.size(), 1U);
        }
    }

    void aConsumerThatComesBackWhileItIsServedStartsAnew()
    {
        EngineRig rig(false);
        rig.show();
        rig.consumer.during = [&rig](const QString &) {
            rig.engine->removeConsumer(&rig.consumer);
            rig.engine->addConsumer(&rig.consumer);
            rig.freshTick(); // As in an event loop of its own; no pass runs within a pass.
        };
        rig.freshTick(3);
        QCOMPARE(rig.consumer.deliveries.size(), 3U);
    }

    void expiresAConsumerAfterMoreThanASecondOfSilence()
    {
        using Row = std::pair<quint64, bool>; // The last sign of life, and whether it stays.
        for (const auto &[seen, stays] :
             {Row(0, true), Row(1, false), Row(Now - 1001, false), Row(Now - 1000, true),
              Row(Now + 1, true), Row(std::numeric_limits<quint64>::max(), true)}) {
            EngineRig rig;
            FakeConsumer &consumer = rig.consumer;
            FakeConsumer other;
            rig.show({&other});
            consumer.seen = seen;
            other.seen = Now - 1000;
            // All consumers of a pass are held against one moment.
            consumer.during = other.during = [&rig](const QString &) { rig.now += 5000; };
            rig.freshTick();
            QCOMPARE(consumer.deliveries.size(), stays ? 1U : 0U);
            QCOMPARE(other.deliveries.size(), 1U);
            rig.engine->removeConsumer(&other);
            QCOMPARE(rig.engine->hasConsumers(), stays);
            // An expired one may come back.
            consumer.seen = 0;
            rig.engine->addConsumer(&consumer);
            rig.freshTick();
            QCOMPARE(consumer.deliveries.size(), stays ? 2U : 1U);
        }
    }

    void theMessageFitsItsConsumerAndIsDeliveredUntilItHasIt()
    {
        // One that swaps gives its empty vector back first.
        for (const auto &[use, perSize] : {std::pair(BufferUse::Leave, 1U),
                                           {BufferUse::Swap, 2U},
                                           {BufferUse::ThrowAway, 10U}}) {
            EngineRig rig(false);
            FakeConsumer &consumer = rig.consumer;
            consumer.use = use;
            rig.show();
            for (const auto &[width, font] :
                 {std::pair(120, 10), {274, 10}, {275, 11}, {480, 19}, {1, 10}}) {
                consumer.width = width;
                consumer.height = width / 2;
                consumer.upsideDown = !consumer.upsideDown;
                consumer.deliveries.clear();
                rig.freshTick(10);
                QCOMPARE(consumer.deliveries.size(), perSize);
                const int height = std::max(width / 2, 1);
                QCOMPARE(frameImage(consumer.deliveries.back().frame, width, height),
                         paintedText(width, height, "Dashboard requires hardware acceleration"_q,
                                     font, Wrapped, consumer.upsideDown));
            }
        }
    }

    void theWaitingPictureGrowsWithItsScale()
    {
        const EngineRig rig;
        const QString text = "Waiting for game data"_q;
        for (const int scale : {1, 3})
            QCOMPARE(*rig.engine->createWaitingImage(scale),
                     paintedText(480 * scale, 272 * scale, text, 25 * scale, Centred));
        for (const int scale : {0, -1, -Largest, Largest})
            QVERIFY(rig.engine->createWaitingImage(scale)->isNull());
        const Shouter shouter("DashboardEngine");
        QCOMPARE(*rig.engine->createWaitingImage(1),
                 paintedText(480, 272, text.toUpper(), 25, Centred));
    }
};

QTEST_MAIN(DeliveryTest)
#include "DeliveryTest.moc"
