#include "MessageLog.h"

#include <QtCore/QMutex>
#include <QtCore/QSet>

#include <cstdio>

namespace {

constexpr int MaximumDistinctTexts = 1000;
MessageLog *current = nullptr;

} // namespace

struct MessageLog::Printed
{
    QMutex mutex;
    QSet<QString> texts;
};

MessageLog::MessageLog(bool verbose)
    : verbose(verbose)
    , printed(std::make_unique<Printed>())
{
    current = this;
    previous = qInstallMessageHandler(handle);
}

MessageLog::~MessageLog()
{
    qInstallMessageHandler(previous);
    current = nullptr;
}

void MessageLog::handle(QtMsgType type, const QMessageLogContext & /*context*/, const QString &text)
{
    current->take(type, text);
}

void MessageLog::take(QtMsgType type, const QString &text)
{
    const bool isProgress = type == QtDebugMsg || type == QtInfoMsg;
    if (isProgress && !verbose)
        return;
    {
        const QMutexLocker guard(&printed->mutex);
        if (printed->texts.contains(text) || printed->texts.size() == MaximumDistinctTexts)
            return;
        printed->texts.insert(text);
        std::fprintf(stderr, "%s\n", qUtf8Printable(text));
    }
    if (type == QtCriticalMsg && text.startsWith(QLatin1String("Dashboard: Failed to load:")))
        Q_EMIT dashboardFailed();
}
