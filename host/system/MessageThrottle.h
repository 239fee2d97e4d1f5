#pragma once

#include <QtCore/QSet>
#include <QtCore/QString>

/// Decides which of a stream of messages a person should see. A dashboard may warn in every frame,
/// and in ever new words: each text passes once in a while, and so many different ones at most.
class MessageThrottle
{
public:
    static constexpr qint64 WindowMs = 5000;
    static constexpr int TextsPerWindow = 20;

    enum class Verdict {
        Pass,
        Drop,
        DropTheFirst, ///< The window is full from here on, which is worth a line.
    };

    /// `nowMs` is the reading of a steady clock.
    Verdict judge(const QString &text, qint64 nowMs);

private:
    qint64 windowStart = 0;
    bool windowOpen = false;
    bool overflowed = false;
    QSet<QString> texts;
};
