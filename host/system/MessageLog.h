#pragma once

#include "MessageThrottle.h"

#include <QtCore/QElapsedTimer>
#include <QtCore/QObject>
#include <QtCore/QString>

#include <mutex>

/// While it lives, prints the log messages of the whole process on standard error: failures always,
/// warnings and the messages of scripts as often as a `MessageThrottle` each allows, progress only
/// if verbose. Only one may live at a time. Any thread may log.
class MessageLog final : public QObject
{
    Q_OBJECT

public:
    explicit MessageLog(bool verbose);
    ~MessageLog() override;

Q_SIGNALS:
    /// The library couldn't load a document. Emitted on the thread that reports it.
    void dashboardFailed();

    /// A message about a document on disk was printed. Emitted on the thread that logs, which may
    /// be running that document: connect queued.
    void documentSaid(const QString &file, int line, const QString &text);

private:
    static void handle(QtMsgType type, const QMessageLogContext &context, const QString &text);
    bool print(QtMsgType type, const QString &text);
    bool printThrottled(MessageThrottle &throttle, const QString &text, const QString &overflow);

    const bool verbose;
    QElapsedTimer time;
    std::mutex mutex;
    MessageThrottle warnings;
    MessageThrottle scripts; ///< Apart, so that a chatty script doesn't use up the warnings' share.
    QtMessageHandler previous = nullptr;
};
