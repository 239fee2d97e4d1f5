#pragma once

#include <cstddef>
#include <vector>

/// One picture: `width * 4` bytes a row with no gap, the top row first, each pixel blue, green,
/// red, alpha. On a little-endian machine these are the bytes of
/// `QImage::Format_ARGB32_Premultiplied`. It has no header; holders swap it rather than copy it.
using Frame = std::vector<unsigned char>;

/// Bytes of a frame of this size in pixels; neither side may be negative.
constexpr std::size_t frameBytes(int width, int height)
{
    constexpr std::size_t BytesPerPixel = 4;
    return std::size_t(width) * std::size_t(height) * BytesPerPixel;
}
