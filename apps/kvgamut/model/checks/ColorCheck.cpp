// SPDX-License-Identifier: Apache-2.0
#include "ColorCheck.h"

#include "model/jobs/Jobs.h"

#include <array>
#include <limits>

ColorChecker::ColorChecker(const KVGamut::GamutObject& gamut, const KVProfilePtr& profile)
    : m_gamut(gamut), m_device(DeviceRoundTrip::create(profile, gamut.report().intent))
{
}

ColorCheck ColorChecker::check(const KVGamut::LabPoint& lab, double tolerance) const
{
    ColorCheck check = againstGamut(lab, tolerance);
    addDevice(check, lab);
    return check;
}

std::vector<ColorCheck> ColorChecker::checkAll(const std::vector<KVGamut::LabPoint>& colors, double tolerance,
                                               const std::function<void(float)>& progress) const
{
    constexpr qsizetype colorsInPart = 64;
    std::vector<ColorCheck> checks(colors.size());
    const auto part = [&](qsizetype first, qsizetype end) {
        for (auto i = static_cast<std::size_t>(first); i < static_cast<std::size_t>(end); ++i)
            checks[i] = againstGamut(colors[i], tolerance);
    };
    Jobs::runInParts(static_cast<qsizetype>(colors.size()), colorsInPart, part, progress);
    for (std::size_t i = 0; i < checks.size(); ++i)
        addDevice(checks[i], colors[i]);
    return checks;
}

ColorCheck ColorChecker::againstGamut(const KVGamut::LabPoint& lab, double tolerance) const
{
    constexpr float nan = std::numeric_limits<float>::quiet_NaN();
    const std::array<float, 3> values{lab.L, lab.a, lab.b};
    ColorCheck check;
    check.made = {nan, nan, nan};
    check.nearest = check.nearestAtHue = lab;
    if (m_gamut.isInside(values.data())) {
        check.zone = Side::Inside;
    } else {
        const KVGamut::Nearest nearest = m_gamut.nearestByCiede2000(values.data());
        check.de76 = static_cast<double>(m_gamut.nearest(values.data()).distance);
        check.de00 = static_cast<double>(nearest.distance);
        check.nearest = nearest.point;
        check.zone = check.de00 <= tolerance ? Side::Edge : Side::Outside;
        check.nearestAtHue = m_gamut.nearestAtHue(values.data()).point;
        check.de00AtHue = KVGamut::ciede2000(lab, check.nearestAtHue);
    }
    return check;
}

void ColorChecker::addDevice(ColorCheck& check, const KVGamut::LabPoint& lab) const
{
    if (!m_device)
        return;
    const DeviceRoundTrip::Made made = m_device->made(lab);
    check.device = made.device;
    check.made = made.lab;
    check.madeDe00 = KVGamut::ciede2000(lab, made.lab);
    // beyond the gamut: of the nearest colour, because the nearest in Lab would be another one
    const KVGamut::LabPoint wanted = check.zone == Side::Inside ? lab : check.nearest;
    const DeviceRoundTrip::Made inverted = m_device->inverted(wanted, made);
    check.inverted = inverted.device;
    check.invertedDe00 = KVGamut::ciede2000(lab, inverted.lab);
}
