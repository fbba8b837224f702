// SPDX-License-Identifier: Apache-2.0

// The colour of a Lab (D50) colour on an sRGB screen, as the program computes it: a colour outside sRGB moves straight
// towards a grey that is a fifth nearer to L* 50, until it is in sRGB. In the precision of a GPU.
const labToScreen = `
float cubed(float t) {
    return t > 6.0 / 29.0 ? t * t * t : 108.0 / 841.0 * (t - 4.0 / 29.0);
}
vec3 linearOf(vec3 lab) {
    float f = (lab.x + 16.0) / 116.0;
    vec3 xyz = vec3(cubed(f + lab.y / 500.0), cubed(f), cubed(f - lab.z / 200.0));
    // the inverse matrix of sRGB, adapted to D50 (Bradford); each row is multiplied by the white
    return vec3(dot(xyz, vec3(3.0219825, -1.6172090, -0.4047735)),
                dot(xyz, vec3(-0.9437093, 1.9161301, 0.0275792)),
                dot(xyz, vec3(0.0693876, -0.2289939, 1.1596063)));
}
bool displayable(vec3 rgb) {
    return all(greaterThanEqual(rgb, vec3(-1e-5))) && all(lessThanEqual(rgb, vec3(1.0 + 1e-5)));
}
vec3 encoded(vec3 linear) {
    vec3 v = clamp(linear, 0.0, 1.0);
    vec3 curve = 1.055 * pow(v, vec3(1.0 / 2.4)) - 0.055;
    return mix(curve, 12.92 * v, vec3(lessThanEqual(v, vec3(0.0031308))));
}
vec3 screenColour(vec3 lab) {
    lab.x = clamp(lab.x, 0.0, 100.0);
    vec3 rgb = linearOf(lab);
    if (!displayable(rgb)) {
        vec3 grey = vec3(lab.x + 0.2 * (50.0 - lab.x), 0.0, 0.0);
        float inside = 0.0;
        float outside = 1.0;
        for (int i = 0; i < 20; ++i) {
            float middle = 0.5 * (inside + outside);
            if (displayable(linearOf(mix(grey, lab, middle))))
                inside = middle;
            else
                outside = middle;
        }
        rgb = linearOf(mix(grey, lab, inside));
    }
    return encoded(rgb);
}`;

/** The components 0..1 of a colour that is written as #rrggbb. */
function componentsOf(hex) {
    return [1, 3, 5].map((at) => parseInt(hex.slice(at, at + 2), 16) / 255);
}

function isDark() {
    const chosen = document.documentElement.dataset.theme;
    return chosen ? chosen === "dark" : matchMedia("(prefers-color-scheme: dark)").matches;
}

/** The value of a colour variable of the style, which is written as #rrggbb. */
function styleColour(name) {
    return componentsOf(getComputedStyle(document.documentElement).getPropertyValue(name).trim());
}

/** The key colour of a gamut on the present ground. */
function keyColour(gamut) {
    return componentsOf(isDark() ? gamut.darkKey : gamut.key);
}

function cssColour(components) {
    return "#" + components.map((v) => Math.round(255 * v).toString(16).padStart(2, "0")).join("");
}
