#include "docs/examples/LatestFrame.h"
#include "plugin/Exports.h"
#include "plugin/IDashboardEngine.h"
#include "plugin/IDashboardRenderer.h"
#include "plugin/IViewModel.h"
#include "plugin/TelemetryRecords.h"
#include "profiles/FakeProvider.h"
#include "support/FakeNavigation.h"
#include "support/LogCapture.h"
#include "support/TemporaryHome.h"
#include "support/TestFiles.h"

#include <QtCore/QLibrary>
#include <QtQml/QQmlComponent>
#include <QtQml/QQmlEngine>
#include <QtTest/QtTest>

namespace {

bool fadeCompiles()
{
    QQmlEngine engine;
    QQmlComponent component(&engine);
    component.setData("import DashboardFadeInOut 1.0\nDashboardFadeInOut {}\n", QUrl());
    return component.isReady();
}

bool resourcesAreThere()
{
    return QFile::exists(":/dash/qml/DashboardSysPanel.qml"_q) &&
           QFile::exists(":/dash/Dashboards_Idea"_q);
}

} // namespace

/// Uses the plug-in as a host does: through its file, its exports and the pure interfaces.
class PluginTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY2(library.load(), qPrintable(library.errorString()));
        QVERIFY(resourcesAreThere());
        QVERIFY(library.unload() && !resourcesAreThere());
        QVERIFY(library.load() && resourcesAreThere());
        engine.reset(reinterpret_cast<CreateEFunction>(library.resolve("CreateE"))(false, false));
        init = reinterpret_cast<InitFunction>(library.resolve("Init"));
    }
    void cleanupTestCase() { engine.reset(); }

    void anEngineWithoutAccelerationShowsItsMessage()
    {
        QVERIFY(engine->createRenderer() == nullptr);
        LatestFrame latest; // The example of the integrator's guide.
        engine->addConsumer(&latest);
        engine->setDashboardFile("/no/such/Dash.qml"_q);
        engine->updateTelemetry({}, {}, {}, false);
        QTRY_COMPARE_WITH_TIMEOUT(latest.picture().size(), QSize(480, 272), 30'000);
        engine->removeConsumer(&latest);
    }

    void theStoreRefusesNullPointers()
    {
        const auto create = reinterpret_cast<CreatePMFunction>(library.resolve("CreatePM"));
        FakeProvider provider;
        QVERIFY(create(nullptr, &provider) == nullptr);
        QVERIFY(create(engine.get(), nullptr) == nullptr);
    }

    void initRegistersTheViewsInOrderAndTheFade()
    {
        const TemporaryHome home;
        FakeNavigation navigation;
        const LogCapture log;
        init(&navigation, nullptr);
        init(nullptr, engine.get());
        QCOMPARE(log.lines.join(u'|'),
                 "critical: DASHUI: Null pointer|critical: DASHUI: Null pointer"_q);
        QVERIFY(navigation.views.isEmpty() && !fadeCompiles());
        init(&navigation, engine.get());
        QVERIFY(fadeCompiles());
        QCOMPARE(navigation.views,
                 QStringList({"DashboardEditor :/dash/qml/DashboardEditor.qml"_q,
                              "DashboardWindow :/dash/qml/DashboardWindow.qml"_q}));
        for (const ViewModelFactory &factory : navigation.factories) {
            const bool isWindow = &factory == &navigation.factories.back();
            std::unique_ptr<IViewModel> first(factory());
            const std::unique_ptr<IViewModel> second(factory());
            QCOMPARE(first->asQObject()->metaObject()->className(),
                     isWindow ? "DashboardWindowVM" : "DashboardEditorVM");
            QVERIFY(first->asQObject()->parent() == nullptr);
            first.reset(); // The second is another one.
            QCOMPARE(engine->hasConsumers(), isWindow);
        }
    }

private:
    QLibrary library{QStringLiteral(GAUGE64_FILE)};
    std::unique_ptr<IDashboardEngine> engine;
    InitFunction init = nullptr;
};

QTEST_MAIN(PluginTest)
#include "PluginTest.moc"
