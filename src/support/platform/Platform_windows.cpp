#include "support/platform/Platform.h"

#include <windows.h>

namespace platform {

namespace {

using GetTickCount64Function = ULONGLONG(WINAPI *)();

/// Looked up at run time: the oldest supported systems lack it.
GetTickCount64Function findTickCount64()
{
    const HMODULE kernel = GetModuleHandleW(L"kernel32");
    if (kernel == nullptr)
        return nullptr;
    return reinterpret_cast<GetTickCount64Function>(
        reinterpret_cast<void *>(GetProcAddress(kernel, "GetTickCount64")));
}

class WindowsCounter final : public Counter
{
public:
    bool frequency(std::int64_t &countsPerSecond) const override
    {
        LARGE_INTEGER value;
        if (QueryPerformanceFrequency(&value) == 0)
            return false;
        countsPerSecond = value.QuadPart;
        return true;
    }

    bool read(std::int64_t &count) const override
    {
        LARGE_INTEGER value;
        if (QueryPerformanceCounter(&value) == 0)
            return false;
        count = value.QuadPart;
        return true;
    }

    std::uint64_t tickCount() const override
    {
        static const GetTickCount64Function tickCount64 = findTickCount64();
        return tickCount64 != nullptr ? tickCount64() : GetTickCount();
    }
};

} // namespace

const Counter &systemCounter()
{
    static const WindowsCounter counter;
    return counter;
}

struct RecursiveMutex::Native
{
    CRITICAL_SECTION section;
};

RecursiveMutex::RecursiveMutex()
    : native(std::make_unique<Native>())
{
    InitializeCriticalSection(&native->section);
}

RecursiveMutex::~RecursiveMutex()
{
    DeleteCriticalSection(&native->section);
}

void RecursiveMutex::lock()
{
    EnterCriticalSection(&native->section);
}

void RecursiveMutex::unlock()
{
    LeaveCriticalSection(&native->section);
}

} // namespace platform
