#pragma once

#include "RevLimits.h"

#include <QtCore/QHash>
#include <QtCore/QString>

#include <chrono>
#include <functional>

/// Keeps the limits of cars from session to session, in an INI file. What can't be read or written
/// must be learnt anew. One thread at a time.
class RevLimitStore
{
public:
    using TimePoint = std::chrono::steady_clock::time_point;
    using Clock = std::function<TimePoint()>;

    static constexpr std::chrono::seconds WritingPause{30};
    static constexpr int MostCars = 500; ///< Further ones aren't kept.

    /// Reads the file. `clock` tells when it is time to write again.
    explicit RevLimitStore(QString path, Clock clock = &std::chrono::steady_clock::now);

    /// Writes what is new.
    ~RevLimitStore();
    RevLimitStore(const RevLimitStore &) = delete;
    RevLimitStore &operator=(const RevLimitStore &) = delete;

    /// The host's file, among the user's settings.
    static QString usualPath();

    /// The known limits of a car; all 0 if there are none.
    RevLimits limitsOf(const QString &car) const;

    /// Takes what is known now, and writes the file if `WritingPause` is over.
    void keep(const QString &car, const RevLimits &limits);

private:
    void write();

    const QString path;
    const Clock clock;
    QHash<QString, RevLimits> cars;
    QHash<QString, RevLimits> unwritten;
    TimePoint lastWritten;
};
