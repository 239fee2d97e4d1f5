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
        const auto document = [](const QByteArray &inside) {
            return "import QtQuick 2.15\nRectangle { width: 480; height: 272; " + inside + "}";
        };
        const std::pair<QByteArray, Qt::GlobalColor> steps[] = {
            {document("color: 'red'"), Qt::red},
            {document("color: nothing.at.all"), Qt::black},
            {document("color: 'blue'; Text { text: dash_gear_str }"), Qt::blue},
            {"import '" + address + "/parts'\nRemote {}", Qt::black},
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
            return provider->requestImage({}, nullptr, QSize(854, 0)).pixelColor(0, 0);
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
