// SPDX-License-Identifier: Apache-2.0
#include "DeviceShapes.h"

#include <memory>

namespace kvdevices {
namespace {

using Vectors = std::array<Point, 3>;

Point labOfXyz(const Point& xyz)
{
    const cmsCIEXYZ value{xyz[0], xyz[1], xyz[2]};
    cmsCIELab lab;
    cmsXYZ2Lab(nullptr, &lab, &value);
    return {lab.L, lab.a, lab.b};
}

Point xyzOf(const cmsCIExyY& colour)
{
    return {colour.x / colour.y, 1.0, (1.0 - colour.x - colour.y) / colour.y};
}

double determinant(const Vectors& v)
{
    return dot(cross(v[0], v[1]), v[2]);
}

// XYZ of three lights whose sum is the white of the profile connection space.
Vectors lightsOf(const cmsCIExyYTRIPLE& primaries)
{
    const Vectors directions{xyzOf(primaries.Red), xyzOf(primaries.Green), xyzOf(primaries.Blue)};
    const Point white{cmsD50_XYZ()->X, cmsD50_XYZ()->Y, cmsD50_XYZ()->Z};
    Vectors lights;
    for (std::size_t i = 0; i < 3; ++i) {
        Vectors replaced = directions;
        replaced[i] = white;
        lights[i] = (determinant(replaced) / determinant(directions)) * directions[i];
    }
    return lights;
}

// A smooth change of Lab that is too slow to fold it.
std::function<Point(const Point&)> randomWarp(Random& random)
{
    const Point wave = random.between(0.02, 0.05) * random.direction();
    const Point shift = random.between(1.0, 4.0) * random.direction();
    const double phase = random.between(0.0, 6.0);
    return [=](const Point& lab) { return lab + std::sin(dot(wave, lab) + phase) * shift; };
}

// Three directions at right angles.
Vectors randomAxes(Random& random)
{
    const Point first = random.direction();
    Point second = cross(first, random.direction());
    while (length(second) < 0.1)
        second = cross(first, random.direction());
    second = (1.0 / length(second)) * second;
    return {first, second, cross(first, second)};
}

Point combined(const Point& start, const Vectors& vectors, const Point& amounts)
{
    return start + amounts[0] * vectors[0] + amounts[1] * vectors[1] + amounts[2] * vectors[2];
}

// A solid around the middle of Lab with the given half widths, bent around its first axis.
TableMap bentBox(Random& random, const Point& halfWidths)
{
    const Vectors axes = randomAxes(random);
    const double bend = random.between(0.0, 0.3) * halfWidths[0];
    return [=](const std::vector<double>& place) {
        Point q;
        for (std::size_t i = 0; i < 3; ++i)
            q[i] = (2.0 * place[i] - 1.0) * halfWidths[i];
        q[2] += bend * (2.0 * place[0] - 1.0) * (2.0 * place[0] - 1.0);
        return combined({50, 5, -5}, axes, q);
    };
}

// Rises to 1 at a turning point and falls again.
Curve randomFold(Random& random, bool isSmooth)
{
    const double turn = random.between(0.45, 0.8), fall = random.between(0.2, 0.9);
    if (isSmooth)
        return [=](double v) { return std::sin(0.5 * M_PI * v / turn); };
    return [=](double v) { return v <= turn ? v / turn : 1.0 - fall * (v - turn) / (1.0 - turn); };
}

} // namespace

cmsCIExyYTRIPLE randomPrimaries(Random& random)
{
    const auto near = [&random](double x, double y) {
        return cmsCIExyY{x + random.between(-0.03, 0.03), y + random.between(-0.03, 0.03), 1.0};
    };
    const double wide = random.between(0.0, 1.0);
    const cmsCIExyY red = near(0.64 + 0.04 * wide, 0.33 - 0.02 * wide);
    const cmsCIExyY green = near(0.30 - 0.12 * wide, 0.60 + 0.12 * wide);
    return {red, green, near(0.15, 0.07)};
}

TableMap displayShape(Random& random)
{
    const Vectors lights = lightsOf(randomPrimaries(random));
    const double gamma = random.between(1.8, 2.6), glow = random.between(0.001, 0.01);
    const auto warp = randomWarp(random);
    return [=](const std::vector<double>& place) {
        Point amounts;
        for (std::size_t i = 0; i < 3; ++i)
            amounts[i] = glow + (1.0 - glow) * std::pow(place[i], gamma);
        return warp(labOfXyz(combined({}, lights, amounts)));
    };
}

TableMap foldedShape(Random& random, std::size_t axes, bool isSmooth)
{
    const Vectors directions = randomAxes(random);
    std::array<Curve, 3> curves;
    Vectors vectors, drifts;
    for (std::size_t i = 0; i < 3; ++i) {
        curves[i] = [](double v) { return v; };
        if (i < axes)
            curves[i] = randomFold(random, isSmooth);
        vectors[i] = random.between(30.0, 55.0) * directions[i];
        drifts[i] = random.between(0.0, 12.0) * random.direction();
    }
    const Point start = Point{50, 0, 0} - 0.5 * (vectors[0] + vectors[1] + vectors[2]);
    return [=](const std::vector<double>& place) {
        Point q;
        for (std::size_t i = 0; i < 3; ++i)
            q[i] = curves[i](place[i]);
        return combined(combined(start, vectors, q), drifts, {place[0], place[1], place[2]});
    };
}

TableMap ringShape(Random& random, double maxTurns)
{
    const double turns = random.between(0.45, 1.0) * maxTurns, inner = random.between(10.0, 35.0);
    const double outer = inner + random.between(12.0, 45.0), low = random.between(10.0, 35.0);
    const double high = low + random.between(20.0, 55.0), start = random.between(0.0, 6.0);
    const double rise = maxTurns > 1.0 ? 0.0 : random.between(0.0, 8.0);
    return [=](const std::vector<double>& place) {
        const double angle = start + 2.0 * M_PI * turns * place[1];
        const double radius = inner + (outer - inner) * place[2];
        return Point{low + (high - low) * place[0] + rise * place[1], radius * std::cos(angle),
                     radius * std::sin(angle)};
    };
}

TableMap dentedShape(Random& random)
{
    const TableMap display = displayShape(random);
    const Point centre{50, 0, 0};
    struct Dent
    {
        Point place;
        double depth, width;
    };
    std::vector<Dent> dents;
    for (std::size_t i = 0, count = 1 + random.below(4); i < count; ++i) {
        std::vector<double> place{random.between(0.2, 1), random.between(0.2, 1), random.between(0.2, 1)};
        place[random.below(3)] = double(random.below(2));
        dents.push_back({display(place), random.between(0.1, 0.45), random.between(12.0, 30.0)});
    }
    return [=](const std::vector<double>& place) {
        const Point lab = display(place);
        double shrunk = 1.0;
        for (const Dent& dent : dents) {
            const double far = length(lab - dent.place) / dent.width;
            shrunk *= 1.0 - dent.depth * std::exp(-far * far);
        }
        return centre + shrunk * (lab - centre);
    };
}

TableMap sheetShape(Random& random)
{
    const double volume = random.logBetween(10.0, 5000.0);
    const double wide = random.between(4.0, 25.0), high = random.between(4.0, 25.0);
    return bentBox(random, {wide, high, volume / (8.0 * wide * high)});
}

TableMap stickShape(Random& random)
{
    const double volume = random.logBetween(10.0, 2000.0), longest = random.between(8.0, 30.0);
    const double thin = std::sqrt(volume / (8.0 * longest)), ratio = random.between(1.0, 3.0);
    return bentBox(random, {longest, thin * ratio, thin / ratio});
}

TableMap bulgingShape(Random& random)
{
    const auto about = [&random](const Point& p) {
        return p + random.between(0.0, 8.0) * random.direction();
    };
    const std::array<Point, 4> inks{about({-14, -10, -8}), about({-14, 14, 0}), about({-5, -3, 30}),
                                    about({-30, 0, 0})};
    const Point bulge = random.between(25.0, 55.0) * random.direction();
    const double first = random.between(0.35, 0.7), second = random.between(0.35, 0.7);
    const auto bump = [](double v, double peak) {
        return v < peak ? std::sin(0.5 * M_PI * v / peak) : std::cos(0.5 * M_PI * (v - peak) / (1.0 - peak));
    };
    return [=](const std::vector<double>& place) {
        Point lab{85, 0, 0};
        for (std::size_t i = 0; i < 4; ++i)
            lab = lab + place[i] * inks[i];
        lab = lab + (bump(place[0], first) * bump(place[1], second)) * bulge;
        return Point{std::clamp(lab[0], 0.0, 100.0), lab[1], lab[2]};
    };
}

TableMap noisy(TableMap map, double amount, Random& random)
{
    const auto own = std::make_shared<Random>(static_cast<unsigned>(random.below(1u << 30)));
    return [=](const std::vector<double>& place) {
        const Point noise{own->between(-amount, amount), own->between(-amount, amount),
                          own->between(-amount, amount)};
        const Point lab =
            map(place) + noise; // the mean square of each coordinate is a third of amount squared
        return Point{std::clamp(lab[0], 0.0, 100.0), lab[1], lab[2]};
    };
}

} // namespace kvdevices
