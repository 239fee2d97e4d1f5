#include "PictureComparison.h"

#include <algorithm>
#include <array>
#include <cstdlib>

namespace {

/// Between what rasterisers differ by and what another digit does, even one of 11 pixels in a
/// picture of twice the dashboard's size.
constexpr int MostDifference = 29;
constexpr int Reach = 1; ///< Pixels that a patch may have moved.
constexpr int BlurRadius = 1;
constexpr int PatchRadius = 2;

using Channels = std::array<int, 3>;

/// The mean, by channel, of what `of` tells of the pixels around a place.
template<typename Function>
Channels mean(const QImage &image, QPoint place, int radius, Function of)
{
    const QRect square(place.x() - radius, place.y() - radius, 2 * radius + 1, 2 * radius + 1);
    const QRect area = square & image.rect();
    Channels sum{};
    for (int y = area.top(); y <= area.bottom(); ++y) {
        for (int x = area.left(); x <= area.right(); ++x) {
            const Channels value = of(x, y);
            for (std::size_t i = 0; i < sum.size(); ++i)
                sum[i] += value[i];
        }
    }
    for (int &channel : sum)
        channel /= area.width() * area.height();
    return sum;
}

Channels channelsAt(const QImage &image, int x, int y)
{
    const QRgb pixel =
        image.pixel(std::clamp(x, 0, image.width() - 1), std::clamp(y, 0, image.height() - 1));
    return {qRed(pixel), qGreen(pixel), qBlue(pixel)};
}

QImage blurred(const QImage &image)
{
    QImage result(image.size(), QImage::Format_RGB32);
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const auto [red, green, blue] = mean(image, {x, y}, BlurRadius, [&image](int u, int v) {
                return channelsAt(image, u, v);
            });
            result.setPixel(x, y, qRgb(red, green, blue));
        }
    }
    return result;
}

/// Whether the patch around a place in one picture is in the other, moved a little at most. Judges
/// each channel by itself: smoothing for a screen's subpixels moves them apart.
bool isIn(const QImage &one, const QImage &other, QPoint place)
{
    for (int dy = -Reach; dy <= Reach; ++dy) {
        for (int dx = -Reach; dx <= Reach; ++dx) {
            const Channels difference = mean(one, place, PatchRadius, [&](int x, int y) {
                Channels a = channelsAt(one, x, y);
                const Channels b = channelsAt(other, x + dx, y + dy);
                for (std::size_t i = 0; i < a.size(); ++i)
                    a[i] = std::abs(a[i] - b[i]);
                return a;
            });
            if (*std::max_element(difference.begin(), difference.end()) <= MostDifference)
                return true;
        }
    }
    return false;
}

} // namespace

bool showTheSame(const QImage &one, const QImage &other)
{
    if (one.isNull() || one.size() != other.size())
        return false;
    if (one == other)
        return true;
    const QImage a = blurred(one);
    const QImage b = blurred(other);
    for (int y = 0; y < a.height(); ++y) {
        for (int x = 0; x < a.width(); ++x) {
            if (a.pixel(x, y) != b.pixel(x, y) && !isIn(a, b, {x, y}))
                return false;
        }
    }
    return true;
}
