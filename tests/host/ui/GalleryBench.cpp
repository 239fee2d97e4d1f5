#include "GalleryBench.h"

#include <QtQml/QQmlEngine>

namespace {

bool isShown(const QQuickItem *item)
{
    return item->isVisible() && item->width() > 0 && item->height() > 0;
}

/// The shown item below `item` whose property has this value; null if there is none.
QQuickItem *find(QQuickItem *item, const char *property, const QVariant &value)
{
    if (!item->isVisible())
        return nullptr;
    if (item->property(property) == value && isShown(item))
        return item;
    const QList<QQuickItem *> children = item->childItems();
    for (QQuickItem *const child : children) {
        if (QQuickItem *const found = find(child, property, value))
            return found;
    }
    return nullptr;
}

} // namespace

void GalleryBench::initTestCase()
{
    QCoreApplication::setOrganizationName(text("Gallery"));
    QCoreApplication::setApplicationName(text("Test"));
}

void GalleryBench::init()
{
    road = store.emplace().add(text("Road"), true, {text("Auralis Silhouette")});
    mine = store->add(text("Mine"), false, {text("Van"), text("Truck")});
    store->add(text("Rally"));
    shown.clear();
    navigation.emplace();
    for (const char *const name :
         {"DashboardWindow", "DashboardEditor", "SoftwareConfiguration", "HelpBrowser"}) {
        navigation->addTarget(text(name), [this, name](const QVariant &argument) {
            shown += (text(name) + u' ' + argument.toString()).trimmed();
        });
    }
}

void GalleryBench::cleanup()
{
    if (store)
        store->gate.release(100);
    window.reset();
    QVERIFY(!engine.hasConsumers());
    QVERIFY2(warnings.isEmpty(), qPrintable(warnings.value(0).toString()));
    navigation.reset();
    store.reset();
}

void GalleryBench::open()
{
    window = std::make_unique<GalleryWindow>(*navigation, engine, *store, vehicles, monitor,
                                             text("Demo lap"));
    connect(window->engine(), &QQmlEngine::warnings, this,
            [this](const QList<QQmlError> &errors) { warnings += errors; });
    window->openGallery();
    QVERIFY(QTest::qWaitForWindowActive(window.get()));
    QCOMPARE(window->errors().size(), 0);
}

QQuickItem *GalleryBench::item(const char *property, const QString &value) const
{
    return find(window->contentItem(), property, value);
}

QQuickItem *GalleryBench::card(const QString &name) const
{
    QQuickItem *const grid = item("objectName", text("grid"));
    for (int row = 0; row < grid->property("count").toInt(); ++row) {
        QQuickItem *found = nullptr;
        QMetaObject::invokeMethod(grid, "itemAtIndex",
                                  QReturnArgument<QQuickItem *>("QQuickItem*", found),
                                  Q_ARG(int, row));
        if (found != nullptr && found->property("name") == name)
            return found;
    }
    return nullptr;
}

QString GalleryBench::textOf(const char *name) const
{
    const QQuickItem *const found = item("objectName", text(name));
    return found != nullptr ? found->property("text").toString() : QString();
}

QPoint GalleryBench::middle(const QQuickItem *item)
{
    return item->mapToScene(item->boundingRect().center()).toPoint();
}

void GalleryBench::click(const QQuickItem *item) const
{
    QVERIFY(item != nullptr);
    QTest::mouseClick(window.get(), Qt::LeftButton, {}, middle(item));
}

void GalleryBench::press(int key) const
{
    QTest::keyClick(window.get(), Qt::Key(key));
}

void GalleryBench::type(const char *letters) const
{
    for (const char *letter = letters; *letter != 0; ++letter)
        QTest::keyClick(window.get(), *letter);
}

void GalleryBench::focusCard(int id) const
{
    QQuickItem *const grid = item("objectName", text("grid"));
    grid->forceActiveFocus();
    for (int row = 0; grid->property("currentId").toInt() != id; ++row)
        QVERIFY(grid->setProperty("currentIndex", row) && row < 1000);
}
