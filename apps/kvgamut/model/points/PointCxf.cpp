// SPDX-License-Identifier: Apache-2.0
#include "PointBuilder.h"
#include "PointColumns.h"
#include "PointReaders.h"
#include "PointWhite.h"
#include "XmlLimits.h"
#include "model/inputs/InputGate.h"

#include <QtCore/QHash>
#include <QtCore/QXmlStreamReader>

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <utility>
#include <vector>

namespace {

const QLatin1String objectName("Object");

/// The name of the current element without its prefix. The parser does not look up namespaces, because that
/// takes time for every namespace that a document declares.
QString localName(const QXmlStreamReader& xml)
{
    const auto name = xml.name();
    return name.mid(name.lastIndexOf(QLatin1Char(':')) + 1).toString();
}

/// A Lab value of an object, and the id of the ColorSpecification that states its illuminant.
struct Value
{
    KVGamut::LabPoint lab;
    QString specification;
    bool fromXyz;
};

/// Reflectances at equal steps of wavelength.
struct Spectrum
{
    std::vector<float> values;
    QString specification; ///< id of the ColorSpecification that states the wavelengths
    double start = 0.0;    ///< in nm; 0 if only the ColorSpecification states it
};

struct Object
{
    QString name;
    QList<Value> values;
    Spectrum spectrum;
    std::array<float, 4> device{};
    int deviceChannels = 0; ///< 0 without device values
};

/// Wavelengths that a ColorSpecification states, in nm.
struct Wavelengths
{
    double start = 0.0, step = 0.0;
};

/// The numbers in @p text, separated by white space; none if one of the words is no number in the range of
/// reflectances, as a fraction or a percentage, or if there are too many.
std::vector<float> reflectancesOf(const QString& text)
{
    constexpr float max = 500.0f;
    std::vector<float> numbers;
    for (const QStringView word : QStringView(text).split(QLatin1Char(' '), Qt::SkipEmptyParts)) {
        bool ok = false;
        const float number = word.toFloat(&ok);
        if (!ok || !(std::fabs(number) <= max) || numbers.size() >= InputLimits::maxColumns)
            return {};
        numbers.push_back(number);
    }
    return numbers;
}

/// The numbers in the child elements @p names, in any order, of the current element.
template <std::size_t count>
std::optional<std::array<float, count>> numbersIn(QXmlStreamReader& xml,
                                                  const std::array<const char*, count>& names)
{
    std::array<float, count> values;
    values.fill(NAN);
    while (xml.readNextStartElement()) {
        const QString element = localName(xml);
        const QString text = xml.readElementText(QXmlStreamReader::SkipChildElements);
        for (std::size_t i = 0; i < count; ++i) {
            bool ok = false;
            const float number = text.toFloat(&ok);
            if (ok && element == QLatin1String(names[i]))
                values[i] = number;
        }
    }
    if (!std::all_of(values.begin(), values.end(), [](float value) { return std::isfinite(value); }))
        return {};
    return values;
}

/// Reads a document of CxF 3 in one pass: objects come before the ColorSpecifications that they refer to.
class CxfReader
{
public:
    CxfReader(const QByteArray& text, const PointOptions& options, const KVCompletionProtocolPtr& task)
        : m_xml(text), m_task(task), m_builder(options, task)
    {
        m_xml.setNamespaceProcessing(false);
    }

    Result<PointSet> read()
    {
        if (m_xml.readNextStartElement() && localName(m_xml) != QLatin1String("CxF"))
            return failure(ProblemCode::NotCxf);
        while (!m_xml.atEnd()) {
            if (InputGate::isCancelled(m_task))
                return failure(KVProblemCode::Cancelled);
            if (m_xml.readNext() == QXmlStreamReader::StartElement)
                readElement();
        }
        if (m_xml.hasError())
            return failure(Problem(ProblemCode::XmlInvalid, {QString::number(m_xml.lineNumber())})
                               .because(Problem(ProblemCode::OtherReason, {m_xml.errorString()})));
        return chosen();
    }

private:
    void readElement()
    {
        const QString name = localName(m_xml);
        if (name == objectName)
            m_objects.append({m_xml.attributes().value(QLatin1String("Name")).toString(), {}, {}, {}, 0});
        else if (name == QLatin1String("ColorCIELab"))
            readValue({"L", "A", "B"}, false);
        else if (name == QLatin1String("ColorCIEXYZ"))
            readValue({"X", "Y", "Z"}, true);
        else if (name == QLatin1String("ColorRGB"))
            readDevice<3>({"R", "G", "B"});
        else if (name == QLatin1String("ColorCMYK"))
            readDevice<4>({"Cyan", "Magenta", "Yellow", "Black"});
        else if (name == QLatin1String("ReflectanceSpectrum"))
            readSpectrum();
        else if (name == QLatin1String("WavelengthRange"))
            m_wavelengths.insert(m_specification, {number("StartWL"), number("Increment")});
        else if (name == QLatin1String("ColorSpecification"))
            m_specification = m_xml.attributes().value(QLatin1String("Id")).toString();
        else if (name == QLatin1String("Illuminant"))
            m_illuminants.insert(m_specification, m_xml.readElementText().trimmed());
    }

    void readValue(const std::array<const char*, 3>& names, bool isXyz)
    {
        const QString specification =
            m_xml.attributes().value(QLatin1String("ColorSpecification")).toString();
        const auto numbers = numbersIn(m_xml, names);
        if (!numbers || m_objects.isEmpty())
            return;
        const auto& [x, y, z] = *numbers;
        const KVGamut::LabPoint lab =
            isXyz ? PointWhite::fromXyz(*numbers, 100.0, {}) : KVGamut::LabPoint{x, y, z};
        if (isPossible(lab))
            m_objects.last().values.append({lab, specification, isXyz});
    }

    template <std::size_t count>
    void readDevice(const std::array<const char*, count>& names)
    {
        const auto numbers = numbersIn(m_xml, names);
        if (!numbers || m_objects.isEmpty())
            return;
        std::copy(numbers->begin(), numbers->end(), m_objects.last().device.begin());
        m_objects.last().deviceChannels = static_cast<int>(count);
    }

    double number(const char* attribute) const
    {
        return m_xml.attributes().value(QLatin1String(attribute)).toDouble();
    }

    void readSpectrum()
    {
        Spectrum spectrum;
        spectrum.specification = m_xml.attributes().value(QLatin1String("ColorSpecification")).toString();
        spectrum.start = number("StartWL");
        spectrum.values =
            reflectancesOf(m_xml.readElementText(QXmlStreamReader::SkipChildElements).simplified());
        if (!m_objects.isEmpty() && !spectrum.values.empty())
            m_objects.last().spectrum = std::move(spectrum);
    }

    /// The value for D50, preferably Lab; nullopt if all values are for other illuminants.
    std::optional<Value> best(const Object& object) const
    {
        std::optional<Value> found;
        for (const Value& value : object.values) {
            const QString illuminant = m_illuminants.value(value.specification, QStringLiteral("D50"));
            if (illuminant == QLatin1String("D50") && (!found || (found->fromXyz && !value.fromXyz)))
                found = value;
        }
        return found;
    }

    /// The weights for @p spectrum, which are those of the one before in nearly all files.
    const SpectralWeights* weightsFor(const Spectrum& spectrum)
    {
        if (spectrum.values.empty())
            return nullptr;
        const Wavelengths stated = m_wavelengths.value(spectrum.specification);
        const double start = spectrum.start > 0.0 ? spectrum.start : stated.start;
        QList<double> wavelengths;
        for (std::size_t i = 0; i < spectrum.values.size(); ++i)
            wavelengths.append(start + static_cast<double>(i) * stated.step);
        if (wavelengths != m_lastWavelengths) {
            m_lastWavelengths = wavelengths;
            m_weights = SpectralWeights::of(wavelengths);
        }
        return m_weights ? &*m_weights : nullptr;
    }

    /// Adds the colour of @p object. @return false if it has none
    Result<bool> add(const Object& object)
    {
        MeasuredPoint point;
        point.name = object.name;
        point.device = object.device;
        point.deviceChannels = object.deviceChannels;
        const auto value = best(object);
        const SpectralWeights* weights = value ? nullptr : weightsFor(object.spectrum);
        if (value) {
            point.lab = value->lab;
        } else if (weights) {
            const auto xyz = weights->xyzOf(object.spectrum.values);
            point.lab = {xyz[0], xyz[1], xyz[2]};
            m_builder.declared.wavelengths = m_lastWavelengths;
        } else {
            return false;
        }
        return m_builder.add(point, value ? PointSpace::Lab : PointSpace::Spectrum, ++m_number).map([] {
            return true;
        });
    }

    Result<PointSet> chosen()
    {
        qsizetype leftOut = 0;
        m_builder.declared.areNumbered = true;
        for (const Object& object : std::as_const(m_objects)) {
            const Result<bool> added = add(object);
            if (!added)
                return failure(added.error());
            leftOut += *added ? 0 : 1;
        }
        const Problem problem(ProblemCode::ObjectsWithoutLab,
                              {QString::number(leftOut), QString::number(m_objects.size())});
        Result<PointSet> set = m_builder.finish();
        if (!set || leftOut == 0)
            return set;
        if (set->points.isEmpty())
            return failure(problem);
        if (set->note)
            set->notes.append(*set->note);
        set->note = problem;
        set->partial = true;
        return set;
    }

    QXmlStreamReader m_xml;
    KVCompletionProtocolPtr m_task;
    QList<Object> m_objects;
    QString m_specification; ///< id of the current ColorSpecification
    QHash<QString, QString> m_illuminants;
    QHash<QString, Wavelengths> m_wavelengths; ///< by ColorSpecification
    QList<double> m_lastWavelengths;
    Result<SpectralWeights> m_weights; ///< for them
    PointBuilder m_builder;
    int m_number = 0; ///< of the last colour that was added
};

} // namespace

Result<PointSet> PointReaders::readCxf(const QByteArray& text, const PointOptions& options,
                                       const KVCompletionProtocolPtr& task)
{
    return checkXml(text).and_then([&] { return CxfReader(text, options, task).read(); });
}
