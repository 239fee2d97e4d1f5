#include "ViewBench.h"

#include "IDashboardEngine.h"
#include "TelemetryRecords.h"

#include <QtCore/QDir>
#include <QtGui/QGuiApplication>
#include <QtTest/QtTest>

#include <chrono>

WindowManager::WindowManager()
{
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(QStringLiteral("openbox"), QStringList());
    const auto manages = [] {
        QProcess question;
        question.start(QStringLiteral("xdotool"), {QStringLiteral("get_num_desktops")});
        return question.waitForFinished() && question.exitCode() == 0;
    };
    if (!process.waitForStarted() || !QTest::qWaitFor(manages, 20'000))
        qFatal("There is no window manager. %s", process.readAll().constData());
}

WindowManager::~WindowManager()
{
    process.terminate();
    process.waitForFinished();
}

ViewBench::ViewBench()
{
    QGuiApplication::setQuitOnLastWindowClosed(false);
    QGuiApplication::setOrganizationName(QStringLiteral("GAUGE64"));
    QGuiApplication::setApplicationName(QStringLiteral("host-test"));
    if (!library.error().isEmpty())
        qFatal("%s", qPrintable(library.error()));
    start();
}

ViewBench::~ViewBench()
{
    stop();
}

QString ViewBench::makeDocument(const QByteArray &text) const
{
    QFile file(home.path("/Dash.qml"));
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size())
        qFatal("no document");
    return file.fileName();
}

void ViewBench::start(bool hardwareAcceleration)
{
    stop();
    engine = library.createEngine(false, hardwareAcceleration);
    registerViews();
    asAtFirst = hardwareAcceleration;
}

void ViewBench::stop()
{
    stopTelemetry();
    navigation.reset();
    engine.reset();
    asAtFirst = false;
}

void ViewBench::tidyUp()
{
    stopTelemetry();
    if (asAtFirst)
        registerViews();
    else
        start();
    QDir(home.path("/config")).removeRecursively();
}

void ViewBench::registerViews()
{
    navigation = std::make_unique<Navigation>();
    library.init(*navigation, *engine);
}

void ViewBench::startTelemetry()
{
    feeding = true;
    feeder = std::thread([this] {
        VehicleTelemetry vehicle{};
        while (feeding) {
            vehicle.rpm = (vehicle.rpm + 10) % 8000;
            engine->updateTelemetry(vehicle, {}, {}, false);
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
        }
    });
}

void ViewBench::stopTelemetry()
{
    feeding = false;
    if (feeder.joinable())
        feeder.join();
}

ViewWindow *ViewBench::open(const QString &view, const QVariant &argument) const
{
    navigation->showView(view, argument);
    ViewWindow *window = navigation->window(view);
    if (window == nullptr || !QTest::qWaitForWindowActive(window))
        return nullptr;
    return window;
}

QPoint ViewBench::middle(const QQuickItem *item)
{
    const QPointF inWindow = item->mapToScene(QPointF(item->width() / 2, item->height() / 2));
    return item->window()->mapToGlobal(inWindow.toPoint());
}

QQuickItem *ViewBench::find(const QQuickItem *root, const char *property, const QVariant &value)
{
    const QList<QQuickItem *> children = root->childItems();
    for (QQuickItem *child : children) {
        if (child->property(property) == value)
            return child;
        if (QQuickItem *found = find(child, property, value))
            return found;
    }
    return nullptr;
}
