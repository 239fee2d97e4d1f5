#pragma once

#include "IDashboardEngine.h"
#include "session/GaugeLibrary.h"
#include "support/TemporaryHome.h"
#include "support/TestFiles.h"
#include "ui/Navigation.h"
#include "ui/ViewWindow.h"

#include <QtCore/QProcess>
#include <QtGui/QGuiApplication>
#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickWindow>
#include <QtTest/QtTest>

#include <atomic>
#include <memory>
#include <thread>

/// The item on screen whose property has this value; null if there is none.
QQuickItem *find(const QQuickWindow *window, const char *property, const QVariant &value);

/// The middle of an item in its window.
QPoint middle(const QQuickItem *item);

void click(const QQuickItem *item, Qt::MouseButton button = Qt::LeftButton);

/// Presses keys, each with its modifiers. A window may close on the way.
void keys(QWindow *window, const QList<int> &keys);
void type(QWindow *window, const char *letters);

// The mouse of the screen itself, so that the window manager takes part.
void moveMouse(const QPoint &position);
void pressMouse();
void releaseMouse();

/// Starts a window manager on the test's screen, which ends with `process`.
void startWindowManager(QProcess &process);

/// Runs the tests of a program that needs a window manager. The application asks only at its start
/// what the window manager can do for it.
template<class Test> int runUnderWindowManager(int argc, char **argv)
{
    QProcess windowManager;
    startWindowManager(windowManager);
    QGuiApplication::setAttribute(Qt::AA_Use96Dpi);
    const QGuiApplication application(argc, argv);
    Test test;
    return QTest::qExec(&test, argc, argv);
}

/// The library's views in windows of the host, with telemetry from a thread of its own.
class ViewRig
{
public:
    explicit ViewRig(bool hardwareAcceleration = true);
    ~ViewRig();

    /// Writes a dashboard's document, without its import, and returns the path.
    QString document(const QByteArray &body) const;

    /// Opens a view and waits until its window is active; null if that never happens.
    ViewWindow *open(const QString &view, const QVariant &argument = {});

    TemporaryHome home;
    GaugeLibrary library{QStringLiteral(GAUGE64_DIRECTORY)};
    std::unique_ptr<IDashboardEngine> engine;
    Navigation navigation;

private:
    std::atomic<bool> driving{true};
    std::thread game;
};
