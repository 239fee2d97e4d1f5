#include "docs/examples/LatestFrame.h"
#include "plugin/Exports.h"
#include "plugin/IDashboardConsumer.h"
#include "plugin/IDashboardEngine.h"
#include "plugin/IDashboardRenderer.h"
#include "plugin/INavigationService.h"
#include "plugin/IViewModel.h"
#include "plugin/TelemetryRecords.h"
#include "support/FakeConsumer.h"
#include "support/LogCapture.h"
#include "support/TemporaryHome.h"

#include <QtCore/QFile>
#include <QtCore/QLibrary>
#include <QtCore/QPointer>
#include <QtGui/QImage>
#include <QtQml/QQmlComponent>
#include <QtQml/QQmlEngine>
#include <QtTest/QtTest>

namespace {

/// A registry of views that copies the factories, as a host must.
class Registry final : public INavigationService
{
public:
    struct View
    {
        QString name;
        QString document;
        ViewModelFactory factory;
    };
    std::vector<View> views;

    void showView(void *, const QString &, const QVariant &) override {}
    void registerView(const QString &name, const QString &documentPath,
                      const ViewModelFactory &factory) override
    {
        views.push_back({name, documentPath, factory});
    }
};

bool fadeCompiles()
{
    QQmlEngine engine;
    QQmlComponent component(&engine);
    component.setData("import DashboardFadeInOut 1.0\nDashboardFadeInOut {}\n", QUrl());
    return component.isReady();
}

bool panelIsReadable()
{
    QFile panel(QStringLiteral(":/dash/qml/DashboardSysPanel.qml"));
    QFile drawing(QStringLiteral(":/dash/Dashboards_Idea"));
    return panel.open(QIODevice::ReadOnly) && panel.readAll().contains("DashboardFadeInOut") &&
           drawing.open(QIODevice::ReadOnly) && drawing.readAll().contains("0 0 900 300");
}

} // namespace

/// Meets the plug-in as a host does: the file, its exports and the pure interfaces, and nothing of
/// its classes. The tests build on each other in their order.
class PluginTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theResourcesComeAndGoWithTheLibrary()
    {
        QVERIFY(!panelIsReadable());
        QVERIFY2(library.load(), qPrintable(library.errorString()));
        QVERIFY(panelIsReadable());
        QVERIFY(library.unload());
        QVERIFY(!panelIsReadable());
        QVERIFY(library.load());
        QVERIFY(panelIsReadable());
    }

    void exportsPlainNames()
    {
        createEngine = reinterpret_cast<CreateEFunction>(library.resolve("CreateE"));
        init = reinterpret_cast<InitFunction>(library.resolve("Init"));
        QVERIFY(createEngine != nullptr);
        QVERIFY(init != nullptr);
    }

    void anEngineWithoutAccelerationShowsItsMessage()
    {
        if (createEngine == nullptr)
            QFAIL("the export is missing");
        const LogCapture log;
        const std::unique_ptr<IDashboardEngine> engine(createEngine(false, false));
        QVERIFY(engine != nullptr);
        QVERIFY(engine->createRenderer() == nullptr);
        QCOMPARE(engine->createWaitingImage(2)->size(), QSize(960, 544));
        QCOMPARE(log.lines, QStringList());

        FakeConsumer consumer(120, 40);
        LatestFrame latest; // The example of the integrator's guide.
        QVERIFY(latest.picture().isNull());
        QVERIFY(!engine->hasConsumers());
        engine->addConsumer(&consumer);
        engine->addConsumer(&latest);
        QVERIFY(engine->hasConsumers());
        engine->setDashboardFile(QStringLiteral("/no/such/Dash.qml"));
        engine->setMotionProfileName(QStringLiteral("Calm"));
        engine->setTuneInfo(QStringLiteral("Group"), QStringLiteral("Name"), {});
        engine->updateTelemetry({}, {}, {}, false);
        QTRY_COMPARE_WITH_TIMEOUT(consumer.deliveries.size(), 1U, 30'000);
        QCOMPARE(consumer.deliveries[0].frame.size(), 120U * 40 * 4);
        QCOMPARE(latest.picture().size(), QSize(480, 272));
        engine->shutdown();
        engine->removeConsumer(&latest);
        engine->removeConsumer(&consumer);
        QVERIFY(!engine->hasConsumers());
    }

    void initRefusesNullPointers_data()
    {
        QTest::addColumn<bool>("navigation");
        QTest::addColumn<bool>("engine");
        QTest::newRow("both") << false << false;
        QTest::newRow("no engine") << true << false;
        QTest::newRow("no navigation") << false << true;
    }
    void initRefusesNullPointers()
    {
        QFETCH(bool, navigation);
        QFETCH(bool, engine);
        if (createEngine == nullptr || init == nullptr)
            QFAIL("the exports are missing");
        Registry service;
        const std::unique_ptr<IDashboardEngine> real(createEngine(false, false));
        QVERIFY(!fadeCompiles());
        {
            const LogCapture log;
            init(navigation ? &service : nullptr, engine ? real.get() : nullptr);
            QCOMPARE(log.lines, QStringList({QStringLiteral("critical: DASHUI: Null pointer")}));
        }
        QVERIFY(!fadeCompiles());
        QVERIFY(service.views.empty());
    }

    void initRegistersTheViewsInOrderAndTheFade()
    {
        if (createEngine == nullptr || init == nullptr)
            QFAIL("the exports are missing");
        Registry service;
        const std::unique_ptr<IDashboardEngine> engine(createEngine(false, false));
        QVERIFY(!fadeCompiles());
        init(&service, engine.get());
        QVERIFY(fadeCompiles());

        QCOMPARE(service.views.size(), 2U);
        QCOMPARE(service.views[0].name, QStringLiteral("DashboardEditor"));
        QCOMPARE(service.views[0].document, QStringLiteral(":/dash/qml/DashboardEditor.qml"));
        QCOMPARE(service.views[1].name, QStringLiteral("DashboardWindow"));
        QCOMPARE(service.views[1].document, QStringLiteral(":/dash/qml/DashboardWindow.qml"));
        for (const Registry::View &view : service.views)
            QVERIFY(QFile::exists(view.document));
        QVERIFY(!engine->hasConsumers());
    }

    void eachCallOfAFactoryMakesAViewModelOfItsOwn()
    {
        if (createEngine == nullptr || init == nullptr)
            QFAIL("the exports are missing");
        const TemporaryHome home;
        Registry service;
        const std::unique_ptr<IDashboardEngine> engine(createEngine(false, false));
        init(&service, engine.get());
        QCOMPARE(service.views.size(), 2U);
        const char *const classes[] = {"DashboardEditorVM", "DashboardWindowVM"};
        for (std::size_t i = 0; i < 2; ++i) {
            const ViewModelFactory &factory = service.views[i].factory;
            std::unique_ptr<IViewModel> first(factory());
            const std::unique_ptr<IViewModel> second(factory());
            QVERIFY(first != second);
            for (IViewModel *model : {first.get(), second.get()}) {
                QCOMPARE(model->asQObject()->metaObject()->className(), classes[i]);
                QVERIFY(model->asQObject()->parent() == nullptr);
                QCOMPARE(engine->hasConsumers(), i == 1);
            }
            const QPointer<QObject> gone(first->asQObject());
            const QPointer<QObject> left(second->asQObject());
            first.reset();
            QVERIFY(gone.isNull());
            QVERIFY(!left.isNull());
            QCOMPARE(engine->hasConsumers(), i == 1);
        }
        QVERIFY(!engine->hasConsumers());
    }

private:
    QLibrary library{QStringLiteral(GAUGE64_FILE)};
    CreateEFunction createEngine = nullptr;
    InitFunction init = nullptr;
};

QTEST_MAIN(PluginTest)
#include "PluginTest.moc"
