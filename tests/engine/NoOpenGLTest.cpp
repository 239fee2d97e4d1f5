#include "support/DocumentFolder.h"
#include "support/EngineRig.h"
#include "support/LogCapture.h"
#include "support/PaintedText.h"

#include <QtGui/QOpenGLContext>

/// The product's engine with its real renderer where there is no OpenGL, or where the user has told
/// Qt Quick to do without.
class NoOpenGLTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void consumersGetTheReasonAsTheirPicture()
    {
        const bool software = qEnvironmentVariableIsSet("QT_QUICK_BACKEND");
        QVERIFY2(QOpenGLContext().create() == software, "this platform has OpenGL");
        QString reason = "Failed to setup context/surface"_q;
        if (software)
            reason += R"(: Qt Quick renders without OpenGL ("software"))"_q;
        const DocumentFolder folder;
        const QString good = folder.write("Dash.qml"_q, "import QtQuick 2.15\n"
                                                        "Text { text: dash_speed_kmh }\n");
        const LogCapture log;
        DashboardEngine engine(false, true);
        FakeConsumer consumer(480, 272);
        engine.addConsumer(&consumer);
        for (const QString &path : {folder.filePath("Missing.qml"_q), good, good}) {
            engine.setDashboardFile(path);
            for (int tick = 0; tick < 2; ++tick) {
                engine.updateTelemetry({}, {}, {}, false);
                QMetaObject::invokeMethod(&engine, "render", Qt::DirectConnection);
            }
        }
        QCOMPARE(consumer.deliveries.size(), 3U); // A load that fails ends its tick.
        QCOMPARE(log.critical().size(), 6);
        QCOMPARE(log.critical().constLast(), "critical: "_q + reason);
        const QImage expected = paintedText(480, 272, reason, 19, Qt::TextWordWrap);
        QCOMPARE(frameImage(consumer.deliveries.back().frame, 480, 272), expected);
    }
};

QTEST_MAIN(NoOpenGLTest)
#include "NoOpenGLTest.moc"
