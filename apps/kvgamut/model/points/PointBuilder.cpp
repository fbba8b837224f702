// SPDX-License-Identifier: Apache-2.0
#include "PointBuilder.h"

#include "DeviceColours.h"
#include "PointColumns.h"
#include "PointReaders.h"
#include "PointWhite.h"
#include "model/reports/GamutWords.h"

#include <algorithm>
#include <array>
#include <utility>

namespace {

constexpr qsizetype maxLinesNamed = 10;

QString wordsOf(PointSpace space)
{
    switch (space) {
    case PointSpace::Lab:
        return QStringLiteral("Lab");
    case PointSpace::LCh:
        return QStringLiteral("LCh");
    case PointSpace::Xyz:
        return QStringLiteral("XYZ");
    case PointSpace::Spectrum:
        return QStringLiteral("spectra");
    case PointSpace::Rgb:
    case PointSpace::Hex:
        return QStringLiteral("RGB");
    case PointSpace::Cmyk:
        return QStringLiteral("CMYK");
    }
    return {};
}

std::array<float, 3> tripleOf(const KVGamut::LabPoint& lab)
{
    return {lab.L, lab.a, lab.b};
}

Problem impossibleLab(const KVGamut::LabPoint& lab, int line, bool isNumber)
{
    const auto word = [](float value) { return QString::number(double(value), 'g', 4); };
    return Problem(isNumber ? ProblemCode::ColorLabImpossible : ProblemCode::RowLabImpossible,
                   {QString::number(line), word(lab.L), word(lab.a), word(lab.b)});
}

} // namespace

Result<void> PointBuilder::add(MeasuredPoint point, PointSpace space, int line)
{
    if (Result<void> added = PointReaders::add(m_set, std::move(point), m_task); !added)
        return added;
    m_rows.push_back({line, space});
    return {};
}

void PointBuilder::leaveOut(const Problem& why, int line)
{
    ++m_leftOut;
    if (!m_firstLeftOut)
        m_firstLeftOut = why;
    if (m_leftOutLines.size() < maxLinesNamed)
        m_leftOutLines.append(QString::number(line));
}

bool PointBuilder::has(PointSpace space) const
{
    return std::any_of(m_rows.begin(), m_rows.end(), [space](const Row& row) { return row.space == space; });
}

std::vector<std::size_t> PointBuilder::rowsOf(PointSpace space) const
{
    std::vector<std::size_t> rows;
    for (std::size_t i = 0; i < m_rows.size(); ++i)
        if (m_rows[i].space == space)
            rows.push_back(i);
    return rows;
}

QString PointBuilder::white() const
{
    return !m_options.white.isEmpty()  ? m_options.white
           : !declared.white.isEmpty() ? declared.white
                                       : QStringLiteral("D50");
}

/// Lab and LCh values for another white.
void PointBuilder::convertLab()
{
    const QString from = white();
    if (from == QLatin1String("D50") || (!has(PointSpace::Lab) && !has(PointSpace::LCh)))
        return;
    for (qsizetype i = 0; i < m_set.points.size(); ++i)
        if (const PointSpace space = m_rows[static_cast<std::size_t>(i)].space;
            space == PointSpace::Lab || space == PointSpace::LCh)
            m_set.points[i].lab = PointWhite::fromLab(m_set.points[i].lab, from);
    note(Problem(ProblemCode::PointsAdapted, {from}));
}

Result<void> PointBuilder::convertXyz()
{
    constexpr float maxRelative = 2.0f; // above every colour where white has Y 1
    const std::vector<std::size_t> rows = rowsOf(PointSpace::Xyz);
    if (rows.empty())
        return {};
    double whiteY = m_options.whiteY > 0.0 ? m_options.whiteY : declared.whiteY;
    if (whiteY <= 0.0) {
        float max = 0.0f;
        for (const std::size_t row : rows)
            for (const float value : tripleOf(m_set.points[static_cast<qsizetype>(row)].lab))
                max = std::max(max, value);
        if (max <= maxRelative)
            return failure(ProblemCode::XyzScaleUnknown, {QString::number(double(max), 'g', 4)});
        whiteY = 100.0;
    }
    const QString from = white();
    for (const std::size_t row : rows) {
        KVGamut::LabPoint& lab = m_set.points[static_cast<qsizetype>(row)].lab;
        lab = PointWhite::fromXyz(tripleOf(lab), whiteY, from);
    }
    if (from != QLatin1String("D50"))
        note(Problem(ProblemCode::PointsAdapted, {from}));
    return {};
}

/// From XYZ as SpectralWeights gives it, which is too large if the reflectances are percentages.
void PointBuilder::convertSpectra()
{
    constexpr float maxXyz = 200.0f; // far above that of a fluorescent colour
    const std::vector<std::size_t> rows = rowsOf(PointSpace::Spectrum);
    if (rows.empty())
        return;
    const bool isPercent = declared.maxReflectance > 0.0
                               ? declared.maxReflectance > 1.0
                               : std::any_of(rows.begin(), rows.end(), [this](std::size_t row) {
                                     return m_set.points[static_cast<qsizetype>(row)].lab.a > maxXyz;
                                 });
    const double max = isPercent ? 100.0 : 1.0;
    for (const std::size_t row : rows) {
        KVGamut::LabPoint& lab = m_set.points[static_cast<qsizetype>(row)].lab;
        lab = PointWhite::fromXyz(tripleOf(lab), 100.0 * max, {});
    }
    const auto word = [](double value) { return QString::number(value); };
    note(Problem(ProblemCode::SpectraComputed,
                 {word(declared.wavelengths.value(0)),
                  word(declared.wavelengths.isEmpty() ? 0.0 : declared.wavelengths.last()), word(max)}));
}

/// By how much the device values of @p rows are multiplied to become RGB from 0 to 1 or CMYK from 0 to 100.
/// Says so if the file does not.
double PointBuilder::scaleDevice(PointSpace space, const std::vector<std::size_t>& rows)
{
    const bool isCmyk = space == PointSpace::Cmyk;
    const double wanted = isCmyk ? 100.0 : 1.0;
    if (space == PointSpace::Hex)
        return wanted / 255.0;
    double max = isCmyk ? declared.maxCmyk : declared.maxRgb;
    if (max <= 0.0) {
        const auto isBeyondOne = [this](std::size_t row) {
            const auto& device = m_set.points[static_cast<qsizetype>(row)].device;
            return std::any_of(device.begin(), device.end(), [](float value) { return value > 1.0f; });
        };
        max = std::none_of(rows.begin(), rows.end(), isBeyondOne) ? 1.0 : isCmyk ? 100.0 : 255.0;
        note(Problem(ProblemCode::DeviceScaleTaken, {wordsOf(space), QString::number(max)}));
    }
    return wanted / max;
}

Result<void> PointBuilder::convertDevice(PointSpace space)
{
    const std::vector<std::size_t> rows = rowsOf(space);
    if (rows.empty())
        return {};
    const QString profile =
        !m_options.space.isEmpty() || space == PointSpace::Cmyk ? m_options.space : declared.space;
    if (profile.isEmpty())
        return failure(ProblemCode::PointSpaceNeeded, {wordsOf(space)});
    const double scale = scaleDevice(space, rows);
    const int channels = space == PointSpace::Cmyk ? 4 : 3;
    std::vector<double> values;
    values.reserve(rows.size() * static_cast<std::size_t>(channels));
    for (const std::size_t row : rows) {
        auto& device = m_set.points[static_cast<qsizetype>(row)].device;
        for (std::size_t i = 0; i < static_cast<std::size_t>(channels); ++i) {
            values.push_back(double(device[i]) * scale);
            device[i] = static_cast<float>(values.back());
        }
    }
    const auto labs = labOfDevice(values, channels, profile, m_options.intent, m_task);
    if (!labs)
        return failure(labs.error());
    for (std::size_t i = 0; i < rows.size(); ++i)
        m_set.points[static_cast<qsizetype>(rows[i])].lab = (*labs)[i];
    m_set.reading.space = profile;
    m_set.reading.intent = GamutWords::intent(m_options.intent);
    return {};
}

void PointBuilder::dropImpossible()
{
    qsizetype kept = 0;
    for (qsizetype i = 0; i < m_set.points.size(); ++i) {
        if (!isPossible(m_set.points[i].lab)) {
            const int line = m_rows[static_cast<std::size_t>(i)].line;
            leaveOut(impossibleLab(m_set.points[i].lab, line, declared.areNumbered), line);
            continue;
        }
        if (kept != i)
            m_set.points[kept] = std::move(m_set.points[i]);
        ++kept;
    }
    m_set.points.resize(kept);
}

void PointBuilder::describe()
{
    QStringList values;
    for (const PointSpace space : {PointSpace::Lab, PointSpace::LCh, PointSpace::Xyz, PointSpace::Spectrum,
                                   PointSpace::Rgb, PointSpace::Hex, PointSpace::Cmyk})
        if (has(space) && !values.contains(wordsOf(space)))
            values.append(wordsOf(space));
    m_set.reading.values = values.join(QLatin1Char('+'));
    m_set.reading.white = has(PointSpace::Spectrum) ? QStringLiteral("D50") : white();
    m_set.reading.observer = has(PointSpace::Spectrum) ? QStringLiteral("2") : declared.observer;
    m_set.reading.deviceClass = declared.deviceClass;
    m_set.reading.inks = declared.inks;
    if (declared.observer == QLatin1String("10") && !has(PointSpace::Spectrum))
        note(Problem(ProblemCode::ObserverDiffers));
}

Result<PointSet> PointBuilder::noted()
{
    if (m_leftOut == 0)
        return std::move(m_set);
    const qsizetype all = m_set.points.size() + m_leftOut;
    if (m_leftOut > m_leftOutLines.size())
        m_leftOutLines.append(QStringLiteral("..."));
    const Problem problem =
        Problem(declared.areNumbered ? ProblemCode::ColorsLeftOut : ProblemCode::RowsLeftOut,
                {QString::number(m_leftOut), QString::number(all), m_leftOutLines.join(QStringLiteral(", "))})
            .because(*m_firstLeftOut);
    if (m_set.points.isEmpty())
        return failure(m_leftOut == 1 ? *m_firstLeftOut : problem);
    m_set.note = problem;
    m_set.partial = true;
    return std::move(m_set);
}

Result<PointSet> PointBuilder::finish()
{
    describe();
    convertLab();
    convertSpectra();
    const Result<void> converted = convertXyz()
                                       .and_then([this] { return convertDevice(PointSpace::Rgb); })
                                       .and_then([this] { return convertDevice(PointSpace::Hex); })
                                       .and_then([this] { return convertDevice(PointSpace::Cmyk); });
    if (!converted)
        return failure(converted.error());
    dropImpossible();
    return noted();
}
