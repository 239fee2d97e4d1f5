#include "ui/WindowPlace.h"

#include <QtCore/QSettings>
#include <QtGui/QGuiApplication>
#include <QtGui/QScreen>

#include <algorithm>

namespace {

QString key(const QString &window, const char *value)
{
    return QStringLiteral("windows/%1/%2").arg(window, QLatin1String(value));
}

} // namespace

WindowPlace WindowPlace::load(const QString &window)
{
    constexpr int LargestSide = 16'384;
    const QSettings settings;
    WindowPlace place;
    const QRect geometry = settings.value(key(window, "geometry")).toRect();
    if (geometry.isValid() && geometry.width() <= LargestSide && geometry.height() <= LargestSide)
        place.geometry = geometry;
    place.fullScreen = settings.value(key(window, "fullScreen")).toBool();
    place.stayOnTop = settings.value(key(window, "stayOnTop")).toBool();
    return place;
}

void WindowPlace::save(const QString &window) const
{
    QSettings settings;
    if (!geometry.isNull())
        settings.setValue(key(window, "geometry"), geometry);
    settings.setValue(key(window, "fullScreen"), fullScreen);
    settings.setValue(key(window, "stayOnTop"), stayOnTop);
}

bool WindowPlace::isOnAScreen() const
{
    constexpr int EnoughToGrab = 64;
    const QList<QScreen *> screens = QGuiApplication::screens();
    return std::any_of(screens.begin(), screens.end(), [this](const QScreen *screen) {
        const QRect visible = screen->availableGeometry().intersected(geometry);
        return visible.width() >= EnoughToGrab && visible.height() >= EnoughToGrab;
    });
}
