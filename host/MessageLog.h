#pragma once

#include "MessageThrottle.h"

#include <QtCore/QElapsedTimer>
#include <QtCore/QObject>
#include <QtCore/QString>

#include <mutex>

/// Takes Qt's log messages of the whole process while it lives and prints them on standard error:
/// failures always, warnings as far as a `MessageThrottle` lets them pass, progress only when
/// verbose. One at a time. Any thread may log.
class MessageLog final : public QObject
{
    Q_OBJECT

public:
    explicit MessageLog(bool verbose);
    ~MessageLog() override;

Q_SIGNALS:
    /// The library reported a document that it couldn't load. Emitted on the thread of the report.
    void dashboardFailed();

private:
    static void handle(QtMsgType type, const QMessageLogContext &context, const QString &text);
    void take(QtMsgType type, const QString &text);

    const bool verbose;
    QElapsedTimer time;
    std::mutex mutex;
    MessageThrottle throttle;
    QtMessageHandler previous = nullptr;
};
