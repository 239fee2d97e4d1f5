#include "support/platform/Platform.h"

#include <ctime>
#include <mutex>

namespace platform {

namespace {

constexpr std::int64_t NanosecondsPerSecond = 1'000'000'000;

class PosixCounter final : public Counter
{
public:
    bool frequency(std::int64_t &countsPerSecond) const override
    {
        countsPerSecond = NanosecondsPerSecond;
        return true;
    }

    bool read(std::int64_t &count) const override
    {
        timespec now{};
        if (clock_gettime(CLOCK_MONOTONIC, &now) != 0)
            return false;
        count = std::int64_t{now.tv_sec} * NanosecondsPerSecond + now.tv_nsec;
        return true;
    }

    std::uint64_t tickCount() const override
    {
        std::int64_t count = 0;
        return read(count) ? static_cast<std::uint64_t>(count) / 1'000'000 : 0;
    }
};

} // namespace

const Counter &systemCounter()
{
    static const PosixCounter counter;
    return counter;
}

struct RecursiveMutex::Native
{
    std::recursive_mutex mutex;
};

RecursiveMutex::RecursiveMutex()
    : native(std::make_unique<Native>())
{
}

RecursiveMutex::~RecursiveMutex() = default;

void RecursiveMutex::lock()
{
    native->mutex.lock();
}

void RecursiveMutex::unlock()
{
    native->mutex.unlock();
}

} // namespace platform
