// SPDX-License-Identifier: Apache-2.0
#include "RandomDevices.h"

#include "DeviceShapes.h"
#include "InkModel.h"

#include <memory>

namespace kvdevices {
namespace {

using Nodes = std::vector<std::size_t>;
using Maker = std::function<QByteArray(Random&)>;

struct DeviceClass
{
    std::string name;
    Maker make;
};

// --- Matrix profiles ---------------------------------------------------------------------------------

Curve gammaCurve(Random& random)
{
    return [gamma = random.between(1.0, 2.6)](double v) { return std::pow(v, gamma); };
}

// Straight pieces between random points, ascending.
Curve kinkedCurve(Random& random)
{
    std::vector<Point> points{{0, 0, 0}};
    const std::size_t kinks = 1 + random.below(4);
    for (std::size_t i = 1; i <= kinks; ++i) {
        const double v = (double(i) + random.between(-0.3, 0.3)) / double(kinks + 1);
        points.push_back({v, std::pow(v, random.between(1.3, 3.0)), 0});
        points.back()[1] = std::max(points.back()[1], points[points.size() - 2][1] + 0.005);
    }
    points.push_back({1, 1, 0});
    return [points](double v) {
        std::size_t i = 1;
        while (i + 1 < points.size() && points[i][0] < v)
            ++i;
        const Point &p = points[i - 1], &q = points[i];
        return p[1] + (q[1] - p[1]) * (v - p[0]) / (q[0] - p[0]);
    };
}

// Constant below a low and above a high value, and in between sometimes, too.
Curve deadCurve(Random& random)
{
    const double low = random.between(0.02, 0.25), high = random.between(0.8, 0.99);
    const double flat = random.between(0.4, 0.6),
                 width = random.chance(0.5) ? random.between(0.05, 0.15) : 0.0;
    const double gamma = random.between(1.4, 2.4);
    return [=](double v) {
        const double beyond = v > flat ? std::min(v, flat + width) - flat : 0.0;
        return std::pow(std::clamp((v - beyond - low) / (high - width - low), 0.0, 1.0), gamma);
    };
}

Maker matrixWith(const std::function<Curve(Random&)>& makeCurve, std::size_t entries)
{
    return [=](Random& random) {
        const cmsCIExyYTRIPLE primaries = randomPrimaries(random);
        std::vector<Curve> curves;
        for (int i = 0; i < 3; ++i)
            curves.push_back(makeCurve(random));
        return writtenMatrix(primaries, curves, entries);
    };
}

// --- Tables of three channels ------------------------------------------------------------------------

using Shape = std::function<TableMap(Random&)>;

std::vector<double> somePowers(Random& random, std::size_t count)
{
    std::vector<double> powers;
    for (std::size_t i = 0; i < count; ++i)
        powers.push_back(random.chance(0.3) ? 1.0 : random.between(0.7, 1.5));
    return powers;
}

std::vector<Curve> curvesOf(const std::vector<double>& powers)
{
    std::vector<Curve> curves;
    for (double power : powers)
        curves.push_back([power](double v) { return std::pow(v, power); });
    return curves;
}

TableProfile threeChannels(Random& random, TableType type, bool isXyz, TableMap map,
                           const Nodes& choices = {5, 9, 11, 17, 21, 33})
{
    TableProfile profile;
    profile.type = type;
    profile.isXyz = isXyz;
    profile.nodes = Nodes(3, random.oneOf(choices));
    profile.map = std::move(map);
    profile.powers = somePowers(random, 3);
    profile.curves = curvesOf(profile.powers);
    return profile;
}

Maker tableOf(const Shape& shape, TableType type, bool isXyz = false,
              const Nodes& choices = {5, 9, 11, 17, 21, 33})
{
    return [=](Random& random) {
        const TableMap map = shape(random);
        return written(threeChannels(random, type, isXyz, map, choices));
    };
}

QByteArray tableWithLightnessCurve(Random& random)
{
    TableProfile profile = threeChannels(random, TableType::Mab, false, displayShape(random));
    profile.lightnessPower = random.between(0.8, 1.3);
    return written(profile);
}

QByteArray noisyTable(Random& random)
{
    const TableMap map = noisy(displayShape(random), random.logBetween(0.1, 2.0), random);
    return written(threeChannels(random, random.chance(0.5) ? TableType::Mft2 : TableType::Mab, false, map));
}

Shape folded(std::size_t axes, bool isSmooth)
{
    return [=](Random& random) { return foldedShape(random, axes, isSmooth); };
}

// A solid of a few thousand cubic dE that is covered twice or more.
TableMap smallFold(Random& random)
{
    const TableMap map = foldedShape(random, 1 + random.below(3), random.chance(0.5));
    const double scale = random.between(0.2, 0.45);
    const Point centre{50, 0, 0};
    return [=](const std::vector<double>& place) { return centre + scale * (map(place) - centre); };
}

// --- Inks --------------------------------------------------------------------------------------------

struct Press
{
    std::size_t inks = 4;
    TableType type = TableType::Mft2;
    bool isXyz = false;
    bool isNoisy = false;
    bool isInverting = false;
};

cmsColorSpaceSignature spaceOf(std::size_t inks)
{
    return inks == 4   ? cmsSigCmykData
           : inks == 5 ? cmsSig5colorData
           : inks == 6 ? cmsSig6colorData
                       : cmsSig7colorData;
}

Nodes nodesOf(Random& random, std::size_t inks)
{
    const std::vector<Nodes> choices{{9, 11, 13, 17}, {7, 9}, {5, 6}, {4, 5}};
    return Nodes(inks, random.oneOf(choices[inks - 4]));
}

// The device values 0, 0.85 and 1 are the amounts 0, @p peak and 1.
Curve peakCurve(double peak)
{
    return [peak](double v) { return v <= 0.85 ? v / 0.85 * peak : peak + (v - 0.85) / 0.15 * (1.0 - peak); };
}

Maker pressOf(const Press& press)
{
    return [press](Random& random) {
        TableProfile profile;
        profile.space = spaceOf(press.inks);
        profile.type = press.type;
        profile.isXyz = press.isXyz;
        profile.nodes = nodesOf(random, press.inks);
        profile.curves = curvesOf(somePowers(random, press.inks));
        const auto model = std::make_shared<InkModel>(press.inks, random);
        if (press.isInverting) {
            const double steps = double(profile.nodes[0] - 1),
                         peak = std::min(std::round(0.85 * steps), steps - 1) / steps;
            model->invert(peak, random.between(0.0, 0.06));
            profile.curves = std::vector<Curve>(press.inks, peakCurve(peak));
        }
        profile.map = [model](const std::vector<double>& amounts) { return model->lab(amounts); };
        if (press.isNoisy)
            profile.map = noisy(profile.map, random.logBetween(0.1, 2.0), random);
        return written(profile);
    };
}

QByteArray bulgingPress(Random& random)
{
    TableProfile profile;
    profile.space = cmsSigCmykData;
    profile.nodes = nodesOf(random, 4);
    profile.map = bulgingShape(random);
    return written(profile);
}

// --- All ---------------------------------------------------------------------------------------------

Shape ring(double maxTurns)
{
    return [=](Random& random) { return ringShape(random, maxTurns); };
}

const std::vector<DeviceClass>& allClasses()
{
    static const std::vector<DeviceClass> classes{
        {"matrix", matrixWith(gammaCurve, 1024)},
        {"matrix-kinks", matrixWith(kinkedCurve, 1025)},
        {"matrix-dead-zones", matrixWith(deadCurve, 1025)},
        {"rgb-mft1", tableOf(displayShape, TableType::Mft1)},
        {"rgb-mft2", tableOf(displayShape, TableType::Mft2)},
        {"rgb-mft2-xyz", tableOf(displayShape, TableType::Mft2, true)},
        {"rgb-mab", tableOf(displayShape, TableType::Mab)},
        {"rgb-mab-curves", tableWithLightnessCurve},
        {"rgb-mab-xyz", tableOf(displayShape, TableType::Mab, true)},
        {"rgb-mpet", tableOf(displayShape, TableType::Mpet)},
        {"rgb-mpet-xyz", tableOf(displayShape, TableType::Mpet, true)},
        {"rgb-noise", noisyTable},
        {"fold-smooth-1", tableOf(folded(1, true), TableType::Mft2)},
        {"fold-smooth-2", tableOf(folded(2, true), TableType::Mft2)},
        {"fold-smooth-3", tableOf(folded(3, true), TableType::Mft2)},
        {"fold-linear-1", tableOf(folded(1, false), TableType::Mft2)},
        {"fold-linear-2", tableOf(folded(2, false), TableType::Mab)},
        {"fold-linear-3", tableOf(folded(3, false), TableType::Mab)},
        {"crescent", tableOf(ring(0.85), TableType::Mab, false, {11, 17, 21, 33})},
        {"wound", tableOf(ring(1.7), TableType::Mab, false, {17, 21, 33})},
        {"dents", tableOf(dentedShape, TableType::Mft2, false, {11, 17, 21, 33})},
        {"thin-sheet", tableOf(sheetShape, TableType::Mpet)},
        {"thin-stick", tableOf(stickShape, TableType::Mpet)},
        {"cmyk", pressOf({})},
        {"cmyk-noise", pressOf({.isNoisy = true})},
        {"cmyk-inverting", pressOf({.isInverting = true})},
        {"cmyk-8bit", pressOf({.type = TableType::Mft1})},
        {"cmyk-v4", pressOf({.type = TableType::Mab})},
        {"cmyk-xyz", pressOf({.type = TableType::Mab, .isXyz = true})},
        {"cmyk-extremum", bulgingPress},
        {"inks5", pressOf({.inks = 5})},
        {"inks5-noise", pressOf({.inks = 5, .isNoisy = true})},
        {"inks5-inverting", pressOf({.inks = 5, .isInverting = true})},
        {"inks6", pressOf({.inks = 6})},
        {"inks6-noise", pressOf({.inks = 6, .isNoisy = true})},
        {"inks6-inverting", pressOf({.inks = 6, .isInverting = true})},
        {"inks7", pressOf({.inks = 7})},
        {"inks7-noise", pressOf({.inks = 7, .isNoisy = true})},
        {"inks7-inverting", pressOf({.inks = 7, .isInverting = true})},
        // New classes are added at the end: the place of a class is part of the seed.
        {"fold-small", tableOf(smallFold, TableType::Mpet)},
    };
    return classes;
}

} // namespace

std::vector<std::string> deviceClasses()
{
    std::vector<std::string> names;
    for (const DeviceClass& known : allClasses())
        names.push_back(known.name);
    return names;
}

QByteArray deviceProfile(const std::string& deviceClass, unsigned seed)
{
    unsigned place = 0;
    for (const DeviceClass& known : allClasses()) {
        ++place;
        if (known.name == deviceClass) {
            Random random(seed * 7919u + place * 104729u);
            return known.make(random);
        }
    }
    return {};
}

} // namespace kvdevices
