#pragma once

#include <cstdint>
#include <memory>

/// The seam to the operating system, with one source file for each platform.
namespace platform {

/// The system's steady clocks. Any thread.
class Counter
{
public:
    virtual ~Counter() = default;

    /// Gives the high-resolution counter's counts per second; false if there is no such counter.
    virtual bool frequency(std::int64_t &countsPerSecond) const = 0;

    /// Reads the high-resolution counter; false on failure.
    virtual bool read(std::int64_t &count) const = 0;

    /// The coarse clock to fall back on: milliseconds since the system started.
    virtual std::uint64_t tickCount() const = 0;
};

/// The counter of this machine. Lives as long as the process.
const Counter &systemCounter();

/// A mutex that its holder may lock again.
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
