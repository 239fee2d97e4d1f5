#pragma once

#include "FakeEngine.h"
#include "FakeStore.h"
#include "support/TemporaryHome.h"
#include "telemetry/VehicleNames.h"
#include "ui/GalleryWindow.h"
#include "ui/Navigation.h"

#include <QtQml/QQmlError>
#include <QtQuick/QQuickItem>
#include <QtTest/QtTest>

#include <memory>
#include <optional>

inline QString text(const char *characters)
{
    return QString::fromUtf8(characters);
}

/// A gallery over a store with a built-in dashboard and two of the user's, and what a test does to
/// it with mouse and keys. A warning of the gallery's documents fails the test.
class GalleryBench : public QObject
{
    Q_OBJECT

protected:
    void open();

    /// The item that is shown with this value of the property; null if there is none.
    QQuickItem *item(const char *property, const QString &value) const;

    /// Not what the view keeps for another dashboard.
    QQuickItem *card(const QString &name) const;

    QString textOf(const char *name) const;

    static QPoint middle(const QQuickItem *item);
    void click(const QQuickItem *item) const;
    void press(int key) const;
    void type(const char *letters) const;
    void focusCard(int id) const;

    const TemporaryHome home;
    std::optional<FakeStore> store;
    FakeEngine engine;
    VehicleNames vehicles;
    TelemetryMonitor monitor;
    std::optional<Navigation> navigation;
    std::unique_ptr<GalleryWindow> window;
    QList<QQmlError> warnings;
    QStringList shown; ///< What the navigation was asked for.
    int road = 0;
    int mine = 0;

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();
};
