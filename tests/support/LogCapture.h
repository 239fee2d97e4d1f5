#pragma once

#include <QtCore/QLoggingCategory>
#include <QtCore/QStringList>

#include <functional>

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
    LogCapture(const LogCapture &) = delete;
    LogCapture &operator=(const LogCapture &) = delete;

    QStringList lines;
    std::function<void()> whenTaken; ///< Runs after every line, which it may not add to.

    QStringList critical() const { return lines.filter(QStringLiteral("critical: ")); }

private:
    static void take(QtMsgType type, const QMessageLogContext &, const QString &text)
    {
        const char *level = type == QtInfoMsg       ? "info: "
                            : type == QtCriticalMsg ? "critical: "
                                                    : "other: ";
        current->lines += QLatin1String(level) + text;
        if (current->whenTaken)
            current->whenTaken();
    }

    static inline LogCapture *current = nullptr;
    QtMessageHandler previous;
};
