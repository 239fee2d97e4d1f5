#include "Circuit.h"

#include "Chance.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

namespace {

struct Section
{
    int length;     // m
    double turnDeg; // Positive to the right, 0 on a straight.
};

// The turns sum up to a full circle; the two long straights are as long as it takes to come back.
constexpr std::array<Section, 19> Sections{{{300, 0},
                                            {62, 88},
                                            {90, 0},
                                            {66, -62},
                                            {92, 78},
                                            {830, 0},
                                            {60, 152},
                                            {260, 0},
                                            {130, -82},
                                            {60, 0},
                                            {100, 52},
                                            {414, 0},
                                            {32, -48},
                                            {34, 52},
                                            {150, 0},
                                            {190, 78},
                                            {100, 0},
                                            {58, 52},
                                            {480, 0}}};

struct Height
{
    std::size_t distance; // m from the start line
    double elevation;     // m above sea level
};

constexpr std::array<Height, 9> Heights{{{0, 212},
                                         {330, 216},
                                         {620, 225},
                                         {1100, 221},
                                         {1450, 209},
                                         {1900, 199},
                                         {2280, 203},
                                         {2700, 217},
                                         {3150, 211}}};

struct Zone
{
    double from;
    double to;
};

constexpr std::array<Zone, 2> DrsZones{{{720, 1320}, {2140, 2390}}};

/// A running mean around the circuit: turns corners into transitions and keeps the sum.
std::vector<double> smoothed(const std::vector<double> &values, int halfWindow)
{
    const auto count = static_cast<int>(values.size());
    std::vector<double> result(values.size());
    for (int i = 0; i < count; ++i) {
        double sum = 0;
        for (int j = -halfWindow; j <= halfWindow; ++j)
            sum += values[static_cast<std::size_t>((i + j + count) % count)];
        result[static_cast<std::size_t>(i)] = sum / (2 * halfWindow + 1);
    }
    return result;
}

double mix(double from, double to, double share)
{
    return from + (to - from) * share;
}

} // namespace

Circuit::Circuit()
{
    layOutCurves();
    layOutHeights();
    points.push_back(points.front());
    points.back().heading = 2 * Pi;
}

void Circuit::layOutCurves()
{
    std::vector<double> curvature;
    for (const Section &section : Sections) {
        const double bend = section.turnDeg * Pi / 180 / section.length;
        for (int i = 0; i < section.length; ++i) {
            curvature.push_back(bend);
            points.emplace_back().curveAhead = curves;
        }
        curves += section.turnDeg != 0 ? 1 : 0;
    }
    for (RoadPoint &point : points)
        point.curveAhead %= curves;
    roadLength = static_cast<double>(points.size());

    curvature = smoothed(smoothed(curvature, 12), 12);
    double heading = 0;
    for (std::size_t i = 0; i < points.size(); ++i) {
        RoadPoint &point = points[i];
        // Curvature is read between two metres as a line, so the heading grows by their mean.
        if (i > 0)
            heading += (curvature[i - 1] + curvature[i]) / 2;
        point.heading = heading;
        point.curvature = curvature[i];
        point.bank = std::clamp(curvature[i] * 3, -0.06, 0.06);
    }
}

void Circuit::layOutHeights()
{
    const std::size_t count = points.size();
    std::vector<double> elevation(count);
    for (std::size_t i = 0; i < Heights.size(); ++i) {
        const Height from = Heights[i];
        const Height to = Heights[(i + 1) % Heights.size()];
        const std::size_t span = (to.distance + count - from.distance) % count;
        for (std::size_t j = 0; j < span; ++j) {
            const double share = static_cast<double>(j) / static_cast<double>(span);
            elevation[from.distance + j] = mix(from.elevation, to.elevation, share);
        }
    }
    elevation = smoothed(smoothed(elevation, 50), 50);

    const auto at = [&](const std::vector<double> &values, std::size_t index) {
        return values[index % count];
    };
    std::vector<double> bumps(count);
    for (std::size_t i = 0; i < count; ++i)
        bumps[i] = 2 * chance(0, 'b', 0, static_cast<std::uint32_t>(i / 6)) - 1;
    bumps = smoothed(smoothed(bumps, 3), 3);
    for (std::size_t i = 0; i < count; ++i) {
        const double before = at(elevation, i + count - 1);
        const double after = at(elevation, i + 1);
        points[i].elevation = elevation[i];
        points[i].grade = (after - before) / 2;
        points[i].hollow = after - 2 * elevation[i] + before;
        points[i].roughness = bumps[i];
    }
}

double Circuit::wrapped(double distance) const
{
    const double rest = std::fmod(distance, roadLength);
    return rest < 0 ? std::fmod(rest + roadLength, roadLength) : rest;
}

RoadPoint Circuit::at(double distance) const
{
    const double place = wrapped(distance);
    const auto index = static_cast<std::size_t>(place);
    const double share = place - static_cast<double>(index);
    const RoadPoint &a = points[index];
    const RoadPoint &b = points[index + 1];
    RoadPoint point;
    point.curvature = mix(a.curvature, b.curvature, share);
    point.heading = mix(a.heading, b.heading, share);
    point.elevation = mix(a.elevation, b.elevation, share);
    point.grade = mix(a.grade, b.grade, share);
    point.hollow = mix(a.hollow, b.hollow, share);
    point.bank = mix(a.bank, b.bank, share);
    point.roughness = mix(a.roughness, b.roughness, share);
    point.curveAhead = a.curveAhead;
    return point;
}

int Circuit::drsZoneAt(double wrappedDistance)
{
    for (std::size_t i = 0; i < DrsZones.size(); ++i) {
        if (wrappedDistance >= DrsZones[i].from && wrappedDistance < DrsZones[i].to)
            return static_cast<int>(i);
    }
    return -1;
}
