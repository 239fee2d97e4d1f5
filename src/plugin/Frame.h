#pragma once

#include <cstddef>
#include <vector>

/// The size in pixels that dashboards are drawn for; at any other size they are scaled.
inline constexpr int DashboardWidth = 480;
inline constexpr int DashboardHeight = 272;

inline constexpr int BytesPerPixel = 4;

/// One picture: rows of `width * BytesPerPixel` bytes without padding, the top row first, each
/// pixel as blue, green, red, alpha. On a little-endian machine that is the layout of
/// `QImage::Format_ARGB32_Premultiplied`. A frame doesn't contain its size. Swap it, don't copy it.
using Frame = std::vector<unsigned char>;

/// Bytes of a frame of this size in pixels; neither side may be negative.
constexpr std::size_t frameBytes(int width, int height)
{
    return std::size_t(width) * std::size_t(height) * BytesPerPixel;
}
