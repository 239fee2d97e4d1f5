#pragma once

#include <chrono>

/// From which length of silence on a game counts as paused, and as gone.
namespace SilenceLimits {

constexpr std::chrono::milliseconds Paused{500};
constexpr std::chrono::seconds Lost{5};

} // namespace SilenceLimits
