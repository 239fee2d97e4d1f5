#include "WindowRig.h"

#include "TelemetryRecords.h"

#include <QtCore/QPointer>

#include <chrono>

namespace {

bool xdotool(const QString &command)
{
    return QProcess::execute("xdotool"_q, command.split(u' ')) == 0;
}

QQuickItem *findBelow(const QQuickItem *root, const char *property, const QVariant &value)
{
    const QList<QQuickItem *> children = root->childItems();
    for (QQuickItem *child : children) {
        if (!child->isVisible())
            continue;
        if (child->property(property) == value && !child->size().isEmpty())
            return child;
        if (QQuickItem *found = findBelow(child, property, value))
            return found;
    }
    return nullptr;
}

} // namespace

QQuickItem *find(const QQuickWindow *window, const char *property, const QVariant &value)
{
    return findBelow(window->contentItem(), property, value);
}

QPoint middle(const QQuickItem *item)
{
    return item->mapToScene(QRectF({}, item->size()).center()).toPoint();
}

void click(const QQuickItem *item, Qt::MouseButton button)
{
    QVERIFY(item != nullptr);
    QTest::mouseClick(item->window(), button, {}, middle(item));
}

void keys(QWindow *window, const QList<int> &keys)
{
    const QPointer<QWindow> open(window);
    for (const int key : keys) {
        const auto modifiers = Qt::KeyboardModifiers(key & int(Qt::KeyboardModifierMask));
        const auto plain = Qt::Key(key & ~int(Qt::KeyboardModifierMask));
        QTest::keyPress(window, plain, modifiers);
        if (open != nullptr)
            QTest::keyRelease(window, plain, modifiers);
    }
}

void type(QWindow *window, const char *letters)
{
    for (const char *letter = letters; *letter != 0; ++letter)
        QTest::keyClick(window, *letter);
}

void moveMouse(const QPoint &position)
{
    QVERIFY(xdotool("mousemove %1 %2"_q.arg(position.x()).arg(position.y())));
}

void pressMouse()
{
    QVERIFY(xdotool("mousedown 1"_q));
}

void releaseMouse()
{
    QVERIFY(xdotool("mouseup 1"_q));
}

void startWindowManager(QProcess &process)
{
    process.start("openbox"_q, QStringList());
    if (!QTest::qWaitFor([] { return xdotool("get_num_desktops"_q); }, 20'000))
        qFatal("There is no window manager. %s", process.readAllStandardError().constData());
}

ViewRig::ViewRig(bool hardwareAcceleration)
{
    QGuiApplication::setQuitOnLastWindowClosed(false);
    QGuiApplication::setOrganizationName("GAUGE64"_q);
    QGuiApplication::setApplicationName("host-test"_q);
    if (!library.error().isEmpty())
        qFatal("%s", qUtf8Printable(library.error()));
    engine = library.createEngine(false, hardwareAcceleration);
    library.init(navigation, *engine);
    game = std::thread([this] {
        VehicleTelemetry vehicle{};
        while (driving) {
            vehicle.rpm = (vehicle.rpm + 10) % 8000;
            engine->updateTelemetry(vehicle, {}, {}, false);
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
        }
    });
}

ViewRig::~ViewRig()
{
    navigation.closeViews();
    driving = false;
    game.join();
    engine->shutdown();
}

QString ViewRig::document(const QByteArray &body) const
{
    QString path = home.path("/Dash.qml");
    writeFile(path, "import QtQuick 2.15\n" + body);
    return path;
}

ViewWindow *ViewRig::open(const QString &view, const QVariant &argument)
{
    navigation.showView(view, argument);
    ViewWindow *window = navigation.window(view);
    return window != nullptr && QTest::qWaitForWindowActive(window, 30'000) ? window : nullptr;
}
