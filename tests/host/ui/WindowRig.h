#pragma once

#include "IDashboardEngine.h"
#include "session/GaugeLibrary.h"
#include "support/LogCapture.h"
#include "support/TemporaryHome.h"
#include "support/TestFiles.h"
#include "ui/Navigation.h"
#include "ui/ViewWindow.h"

#include <QtCore/QPointer>
#include <QtCore/QProcess>
#include <QtCore/QTimer>
#include <QtGui/QGuiApplication>
#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickWindow>
#include <QtTest/QtTest>

#include <memory>
#include <optional>

/// The item on screen whose property has this value; null if there is none.
QQuickItem *find(const QQuickItem *below, const char *property, const QVariant &value);

/// The same by the item's name.
QQuickItem *named(const QQuickWindow *window, const char *name);

/// The middle of an item in its window.
QPoint middle(const QQuickItem *item);

void click(const QQuickItem *item);

/// Presses keys, each with its modifiers. A window may close on the way.
void keys(QWindow *window, const QList<int> &keys);
void type(QWindow *window, const char *letters);

/// Uses mouse and keyboard of the test's screen, which the window manager sees, too.
bool xdotool(const QString &command);

/// Runs the tests of a program that needs a window manager.
template<class Test> int runUnderWindowManager(int argc, char **argv)
{
    QProcess windowManager;
    windowManager.start("openbox"_q, QStringList());
    if (!QTest::qWaitFor([] { return xdotool("get_num_desktops"_q); }, 20'000))
        qFatal("There is no window manager.");
    // The application asks only at its start what the window manager can do for it.
    QGuiApplication::setAttribute(Qt::AA_Use96Dpi);
    const QGuiApplication application(argc, argv);
    Test test;
    return QTest::qExec(&test, argc, argv);
}

/// Tests of one of the library's views in a window of the host, with telemetry every 5 ms.
/// Each begins with the view on screen, and whatever is logged as a warning fails it.
class ViewTest : public QObject
{
    Q_OBJECT

protected:
    /// `dashboard` is a document without its import.
    ViewTest(QString view, QByteArray dashboard);

    /// Writes another dashboard into the document.
    void write(const QByteArray &dashboard) const;

    /// Opens the view and waits until its window is active.
    void open(const QVariant &argument = {});

    QQuickItem *item(const char *property, const QVariant &value) const
    {
        return find(window->contentItem(), property, value);
    }

    const QString view;
    std::optional<TemporaryHome> home;
    QString document;
    std::optional<LogCapture> log;
    std::unique_ptr<IDashboardEngine> engine;
    std::optional<Navigation> navigation;
    QPointer<ViewWindow> window;

private:
    const GaugeLibrary library{QStringLiteral(GAUGE64_DIRECTORY)};
    const QByteArray dashboard;
    QTimer game;

private Q_SLOTS:
    void init();
    void cleanup();
};
