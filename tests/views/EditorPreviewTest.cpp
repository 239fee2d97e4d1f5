#include "engine/DashboardEngine.h"
#include "views/EditorBench.h"

#include <QtNetwork/QTcpServer>
#include <QtTest/QtTest>

namespace {

QByteArray document(const char *colour, const char *child = "")
{
    return QByteArray("import QtQuick 2.15\nRectangle { width: 480; height: 272; color: \"") +
           colour + "\"\n Text { text: dash_gear_str }\n" + child + " }\n";
}

} // namespace

/// The editor with a renderer that really renders.
class EditorPreviewTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void thePreviewFollowsTheFileThroughErrors()
    {
        const TemporaryHome home;
        const QString path = home.path("/Dash.qml");
        writeFile(path, document("red"));
        DashboardEngine engine(false, true);
        QQmlEngine qml;
        auto model = std::make_unique<DashboardEditorVM>(&engine, nullptr);
        model->initContext(qml.rootContext());
        QCOMPARE(model->fieldNames().split(QLatin1Char('\n')).size(), 129);
        QVERIFY(model->fieldNames().contains("\ndash_gear_str\n"_q));

        auto *provider = static_cast<QQuickImageProvider *>(qml.imageProvider("dashEditor"_q));
        const auto corner = [provider](int width) {
            const QImage image = provider->requestImage({}, nullptr, QSize(width, 0));
            return image.pixel(image.width() - 1, image.height() - 1);
        };
        const QString names = model->fieldNames();
        model->setPath(path);
        QCOMPARE(corner(0), qRgb(255, 0, 0));
        QCOMPARE(corner(854), qRgb(255, 0, 0));

        writeFile(path, "import QtQuick 2.15\nRectangle { color: nothing.at.all }\n");
        QTRY_COMPARE_WITH_TIMEOUT(corner(854), qRgb(0, 0, 0), 30'000);
        QCOMPARE(provider->requestImage({}, nullptr, QSize(25, 0)).size(), QSize(1, 1));
        QCOMPARE(provider->requestImage({}, nullptr, QSize(26, 0)).size(), QSize(26, 14));
        writeFile(path, document("blue"));
        QTRY_COMPARE_WITH_TIMEOUT(corner(100), qRgb(0, 0, 255), 30'000);
        QVERIFY(QFile::remove(path));
        QTRY_COMPARE_WITH_TIMEOUT(corner(100), qRgb(0, 0, 0), 30'000);
        QCOMPARE(model->fieldNames(), names);

        for (const int width : {1, 20'000})
            static_cast<void>(provider->requestImage({}, nullptr, QSize(width, 0)));
        model.reset();
        QCOMPARE(provider->requestImage({}, nullptr, {}).size(), QSize(1, 1));
    }

    void aDocumentThatNeverEndsLoadingHoldsNothingUp_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QRgb>("corner");
        QTest::newRow("import") << QByteArray("import \"%1/parts\"\nRemote {}") << qRgb(0, 0, 0);
        QTest::newRow("loader") << document("red", "Loader { source: \"%1/Part.qml\" }")
                                << qRgb(255, 0, 0);
        QTest::newRow("asynchronous loader")
            << document("red", "Loader { asynchronous: true; source: \"%1/Part.qml\" }")
            << qRgb(255, 0, 0);
        QTest::newRow("asynchronous loader of ten thousand items")
            << document("red", "Loader { asynchronous: true; sourceComponent: Repeater {"
                               " model: 10; Loader { asynchronous: true; sourceComponent:"
                               " Repeater { model: 1000; Item {} } } } }")
            << qRgb(255, 0, 0);
    }
    void aDocumentThatNeverEndsLoadingHoldsNothingUp()
    {
        QFETCH(QByteArray, text);
        QFETCH(QRgb, corner);
        QTcpServer server; // Takes connections and never answers.
        QVERIFY(server.listen(QHostAddress::LocalHost));
        const TemporaryHome home;
        const QString path = home.path("/Dash.qml");
        const QString good = home.path("/Good.qml");
        const QByteArray address = "http://127.0.0.1:" + QByteArray::number(server.serverPort());
        writeFile(path, text.replace("%1", address));
        writeFile(good, document("blue"));
        DashboardEngine engine(false, true);
        QQmlEngine qml;
        auto model = std::make_unique<DashboardEditorVM>(&engine, nullptr);
        model->initContext(qml.rootContext());
        auto *provider = static_cast<QQuickImageProvider *>(qml.imageProvider("dashEditor"_q));
        const auto pixel = [provider] {
            const QImage image = provider->requestImage({}, nullptr, {});
            return image.pixel(image.width() - 1, image.height() - 1);
        };
        const bool remote = text.contains(address);
        for (int round = 0; round < 2; ++round) {
            model->setPath(path);
            QCOMPARE(pixel(), corner);
            if (remote)
                QTRY_VERIFY_WITH_TIMEOUT(server.hasPendingConnections(), 30'000);
            QCOMPARE(pixel(), corner);
            model->setPath(good);
            QCOMPARE(pixel(), qRgb(0, 0, 255));
        }
        model->setPath(path);
        model.reset();
    }
};

QTEST_MAIN(EditorPreviewTest)
#include "EditorPreviewTest.moc"
