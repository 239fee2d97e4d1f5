#pragma once

#include "support/FakeEngine.h"
#include "support/FakeNavigation.h"
#include "support/TemporaryHome.h"
#include "support/TestFiles.h"
#include "views/DashboardEditorVM.h"

#include <QtCore/QTimer>
#include <QtQml/QQmlContext>
#include <QtQml/QQmlEngine>
#include <QtQuick/QQuickImageProvider>

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

    /// The timer that drives the telemetry, or the one that leaves a file to its writer.
    QTimer *timer(bool ofTelemetry = true) const
    {
        return model->findChildren<QTimer *>()[ofTelemetry ? 0 : 1];
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
