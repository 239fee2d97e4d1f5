#pragma once

#include <chrono>

/// How long a game must be silent to count as paused, then as lost.
namespace SilenceLimits {

constexpr std::chrono::milliseconds Paused{500};
constexpr std::chrono::seconds Lost{5};

} // namespace SilenceLimits
