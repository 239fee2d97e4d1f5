#include "support/Logging.h"

#include <QtCore/QDebug>

void logInfo(const QString &text)
{
    qInfo().noquote().nospace() << text;
}
