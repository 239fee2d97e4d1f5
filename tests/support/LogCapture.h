#pragma once

#include <QtCore/QLoggingCategory>
#include <QtCore/QStringList>

/// Collects what the program logs while it lives, as "critical: text". One at a time.
class LogCapture
{
public:
    LogCapture()
        : previous(qInstallMessageHandler(&LogCapture::take))
    {
        current = this;
    }
    ~LogCapture()
    {
        qInstallMessageHandler(previous);
        current = nullptr;
    }

    QStringList lines;

    QStringList critical() const { return lines.filter(QStringLiteral("critical: ")); }

private:
    static void take(QtMsgType type, const QMessageLogContext &, const QString &text)
    {
        const char *level = type == QtInfoMsg       ? "info: "
                            : type == QtCriticalMsg ? "critical: "
                                                    : "other: ";
        current->lines += QLatin1String(level) + text;
    }

    static inline LogCapture *current = nullptr;
    QtMessageHandler previous;
};
