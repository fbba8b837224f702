// SPDX-License-Identifier: Apache-2.0
#include "GamSurface.h"

#include "model/inputs/InputGate.h"
#include "model/points/CgatsWords.h"

#include <QtCore/QList>
#include <QtCore/QStringList>

#include <array>
#include <cmath>
#include <unordered_map>

namespace {

using Words = QList<QByteArray>;

const QStringList vertexColumns{QStringLiteral("VERTEX_NO"), QStringLiteral("LAB_L"), QStringLiteral("LAB_A"),
                                QStringLiteral("LAB_B")};
const QStringList faceColumns{QStringLiteral("VERTEX_0"), QStringLiteral("VERTEX_1"),
                              QStringLiteral("VERTEX_2")};

/// The places of the columns @p wanted among @p names; empty if one is missing.
QList<qsizetype> placesOf(const QStringList& wanted, const QStringList& names)
{
    QList<qsizetype> places;
    for (const QString& name : wanted)
        places.append(names.indexOf(name));
    return places.contains(-1) ? QList<qsizetype>() : places;
}

class GamReader
{
public:
    GamReader(const QByteArray& text, const KVCompletionProtocolPtr& task) : m_words(text), m_task(task) {}

    Result<KVGamut::Mesh> read()
    {
        while (const auto word = m_words.next())
            if (const Result<void> done = readPart(*word); !done)
                return failure(done.error());
        if (m_surface.lab.empty())
            return failure(ProblemCode::SurfaceTableMissing, {vertexColumns.join(QLatin1Char(' '))});
        if (m_surface.triangles.empty())
            return failure(ProblemCode::SurfaceTableMissing, {faceColumns.join(QLatin1Char(' '))});
        return std::move(m_surface);
    }

private:
    Result<void> readPart(const CgatsWord& word)
    {
        if (word.isDirective())
            return refusedDirective(word);
        if (word.is("COLOR_REP"))
            return readSpace();
        if (word.is("BEGIN_DATA_FORMAT"))
            return readFormat();
        if (word.is("BEGIN_DATA"))
            return readTable(word.line);
        return {};
    }

    Result<void> readSpace()
    {
        const auto value = m_words.next();
        if (!value || value->text.compare("LAB", Qt::CaseInsensitive) == 0)
            return {};
        return failure(ProblemCode::SurfaceSpaceUnknown, {shown(value->text)});
    }

    Result<void> readFormat()
    {
        m_names.clear();
        return readUntil("END_DATA_FORMAT", [this](const QByteArray& name) -> Result<void> {
            if (m_names.size() >= InputLimits::maxColumns)
                return failure(ProblemCode::TooManyColumns,
                               {lineNumber(), QString::number(InputLimits::maxColumns)});
            m_names.append(QString::fromLatin1(name).toUpper());
            return {};
        });
    }

    Result<void> readTable(int line)
    {
        if (m_names.isEmpty())
            return failure(ProblemCode::CgatsWithoutFormat, {QString::number(line)});
        const auto vertices = m_surface.lab.empty() ? placesOf(vertexColumns, m_names) : QList<qsizetype>();
        const auto faces = m_surface.triangles.empty() ? placesOf(faceColumns, m_names) : QList<qsizetype>();
        const Result<void> done = readRows([&](const Words& row) -> Result<void> {
            if (!vertices.isEmpty())
                return addVertex(row, vertices);
            return faces.isEmpty() ? Result<void>() : addFace(row, faces);
        });
        m_names.clear(); // the next table has its own columns
        return done;
    }

    template <typename Use>
    Result<void> readRows(const Use& use)
    {
        Words row;
        const Result<void> done = readUntil("END_DATA", [&](const QByteArray& field) -> Result<void> {
            row.append(field);
            if (row.size() < m_names.size())
                return {};
            const Result<void> used = use(row);
            row.clear();
            return used;
        });
        if (done && !row.isEmpty())
            return failure(ProblemCode::RowMissesValue, {lineNumber(), m_names[row.size()].left(maxShown)});
        return done;
    }

    /// Calls use(text) for each word up to the keyword @p end.
    template <typename Use>
    Result<void> readUntil(const char* end, const Use& use)
    {
        while (const auto word = m_words.next()) {
            if (word->isDirective())
                return refusedDirective(*word);
            if (word->is(end))
                return {};
            if (word->text.size() > InputLimits::maxLineLength)
                return failure(ProblemCode::LineTooLong,
                               {lineNumber(), QString::number(InputLimits::maxLineLength)});
            if (InputGate::isCancelled(m_task))
                return failure(KVProblemCode::Cancelled);
            if (Result<void> used = use(word->text); !used)
                return used;
        }
        return failure(ProblemCode::CgatsUnfinished, {lineNumber(), QString::fromLatin1(end)});
    }

    Result<void> addVertex(const Words& row, const QList<qsizetype>& places)
    {
        if (m_surface.lab.size() >= static_cast<std::size_t>(InputLimits::maxPoints))
            return failure(ProblemCode::TooManyPoints, {QString::number(InputLimits::maxPoints)});
        const Result<int> number = whole(row, places[0], vertexColumns[0]);
        if (!number)
            return failure(number.error());
        std::array<float, 3> lab{};
        for (qsizetype i = 0; i < 3; ++i) {
            bool ok = false;
            const QByteArray& text = row[places[i + 1]];
            const float value = text.toFloat(&ok);
            if (!ok || !std::isfinite(value))
                return notNumber(vertexColumns[i + 1], text);
            lab[static_cast<std::size_t>(i)] = value;
        }
        if (!m_index.emplace(*number, static_cast<int>(m_surface.lab.size())).second)
            return failure(ProblemCode::RowVertexTwice, {lineNumber(), QString::number(*number)});
        m_surface.lab.push_back({lab[0], lab[1], lab[2]});
        return {};
    }

    Result<void> addFace(const Words& row, const QList<qsizetype>& places)
    {
        if (m_surface.triangles.size() >= static_cast<std::size_t>(InputLimits::maxFaces))
            return failure(ProblemCode::TooManyFaces, {QString::number(InputLimits::maxFaces)});
        KVGamut::Mesh::Triangle triangle{};
        for (qsizetype i = 0; i < 3; ++i) {
            const Result<int> number = whole(row, places[i], faceColumns[i]);
            if (!number)
                return failure(number.error());
            const auto found = m_index.find(*number);
            if (found == m_index.end())
                return failure(ProblemCode::RowVertexUnknown, {lineNumber(), QString::number(*number)});
            triangle[static_cast<std::size_t>(i)] = found->second;
        }
        m_surface.triangles.push_back(triangle);
        return {};
    }

    Result<int> whole(const Words& row, qsizetype place, const QString& column) const
    {
        bool ok = false;
        const int number = row[place].toInt(&ok);
        if (!ok)
            return notNumber(column, row[place]);
        return number;
    }

    tl::unexpected<Problem> notNumber(const QString& column, const QByteArray& text) const
    {
        return failure(ProblemCode::RowNotNumber, {lineNumber(), column, shown(text)});
    }

    static tl::unexpected<Problem> refusedDirective(const CgatsWord& word)
    {
        return failure(ProblemCode::CgatsIncludesFile, {QString::number(word.line), shown(word.text)});
    }

    static QString shown(const QByteArray& text) { return QString::fromLatin1(text.left(maxShown)); }
    QString lineNumber() const { return QString::number(m_words.line()); }

    static constexpr qsizetype maxShown = 100;

    CgatsWords m_words;
    KVCompletionProtocolPtr m_task;
    QStringList m_names;                  ///< of the columns of the current table
    std::unordered_map<int, int> m_index; ///< of each vertex by its number in the file
    KVGamut::Mesh m_surface;
};

} // namespace

bool GamSurface::isIn(const QByteArray& content)
{
    const auto first = CgatsWords(content).next();
    return first && first->is("GAMUT");
}

Result<GivenGamut> GamSurface::read(const QByteArray& content, KVCompletionProtocolPtr task)
{
    const Result<KVGamut::Mesh> surface = GamReader(content, task).read();
    if (!surface)
        return failure(surface.error());
    GivenGamut given{
        {},
        QStringLiteral("surface in a .gam file, of %1 vertices").arg(surface->lab.size()),
        {QStringLiteral("The volume is that of the surface in the file. Its distance to the colours of "
                        "the device is not known.")}};
    if (!given.gamut.initWithSurface(*surface, 0.0, &task))
        return failure(Problem(given.gamut.problem().value_or(KVProblem())));
    return given;
}
