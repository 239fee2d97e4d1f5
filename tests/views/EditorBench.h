#pragma once

#include "plugin/INavigationService.h"
#include "support/FakeEngine.h"
#include "support/TemporaryHome.h"
#include "support/TestFiles.h"
#include "views/DashboardEditorVM.h"

#include <QtCore/QTimer>
#include <QtCore/QVariant>
#include <QtQml/QQmlContext>
#include <QtQml/QQmlEngine>
#include <QtQuick/QQuickImageProvider>
#include <QtTest/QSignalSpy>

/// Writes down which views it is asked to show.
class FakeNavigation final : public INavigationService
{
public:
    struct Shown
    {
        void *context;
        QString target;
        QVariant argument;
    };
    std::vector<Shown> shown;

    void showView(void *context, const QString &target, const QVariant &argument) override
    {
        shown.push_back({context, target, argument});
    }
    void registerView(const QString &, const QString &, const ViewModelFactory &) override {}
};

/// An editor on an engine of fakes, in a home of its own, as a host makes it.
class EditorBench
{
public:
    explicit EditorBench(bool acceleration = true) { engine.acceleration = acceleration; }

    TemporaryHome home;
    FakeEngine engine;
    FakeNavigation navigation;
    std::unique_ptr<QQmlEngine> qml = std::make_unique<QQmlEngine>();
    std::unique_ptr<DashboardEditorVM> model;

    RendererScript &script() { return engine.script; }

    void make() { model = std::make_unique<DashboardEditorVM>(&engine, &navigation); }
    void initContext() const { model->initContext(qml->rootContext()); }
    void run()
    {
        make();
        initContext();
        script().calls.clear();
        script().publications.clear();
    }

    QStringList takeCalls() { return std::exchange(script().calls, {}); }

    void tick() const
    {
        QMetaObject::invokeMethod(model.get(), "updateDash", Qt::DirectConnection);
    }
    /// What the next step of the telemetry publishes.
    PublishedRecords published()
    {
        tick();
        return script().publications.back();
    }

    /// The timer that drives the telemetry.
    QTimer *timer() const
    {
        const auto timers = model->findChildren<QTimer *>();
        for (QTimer *candidate : timers) {
            if (candidate->interval() == 40)
                return candidate;
        }
        return nullptr;
    }

    static QString storedPath()
    {
        QSettings settings(QSettings::UserScope, "Orvalentix"_q, "Halvorin"_q);
        return settings.value("DashboardEditor/RecentQmlFile"_q, "nothing"_q).toString();
    }
    static void storePath(const QString &path)
    {
        QSettings settings(QSettings::UserScope, "Orvalentix"_q, "Halvorin"_q);
        settings.setValue("DashboardEditor/RecentQmlFile"_q, path);
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
