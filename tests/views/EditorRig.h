#pragma once

#include "plugin/INavigationService.h"
#include "support/FakeEngine.h"
#include "support/TemporaryHome.h"
#include "support/TestFiles.h"
#include "views/DashboardEditorVM.h"

#include <QtCore/QTimer>
#include <QtQml/QQmlContext>
#include <QtQml/QQmlEngine>
#include <QtQuick/QQuickImageProvider>

#include <tuple>

/// Writes down what it is asked to show.
struct FakeNavigation final : INavigationService
{
    std::vector<std::tuple<void *, QString, QVariantMap>> shown; ///< Context, target, argument.

    void showView(void *context, const QString &target, const QVariant &argument) override
    {
        shown.emplace_back(context, target, argument.toMap());
    }
    void registerView(const QString &, const QString &, const ViewModelFactory &) override {}
};

/// An editor on an engine of fakes, in a home of its own.
struct EditorRig
{
    TemporaryHome home;
    FakeEngine engine;
    FakeNavigation navigation;
    std::unique_ptr<QQmlEngine> qml = std::make_unique<QQmlEngine>();
    std::unique_ptr<DashboardEditorVM> model;

    explicit EditorRig(bool acceleration = true) { engine.acceleration = acceleration; }

    void make() { model = std::make_unique<DashboardEditorVM>(&engine, &navigation); }
    /// Up to where a document is shown.
    void run()
    {
        make();
        model->initContext(qml->rootContext());
        engine.script.calls.clear();
    }
    void tick() const { QMetaObject::invokeMethod(model.get(), "updateDash"); }
    /// What the next step of the telemetry publishes.
    PublishedRecords published()
    {
        tick();
        return engine.script.publications.back();
    }
    QStringList takeCalls() { return std::exchange(engine.script.calls, {}); }

    /// The timer that drives the telemetry, at 40 ms, or the one that waits until a file is
    /// written.
    QTimer *timer(bool ofTelemetry = true) const
    {
        const auto timers = model->findChildren<QTimer *>();
        return timers[(timers[0]->interval() == 40) == ofTelemetry ? 0 : 1];
    }
    QString file(const char *name = "/Dash.qml", const QByteArray &content = "Item {}") const
    {
        QString path = home.path(name);
        writeFile(path, content);
        return path;
    }
    QImage request(int width = 0, QSize *size = nullptr) const
    {
        auto *provider = static_cast<QQuickImageProvider *>(qml->imageProvider("dashEditor"_q));
        return provider->requestImage("preview?id=true"_q, size, QSize(width, 5));
    }
};
