#include "views/DashboardWindowVM.h"
#include "support/EngineRig.h"
#include "support/FakeEngine.h"

#include <QtQml/QQmlContext>
#include <QtQml/QQmlEngine>
#include <QtTest/QtTest>

#include <algorithm>
#include <array>
#include <atomic>
#include <thread>

namespace {

const QString Id = QStringLiteral("preview?id=true");

QQuickImageProvider *provider(const QQmlEngine &engine)
{
    return static_cast<QQuickImageProvider *>(engine.imageProvider(QStringLiteral("dashWindow")));
}

/// A view model as a host has it before any window, on an engine that renders nothing.
struct View
{
    FakeEngine engine;
    std::unique_ptr<QQmlEngine> qml = std::make_unique<QQmlEngine>();
    std::unique_ptr<DashboardWindowVM> model = std::make_unique<DashboardWindowVM>(&engine);
    QSignalSpy changes{model.get(), &DashboardWindowVM::previewChanged};
    IDashboardConsumer *consumer = engine.last;

    View() { model->initContext(qml->rootContext()); }

    QImage request(QSize *size = nullptr, const QSize &requested = {}) const
    {
        return provider(*qml)->requestImage(Id, size, requested);
    }
    void deliver(int width, int height, unsigned char fill) const
    {
        Frame frame(frameBytes(width, height), fill);
        consumer->deliverFrame(frame, width);
    }
};

/// Whether every byte of the picture is `fill`.
bool isFilled(const QImage &image, const QSize &size, unsigned char fill)
{
    const auto *bits = image.constBits();
    return image.size() == size && image.format() == QImage::Format_ARGB32_Premultiplied &&
           std::all_of(bits, bits + image.sizeInBytes(),
                       [fill](unsigned char byte) { return byte == fill; });
}

} // namespace

class DashboardWindowVMTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void isAConsumerFromTheBeginning()
    {
        FakeEngine engine;
        const DashboardWindowVM model(&engine);
        QCOMPARE(engine.calls, QStringList({QStringLiteral("waiting 1"), QStringLiteral("add")}));
        IDashboardConsumer *consumer = engine.last;
        QCOMPARE(consumer->frameWidth(), 0);
        QCOMPARE(consumer->frameHeight(), 0);
        QCOMPARE(consumer->isUpsideDown(), false);
        QCOMPARE(consumer->lastActivity(), 0U);
    }

    void showsTheHostWhatItExpects()
    {
        const View view;
        IViewModel &model = *view.model;
        QCOMPARE(model.asQObject(), view.model.get());
        QVERIFY(view.model->parent() == nullptr);
        QCOMPARE(model.viewFlagA(), false);
        QCOMPARE(model.viewFlagB(), true);
        const QMetaObject *meta = model.asQObject()->metaObject();
        QCOMPARE(meta->propertyCount(), QObject::staticMetaObject.propertyCount());
        QCOMPARE(meta->methodCount(), QObject::staticMetaObject.methodCount() + 1);
        QCOMPARE(meta->method(meta->methodOffset()).methodSignature(),
                 QByteArray("previewChanged()"));
        model.setArgument(this, 7, QStringLiteral("anything"));
        QVERIFY(view.changes.isEmpty());
    }

    void theWaitingPictureStandsUntilAFrameOfTheRightSize()
    {
        const EngineRig bench;
        bench.engine->setDashboardFile(QStringLiteral("/no/such/Dash.qml"));
        QQmlEngine qml;
        DashboardWindowVM model(bench.engine.get());
        model.initContext(qml.rootContext());
        const QSignalSpy changes(&model, &DashboardWindowVM::previewChanged);
        const QImage waiting = *bench.engine->createWaitingImage(1);

        QSize size;
        QCOMPARE(provider(qml)->requestImage(Id, &size, {}), waiting);
        bench.freshTick();
        QCOMPARE(changes.count(), 1);
        QCOMPARE(provider(qml)->requestImage(Id, &size, QSize(30, 20)), waiting);
        QCOMPARE(size, QSize(480, 272));

        QWindow window;
        window.resize(60, 40);
        model.setWindow(&window);
        bench.freshTick();
        QVERIFY(isFilled(provider(qml)->requestImage(Id, &size, QSize(30, 20)), {60, 40}, 1));
        QCOMPARE(size, QSize(60, 40));

        window.resize(10, 10);
        QVERIFY(isFilled(provider(qml)->requestImage(Id, &size, {}), {60, 40}, 1));
        QCOMPARE(size, QSize(60, 40));
        bench.freshTick();
        QVERIFY(isFilled(provider(qml)->requestImage(Id, nullptr, {}), {10, 10}, 1));
    }

    void framesAreAsLargeAsTheWindowUpToTheLimits_data()
    {
        QTest::addColumn<QSize>("window");
        QTest::addColumn<QSize>("frame");
        QTest::newRow("small") << QSize(300, 100) << QSize(300, 100);
        QTest::newRow("at the limits") << QSize(1440, 816) << QSize(1440, 816);
        QTest::newRow("too wide") << QSize(1441, 500) << QSize(1440, 500);
        QTest::newRow("too high") << QSize(1000, 2000) << QSize(1000, 816);
        QTest::newRow("both") << QSize(1920, 1080) << QSize(1440, 816);
    }
    void framesAreAsLargeAsTheWindowUpToTheLimits()
    {
        QFETCH(QSize, window);
        QFETCH(QSize, frame);
        const View view;
        QWindow shown;
        shown.resize(window);
        view.model->setWindow(&shown);
        QCOMPARE(QSize(view.consumer->frameWidth(), view.consumer->frameHeight()), frame);
        view.deliver(frame.width(), frame.height(), 5);
        QVERIFY(isFilled(view.request(), frame, 5));
    }

    void theSizeFollowsTheWindowToItsEnd()
    {
        const View view;
        auto window = std::make_unique<QWindow>();
        view.model->setWindow(window.get());
        window->resize(111, 55);
        QCOMPARE(view.consumer->frameWidth(), 111);
        window->setHeight(66);
        QCOMPARE(view.consumer->frameHeight(), 66);

        QWindow second;
        second.resize(20, 10);
        view.model->setWindow(&second);
        window->resize(300, 300);
        QCOMPARE(view.consumer->frameWidth(), 20);
        view.model->setWindow(window.get());
        QCOMPARE(view.consumer->frameWidth(), 300);
        window.reset();
        QCOMPARE(view.consumer->frameWidth(), 0);
        QCOMPARE(view.consumer->frameHeight(), 0);
        view.model->setWindow(&second);
        view.model->setWindow(nullptr);
        QCOMPARE(view.consumer->frameWidth(), 0);
    }

    void aFrameWithoutAPositiveSizeIsNoPicture()
    {
        const View view;
        const QImage waiting = view.request();
        view.deliver(0, 0, 0);
        QCOMPARE(view.request(), waiting);
        view.deliver(1, 1, 9);
        QCOMPARE(view.request(), waiting);
    }

    void theSizeMayBeAskedOnAnyThread()
    {
        const View view;
        QWindow window;
        window.resize(100, 100);
        view.model->setWindow(&window);
        std::atomic<bool> stop{false};
        std::atomic<int> strange{0};
        std::atomic<int> asked{0};
        std::thread other([&] {
            while (!stop) {
                const int width = view.consumer->frameWidth();
                const int height = view.consumer->frameHeight();
                strange += width < 100 || width > 1100 || height < 100 || height > 816 ? 1 : 0;
                static_cast<void>(view.request());
                ++asked;
            }
        });
        for (int size = 100; size <= 1100 || asked < 100; ++size) {
            window.resize(std::min(size, 1100), std::min(size, 1100));
            view.deliver(10, 10, 3);
        }
        stop = true;
        other.join();
        QCOMPARE(strange.load(), 0);
        QCOMPARE(view.consumer->frameHeight(), 816);
    }

    void aDeliverySwapsTheVectorsAndSignals()
    {
        const View view;
        Frame first(16, 1);
        Frame second(16, 2);
        const unsigned char *firstPixels = first.data();
        const unsigned char *secondPixels = second.data();
        view.consumer->deliverFrame(first, 2);
        QVERIFY(first.empty());
        view.consumer->deliverFrame(second, 2);
        QCOMPARE(static_cast<const unsigned char *>(second.data()), firstPixels);
        view.consumer->deliverFrame(second, 2);
        QCOMPARE(static_cast<const unsigned char *>(second.data()), secondPixels);
        QCOMPARE(view.changes.count(), 3);
    }

    void theSignalComesOutsideTheLock()
    {
        const View view;
        QWindow window;
        window.resize(4, 4);
        view.model->setWindow(&window);
        QImage seen;
        connect(view.model.get(), &DashboardWindowVM::previewChanged, this,
                [&] { std::thread([&] { seen = view.request(); }).join(); });
        view.deliver(4, 4, 8);
        QVERIFY(isFilled(seen, {4, 4}, 8));
    }

    void picturesGivenOutStayAsTheyWere()
    {
        const View view;
        QWindow window;
        window.resize(8, 4);
        view.model->setWindow(&window);
        std::vector<QImage> given;
        for (unsigned char fill = 1; fill <= 6; ++fill) {
            view.deliver(8, 4, fill);
            given.push_back(view.request());
        }
        for (unsigned char fill = 1; fill <= 6; ++fill)
            QVERIFY(isFilled(given[fill - 1U], {8, 4}, fill));
    }

    void requestsReuseTheirMemory()
    {
        const View view;
        QWindow window;
        window.resize(64, 32);
        view.model->setWindow(&window);
        std::set<const unsigned char *> unheld;
        for (unsigned char fill = 1; fill <= 10; ++fill) {
            view.deliver(64, 32, fill);
            unheld.insert(view.request().constBits());
        }
        QCOMPARE(unheld.size(), 1U);

        // A document holds its picture until it has the next one.
        std::set<const unsigned char *> held;
        QImage shown = view.request();
        for (unsigned char fill = 1; fill <= 10; ++fill) {
            view.deliver(64, 32, fill);
            shown = view.request();
            held.insert(shown.constBits());
            QVERIFY(isFilled(shown, {64, 32}, fill));
        }
        QCOMPARE(held.size(), 2U);
    }

    void aHiddenWindowGetsNoFrames()
    {
        View view;
        view.engine.takeCalls();
        QWindow window;
        view.model->setWindow(&window);
        QCOMPARE(view.engine.takeCalls(), QStringList());
        window.show();
        QCOMPARE(view.engine.takeCalls(), QStringList({QStringLiteral("add")}));
        window.hide();
        QCOMPARE(view.engine.takeCalls(), QStringList({QStringLiteral("remove")}));
        QVERIFY(!view.engine.hasConsumers());
        window.show();
        QVERIFY(view.engine.hasConsumers());

        QWindow second;
        view.model->setWindow(&second);
        window.hide();
        QVERIFY(view.engine.hasConsumers());
        second.show();
        second.hide();
        QVERIFY(!view.engine.hasConsumers());
    }

    void theWindowMayGoWhileAFrameComes_data()
    {
        QTest::addColumn<bool>("closes");
        QTest::newRow("hidden") << false;
        QTest::newRow("closed") << true;
    }
    void theWindowMayGoWhileAFrameComes()
    {
        QFETCH(bool, closes);
        const EngineRig bench;
        bench.engine->setDashboardFile(QStringLiteral("/no/such/Dash.qml"));
        QWindow window;
        window.resize(60, 40);
        auto model = std::make_unique<DashboardWindowVM>(bench.engine.get());
        model->setWindow(&window);
        window.show();
        const QSignalSpy changes(model.get(), &DashboardWindowVM::previewChanged);
        connect(model.get(), &DashboardWindowVM::previewChanged, this, [&] {
            window.hide();
            if (closes)
                model.reset();
        });
        bench.freshTick();
        QVERIFY(!bench.engine->hasConsumers());
        bench.freshTick();
        QCOMPARE(changes.count(), 1);
    }

    void withoutAnEngineNothingHappens()
    {
        QQmlEngine qml;
        QWindow window;
        DashboardWindowVM model(nullptr);
        model.initContext(qml.rootContext());
        model.setWindow(&window);
        window.show();
        window.hide();
        QSize size(1, 1);
        QVERIFY(provider(qml)->requestImage(Id, &size, {}).isNull());
        QCOMPARE(size, QSize(0, 0));
    }

    void aContextThatIsNoneTakesNoProvider()
    {
        FakeEngine engine;
        DashboardWindowVM model(&engine);
        model.initContext(nullptr);
        QQmlEngine first;
        QQmlEngine second;
        model.initContext(first.rootContext());
        model.initContext(first.rootContext());
        model.initContext(second.rootContext());
        QVERIFY(provider(first) != nullptr);
        QVERIFY(provider(second) == nullptr);
    }

    void theProviderOutlivesTheViewModel()
    {
        View view;
        QWindow window;
        window.resize(4, 4);
        view.model->setWindow(&window);
        view.deliver(4, 4, 8);
        QVERIFY(isFilled(view.request(), {4, 4}, 8));
        view.engine.takeCalls();
        view.model.reset();
        QCOMPARE(view.engine.takeCalls(), QStringList({QStringLiteral("remove")}));

        window.resize(9, 9);
        QCOMPARE(view.consumer->frameWidth(), 0);
        view.deliver(4, 4, 7);
        QSize size;
        QVERIFY(isFilled(view.request(&size), {4, 4}, 8));
        QCOMPARE(size, QSize(4, 4));
    }

    void theViewModelOutlivesTheProvider()
    {
        View view;
        QWindow window;
        view.model->setWindow(&window);
        view.qml.reset();
        QVERIFY(!view.engine.hasConsumers());
        window.show();
        window.resize(50, 50);
        view.model->setWindow(nullptr);
        view.model.reset();
        QVERIFY(!view.engine.hasConsumers());
    }

    void everyOrderOfEndsIsSafeWhileTelemetryRuns()
    {
        enum Step { Show, Hide, Close, DestroyWindow, DestroyModel, DestroyQml };
        std::array<Step, 6> steps{Show, Hide, Close, DestroyWindow, DestroyModel, DestroyQml};
        const EngineRig bench;
        bench.engine->setDashboardFile(QStringLiteral("/no/such/Dash.qml"));
        int orders = 0;
        do {
            auto qml = std::make_unique<QQmlEngine>();
            auto model = std::make_unique<DashboardWindowVM>(bench.engine.get());
            auto window = std::make_unique<QWindow>();
            window->resize(6, 5);
            model->initContext(qml->rootContext());
            model->setWindow(window.get());
            for (const Step step : steps) {
                if (step == DestroyWindow)
                    window.reset();
                else if (step == DestroyModel)
                    model.reset();
                else if (step == DestroyQml)
                    qml.reset();
                else if (window != nullptr)
                    step == Show   ? window->show()
                    : step == Hide ? window->hide()
                                   : void(window->close());
                bench.freshTick();
                if (qml != nullptr)
                    QVERIFY(!provider(*qml)->requestImage(Id, nullptr, {}).isNull());
            }
            QVERIFY(!bench.engine->hasConsumers());
            ++orders;
        } while (std::next_permutation(steps.begin(), steps.end()));
        QCOMPARE(orders, 720);
    }
};

QTEST_MAIN(DashboardWindowVMTest)
#include "DashboardWindowVMTest.moc"
