#pragma once

#include <QtCore/QObject>

#include <memory>

/// Takes Qt's log messages of the whole process while it lives: prints warnings and failures on
/// standard error, each distinct text once, since a dashboard may warn in every frame; progress
/// only when verbose. One at a time.
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

    struct Printed;
    const bool verbose;
    std::unique_ptr<Printed> printed;
    QtMessageHandler previous = nullptr;
};
