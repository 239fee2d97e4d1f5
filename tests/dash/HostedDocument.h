#pragma once

#include "plugin/IViewModel.h"

#include <QtQml/QQmlComponent>
#include <QtQml/QQmlContext>
#include <QtQml/QQmlEngine>
#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickWindow>

#include <memory>

/// Loads a view's document with the host's own QML, in a window that isn't shown. Only what the
/// host does with its window is faked. `model` must outlive it.
class HostedDocument
{
public:
    HostedDocument(const QString &document, IViewModel &model)
    {
        engine.addImportPath(QStringLiteral("qrc:/qml/modules"));
        qmlRegisterType<QObject>("ClassicUIBridge", 1, 0, "ClassicUIBridge"); // Stays unused.
        set("qt_scale", 1.0);
        set("ux", create(QStringLiteral("qrc:/qml/Theme.qml")));
        host = create(QStringLiteral("qrc:/HostDouble.qml"));
        set("qt_window", host);
        set("cpp_viewModel", model.asQObject());
        model.initContext(engine.rootContext());
        model.setWindow(&window);
        root.reset(qobject_cast<QQuickItem *>(create(document)));
        root->setParentItem(window.contentItem());
    }

    QQmlEngine engine;
    QObject *host = nullptr; ///< Owned by the engine, as bindings use it until the end.
    QQuickWindow window;
    std::unique_ptr<QQuickItem> root;

private:
    template<typename Value> void set(const char *name, Value value)
    {
        engine.rootContext()->setContextProperty(QLatin1String(name), value);
    }
    QObject *create(const QString &address)
    {
        QQmlComponent component(&engine, address);
        QObject *object = component.create();
        if (object == nullptr)
            qFatal("%s", qPrintable(component.errorString()));
        object->setParent(&engine);
        return object;
    }
};
