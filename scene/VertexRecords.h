// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QList>
#include <QtGui/QColor>

#include <optional>

/// The vertices of a scene object: what a generator delivered, and the records that are made of it.
///
/// The records are made when somebody asks for them first. Until then changes of opacity, colour and
/// clip cost nothing: an object that is never shown, as most gamuts' wireframes, never has them.
///
/// A value that knows no GL. list() is not thread-safe although const.
class VertexRecords
{
public:
    /// How records are coloured.
    struct Shading
    {
        QColor color;
        int mode = 1;         ///< display mode; 2: one tone per face
        bool surface = false; ///< shaded by lightness; otherwise the colour as it is
        int primitiveMode = 4;
    };

    /// Takes @p generated, GeometryData::floatsPerVertex floats each (a partial record at the end is
    /// completed by zeros), in place of what was there. Opacity and clip stay; colours are the
    /// generator's own again.
    void assign(const QList<float>& generated);

    void setAlpha(float alpha);
    void setClip(float clip);
    /// An invalid colour keeps the colours that are there.
    void shade(const Shading& shading);

    /// Whole records, kvVertexFloats floats each.
    const QList<float>& list() const;

private:
    void expand() const;
    static void shadeRecords(QList<float>& records, const Shading& shading);

    mutable QList<float> m_records;
    mutable QList<float> m_generated; ///< empty once the records are made of it
    mutable bool m_pending = false;
    mutable std::optional<Shading> m_shading; ///< asked for while pending
    float m_alpha = 1.0f;                     ///< what every record holds, or will
    float m_clip = 1000000.0f;
};
