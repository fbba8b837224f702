// SPDX-License-Identifier: Apache-2.0
#include "PointColumns.h"
#include "PointReaders.h"

#include <QtCore/QHash>
#include <QtCore/QXmlStreamReader>

#include <cmath>
#include <optional>

namespace {

const QLatin1String objectName("Object");

/// A value of an object, in Lab, and the id of the ColorSpecification that says for which illuminant it
/// holds.
struct Value
{
    QVector3D lab;
    QString specification;
    bool fromXyz;
};

struct Object
{
    QString name;
    QList<Value> values;
};

/// Three numbers called @p names below the present element, in any order, up to its end.
std::optional<QVector3D> triple(QXmlStreamReader& xml, const std::array<const char*, 3>& names)
{
    QVector3D values(NAN, NAN, NAN);
    while (xml.readNextStartElement()) {
        const QString element = xml.name().toString();
        const QString text = xml.readElementText(QXmlStreamReader::SkipChildElements);
        for (std::size_t i = 0; i < 3; ++i) {
            bool ok = false;
            const float number = text.toFloat(&ok);
            if (ok && element == QLatin1String(names[i]))
                values[static_cast<int>(i)] = number;
        }
    }
    if (!std::isfinite(values.x()) || !std::isfinite(values.y()) || !std::isfinite(values.z()))
        return {};
    return values;
}

/// Reads a document of CxF 3 in one pass: the objects come before the ColorSpecifications that they name.
class CxfReader
{
public:
    explicit CxfReader(const QByteArray& text) : m_xml(text) {}

    PointFile read()
    {
        if (m_xml.readNextStartElement() && m_xml.name() != QLatin1String("CxF"))
            return failed(QStringLiteral(": this is XML, but no CxF"));
        while (!m_xml.atEnd())
            if (m_xml.readNext() == QXmlStreamReader::StartElement)
                readElement();
        if (m_xml.hasError())
            return failed(QStringLiteral(", line %1: %2").arg(m_xml.lineNumber()).arg(m_xml.errorString()));
        return chosen();
    }

private:
    static PointFile failed(const QString& problem)
    {
        PointFile result;
        result.problem = problem;
        return result;
    }

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
        if (numbers && !m_objects.isEmpty())
            m_objects.last().values.append({isXyz ? labOfXyz(*numbers) : *numbers, specification, isXyz});
    }

    /// Lab before XYZ; nothing for another illuminant than D50.
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

    PointFile chosen() const
    {
        PointFile result;
        for (const Object& object : m_objects)
            if (const auto value = best(object))
                result.points.append({value->lab, QColor(), object.name});
        const qsizetype leftOut = m_objects.size() - result.points.size();
        if (leftOut == 0)
            return result;
        const QString text =
            QStringLiteral(": %1 of %2 objects have no CIELAB or XYZ for D50 (spectra are not read)")
                .arg(leftOut)
                .arg(m_objects.size());
        (result.points.isEmpty() ? result.problem : result.note) = text;
        return result;
    }

    QXmlStreamReader m_xml;
    QList<Object> m_objects;
    QString m_specification; ///< the one that is being read
    QHash<QString, QString> m_illuminants;
};

} // namespace

PointFile PointReaders::readCxf(const QByteArray& text)
{
    return CxfReader(text).read();
}
