// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QList>
#include <QtGui/QColor>

#include <optional>

/// The vertices of a scene object: the output of a generator and the vertex records built from it.
///
/// The records are built lazily by list(). Until then, changes of opacity, colour and clip value cost
/// nothing. Objects that are never drawn, such as most wireframes, never build them.
///
/// A value type without GL. list() is not thread-safe although it is const.
class VertexRecords
{
public:
    /// How to colour the records.
    struct Shading
    {
        QColor color;
        int mode = 1;         ///< display mode; 2: one shade per face
        bool surface = false; ///< shade the colour by lightness; otherwise use it unchanged
        int primitiveMode = 4;
    };

    /// Replaces all vertices by @p generated, GeometryData::floatsPerVertex floats each (a partial record at
    /// the end is filled with zeros). Opacity and clip value are kept; the colours are those of the
    /// generator.
    void assign(const QList<float>& generated);

    void setAlpha(float alpha);
    void setClip(float clip);
    /// An invalid colour keeps the present colours.
    void shade(const Shading& shading);
    /// Undoes shade(): the colours are the generator's own again.
    void restoreColors();

    /// Whole records, kvVertexFloats floats each.
    [[nodiscard]] const QList<float>& list() const;

private:
    void expand() const;
    static void shadeRecords(QList<float>& records, const Shading& shading);

    mutable QList<float> m_records;
    mutable QList<float> m_generated; ///< empty once the records are built
    mutable bool m_pending = false;
    mutable std::optional<Shading> m_shading; ///< requested while pending
    float m_alpha = 1.0f;                     ///< of every record, built or not
    float m_clip = 1000000.0f;
};
