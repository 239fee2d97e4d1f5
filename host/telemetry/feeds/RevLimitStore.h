#pragma once

#include "RevLimits.h"

#include <QtCore/QHash>
#include <QtCore/QString>

#include <chrono>
#include <functional>

/// Keeps what was learnt of cars from session to session, in an INI file. A file that can't be read
/// or written costs only the learning. One thread at a time.
class RevLimitStore
{
public:
    using TimePoint = std::chrono::steady_clock::time_point;
    using Clock = std::function<TimePoint()>;

    static constexpr std::chrono::seconds WritingPause{30};
    static constexpr int MostCars = 500; ///< Further ones are forgotten at the end.

    /// Reads the file. `clock` tells when it is time to write again.
    explicit RevLimitStore(QString path, Clock clock = &std::chrono::steady_clock::now);

    /// Writes what is new.
    ~RevLimitStore();
    RevLimitStore(const RevLimitStore &) = delete;
    RevLimitStore &operator=(const RevLimitStore &) = delete;

    /// The file of the user's settings where the host keeps it.
    static QString usualPath();

    /// What is known of a car; all 0 if nothing is.
    RevLimits limitsOf(const QString &car) const;

    /// Takes what is known now, and writes the file if the last time is long enough ago.
    void keep(const QString &car, const RevLimits &limits);

private:
    void write();

    const QString path;
    const Clock clock;
    QHash<QString, RevLimits> cars;
    QHash<QString, RevLimits> unwritten;
    TimePoint lastWritten;
};
