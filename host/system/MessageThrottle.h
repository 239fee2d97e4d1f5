#pragma once

#include <QtCore/QSet>
#include <QtCore/QString>

/// Limits a stream of messages: a dashboard may warn in every frame, with ever new texts. In each
/// time window a text passes once, and at most `TextsPerWindow` texts pass.
class MessageThrottle
{
public:
    static constexpr qint64 WindowMs = 5000;
    static constexpr int TextsPerWindow = 20;

    enum class Verdict {
        Pass,
        Drop,
        DropTheFirst, ///< Drop it and say that messages are dropped from here on.
    };

    /// `nowMs` is read from a steady clock.
    Verdict judge(const QString &text, qint64 nowMs);

private:
    qint64 windowStart = 0;
    bool windowOpen = false;
    bool overflowed = false;
    QSet<QString> texts;
};
