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
#include <QtTest/QtTest>

/// An editor with fakes of engine and host, in a home of its own, ready for its document.
struct EditorRig
{
    TemporaryHome home;
    FakeEngine engine;
    FakeNavigation navigation;
    std::unique_ptr<QQmlEngine> qml = std::make_unique<QQmlEngine>();
    std::unique_ptr<DashboardEditorVM> model;
    QByteArray loaded; ///< What the renderer read last.

    explicit EditorRig(bool acceleration = true)
    {
        engine.acceleration = acceleration;
        engine.script.duringLoad = [this] { loaded = readFile(model->currentPath()); };
        make();
        model->initContext(qml->rootContext());
        takeCalls();
    }
    /// Makes the editor anew, without a context.
    void make() { model = std::make_unique<DashboardEditorVM>(&engine, &navigation); }
    QStringList takeCalls() { return std::exchange(engine.script.calls, {}); }

    /// What the next step of the telemetry publishes.
    PublishedRecords published()
    {
        QMetaObject::invokeMethod(model.get(), "updateDash");
        return engine.script.publications.back();
    }
    /// Waits until the renderer loads a file of this content.
    bool loads(const QByteArray &content) const
    {
        return QTest::qWaitFor([&] { return loaded == content; }, 30'000);
    }

    /// The timer that drives the telemetry, or the one that delays the reload of a file.
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
