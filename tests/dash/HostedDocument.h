#pragma once

#include <QtCore/QStringList>
#include <QtQml/QQmlEngine>
#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickWindow>

#include <memory>

class IViewModel;

/// A view's document in a window that isn't shown, among doubles of everything that the host
/// offers to it.
class HostedDocument
{
public:
    /// On a double of the view model and of its images.
    HostedDocument(const QString &document, const QString &imageProvider, double scale);
    /// On `model`, as a host sets it up. It must live as long as the document.
    HostedDocument(const QString &document, IViewModel &model);
    ~HostedDocument();

    /// What the document has called since the last question, a line each.
    QStringList takeCalls() const;

    QObject *viewModel() const { return part("viewModel"); }
    QObject *hostWindow() const { return part("window"); }

    /// The one item below `item` whose property has this text; null if there is none.
    static QQuickItem *withText(const QQuickItem *item, const QString &text,
                                const char *property = "text");

    /// Every text that the document shows, tool tips too, from back to front.
    QStringList texts() const { return texts(root.get()); }

    QStringList warnings;
    QStringList imageRequests; ///< The id and the requested width, with a blank between.
    QQmlEngine engine;
    std::unique_ptr<QObject> host;
    QQuickWindow window;
    std::unique_ptr<QQuickItem> root;

private:
    HostedDocument();

    void load(const QString &document, QObject *model, double scale);
    QObject *part(const char *name) const;
    static QStringList texts(const QQuickItem *item);
};
