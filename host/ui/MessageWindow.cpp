#include "MessageWindow.h"

#include <QtCore/QUrl>

MessageWindow::MessageWindow(Navigation &navigation)
    : HostWindow(QStringLiteral("Message"), navigation)
{
    setTitle(QStringLiteral("GAUGE64"));
    setFlag(Qt::Dialog);
}

MessageWindow::~MessageWindow()
{
    setSource({});
}

void MessageWindow::tell(const QString &newMessage)
{
    text = newMessage;
    Q_EMIT messageChanged();
    if (source().isEmpty())
        open(QUrl(QStringLiteral("qrc:/qml/MessageWindow.qml")));
    else
        present();
}
