#include "PictureComparison.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdlib>
#include <vector>

namespace {

/// Between what rasterisers differ by and what another digit does, even one of 11 pixels in a
/// picture of twice the dashboard's size.
constexpr int MostDifference = 29;
constexpr int Reach = 1; ///< Pixels that a patch may have moved.
constexpr int BlurRadius = 1;
constexpr int PatchRadius = 2;

/// One number for each pixel.
struct Plane
{
    Plane(int width, int height)
        : width(width)
        , height(height)
        , values(std::size_t(width) * std::size_t(height))
    {
    }

    int &at(int x, int y) { return values[std::size_t(y) * std::size_t(width) + std::size_t(x)]; }

    /// Beyond its edges a plane goes on as they are.
    int at(int x, int y) const
    {
        return values[std::size_t(std::clamp(y, 0, height - 1)) * std::size_t(width) +
                      std::size_t(std::clamp(x, 0, width - 1))];
    }

    /// Each value by the mean of its surroundings.
    Plane averaged(int radius) const
    {
        Plane rows(width, height);
        Plane result(width, height);
        const int count = (2 * radius + 1) * (2 * radius + 1);
        for (int y = 0; y < height; ++y) {
            for (int x = 0; x < width; ++x) {
                for (int i = -radius; i <= radius; ++i)
                    rows.at(x, y) += at(x + i, y);
            }
        }
        const Plane &sums = rows;
        for (int y = 0; y < height; ++y) {
            for (int x = 0; x < width; ++x) {
                int sum = 0;
                for (int i = -radius; i <= radius; ++i)
                    sum += sums.at(x, y + i);
                result.at(x, y) = sum / count;
            }
        }
        return result;
    }

    int width;
    int height;
    std::vector<int> values;
};

using Channels = std::array<Plane, 3>;

constexpr int Fine = 16; ///< Steps of a shade, so that means lose nothing.

Channels blurred(const QImage &image)
{
    const Plane empty(image.width(), image.height());
    Channels channels{empty, empty, empty};
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QRgb pixel = image.pixel(x, y);
            channels[0].at(x, y) = Fine * qRed(pixel);
            channels[1].at(x, y) = Fine * qGreen(pixel);
            channels[2].at(x, y) = Fine * qBlue(pixel);
        }
    }
    for (Plane &channel : channels)
        channel = channel.averaged(BlurRadius);
    return channels;
}

/// The mean difference of the patches around a place, with the other picture moved.
int patchDifference(const Plane &one, const Plane &other, int x, int y, int dx, int dy)
{
    constexpr int Count = (2 * PatchRadius + 1) * (2 * PatchRadius + 1);
    int sum = 0;
    for (int v = y - PatchRadius; v <= y + PatchRadius; ++v) {
        for (int u = x - PatchRadius; u <= x + PatchRadius; ++u)
            sum += std::abs(one.at(u, v) - other.at(u + dx, v + dy));
    }
    return sum / Count / Fine;
}

int differenceAt(const Plane &one, const Plane &other, int x, int y)
{
    int least = patchDifference(one, other, x, y, 0, 0);
    for (int dy = -Reach; dy <= Reach && least > MostDifference; ++dy) {
        for (int dx = -Reach; dx <= Reach && least > MostDifference; ++dx)
            least = std::min(least, patchDifference(one, other, x, y, dx, dy));
    }
    return least;
}

} // namespace

QImage differenceOf(const QImage &one, const QImage &other)
{
    const Channels a = blurred(one);
    const Channels b = blurred(other);
    QImage difference(one.size(), QImage::Format_Grayscale8);
    for (int y = 0; y < difference.height(); ++y) {
        uchar *line = difference.scanLine(y);
        for (int x = 0; x < difference.width(); ++x) {
            // Each channel by itself: smoothing for a screen's subpixels moves them apart.
            int largest = 0;
            for (std::size_t i = 0; i < a.size(); ++i)
                largest = std::max(largest, differenceAt(a[i], b[i], x, y));
            line[x] = static_cast<uchar>(largest);
        }
    }
    return difference;
}

bool showTheSame(const QImage &one, const QImage &other)
{
    if (one.isNull() || one.size() != other.size())
        return false;
    const QImage difference = differenceOf(one, other);
    for (int y = 0; y < difference.height(); ++y) {
        const uchar *line = difference.constScanLine(y);
        if (*std::max_element(line, line + difference.width()) > MostDifference)
            return false;
    }
    return true;
}
