#pragma once

#include "support/Stopwatch.h"

#include <QtCore/QObject>

#include <cstdint>

/// Fades in, holds and fades out once it is shown. It has no timer: its state changes only in
/// `show()` and `update()`, by the real time between these calls. Lengths are in ms. One thread.
class DashboardFadeInOut : public QObject
{
    Q_OBJECT
    Q_PROPERTY(float opacity READ currentOpacity NOTIFY opacityChanged)
    Q_PROPERTY(bool visible READ isVisible NOTIFY visibleChanged)
    Q_PROPERTY(int fadeIn MEMBER fadeIn)
    Q_PROPERTY(int fadeOut MEMBER fadeOut)
    Q_PROPERTY(int duration MEMBER duration)

public:
    explicit DashboardFadeInOut(QObject *parent = nullptr);

    /// `counter` is borrowed and must outlive the object.
    explicit DashboardFadeInOut(const platform::Counter &counter, QObject *parent = nullptr);

    /// Registers `import DashboardFadeInOut 1.0` with all QML engines of the process.
    static void registerType();

    float currentOpacity() const { return opacity; }
    bool isVisible() const { return visible; }

    /// Restarts the fade from the current opacity.
    Q_INVOKABLE void show();

    /// Moves the fade on. Call it at every frame, also while nothing is visible.
    Q_INVOKABLE void update();

Q_SIGNALS:
    void opacityChanged();
    void visibleChanged();

private:
    std::uint64_t now() const;
    void setOpacity(float value);

    float opacity = 0.0F;
    bool visible = false;
    int fadeIn = 200;
    int fadeOut = 200;
    int duration = 2000;
    std::uint64_t shownAt = 0;
    std::uint64_t lastUpdateAt = 0;
    Stopwatch clock;
};
