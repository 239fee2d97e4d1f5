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
    constexpr int Farthest = 65'536;
    const QSettings settings;
    WindowPlace place;
    const QRect geometry = settings.value(key(window, "geometry")).toRect();
    const QRect reachable(QPoint(-Farthest, -Farthest), QPoint(Farthest, Farthest));
    if (geometry.isValid() && reachable.contains(geometry))
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

bool WindowPlace::fitOntoScreens()
{
    constexpr int EnoughToGrab = 64;
    const QList<QScreen *> screens = QGuiApplication::screens();
    const auto shows = [this](const QScreen *screen) {
        const QRect visible = screen->availableGeometry().intersected(geometry);
        return visible.width() >= EnoughToGrab && visible.height() >= EnoughToGrab;
    };
    const auto screen = std::find_if(screens.begin(), screens.end(), shows);
    if (geometry.isNull() || screen == screens.end())
        return false;
    const QRect whole = (*screen)->availableVirtualGeometry();
    if (geometry.width() > whole.width() || geometry.height() > whole.height()) {
        geometry.setSize(geometry.size().boundedTo(whole.size()));
        geometry.moveLeft(
            std::clamp(geometry.x(), whole.left(), whole.right() + 1 - geometry.width()));
        geometry.moveTop(
            std::clamp(geometry.y(), whole.top(), whole.bottom() + 1 - geometry.height()));
    }
    return true;
}
