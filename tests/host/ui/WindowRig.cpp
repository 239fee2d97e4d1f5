#include "WindowRig.h"

#include "TelemetryRecords.h"

#include <utility>

QQuickItem *find(const QQuickItem *below, const char *property, const QVariant &value)
{
    const QList<QQuickItem *> children = below->childItems();
    for (QQuickItem *child : children) {
        if (!child->isVisible())
            continue;
        if (child->property(property) == value && !child->size().isEmpty())
            return child;
        if (QQuickItem *found = find(child, property, value))
            return found;
    }
    return nullptr;
}

QQuickItem *named(const QQuickWindow *window, const char *name)
{
    return find(window->contentItem(), "objectName", QString::fromUtf8(name));
}

QPoint middle(const QQuickItem *item)
{
    return item->mapToScene(QRectF({}, item->size()).center()).toPoint();
}

void click(const QQuickItem *item)
{
    QVERIFY(item != nullptr);
    QTest::mouseClick(item->window(), Qt::LeftButton, {}, middle(item));
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

bool xdotool(const QString &command)
{
    return QProcess::execute("xdotool"_q, command.split(u' ')) == 0;
}

ViewTest::ViewTest(QString view, QByteArray dashboard)
    : view(std::move(view))
    , dashboard(std::move(dashboard))
{
    QGuiApplication::setQuitOnLastWindowClosed(false);
    QGuiApplication::setOrganizationName("GAUGE64"_q);
    QGuiApplication::setApplicationName("host-test"_q);
    // Qt may ask X for a window that has just closed.
    QLoggingCategory::setFilterRules("qt.qpa.xcb.warning=false"_q);
    game.callOnTimeout(this, [this] { engine->updateTelemetry({}, {}, {}, false); });
}

void ViewTest::init()
{
    document = home.emplace().path("/Dash.qml");
    write(dashboard);
    log.emplace();
    engine = library.createEngine(false, true);
    library.init(navigation.emplace(), *engine);
    engine->setDashboardFile(document);
    game.start(5);
    open(document);
}

void ViewTest::cleanup()
{
    navigation->closeViews();
    game.stop();
    engine->shutdown();
    QCOMPARE(log->lines.join(u'\n'), log->lines.filter("info: "_q).join(u'\n'));
    log.reset();
}

void ViewTest::write(const QByteArray &dashboard) const
{
    writeFile(document, "import QtQuick 2.15\n" + dashboard);
}

void ViewTest::open(const QVariant &argument)
{
    navigation->showView(view, argument);
    window = navigation->window(view);
    QVERIFY(window != nullptr && QTest::qWaitForWindowActive(window, 30'000));
}
