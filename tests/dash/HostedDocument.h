#pragma once

#include "plugin/IViewModel.h"

#include <QtQml/QQmlComponent>
#include <QtQml/QQmlContext>
#include <QtQml/QQmlEngine>
#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickWindow>

#include <memory>

/// A view's document among the host's QML, in a window that isn't shown; a double stands for what
/// the host does with a window. `model` must live as long.
class HostedDocument
{
public:
    HostedDocument(const QString &document, IViewModel &model)
    {
        engine.addImportPath(QStringLiteral("qrc:/qml/modules"));
        qmlRegisterType<QObject>("ClassicUIBridge", 1, 0, "ClassicUIBridge"); // Nobody uses it.
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
    QObject *host = nullptr; ///< The engine's, for what is bound to it ends before.
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
