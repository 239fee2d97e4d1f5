#include "MessageLog.h"

#include "Terminal.h"

#include <atomic>

namespace {

/// How the library's report of a document that it couldn't load begins, as hosts are told.
const QLatin1String LoadFailure("Dashboard: Failed to load:");

std::atomic<MessageLog *> current{nullptr};

} // namespace

MessageLog::MessageLog(bool verbose)
    : verbose(verbose)
{
    time.start();
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
    if (MessageLog *log = current)
        log->take(type, text);
}

void MessageLog::take(QtMsgType type, const QString &text)
{
    switch (type) {
    case QtDebugMsg:
    case QtInfoMsg:
        if (verbose)
            printLine(text);
        break;
    case QtWarningMsg: {
        const std::lock_guard guard(mutex);
        const MessageThrottle::Verdict verdict = throttle.judge(text, time.elapsed());
        if (verdict == MessageThrottle::Verdict::Pass)
            printLine(text);
        else if (verdict == MessageThrottle::Verdict::DropTheFirst)
            printLine(QStringLiteral("... and further warnings"));
        break;
    }
    case QtCriticalMsg:
    case QtFatalMsg:
        printLine(text);
        if (text.startsWith(LoadFailure))
            Q_EMIT dashboardFailed();
        break;
    }
}
