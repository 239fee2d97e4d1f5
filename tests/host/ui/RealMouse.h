#pragma once

#include <QtCore/QPoint>
#include <QtCore/QProcess>
#include <QtCore/QStringList>

/// The mouse and the keys of the screen itself, so that the window manager and the cursor's
/// position take part.
namespace RealMouse {

inline bool act(const QStringList &commands)
{
    return QProcess::execute(QStringLiteral("xdotool"), commands) == 0;
}

inline bool moveTo(const QPoint &position)
{
    return act({QStringLiteral("mousemove"), QString::number(position.x()),
                QString::number(position.y())});
}

inline bool press()
{
    return act({QStringLiteral("mousedown"), QStringLiteral("1")});
}

inline bool release()
{
    return act({QStringLiteral("mouseup"), QStringLiteral("1")});
}

inline bool doubleClick()
{
    return act({QStringLiteral("click"), QStringLiteral("--repeat"), QStringLiteral("2"),
                QStringLiteral("--delay"), QStringLiteral("40"), QStringLiteral("1")});
}

} // namespace RealMouse
