#version 120
// SPDX-License-Identifier: Apache-2.0

uniform vec3 lightPos;
uniform vec4 lightColor;
uniform float ambientStrenght; // the program looks up exactly this spelling

varying vec3 worldPosition;
varying vec3 worldNormal;
varying vec4 surfaceColor;
varying float clipHeight;

// Part of the diffuse light that also reaches surfaces facing away from the light, so that they are not black.
const float fill = 0.25;

void main()
{
    if (worldPosition.y > clipHeight)
        discard;

    // Ambient strength 1 shows the unshaded colours; lower values add shading. The weights add up to 1, so that
    // no colour is over-exposed. Lines have the normal (0, 0, 0) and are not shaded.
    vec3 light = vec3(1.0);
    float normalLength = length(worldNormal);
    vec3 towardsLight = lightPos - worldPosition;
    float lightDistance = length(towardsLight);
    if (normalLength > 1e-6 && lightDistance > 1e-6) {
        float ambient = clamp(ambientStrenght, 0.0, 1.0);
        // Both sides of a surface are lit separately, because the inside of a clipped gamut is visible. Wrapped
        // diffuse lighting (Green, GPU Gems, 2004) also shades the side that faces away from the light, so that
        // its shape can be seen from below.
        float cosine = dot(worldNormal, towardsLight) / (normalLength * lightDistance);
        float wrapped = 0.5 + 0.5 * (gl_FrontFacing ? cosine : -cosine);
        vec3 diffuse = vec3(fill) + (1.0 - fill) * wrapped * lightColor.rgb;
        light = mix(diffuse, vec3(1.0), ambient);
    }
    gl_FragColor = vec4(surfaceColor.rgb * light, surfaceColor.a);
}
