#pragma once

#include "MessageThrottle.h"

#include <QtCore/QElapsedTimer>
#include <QtCore/QObject>
#include <QtCore/QString>

#include <mutex>

/// Takes Qt's log messages of the whole process while it lives and prints them on standard error:
/// failures always, warnings and what scripts of dashboards log as far as a `MessageThrottle` each
/// lets them pass, progress only when verbose. One at a time. Any thread may log.
class MessageLog final : public QObject
{
    Q_OBJECT

public:
    explicit MessageLog(bool verbose);
    ~MessageLog() override;

Q_SIGNALS:
    /// The library reported a document that it couldn't load. Emitted on the thread of the report.
    void dashboardFailed();

    /// A message about a document on disk was printed. Emitted on the thread of the message, which
    /// may be in the middle of the document: connect queued.
    void documentSaid(const QString &file, int line, const QString &text);

private:
    static void handle(QtMsgType type, const QMessageLogContext &context, const QString &text);
    bool print(QtMsgType type, const QString &text);
    bool printThrottled(MessageThrottle &throttle, const QString &text, const QString &overflow);

    const bool verbose;
    QElapsedTimer time;
    std::mutex mutex;
    MessageThrottle warnings;
    MessageThrottle scripts; ///< One that talks must not keep warnings from being seen.
    QtMessageHandler previous = nullptr;
};
