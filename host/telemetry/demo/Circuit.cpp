#include "Circuit.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

namespace {

struct Curve
{
    std::size_t begin;  // m
    std::size_t length; // m
    double turnDeg;     // Positive to the right.
};

// The turns add up to a full circle; the straights are as long as it takes to come back.
constexpr std::array<Curve, 10> Curves{{{300, 62, 88},
                                        {452, 66, -62},
                                        {518, 92, 78},
                                        {1440, 60, 152},
                                        {1760, 130, -82},
                                        {1950, 100, 52},
                                        {2464, 32, -48},
                                        {2496, 34, 52},
                                        {2680, 190, 78},
                                        {2970, 58, 52}}};

/// A running mean around the circuit, which keeps the sum.
std::vector<double> smoothed(const std::vector<double> &values, std::size_t halfWindow)
{
    const std::size_t count = values.size();
    std::vector<double> means(count);
    for (std::size_t i = 0; i < count; ++i) {
        for (std::size_t j = count - halfWindow; j <= count + halfWindow; ++j)
            means[i] += values[(i + j) % count] / static_cast<double>(2 * halfWindow + 1);
    }
    return means;
}

} // namespace

Circuit::Circuit()
    : bends(std::size_t(Length))
{
    for (const Curve &curve : Curves) {
        const auto first = bends.begin() + std::ptrdiff_t(curve.begin);
        std::fill_n(first, curve.length, curve.turnDeg * Pi / 180 / double(curve.length));
    }
    bends = smoothed(smoothed(bends, 12), 12);
    bends.push_back(bends.front());
    headings.push_back(0);
    for (std::size_t i = 1; i < bends.size(); ++i)
        headings.push_back(headings.back() + (bends[i - 1] + bends[i]) / 2);
}

RoadPoint Circuit::at(double distance) const
{
    const double place = distance - std::floor(distance / Length) * Length;
    const std::size_t index = std::min(static_cast<std::size_t>(place), bends.size() - 2);
    const double share = place - static_cast<double>(index);
    const double turn = 2 * Pi / Length; // Radians for each metre.
    const double wave = turn * place + 0.75;
    const double halfWave = 2 * turn * place - 1.78;
    return {bends[index] + (bends[index + 1] - bends[index]) * share,
            headings[index] + (headings[index + 1] - headings[index]) * share,
            212 + 7.9 * std::sin(wave) + 6.1 * std::sin(halfWave),
            turn * (7.9 * std::cos(wave) + 2 * 6.1 * std::cos(halfWave))};
}
