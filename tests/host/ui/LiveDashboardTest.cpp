#include "ui/LiveDashboard.h"

#include "FakeEngine.h"

#include <QtQuick/QQuickWindow>
#include <QtTest/QtTest>

namespace {

/// The colour in the middle of the window, once it has been drawn.
QColor middle(QQuickWindow &window)
{
    const QImage picture = window.grabWindow();
    return picture.pixelColor(picture.rect().center());
}

} // namespace

class LiveDashboardTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        engine = std::make_unique<FakeEngine>();
        window = std::make_unique<QQuickWindow>();
        window->resize(600, 272);
        item = new LiveDashboard(window->contentItem());
        item->setSize(QSizeF(600, 272));
        item->attach(*engine);
    }

    void cleanup()
    {
        window.reset();
        QVERIFY(!engine->hasConsumers());
        engine.reset();
    }

    void waitsAndThenShowsEachFrame()
    {
        show();
        QCOMPARE(middle(*window), QColor(Qt::blue));
        QCOMPARE(item->frameWidth(), 480);
        QCOMPARE(item->frameHeight(), 272);
        for (const Qt::GlobalColor color : {Qt::red, Qt::green, Qt::red}) {
            engine->deliver(color);
            engine->deliver(color);
            QCOMPARE(middle(*window), QColor(color));
        }
        item->setSize(QSizeF(300, 400));
        QCOMPARE(item->frameWidth(), 300);
        QCOMPARE(item->frameHeight(), 170);
        item->showWaiting();
        QTRY_COMPARE(window->grabWindow().pixelColor(150, 200), QColor(Qt::blue));
    }

    void isNoConsumerWhileNobodySeesIt()
    {
        QVERIFY(!engine->hasConsumers());
        show();
        QVERIFY(engine->hasConsumers());
        item->setVisible(false);
        QVERIFY(!engine->hasConsumers());
        item->setVisible(true);
        QVERIFY(engine->hasConsumers());
        window->hide();
        QVERIFY(!engine->hasConsumers());
        window->show();
        QVERIFY(engine->hasConsumers());
        window->showMinimized();
        QVERIFY(!engine->hasConsumers());
        window->showNormal();
        QVERIFY(engine->hasConsumers());
        item->setParentItem(nullptr);
        QVERIFY(!engine->hasConsumers());
        item->setParentItem(window->contentItem());
        QVERIFY(engine->hasConsumers());
    }

    void keepsItsPictureWhenTheGraphicsGo()
    {
        window->setPersistentSceneGraph(false);
        window->setPersistentOpenGLContext(false);
        show();
        engine->deliver(Qt::red);
        QCOMPARE(middle(*window), QColor(Qt::red));
        window->hide();
        show();
        QTRY_VERIFY(!window->grabWindow().isNull());
        QCOMPARE(middle(*window), QColor(Qt::blue));
        engine->deliver(Qt::green);
        QCOMPARE(middle(*window), QColor(Qt::green));
    }

    void leavesFramesThatHoldNothing()
    {
        show();
        Frame empty;
        item->deliverFrame(empty, 480);
        Frame shortOne(100);
        item->deliverFrame(shortOne, 480);
        item->deliverFrame(shortOne, 0);
        QCOMPARE(shortOne.size(), std::size_t(100));
        QCOMPARE(middle(*window), QColor(Qt::blue));
    }

    void mayEndAtAnyMoment()
    {
        show();
        for (int round = 0; round < 50; ++round) {
            auto *const other = new LiveDashboard(window->contentItem());
            other->setSize(QSizeF(480, 272));
            other->attach(*engine);
            for (int frame = 0; frame < round % 5; ++frame) {
                engine->deliver(QColor::fromHsv(round * 7, 200, 200));
                QCoreApplication::processEvents();
            }
            delete other;
            engine->deliver(Qt::red);
        }
        QCOMPARE(middle(*window), QColor(Qt::red));
    }

private:
    void show() const
    {
        window->show();
        QVERIFY(QTest::qWaitForWindowExposed(window.get()));
    }

    std::unique_ptr<FakeEngine> engine;
    std::unique_ptr<QQuickWindow> window;
    LiveDashboard *item = nullptr;
};

QTEST_MAIN(LiveDashboardTest)
#include "LiveDashboardTest.moc"
