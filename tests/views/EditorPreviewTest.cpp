#include "engine/DashboardEngine.h"
#include "views/EditorRig.h"

#include <QtNetwork/QTcpServer>
#include <QtTest/QtTest>

/// The editor with a real renderer.
class EditorPreviewTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void thePreviewFollowsTheFileThroughErrors()
    {
        QTcpServer server; // Accepts connections and never answers.
        QVERIFY(server.listen(QHostAddress::LocalHost));
        const QByteArray address = "http://127.0.0.1:" + QByteArray::number(server.serverPort());
        const auto coloured = [](const char *colour, const QByteArray &child = {}) {
            return QByteArray(
                       "import QtQuick 2.15\nRectangle { width: 480; height: 272; color: '") +
                   colour + "'; Text { text: dash_gear_str }\n" + child + "}";
        };
        const QByteArray loader = "Loader { source: '" + address + "/Part.qml'; asynchronous: ";
        const std::pair<QByteArray, Qt::GlobalColor> steps[] = {
            {coloured("red"), Qt::red},
            {"import QtQuick 2.15\nRectangle { color: nothing.at.all }", Qt::black},
            {coloured("blue"), Qt::blue},
            {"import '" + address + "/parts'\nRemote {}", Qt::black},
            {coloured("red", loader + "false }"), Qt::red},
            {coloured("blue", loader + "true }"), Qt::blue},
        };
        const TemporaryHome home;
        const QString path = home.path("/Dash.qml");
        DashboardEngine engine(false, true);
        QQmlEngine qml;
        auto model = std::make_unique<DashboardEditorVM>(&engine, nullptr);
        model->initContext(qml.rootContext());
        QCOMPARE(model->fieldNames().split(QLatin1Char('\n')).size(), 129);
        auto *provider = static_cast<QQuickImageProvider *>(qml.imageProvider("dashEditor"_q));
        const auto corner = [provider] {
            const QImage image = provider->requestImage({}, nullptr, QSize(854, 0));
            return image.pixelColor(image.width() - 1, image.height() - 1);
        };
        for (const auto &[text, colour] : steps) {
            writeFile(path, text);
            model->setPath(path);
            QTRY_COMPARE_WITH_TIMEOUT(corner(), QColor(colour), 30'000);
        }
        QTRY_VERIFY_WITH_TIMEOUT(server.hasPendingConnections(), 30'000);
        model.reset(); // In the middle of a load.
        QCOMPARE(provider->requestImage({}, nullptr, {}).size(), QSize(1, 1));
    }
};

QTEST_MAIN(EditorPreviewTest)
#include "EditorPreviewTest.moc"
