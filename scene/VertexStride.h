// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>

/// Vertex record of scene objects, as uploaded to the GPU: 15 floats, 60 bytes, no padding.
struct VertexStride
{
    float position[3];  ///< scene coordinates: -a*, L*, b*
    float normal[3];    ///< host coordinates; the vertex shader converts it
    float color[4];     ///< RGBA 0..1, used by the shader
    float baseColor[4]; ///< RGBA from the generator, never changed; not bound to an attribute
    float clip;         ///< fragments above this scene height are discarded
};

/// OpenGL primitives of a scene object; the values are those of glDrawArrays.
enum KVPrimitiveMode : int
{
    KVPrimitivePoints = 0,
    KVPrimitiveLines = 1,
    KVPrimitiveTriangles = 4,
};

/// Floats per generated vertex; see GeometryData.
inline constexpr int kvGeneratedFloats = 10;
/// Floats per vertex record.
inline constexpr int kvVertexFloats = 15;
/// Bytes per vertex record.
inline constexpr int kvVertexBytes = 60;

static_assert(sizeof(VertexStride) == kvVertexBytes && kvVertexFloats * sizeof(float) == kvVertexBytes);

/// An attribute of the shader program and its position in the vertex record.
struct KVVertexAttribute
{
    const char* name;
    int offset; ///< bytes
    int components;
};

/// The attributes in binding order. The vertex shader declares the same names.
inline constexpr KVVertexAttribute kvVertexAttributes[] = {
    {"vertex", offsetof(VertexStride, position), 3},
    {"normal", offsetof(VertexStride, normal), 3},
    {"color", offsetof(VertexStride, color), 4},
    {"clip", offsetof(VertexStride, clip), 1},
};
