#include "ui/UiEngine.h"

#include "ui/ClassicUIBridge.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDebug>
#include <QtCore/QEvent>
#include <QtCore/QUrl>
#include <QtGui/QGuiApplication>
#include <QtGui/QScreen>
#include <QtQml/QQmlComponent>
#include <QtQml/QQmlContext>

#include <algorithm>

UiEngine::UiEngine()
{
    // A static library's resources are left out unless something names them.
    Q_INIT_RESOURCE(host);
    ClassicUIBridge::registerType();
    addImportPath(QStringLiteral("qrc:/qml/modules"));
    rootContext()->setContextProperty(QStringLiteral("qt_scale"), scale());
    QQmlComponent component(this, QUrl(QStringLiteral("qrc:/qml/Theme.qml")));
    theme.reset(component.create());
    if (theme == nullptr)
        qCritical().noquote() << component.errorString();
    rootContext()->setContextProperty(QStringLiteral("ux"), theme.get());
    // Language changes reach only the application object by themselves.
    QCoreApplication::instance()->installEventFilter(this);
}

UiEngine::~UiEngine() = default;

qreal UiEngine::scale()
{
    constexpr qreal DotsPerInchAtScale1 = 96;
    const QScreen *screen = QGuiApplication::primaryScreen();
    const qreal dots = screen != nullptr ? screen->logicalDotsPerInch() : DotsPerInchAtScale1;
    return std::clamp(dots / DotsPerInchAtScale1, 0.75, 4.0);
}

bool UiEngine::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == QCoreApplication::instance() && event->type() == QEvent::LanguageChange)
        retranslate();
    return QQmlEngine::eventFilter(watched, event);
}
