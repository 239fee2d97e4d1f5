#pragma once

#include <cstdint>
#include <memory>

/// The seam to the operating system. One source file for each platform stands behind it.
namespace platform {

/// The system's steady clocks. Any thread.
class Counter
{
public:
    virtual ~Counter() = default;

    /// Counts a second of the high-resolution counter, or nothing where there is none.
    virtual bool frequency(std::int64_t &countsPerSecond) const = 0;

    /// Reads the high-resolution counter.
    virtual bool read(std::int64_t &count) const = 0;

    /// The coarse clock behind it: milliseconds since the system's start.
    virtual std::uint64_t tickCount() const = 0;
};

/// The counter of this machine. Lives as long as the process.
const Counter &systemCounter();

/// A mutual exclusion that the thread which holds it may take again.
class RecursiveMutex
{
public:
    RecursiveMutex();
    ~RecursiveMutex();
    RecursiveMutex(const RecursiveMutex &) = delete;
    RecursiveMutex &operator=(const RecursiveMutex &) = delete;

    void lock();
    void unlock();

private:
    struct Native;
    std::unique_ptr<Native> native;
};

} // namespace platform
