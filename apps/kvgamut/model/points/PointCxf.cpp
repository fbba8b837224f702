// SPDX-License-Identifier: Apache-2.0
#include "PointColumns.h"
#include "PointReaders.h"

#include <QtCore/QHash>
#include <QtCore/QXmlStreamReader>

#include <cmath>
#include <optional>

namespace {

const QLatin1String objectName("Object");

/// A Lab value of an object, and the id of the ColorSpecification that states its illuminant.
struct Value
{
    KVGamut::LabPoint lab;
    QString specification;
    bool fromXyz;
};

struct Object
{
    QString name;
    QList<Value> values;
};

/// The numbers in the three child elements @p names, in any order, of the current element.
std::optional<std::array<float, 3>> triple(QXmlStreamReader& xml, const std::array<const char*, 3>& names)
{
    std::array<float, 3> values{NAN, NAN, NAN};
    while (xml.readNextStartElement()) {
        const QString element = xml.name().toString();
        const QString text = xml.readElementText(QXmlStreamReader::SkipChildElements);
        for (std::size_t i = 0; i < 3; ++i) {
            bool ok = false;
            const float number = text.toFloat(&ok);
            if (ok && element == QLatin1String(names[i]))
                values[i] = number;
        }
    }
    if (!std::isfinite(values[0]) || !std::isfinite(values[1]) || !std::isfinite(values[2]))
        return {};
    return values;
}

/// Reads a document of CxF 3 in one pass: objects come before the ColorSpecifications that they refer to.
class CxfReader
{
public:
    explicit CxfReader(const QByteArray& text) : m_xml(text) {}

    Result<PointSet> read()
    {
        if (m_xml.readNextStartElement() && m_xml.name() != QLatin1String("CxF"))
            return failure(ProblemCode::NotCxf);
        while (!m_xml.atEnd())
            if (m_xml.readNext() == QXmlStreamReader::StartElement)
                readElement();
        if (m_xml.hasError())
            return failure(Problem(ProblemCode::XmlInvalid, {QString::number(m_xml.lineNumber())})
                               .because(Problem(ProblemCode::OtherReason, {m_xml.errorString()})));
        return chosen();
    }

private:
    void readElement()
    {
        const auto name = m_xml.name();
        if (name == objectName)
            m_objects.append({m_xml.attributes().value(QLatin1String("Name")).toString(), {}});
        else if (name == QLatin1String("ColorCIELab"))
            readValue({"L", "A", "B"}, false);
        else if (name == QLatin1String("ColorCIEXYZ"))
            readValue({"X", "Y", "Z"}, true);
        else if (name == QLatin1String("ColorSpecification"))
            m_specification = m_xml.attributes().value(QLatin1String("Id")).toString();
        else if (name == QLatin1String("Illuminant"))
            m_illuminants.insert(m_specification, m_xml.readElementText().trimmed());
    }

    void readValue(const std::array<const char*, 3>& names, bool isXyz)
    {
        const QString specification =
            m_xml.attributes().value(QLatin1String("ColorSpecification")).toString();
        const auto numbers = triple(m_xml, names);
        if (!numbers || m_objects.isEmpty())
            return;
        const auto& [x, y, z] = *numbers;
        const KVGamut::LabPoint lab = isXyz ? labOfXyz(*numbers) : KVGamut::LabPoint{x, y, z};
        m_objects.last().values.append({lab, specification, isXyz});
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

    Result<PointSet> chosen() const
    {
        PointSet set;
        for (const Object& object : m_objects)
            if (const auto value = best(object))
                set.points.append({value->lab, QColor(), object.name});
        const qsizetype leftOut = m_objects.size() - set.points.size();
        if (leftOut == 0)
            return set;
        const Problem problem(ProblemCode::ObjectsWithoutLab,
                              {QString::number(leftOut), QString::number(m_objects.size())});
        if (set.points.isEmpty())
            return failure(problem);
        set.note = problem;
        set.partial = true;
        return set;
    }

    QXmlStreamReader m_xml;
    QList<Object> m_objects;
    QString m_specification; ///< id of the current ColorSpecification
    QHash<QString, QString> m_illuminants;
};

} // namespace

Result<PointSet> PointReaders::readCxf(const QByteArray& text)
{
    return CxfReader(text).read();
}
