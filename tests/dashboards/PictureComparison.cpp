#include "PictureComparison.h"

#include <algorithm>
#include <cstdlib>

namespace {

/// Between what rasterisers differ by and what another digit does, even one of 11 pixels in a
/// picture of twice the dashboard's size.
constexpr int MostDifference = 29;
constexpr int BlurRadius = 1;
constexpr int PatchRadius = 2;

/// The mean of what `of` tells of the pixels around a place.
template<typename Function> int mean(const QImage &image, QPoint place, int radius, Function of)
{
    const QPoint corner(radius, radius);
    const QRect area = QRect(place - corner, place + corner) & image.rect();
    int sum = 0;
    for (int y = area.top(); y <= area.bottom(); ++y) {
        for (int x = area.left(); x <= area.right(); ++x)
            sum += of(x, y);
    }
    return sum / (area.width() * area.height());
}

/// One of the four bytes of each pixel.
QImage blurredChannel(const QImage &image, int channel)
{
    QImage result(image.size(), QImage::Format_Grayscale8);
    for (int y = 0; y < image.height(); ++y) {
        uchar *row = result.scanLine(y);
        for (int x = 0; x < image.width(); ++x) {
            row[x] = uchar(mean(image, {x, y}, BlurRadius, [&image, channel](int u, int v) {
                return image.constScanLine(v)[4 * u + channel];
            }));
        }
    }
    return result;
}

/// Whether the patch around a place in one picture is in the other, moved by a pixel at most.
bool isIn(const QImage &one, const QImage &other, QPoint place)
{
    for (const int dy : {-1, 0, 1}) {
        for (const int dx : {-1, 0, 1}) {
            const int difference = mean(one, place, PatchRadius, [&](int x, int y) {
                const int u = std::clamp(x + dx, 0, other.width() - 1);
                const int v = std::clamp(y + dy, 0, other.height() - 1);
                return std::abs(one.constScanLine(y)[x] - other.constScanLine(v)[u]);
            });
            if (difference <= MostDifference)
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
    // Each channel by itself: smoothing for a screen's subpixels moves them apart.
    for (int channel = 0; channel < 3; ++channel) {
        const QImage a = blurredChannel(one, channel);
        const QImage b = blurredChannel(other, channel);
        for (int y = 0; y < a.height(); ++y) {
            for (int x = 0; x < a.width(); ++x) {
                if (a.constScanLine(y)[x] != b.constScanLine(y)[x] && !isIn(a, b, {x, y}))
                    return false;
            }
        }
    }
    return true;
}
