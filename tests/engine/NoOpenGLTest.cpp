#include "engine/DashboardEngine.h"
#include "plugin/IDashboardRenderer.h"
#include "support/FakeConsumer.h"
#include "support/LogCapture.h"
#include "support/PaintedText.h"

#include <QtCore/QTemporaryDir>
#include <QtGui/QFontDatabase>
#include <QtGui/QOpenGLContext>
#include <QtTest/QtTest>

/// The product's engine with its real renderer on a machine that has no OpenGL, or where the user
/// has told Qt Quick to do without.
class NoOpenGLTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        QVERIFY2(QOpenGLContext().create() == qEnvironmentVariableIsSet("QT_QUICK_BACKEND"),
                 "this platform has OpenGL");
        QVERIFY(directory.isValid());
        document = directory.filePath(QStringLiteral("Dash.qml"));
        QFile file(document);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("import QtQuick 2.15\n"
                   "Rectangle {\n"
                   "    width: 480; height: 272; color: \"red\"\n"
                   "    Text { text: dash_speed_kmh + 'km/h' }\n"
                   "}\n");
    }

    void consumersGetTheReasonAsTheirPicture()
    {
        LogCapture log;
        DashboardEngine engine(false, true);
        FakeConsumer consumer(480, 272);
        FakeConsumer unsized(0, 0);
        FakeConsumer small(25, 25); // Too small for any text.
        for (FakeConsumer *each : {&consumer, &unsized, &small})
            engine.addConsumer(each);
        engine.setDashboardFile(document);
        tick(engine);
        QCOMPARE(log.critical(),
                 QStringList({QStringLiteral("critical: Dashboard: Failed to load: ") +
                                  QDir::toNativeSeparators(document),
                              QStringLiteral("critical: ") + reason}));
        QCOMPARE(consumer.deliveries.size(), 0U);

        tick(engine);
        tick(engine);
        QCOMPARE(log.critical().size(), 2);
        QCOMPARE(consumer.deliveries.size(), 2U);
        const QImage expected =
            paintedText(480, 272, reason + QLatin1Char('\n'), 19, Qt::TextWordWrap);
        for (const Delivery &delivery : consumer.deliveries)
            QCOMPARE(frameImage(delivery.frame, 480), expected);
        const auto &frame = consumer.deliveries.back().frame;
        QCOMPARE(std::count(frame.cbegin(), frame.cend(), 0xFF) > 130'560, hasFonts());
        QCOMPARE(unsized.deliveries.back().frame, Frame(4, 0));
        QCOMPARE(small.deliveries.back().frame, Frame(2500, 0));
    }

    void aRendererOfItsOwnFailsTheSameWay()
    {
        DashboardEngine engine(false, true);
        const std::unique_ptr<IDashboardRenderer> renderer = engine.createRenderer();
        QVERIFY(renderer != nullptr);
        QVERIFY(!renderer->load(document, 480, 272));
        QCOMPARE(renderer->errors(), QStringList(reason));
        Frame frame;
        QVERIFY(renderer->renderFrame(frame, 100, 100, true));
        QCOMPARE(frame.size(), 40'000U);
        QVERIFY(!renderer->load(document, 480, 272));
        QCOMPARE(renderer->errors().size(), 1);
    }

    void anotherDocumentMayFailForAnotherReason()
    {
        const LogCapture log;
        DashboardEngine engine(false, true);
        FakeConsumer consumer(480, 272);
        engine.addConsumer(&consumer);
        engine.setDashboardFile(directory.filePath(QStringLiteral("Missing.qml")));
        tick(engine);
        QCOMPARE(log.critical().size(), 2);
        QVERIFY(log.critical().at(1).contains(QStringLiteral("Missing.qml")));
        engine.setDashboardFile(document);
        tick(engine);
        QCOMPARE(log.critical().size(), 4);
        QCOMPARE(log.critical().at(3), QStringLiteral("critical: ") + reason);
        const auto sizes = {1, 2, 26, 20'000};
        for (const int size : sizes) {
            consumer.width = size;
            consumer.height = 30;
            tick(engine);
            QCOMPARE(consumer.deliveries.back().frame.size(), std::size_t(size) * 30 * 4);
        }
    }

private:
    static void tick(DashboardEngine &engine)
    {
        engine.updateTelemetry({}, {}, {}, false);
        QMetaObject::invokeMethod(&engine, "render", Qt::DirectConnection);
    }

    static bool hasFonts() { return !QFontDatabase().families().isEmpty(); }

    const QString reason = qEnvironmentVariableIsSet("QT_QUICK_BACKEND")
                               ? QStringLiteral("Failed to setup context/surface: Qt Quick renders "
                                                "without OpenGL (\"software\")")
                               : QStringLiteral("Failed to setup context/surface");
    const QTemporaryDir directory;
    QString document;
};

QTEST_MAIN(NoOpenGLTest)
#include "NoOpenGLTest.moc"
