#pragma once

#include "support/Stopwatch.h"

#include <QtCore/QObject>

#include <cstdint>

/// Turns `show()` and repeated `update()` into a fade-in, a hold and a fade-out. It has no timer:
/// the state moves only inside these two calls, by the real time that has passed between them.
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

    /// Makes `import DashboardFadeInOut 1.0` known to every QML engine of the process.
    static void registerType();

    float currentOpacity() const { return opacity; }
    bool isVisible() const { return visible; }

    /// Starts the fade over, from the opacity that the last one left.
    Q_INVOKABLE void show();

    /// Moves the fade on. Wants to be called at every frame, also while nothing is visible.
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
