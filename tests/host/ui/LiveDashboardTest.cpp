#include "ui/LiveDashboard.h"

#include "IDashboardConsumer.h"
#include "support/FakeEngine.h"

#include <QtQuick/QQuickWindow>
#include <QtTest/QtTest>

class LiveDashboardTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        engine.waiting.fill(Qt::blue);
        window = std::make_unique<QQuickWindow>();
        window->resize(600, 272);
        item = new LiveDashboard(window->contentItem());
        item->setSize(QSizeF(600, 272));
        item->attach(engine);
        QVERIFY(!engine.hasConsumers());
        window->show();
        QVERIFY(QTest::qWaitForWindowExposed(window.get()));
    }

    void cleanup()
    {
        window.reset();
        QVERIFY(!engine.hasConsumers());
    }

    void waitsAndThenShowsEachFrame()
    {
        QCOMPARE(middle(), QColor(Qt::blue));
        QCOMPARE(QSize(item->frameWidth(), item->frameHeight()), QSize(480, 272));
        for (const Qt::GlobalColor color : {Qt::red, Qt::green, Qt::red}) {
            deliver(color);
            deliver(color);
            QCOMPARE(middle(), QColor(color));
        }
        item->setSize(QSizeF(300, 400));
        QCOMPARE(QSize(item->frameWidth(), item->frameHeight()), QSize(300, 170));
        item->setSize(QSizeF(600, 272));
        item->showWaiting();
        QTRY_COMPARE(middle(), QColor(Qt::blue));
        Frame tooShort(100);
        item->deliverFrame(tooShort, 480);
        QCOMPARE(middle(), QColor(Qt::blue));
    }

    void isNoConsumerWhileNobodySeesIt()
    {
        const std::vector<std::function<void(bool)>> ways{
            [this](bool seen) { item->setVisible(seen); },
            [this](bool seen) { window->setVisible(seen); },
            [this](bool seen) { seen ? window->showNormal() : window->showMinimized(); },
            [this](bool seen) { item->setParentItem(seen ? window->contentItem() : nullptr); }};
        for (const auto &setSeen : ways) {
            setSeen(false);
            QVERIFY(!engine.hasConsumers());
            setSeen(true);
            QVERIFY(engine.hasConsumers());
        }
    }

    void mayEndAtAnyMoment()
    {
        for (int round = 0; round < 50; ++round) {
            const auto other = std::make_unique<LiveDashboard>(window->contentItem());
            other->setSize(QSizeF(480, 272));
            other->attach(engine);
            for (int frame = 0; frame < round % 5; ++frame) {
                deliver(Qt::green);
                QCoreApplication::processEvents();
            }
        }
        deliver(Qt::red);
        QCOMPARE(middle(), QColor(Qt::red));
    }

private:
    void deliver(Qt::GlobalColor color)
    {
        for (IDashboardConsumer *consumer : engine.consumers) {
            QImage image(consumer->frameWidth(), consumer->frameHeight(),
                         QImage::Format_ARGB32_Premultiplied);
            image.fill(color);
            buffer.assign(image.constBits(), image.constBits() + image.sizeInBytes());
            consumer->deliverFrame(buffer, image.width());
        }
    }

    QColor middle() const { return window->grabWindow().pixelColor(300, 136); }

    FakeEngine engine;
    Frame buffer;
    std::unique_ptr<QQuickWindow> window;
    LiveDashboard *item = nullptr;
};

QTEST_MAIN(LiveDashboardTest)
#include "LiveDashboardTest.moc"
