#pragma once

#include "TelemetryRecords.h"
#include "session/GaugeLibrary.h"
#include "support/TemporaryHome.h"
#include "telemetry/VehicleNames.h"
#include "ui/HostWindow.h"
#include "ui/Navigation.h"

#include <QtCore/QTimer>
#include <QtGui/QGuiApplication>
#include <QtGui/QScreen>
#include <QtQuick/QQuickItem>
#include <QtTest/QtTest>

#include <memory>

/// Collects what is logged as a warning or worse while it lives.
class Complaints
{
public:
    Complaints()
        : previous(qInstallMessageHandler(&Complaints::take))
    {
        texts.clear();
    }
    ~Complaints() { qInstallMessageHandler(previous); }
    Complaints(const Complaints &) = delete;
    Complaints &operator=(const Complaints &) = delete;

    static inline QStringList texts;

private:
    static void take(QtMsgType type, const QMessageLogContext &context, const QString &text)
    {
        if (type != QtDebugMsg && type != QtInfoMsg)
            texts += text;
        std::fprintf(stderr, "%s\n", qPrintable(text));
        Q_UNUSED(context)
    }

    QtMessageHandler previous;
};

/// The built library with its views, an engine that gets steady telemetry, and the navigation.
class UserBench
{
public:
    explicit UserBench(bool hardwareAcceleration = true)
        : library(QStringLiteral(GAUGE64_DIRECTORY))
    {
        if (!library.error().isEmpty())
            qFatal("%s", qPrintable(library.error()));
        engine = library.createEngine(false, hardwareAcceleration);
        navigation = std::make_unique<Navigation>();
        library.init(*navigation, *engine);
        QObject::connect(&game, &QTimer::timeout, &game, [this] {
            if (engine != nullptr)
                engine->updateTelemetry(vehicle, limits, extended, false);
        });
        game.start(16);
    }
    ~UserBench()
    {
        navigation.reset();
        if (engine != nullptr)
            engine->shutdown();
    }
    UserBench(const UserBench &) = delete;
    UserBench &operator=(const UserBench &) = delete;

    /// The window on screen whose title is this, or null.
    static HostWindow *window(const QString &title)
    {
        const QWindowList windows = QGuiApplication::topLevelWindows();
        for (QWindow *candidate : windows) {
            if (candidate->title() == title && candidate->isVisible())
                return qobject_cast<HostWindow *>(candidate);
        }
        return nullptr;
    }

    /// Shows a view and waits until it can be used.
    HostWindow *show(const char *name, const QVariant &argument = {}) const
    {
        navigation->showView(QString::fromLatin1(name), argument);
        const QString title = QLatin1String(name) == QLatin1String("DashboardWindow")
                                  ? QStringLiteral("Dashboard")
                                  : QStringLiteral("Dashboard Editor");
        HostWindow *shown = window(title);
        return shown != nullptr && QTest::qWaitForWindowActive(shown, 30'000) ? shown : nullptr;
    }

    /// The visible item of this text, or of another property's; null if there is none.
    static QQuickItem *item(const QQuickItem *below, const QString &text,
                            const char *property = "text")
    {
        const QList<QQuickItem *> children = below->childItems();
        for (QQuickItem *child : children) {
            if (!child->isVisible())
                continue;
            if (child->property(property).toString() == text)
                return child;
            if (QQuickItem *found = item(child, text, property))
                return found;
        }
        return nullptr;
    }
    static QQuickItem *item(const HostWindow *window, const QString &text,
                            const char *property = "text")
    {
        return item(window->contentItem(), text, property);
    }

    /// The middle of an item on the desktop.
    static QPoint middle(const QQuickItem *item)
    {
        return item->mapToGlobal(QPointF(item->width() / 2, item->height() / 2)).toPoint();
    }

    static QColor pixel(const QPoint &position)
    {
        return QGuiApplication::primaryScreen()
            ->grabWindow(0, position.x(), position.y(), 1, 1)
            .toImage()
            .pixelColor(0, 0);
    }

    /// A dashboard's document in the bench's home.
    QString document(const QByteArray &body, const char *name = "Dash.qml") const
    {
        QDir().mkpath(home.path("/dash"));
        QFile file(home.path("/dash/") + QLatin1String(name));
        if (!file.open(QIODevice::WriteOnly))
            qFatal("no document");
        file.write("import QtQuick 2.15\n" + body + "\n");
        return file.fileName();
    }

    TemporaryHome home;
    VehicleTelemetry vehicle{};
    DisplayLimits limits{};
    ExtendedTelemetry extended{};
    GaugeLibrary library;
    std::unique_ptr<IDashboardEngine> engine;
    std::unique_ptr<Navigation> navigation;
    QTimer game;
};
