#pragma once

#include "session/GaugeLibrary.h"
#include "support/TemporaryHome.h"
#include "ui/Navigation.h"
#include "ui/ViewWindow.h"

#include <QtCore/QProcess>
#include <QtGui/QGuiApplication>
#include <QtQuick/QQuickItem>
#include <QtTest/QtTest>

#include <atomic>
#include <memory>
#include <thread>

/// A window manager on the test's screen while it lives.
class WindowManager
{
public:
    WindowManager();
    ~WindowManager();
    WindowManager(const WindowManager &) = delete;
    WindowManager &operator=(const WindowManager &) = delete;

private:
    QProcess process;
};

/// Runs the tests of a program that needs a window manager. The application asks only at its start
/// what the window manager can do for it.
template<class Test> int runUnderWindowManager(int argc, char **argv)
{
    const WindowManager windowManager;
    QGuiApplication::setAttribute(Qt::AA_Use96Dpi);
    const QGuiApplication application(argc, argv);
    Test test;
    return QTest::qExec(&test, argc, argv);
}

/// The library's views in windows of the host, with telemetry as long as
/// a test wants it.
class ViewBench
{
public:
    ViewBench();
    ~ViewBench();

    /// A dashboard of its own in the home: the document's text.
    QString makeDocument(const QByteArray &text) const;

    /// Makes the engine anew.
    void start(bool hardwareAcceleration = true);
    void stop();

    /// Closes what a test has opened and forgets what was remembered of it. The engine, which takes
    /// seconds to make, stays as it is unless the test has made or ended one of its own.
    void tidyUp();

    void startTelemetry();
    void stopTelemetry();

    /// Opens a view and waits until its window is on the screen.
    ViewWindow *open(const QString &view, const QVariant &argument = {}) const;

    /// The middle of an item, on the screen.
    static QPoint middle(const QQuickItem *item);

    /// The item below `root` whose property has this value; null if there is none.
    static QQuickItem *find(const QQuickItem *root, const char *property, const QVariant &value);

    TemporaryHome home;
    GaugeLibrary library{QStringLiteral(GAUGE64_DIRECTORY)};
    std::unique_ptr<IDashboardEngine> engine;
    std::unique_ptr<Navigation> navigation;

private:
    void registerViews();

    bool asAtFirst = false; ///< Whether the engine is there, with hardware acceleration.
    std::atomic<bool> feeding{false};
    std::thread feeder;
};
