#include "UiEngine.h"

#include "ClassicUIBridge.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDebug>
#include <QtCore/QEvent>
#include <QtCore/QUrl>
#include <QtGui/QGuiApplication>
#include <QtGui/QIcon>
#include <QtGui/QScreen>
#include <QtQml/QQmlComponent>
#include <QtQml/QQmlContext>

#include <algorithm>
#include <cmath>

UiEngine::UiEngine()
{
    // The linker drops a static library's resources unless something names them.
    Q_INIT_RESOURCE(host);
    QGuiApplication::setWindowIcon(QIcon(QStringLiteral(":/icon.png")));
    ClassicUIBridge::registerType();
    addImportPath(QStringLiteral("qrc:/qml/modules"));
    setScale(scale());
    QQmlComponent component(this, QUrl(QStringLiteral("qrc:/qml/Theme.qml")));
    QObject *theme = component.create();
    if (theme == nullptr)
        qCritical().noquote() << component.errorString();
    else
        theme->setParent(this); // Ends after the documents and singletons that are bound to it.
    rootContext()->setContextProperty(QStringLiteral("ux"), theme);
    // Qt sends language changes to the application object only.
    QCoreApplication::instance()->installEventFilter(this);
}

qreal UiEngine::scale()
{
    constexpr qreal DotsPerInchAtScale1 = 96;
    const QScreen *screen = QGuiApplication::primaryScreen();
    const qreal dots = screen != nullptr ? screen->logicalDotsPerInch() : DotsPerInchAtScale1;
    return std::clamp(std::round(4 * dots / DotsPerInchAtScale1) / 4, 0.75, 4.0);
}

void UiEngine::setScale(qreal scale)
{
    const QString name = QStringLiteral("qt_scale");
    if (rootContext()->contextProperty(name) != scale)
        rootContext()->setContextProperty(name, scale);
}

bool UiEngine::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == QCoreApplication::instance() && event->type() == QEvent::LanguageChange)
        retranslate();
    return QQmlEngine::eventFilter(watched, event);
}
