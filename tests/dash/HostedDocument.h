#pragma once

#include <QtCore/QStringList>
#include <QtQml/QQmlEngine>
#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickWindow>

#include <memory>

/// A view's document in a window that is never shown, among doubles of everything that the host
/// offers to it.
class HostedDocument
{
public:
    HostedDocument(const QString &document, const QString &imageProvider, double scale);
    ~HostedDocument();

    /// What the document has called since the last question, a line each.
    QStringList takeCalls() const;

    QObject *viewModel() const { return part("viewModel"); }
    QObject *hostWindow() const { return part("window"); }

    /// The one item below `item` whose property has this text; null if there is none.
    static QQuickItem *withText(const QQuickItem *item, const QString &text,
                                const char *property = "text");

    QStringList warnings;
    QStringList imageRequests; ///< The id and the requested width, with a blank between.
    QQmlEngine engine;
    std::unique_ptr<QObject> host;
    QQuickWindow window;
    std::unique_ptr<QQuickItem> root;

private:
    QObject *part(const char *name) const;
};
