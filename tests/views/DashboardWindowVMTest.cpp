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

QQuickImageProvider *provider(const QQmlEngine &engine)
{
    return static_cast<QQuickImageProvider *>(engine.imageProvider(QStringLiteral("dashWindow")));
}

/// A view model with a hidden window, set up as a host does it, on an engine that renders nothing.
struct View
{
    FakeEngine engine;
    std::unique_ptr<QQmlEngine> qml = std::make_unique<QQmlEngine>();
    std::unique_ptr<DashboardWindowVM> model = std::make_unique<DashboardWindowVM>(&engine);
    IDashboardConsumer *consumer = engine.last;
    std::unique_ptr<QWindow> window = std::make_unique<QWindow>();

    explicit View(QSize size = {8, 4})
    {
        window->resize(size);
        model->initContext(qml->rootContext());
        model->setWindow(window.get());
    }
    QImage request() const
    {
        QSize size;
        QImage image = provider(*qml)->requestImage({}, &size, QSize(3, 2));
        return size == image.size() ? image : QImage();
    }
    void deliver(unsigned char fill, QSize size = {8, 4}) const
    {
        Frame frame(frameBytes(size.width(), size.height()), fill);
        consumer->deliverFrame(frame, size.width());
    }
    QSize wanted() const { return {consumer->frameWidth(), consumer->frameHeight()}; }
};

/// A picture whose every byte is `fill`.
QImage filled(unsigned char fill, QSize size = {8, 4})
{
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(fill * 0x01010101U);
    return image;
}

} // namespace

class DashboardWindowVMTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void isAConsumerFromTheBeginning()
    {
        FakeEngine engine;
        DashboardWindowVM model(&engine);
        QCOMPARE(engine.calls.join(QLatin1Char(' ')), QStringLiteral("waiting 1 add"));
        QCOMPARE(engine.last->frameWidth() + engine.last->frameHeight(), 0);
        QVERIFY(!engine.last->isUpsideDown() && engine.last->lastActivity() == 0);
        QVERIFY(model.asQObject() == &model && !model.viewFlagA() && model.viewFlagB());

        model.initContext(nullptr);
        QQmlEngine first;
        QQmlEngine second; // A provider belongs to only one.
        model.initContext(first.rootContext());
        model.initContext(second.rootContext());
        QVERIFY(provider(first) != nullptr && provider(second) == nullptr);
    }

    void theLastPictureStandsUntilAFrameOfTheWindowsSize()
    {
        View view;
        QCOMPARE(view.request(), view.engine.waiting);
        view.deliver(7, {1, 1});
        QCOMPARE(view.request(), view.engine.waiting);
        view.deliver(8);
        QCOMPARE(view.request(), filled(8));
        view.window->resize(5, 5);
        QCOMPARE(view.request(), filled(8));
        view.deliver(9, {5, 5});
        QCOMPARE(view.request(), filled(9, {5, 5}));
        view.model.reset();
        QCOMPARE(view.wanted(), QSize(0, 0));
        view.deliver(3, {5, 5});
        QCOMPARE(view.request(), filled(9, {5, 5}));
    }

    void framesFollowTheWindowUpToTheLimitsAndToItsEnd()
    {
        View view;
        const std::pair<QSize, QSize> sizes[] = {
            {{1440, 816}, {1440, 816}}, {{1441, 500}, {1440, 500}}, {{1000, 2000}, {1000, 816}}};
        for (const auto &[window, frame] : sizes) {
            view.window->resize(window);
            QCOMPARE(view.wanted(), frame);
        }
        view.window->setHeight(66);
        QCOMPARE(view.wanted(), QSize(1000, 66));
        view.window->show();
        view.window->hide();
        QVERIFY(!view.engine.hasConsumers());

        QWindow second;
        second.resize(20, 10);
        view.model->setWindow(&second);
        view.window->show(); // The view has let go of it.
        view.window->resize(300, 300);
        QCOMPARE(view.wanted(), QSize(20, 10));
        QVERIFY(!view.engine.hasConsumers());
        second.show();
        QVERIFY(view.engine.hasConsumers());
        view.model->setWindow(nullptr);
        QCOMPARE(view.wanted(), QSize(0, 0));
        view.model->setWindow(view.window.get());
        view.window.reset();
        QCOMPARE(view.wanted(), QSize(0, 0));
    }

    void sizeAndPictureMayBeAskedOnAnyThread()
    {
        const View view({100, 100});
        std::atomic<bool> stop{false};
        std::atomic<int> asked{0};
        std::atomic<int> answered{0};
        std::thread other([&] {
            for (; !stop; ++asked)
                answered += !view.wanted().isEmpty() && !view.request().isNull();
        });
        for (int size = 100; size <= 1100 || asked < 100; ++size) {
            view.window->resize(std::min(size, 1100), std::min(size, 1100));
            view.deliver(3);
        }
        stop = true;
        other.join();
        QCOMPARE(answered.load(), asked.load());
    }

    void aDeliverySwapsTheVectorsAndSignalsOutsideTheLock()
    {
        const View view;
        Frame first(frameBytes(8, 4), 1);
        Frame second(frameBytes(8, 4), 2);
        const uchar *const addresses[] = {first.data(), second.data()};
        QImage seen;
        connect(view.model.get(), &DashboardWindowVM::previewChanged, this,
                [&] { std::thread([&] { seen = view.request(); }).join(); });
        view.consumer->deliverFrame(first, 8);
        view.consumer->deliverFrame(second, 8);
        QVERIFY(first.empty());
        QVERIFY(second.data() == addresses[0]);
        QCOMPARE(seen, filled(2));
        view.consumer->deliverFrame(second, 8);
        QVERIFY(second.data() == addresses[1]);
    }

    void requestsReuseTheirMemoryButNoPictureThatIsHeld()
    {
        const View view;
        // A document holds its picture until it has the next one.
        for (const auto &[pictures, memory] : {std::pair(0, 1U), {1, 2U}, {10, 10U}}) {
            QVector<QImage> held;
            std::set<const uchar *> used;
            for (uchar fill = 1; fill <= 10; ++fill) {
                view.deliver(fill);
                held += view.request();
                used.insert(held.constLast().constBits());
                if (held.size() > pictures)
                    held.removeFirst();
            }
            QCOMPARE(used.size(), memory);
            for (int i = 0; i < pictures; ++i)
                QCOMPARE(held[i], filled(uchar(11 - pictures + i)));
        }
    }

    void everyOrderOfEndsIsSafeWhileTelemetryRuns()
    {
        enum Step { Show, Hide, Close, EndWindow, EndModel, EndQml };
        std::array steps{Show, Hide, Close, EndWindow, EndModel, EndQml};
        const EngineRig rig;
        rig.engine->setDashboardFile(QStringLiteral("/no/such/Dash.qml"));
        // With an engine and without one.
        for (IDashboardEngine *engine : std::array<IDashboardEngine *, 2>{rig.engine.get()}) {
            do {
                auto qml = std::make_unique<QQmlEngine>();
                auto model = std::make_unique<DashboardWindowVM>(engine);
                auto window = std::make_unique<QWindow>();
                model->initContext(qml->rootContext());
                model->setWindow(window.get());
                for (const Step step : steps) {
                    if (step == EndWindow)
                        window.reset();
                    else if (step == EndModel)
                        model.reset();
                    else if (step == EndQml)
                        qml.reset();
                    else if (step == Close && window != nullptr)
                        window->close();
                    else if (window != nullptr)
                        window->setVisible(step == Show);
                    rig.freshTick();
                    if (qml != nullptr)
                        QCOMPARE(provider(*qml)->requestImage({}, nullptr, {}).isNull(),
                                 engine == nullptr);
                }
                QVERIFY(!rig.engine->hasConsumers());
            } while (std::next_permutation(steps.begin(), steps.end()));
        }
    }
};

QTEST_MAIN(DashboardWindowVMTest)
#include "DashboardWindowVMTest.moc"
