#pragma once

#include "support/platform/Platform.h"

#include <mutex>

/// The library's one kind of lock: recursive on the thread that holds it.
using Lock = platform::RecursiveMutex;

/// Holds a `Lock` from its construction to the end of its scope.
using LockGuard = std::lock_guard<Lock>;
