// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <scene/Disposal.h>
#include <scene/VertexStride.h>

#include <QtCore/QList>
#include <QtGui/QColor>

#include <optional>
#include <span>

/// Colours, opacity and clip value of all vertex records of an object.
struct VertexStyle
{
    /// How to colour the records.
    struct Shading
    {
        QColor color;
        int mode = 1;         ///< display mode; 2: one shade per face
        bool surface = false; ///< shade the colour by lightness; otherwise use it unchanged
        int primitiveMode = 4;

        bool operator==(const Shading&) const = default;
    };

    float alpha = 1.0f;
    float clip = 1000000.0f;
    std::optional<Shading> shading; ///< nullopt: the colours of the generator

    /// NaN equals NaN.
    bool operator==(const VertexStyle& other) const;
};

/// Appends @p count records to @p list, whose values are undefined, and returns them.
std::span<VertexStride> kvAppendRecords(QList<float>& list, qsizetype count);

/// Writes the values of @p style into @p records where they differ from those of @p present. The records
/// begin at a multiple of three.
void kvApplyStyle(std::span<VertexStride> records, const VertexStyle& style, const VertexStyle& present);

/// The records of @p generated, kvGeneratedFloats floats each, in the style @p style. A partial
/// vertex at the end is filled with zeros. The vertices begin at a multiple of three.
/// @param records as many as there are vertices
void kvExpandVertices(std::span<const float> generated, const VertexStyle& style,
                      std::span<VertexStride> records);

/// The vertices of a scene object: the output of a generator and the vertex records built from it.
///
/// list() builds the records and applies the style. Until then, changes of opacity, colour and clip value
/// cost nothing. Objects that are never drawn never build records.
///
/// A value type without GL. list() is not thread-safe although it is const.
class VertexRecords
{
public:
    using Shading = VertexStyle::Shading;

    /// Replaces all vertices by @p generated, kvGeneratedFloats floats each (a partial record at
    /// the end is filled with zeros). Opacity and clip value are kept; the colours are those of the
    /// generator.
    void assign(const QList<float>& generated);
    /// Replaces all vertices by records of kvVertexFloats floats each that have the style @p style. Otherwise
    /// as assign(): their colours are those of the generator until shade() is called, which costs nothing if
    /// the records have these colours already.
    void adopt(const QList<float>& records, const VertexStyle& style);

    void setAlpha(float alpha);
    void setClip(float clip);
    /// An invalid colour keeps the present colours.
    void shade(const Shading& shading);
    /// Undoes shade(): the colours are the generator's own again.
    void restoreColors();

    /// What list() has.
    [[nodiscard]] const VertexStyle& style() const { return m_style; }
    /// Whole records, kvVertexFloats floats each.
    [[nodiscard]] const QList<float>& list() const;

private:
    void expand() const;

    mutable LongList m_records;
    mutable LongList m_generated; ///< empty once the records are built
    mutable bool m_pending = false;
    mutable VertexStyle m_applied; ///< style of the records
    VertexStyle m_style;
};
