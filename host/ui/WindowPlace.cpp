#include "WindowPlace.h"

#include "UiEngine.h"
#include "system/AbandonedLock.h"

#include <QtCore/QMargins>
#include <QtCore/QSettings>
#include <QtCore/QVariant>
#include <QtGui/QGuiApplication>
#include <QtGui/QScreen>

#include <algorithm>

namespace {

QString key(const QString &window, const char *value)
{
    return QStringLiteral("windows/%1/%2").arg(window, QLatin1String(value));
}

/// `QVariant::toBool` reads any text except "false" and "0" as true.
bool isTrue(const QVariant &value)
{
    return value.toString() == QLatin1String("true");
}

} // namespace

WindowPlace WindowPlace::load(const QString &window)
{
    constexpr int Farthest = 65'536;
    const QSettings settings;
    WindowPlace place;
    const QRect geometry = settings.value(key(window, "geometry")).toRect();
    const QRect reachable(QPoint(-Farthest, -Farthest), QPoint(Farthest, Farthest));
    if (geometry.isValid() && reachable.contains(geometry))
        place.geometry = geometry;
    place.fullScreen = isTrue(settings.value(key(window, "fullScreen")));
    place.stayOnTop = isTrue(settings.value(key(window, "stayOnTop")));
    return place;
}

void WindowPlace::save(const QString &window) const
{
    QSettings settings;
    removeAbandonedLock(settings);
    if (!geometry.isNull())
        settings.setValue(key(window, "geometry"), geometry);
    settings.setValue(key(window, "fullScreen"), fullScreen);
    settings.setValue(key(window, "stayOnTop"), stayOnTop);
}

void WindowPlace::fitToScreens()
{
    constexpr int EnoughToGrab = 64;
    const QRect desktop = QGuiApplication::primaryScreen()->availableVirtualGeometry();
    if (geometry.width() > desktop.width() || geometry.height() > desktop.height())
        geometry = geometry.intersected(room(desktop));
    const QList<QScreen *> screens = QGuiApplication::screens();
    const bool seen = std::any_of(screens.begin(), screens.end(), [this](const QScreen *screen) {
        const QRect visible = screen->availableGeometry().intersected(geometry);
        return visible.width() >= EnoughToGrab && visible.height() >= EnoughToGrab;
    });
    if (!seen)
        geometry = QRect();
}

QRect WindowPlace::room(const QRect &available)
{
    // The frame's real size is known only once the window is on screen.
    const int frame = qRound(32 * UiEngine::scale());
    return available.marginsRemoved({frame, frame, frame, frame});
}
