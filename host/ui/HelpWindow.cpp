#include "HelpWindow.h"

#include <QtCore/QDir>
#include <QtCore/QUrl>
#include <QtQml/QQmlContext>

/// The linker drops a static library's resources unless something names them, outside of
/// namespaces.
static void initResources()
{
    Q_INIT_RESOURCE(help);
}

HelpWindow::HelpWindow(const QString &topic, Navigation &navigation)
    : HostWindow(QStringLiteral("HelpBrowser"), navigation)
{
    initResources();
    showTopic(topic);
    rootContext()->setContextProperty(QStringLiteral("help_page"), &text);
    open(QUrl(QStringLiteral("qrc:/qml/HelpWindow.qml")));
}

HelpWindow::~HelpWindow()
{
    setSource(QUrl()); // Its bindings read this object.
}

void HelpWindow::showTopic(const QString &topic)
{
    const QString name = topic.section(QLatin1Char('#'), 0, 0);
    pageAnchor = topic.section(QLatin1Char('#'), 1);
    pageName = name.isEmpty() ? QStringLiteral("dashboards") : name;
    Q_EMIT requested();
}
