#include "MessageLog.h"

#include "DocumentMessage.h"
#include "Terminal.h"

#include <atomic>

namespace {

/// How the library's message begins when it couldn't load a document.
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

void MessageLog::handle(QtMsgType type, const QMessageLogContext &context, const QString &text)
{
    MessageLog *log = current;
    if (log == nullptr)
        return;
    const std::optional<DocumentMessage> message = DocumentMessage::fromLog(context, text);
    const bool printed = message && message->ofScript
                             ? log->printThrottled(log->scripts, message->placed(),
                                                   QStringLiteral("... and further messages"))
                             : log->print(type, text);
    if (printed && message)
        Q_EMIT log->documentSaid(message->file, message->line, message->text);
}

/// Returns whether the text was printed.
bool MessageLog::print(QtMsgType type, const QString &text)
{
    switch (type) {
    case QtDebugMsg:
    case QtInfoMsg:
        if (verbose)
            printLine(text);
        return verbose;
    case QtWarningMsg:
        return printThrottled(warnings, text, QStringLiteral("... and further warnings"));
    case QtCriticalMsg:
    case QtFatalMsg:
        break;
    }
    printLine(text);
    if (text.startsWith(LoadFailure))
        Q_EMIT dashboardFailed();
    return true;
}

/// Returns whether the text was printed.
bool MessageLog::printThrottled(MessageThrottle &throttle, const QString &text,
                                const QString &overflow)
{
    const std::lock_guard guard(mutex);
    const MessageThrottle::Verdict verdict = throttle.judge(text, time.elapsed());
    if (verdict == MessageThrottle::Verdict::Pass)
        printLine(text);
    else if (verdict == MessageThrottle::Verdict::DropTheFirst)
        printLine(overflow);
    return verdict == MessageThrottle::Verdict::Pass;
}
