#version 120
// SPDX-License-Identifier: Apache-2.0

uniform vec3 lightPos;
uniform vec4 lightColor;
uniform float ambientStrenght; // spelled as the program looks it up

varying vec3 worldPosition;
varying vec3 worldNormal;
varying vec4 surfaceColor;
varying float clipHeight;

// Share of the diffuse light that reaches a surface turned away from it, so that nothing turns black.
const float fill = 0.25;

void main()
{
    if (worldPosition.y > clipHeight)
        discard;

    // At ambient strength 1 colours show as they are; below it light shades them. The weights add up
    // to one, so nothing is over-exposed. Lines carry no normal and are not shaded.
    vec3 light = vec3(1.0);
    float normalLength = length(worldNormal);
    vec3 towardsLight = lightPos - worldPosition;
    float lightDistance = length(towardsLight);
    if (normalLength > 1e-6 && lightDistance > 1e-6) {
        float ambient = clamp(ambientStrenght, 0.0, 1.0);
        // Both sides of a surface are lit, each by itself: the one that is seen counts, also inside a cut
        // gamut. The cosine is wrapped around the shadow side (Green, GPU Gems, 2004), so that shapes
        // are modelled there too, and a view from below is not flat.
        float cosine = dot(worldNormal, towardsLight) / (normalLength * lightDistance);
        float wrapped = 0.5 + 0.5 * (gl_FrontFacing ? cosine : -cosine);
        vec3 diffuse = vec3(fill) + (1.0 - fill) * wrapped * lightColor.rgb;
        light = mix(diffuse, vec3(1.0), ambient);
    }
    gl_FragColor = vec4(surfaceColor.rgb * light, surfaceColor.a);
}
