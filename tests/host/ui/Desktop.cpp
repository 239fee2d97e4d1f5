#include "host/ui/Desktop.h"

namespace {

constexpr int LongestStartMs = 30'000;

QByteArray outputOf(const QString &program, const QStringList &arguments)
{
    QProcess process;
    process.start(program, arguments);
    if (!process.waitForFinished(LongestStartMs) || process.exitCode() != 0)
        qFatal("%s failed: %s", qPrintable(program), process.readAllStandardError().constData());
    return process.readAllStandardOutput();
}

} // namespace

Desktop::Desktop(int screens)
{
    QStringList arguments{QStringLiteral("-displayfd"), QStringLiteral("1"),
                          QStringLiteral("-nolisten"), QStringLiteral("tcp"),
                          QStringLiteral("-noreset"), QStringLiteral("-dpi"), QStringLiteral("96"),
                          // Else it starts over when its first client leaves.
                          QStringLiteral("-noreset")};
    for (int screen = 0; screen < screens; ++screen) {
        arguments << QStringLiteral("-screen") << QString::number(screen)
                  << QStringLiteral("%1x%2x24").arg(Width).arg(Height);
    }
    server.start(QStringLiteral("Xvfb"), arguments);
    QByteArray display;
    while (!display.endsWith('\n') && server.waitForReadyRead(LongestStartMs))
        display += server.readAllStandardOutput();
    if (display.trimmed().isEmpty())
        qFatal("Xvfb did not start: %s", server.readAllStandardError().constData());
    qputenv("DISPLAY", ":" + display.trimmed());
    qunsetenv("WAYLAND_DISPLAY");
    qputenv("QT_QPA_PLATFORM", "xcb");

    // Its own settings don't matter, but the user's must not.
    windowManager.start(QStringLiteral("openbox"),
                        {QStringLiteral("--config-file"), QStringLiteral("/etc/xdg/openbox/rc.xml"),
                         QStringLiteral("--sm-disable")});
    if (!windowManager.waitForStarted(LongestStartMs))
        qFatal("openbox did not start");
    const QStringList question{QStringLiteral("-root"), QStringLiteral("_NET_SUPPORTING_WM_CHECK")};
    while (!outputOf(QStringLiteral("xprop"), question).contains("window id"))
        windowManager.waitForReadyRead(20);
}

Desktop::~Desktop()
{
    for (QProcess *process : {&windowManager, &server}) {
        process->terminate();
        process->waitForFinished(LongestStartMs);
    }
}

void Desktop::moveTo(const QPoint &position) const
{
    input({QStringLiteral("mousemove"), QString::number(position.x()),
           QString::number(position.y())});
}

void Desktop::press() const
{
    input({QStringLiteral("mousedown"), QStringLiteral("1")});
}

void Desktop::release() const
{
    input({QStringLiteral("mouseup"), QStringLiteral("1")});
}

void Desktop::click(const QPoint &position) const
{
    moveTo(position);
    input({QStringLiteral("click"), QStringLiteral("1")});
}

void Desktop::doubleClick(const QPoint &position) const
{
    moveTo(position);
    input({QStringLiteral("click"), QStringLiteral("--repeat"), QStringLiteral("2"),
           QStringLiteral("--delay"), QStringLiteral("40"), QStringLiteral("1")});
}

void Desktop::keys(const QStringList &names) const
{
    for (const QString &name : names)
        input({QStringLiteral("key"), QStringLiteral("--clearmodifiers"), name});
}

QString Desktop::windowState(quintptr window)
{
    return QString::fromLatin1(
        outputOf(QStringLiteral("xprop"), {QStringLiteral("-id"), QString::number(window),
                                           QStringLiteral("_NET_WM_STATE")}));
}

void Desktop::input(const QStringList &arguments)
{
    outputOf(QStringLiteral("xdotool"), arguments);
}
