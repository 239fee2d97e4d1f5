#include "engine/DashboardEngine.h"
#include "views/EditorBench.h"

#include <QtTest/QtTest>

namespace {

QByteArray document(const char *colour)
{
    return QByteArray("import QtQuick 2.15\nRectangle { width: 480; height: 272; color: \"") +
           colour + "\"\n Text { text: dash_gear_str } }\n";
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
};

QTEST_MAIN(EditorPreviewTest)
#include "EditorPreviewTest.moc"
