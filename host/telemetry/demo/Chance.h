#pragma once

#include <cstdint>

/// A number in [0, 1) that depends on nothing but the arguments, so that any moment of a drive can
/// be worked out again. `what` keeps the uses apart; `lap` and `place` are where it is asked for.
inline double chance(std::uint32_t seed, std::uint32_t what, std::uint32_t lap, std::uint32_t place)
{
    std::uint64_t bits = (std::uint64_t{seed} << 32U) ^ (std::uint64_t{what} << 24U) ^
                         (std::uint64_t{lap} << 10U) ^ place;
    // The finalizer of SplitMix64: neighbouring arguments give unrelated numbers.
    bits += 0x9E3779B97F4A7C15ULL;
    bits = (bits ^ (bits >> 30U)) * 0xBF58476D1CE4E5B9ULL;
    bits = (bits ^ (bits >> 27U)) * 0x94D049BB133111EBULL;
    bits ^= bits >> 31U;
    return static_cast<double>(bits >> 11U) * 0x1.0p-53;
}
