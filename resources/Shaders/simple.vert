#version 120
// SPDX-License-Identifier: Apache-2.0

// Positions are in scene coordinates (-a*, L*, b*), normals in host coordinates (L*, a*, b*).
attribute vec3 vertex;
attribute vec3 normal;
attribute vec4 color;
attribute float clip;

uniform mat4 modelToWorld;
uniform mat4 worldToCamera;
uniform mat4 cameraToView;

varying vec3 worldPosition;
varying vec3 worldNormal;
varying vec4 surfaceColor;
varying float clipHeight;

void main()
{
    vec4 world = modelToWorld * vec4(vertex, 1.0);
    worldPosition = world.xyz;
    worldNormal = (modelToWorld * vec4(-normal.y, normal.x, normal.z, 0.0)).xyz;
    surfaceColor = color;
    clipHeight = clip;
    gl_Position = cameraToView * worldToCamera * world;
}
