// SPDX-License-Identifier: Apache-2.0
#include "PointColumns.h"
#include "PointReaders.h"
#include "PointWhite.h"
#include "XmlLimits.h"
#include "model/inputs/InputGate.h"

#include <QtCore/QHash>
#include <QtCore/QXmlStreamReader>

#include <cmath>
#include <optional>

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
        const QString element = localName(xml);
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
    CxfReader(const QByteArray& text, const KVCompletionProtocolPtr& task) : m_xml(text), m_task(task)
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
        const KVGamut::LabPoint lab =
            isXyz ? PointWhite::fromXyz(*numbers, 100.0, {}) : KVGamut::LabPoint{x, y, z};
        if (isPossible(lab))
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
        set.reading = {QStringLiteral("Lab"), {}, {}, QStringLiteral("D50"), {}};
        for (const Object& object : m_objects) {
            const auto value = best(object);
            if (!value)
                continue;
            if (const auto added = PointReaders::add(set, {value->lab, QColor(), object.name}, m_task);
                !added)
                return failure(added.error());
        }
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
    KVCompletionProtocolPtr m_task;
    QList<Object> m_objects;
    QString m_specification; ///< id of the current ColorSpecification
    QHash<QString, QString> m_illuminants;
};

} // namespace

Result<PointSet> PointReaders::readCxf(const QByteArray& text, const PointOptions& /*options*/,
                                       const KVCompletionProtocolPtr& task)
{
    return checkXml(text).and_then([&] { return CxfReader(text, task).read(); });
}
