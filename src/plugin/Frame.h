#pragma once

#include <cstddef>
#include <vector>

/// The size in pixels that dashboards are drawn for; at any other size they are scaled.
inline constexpr int DashboardWidth = 480;
inline constexpr int DashboardHeight = 272;

inline constexpr int BytesPerPixel = 4;

/// One picture: `width * BytesPerPixel` bytes a row with no gap, the top row first, each pixel
/// blue, green, red, alpha. On a little-endian machine these are the bytes of
/// `QImage::Format_ARGB32_Premultiplied`. It has no header; holders swap it rather than copy it.
using Frame = std::vector<unsigned char>;

/// Bytes of a frame of this size in pixels; neither side may be negative.
constexpr std::size_t frameBytes(int width, int height)
{
    return std::size_t(width) * std::size_t(height) * BytesPerPixel;
}
