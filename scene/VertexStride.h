// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>

/// One vertex as scene objects hold and upload it: 15 floats, 60 bytes, no padding.
struct VertexStride
{
    float position[3];  ///< scene coordinates: -a*, L*, b*
    float normal[3];    ///< host coordinates; the vertex shader maps it as positions are mapped
    float color[4];     ///< RGBA 0..1 as the shader sees it
    float baseColor[4]; ///< RGBA as the generator delivered it, never rewritten; not bound
    float clip;         ///< fragments above this scene height are discarded
};

/// Floats per vertex record.
inline constexpr int kvVertexFloats = 15;
/// Bytes per vertex record.
inline constexpr int kvVertexBytes = 60;

static_assert(sizeof(VertexStride) == kvVertexBytes && kvVertexFloats * sizeof(float) == kvVertexBytes);

/// One attribute of the shader program: where it lies in the record.
struct KVVertexAttribute
{
    const char* name;
    int offset; ///< bytes
    int components;
};

/// The attributes in the order in which they are bound. The shader declares the same names.
inline constexpr KVVertexAttribute kvVertexAttributes[] = {
    {"vertex", offsetof(VertexStride, position), 3},
    {"normal", offsetof(VertexStride, normal), 3},
    {"color", offsetof(VertexStride, color), 4},
    {"clip", offsetof(VertexStride, clip), 1},
};
