// SPDX-License-Identifier: Apache-2.0
#include "MediaWhite.h"

#include <algorithm>
#include <cmath>

namespace velmora {
namespace {

// ICC.1, annex "Chromatic adaptation": the linear Bradford transform.
constexpr Matrix3 bradford{{{0.8951, 0.2664, -0.1614}, {-0.7502, 1.7135, 0.0367}, {0.0389, -0.0685, 1.0296}}};

Xyz operator*(const Matrix3& m, const Xyz& v)
{
    Xyz result{};
    for (std::size_t i = 0; i < 3; ++i)
        result[i] = m[i][0] * v[0] + m[i][1] * v[1] + m[i][2] * v[2];
    return result;
}

Matrix3 operator*(const Matrix3& p, const Matrix3& q)
{
    Matrix3 result{};
    for (std::size_t i = 0; i < 3; ++i)
        for (std::size_t j = 0; j < 3; ++j)
            result[i][j] = p[i][0] * q[0][j] + p[i][1] * q[1][j] + p[i][2] * q[2][j];
    return result;
}

Matrix3 scaling(const Xyz& v)
{
    return {{{v[0], 0, 0}, {0, v[1], 0}, {0, 0, v[2]}}};
}

// By cofactors; nullopt if there is no inverse that is good for anything.
std::optional<Matrix3> inverse(const Matrix3& m)
{
    const auto cofactor = [&m](std::size_t i, std::size_t j) {
        const std::size_t r = (i + 1) % 3, s = (i + 2) % 3, c = (j + 1) % 3, d = (j + 2) % 3;
        return m[r][c] * m[s][d] - m[r][d] * m[s][c];
    };
    const double determinant = m[0][0] * cofactor(0, 0) + m[0][1] * cofactor(0, 1) + m[0][2] * cofactor(0, 2);
    constexpr double minDeterminant = 1e-6;
    if (!(std::abs(determinant) > minDeterminant))
        return {};
    Matrix3 result{};
    for (std::size_t i = 0; i < 3; ++i)
        for (std::size_t j = 0; j < 3; ++j)
            result[i][j] = cofactor(j, i) / determinant;
    return result;
}

Xyz ratio(const Xyz& p, const Xyz& q)
{
    return {p[0] / q[0], p[1] / q[1], p[2] / q[2]};
}

bool isPositive(const Xyz& v)
{
    return v[0] > 0.0 && v[1] > 0.0 && v[2] > 0.0;
}

bool isDisplayOfVersion2(const IccTags& tags)
{
    constexpr std::uint32_t withAdaptationTag = 4;
    return tags.majorVersion() < withAdaptationTag && tags.deviceClass() == signature("mntr");
}

bool isD50(const Xyz& white)
{
    constexpr double rounding = 1e-3; // some profiles have only three decimals
    return std::abs(white[0] - d50[0]) < rounding && std::abs(white[1] - d50[1]) < rounding &&
           std::abs(white[2] - d50[2]) < rounding;
}

// The white that Little CMS takes for absolute colours.
Xyz absoluteWhite(const IccTags& tags)
{
    return isDisplayOfVersion2(tags) ? d50 : xyzOf(tags, signature("wtpt")).value_or(d50);
}

// From D50 to @p white.
Matrix3 fromD50(const Xyz& white)
{
    const Xyz from = bradford * d50, to = bradford * white;
    return inverse(bradford).value() * scaling(ratio(to, from)) * bradford;
}

} // namespace

Result<WhiteAdaptation> whiteAdaptation(const IccTags& tags)
{
    using Source = KVGamut::AdaptationSource;
    if (const auto m = matrixOf(tags, signature("chad"))) {
        const auto& v = *m;
        const auto undo = inverse({{{v[0], v[1], v[2]}, {v[3], v[4], v[5]}, {v[6], v[7], v[8]}}});
        if (!undo)
            return failure(KVProblemCode::DamagedTag, {QStringLiteral("chad")});
        return WhiteAdaptation{Source::Tag, *undo};
    }
    const auto white = xyzOf(tags, signature("wtpt"));
    if (!white || !isDisplayOfVersion2(tags) || isD50(*white))
        return WhiteAdaptation{};
    return WhiteAdaptation{Source::MediaWhite, fromD50(*white)};
}

std::optional<KVGamut::LabPoint> mediaWhite(const IccTags& tags)
{
    const auto white = xyzOf(tags, signature("wtpt"));
    if (!white)
        return {};
    const Vec3 lab = labOf(*white, d50);
    return KVGamut::LabPoint{static_cast<float>(lab.L), static_cast<float>(lab.a), static_cast<float>(lab.b)};
}

void LabAdjustment::transform(const Matrix3& matrix, const Xyz& white)
{
    m_matrix = matrix;
    m_white = white;
}

void LabAdjustment::apply(Vec3* lab, std::size_t count) const
{
    if (m_matrix)
        for (std::size_t i = 0; i < count; ++i)
            lab[i] = labOf(*m_matrix * xyzOf(lab[i], d50), m_white);
    if (m_clipsBlack)
        for (std::size_t i = 0; i < count; ++i)
            lab[i].L = std::max(lab[i].L, 0.0);
}

Result<LabAdjustment> absoluteAdjustment(const IccTags& tags, const ColorTable& table,
                                         KVGamut::Adaptation adaptation)
{
    const bool undoes = adaptation != KVGamut::Adaptation::Full;
    const bool isAbsolute = table.tag == signature("D2B3");
    LabAdjustment adjustment;
    if (!undoes && !table.isMediaRelative && !isAbsolute)
        return adjustment;
    Matrix3 matrix = scaling({1, 1, 1});
    const Xyz white = absoluteWhite(tags);
    if (table.isMediaRelative)
        matrix = scaling(ratio(white, d50));
    else if (isAbsolute && isPositive(white)) // Little CMS has scaled colours that are absolute already
        matrix = scaling(ratio(d50, white));
    if (undoes) {
        const auto done = whiteAdaptation(tags);
        if (!done)
            return failure(done);
        matrix = done->undo * matrix;
    }
    adjustment.transform(matrix, adaptation == KVGamut::Adaptation::NoneD65 ? d65 : d50);
    return adjustment;
}

} // namespace velmora
