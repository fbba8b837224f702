// SPDX-License-Identifier: Apache-2.0
"use strict";

// Decodes the gamuts of the page. Scene coordinates are x = a*, y = L*, z = -b*, which is right-handed.

function bytesOf(base64) {
    const text = atob(base64);
    const bytes = new Uint8Array(text.length);
    for (let i = 0; i < text.length; ++i)
        bytes[i] = text.charCodeAt(i);
    return bytes;
}

/** Little-endian unsigned integers of `size` bytes each. */
function integersOf(base64, size) {
    const bytes = bytesOf(base64);
    const view = new DataView(bytes.buffer);
    const values = new Uint32Array(bytes.length / size);
    for (let i = 0; i < values.length; ++i)
        values[i] = size === 2 ? view.getUint16(2 * i, true) : view.getUint32(4 * i, true);
    return values;
}

/** Quantised Lab triples as positions in the scene. */
function positionsOf(base64, grid) {
    const steps = integersOf(base64, 2);
    const positions = new Float32Array(steps.length);
    for (let i = 0; i < steps.length; i += 3) {
        const lab = [0, 1, 2].map((k) => grid.low[k] + steps[i + k] * grid.step[k]);
        positions.set(sceneOf(lab), i);
    }
    return positions;
}

function sceneOf([L, a, b]) {
    return [a, L, -b];
}

function readData() {
    const data = JSON.parse(document.getElementById("data").textContent);
    for (const gamut of data.gamuts) {
        const surface = gamut.surface;
        gamut.positions = positionsOf(surface.positions, surface.grid);
        gamut.colours = bytesOf(surface.colours);
        gamut.triangles = integersOf(surface.triangles, surface.indexBytes);
        gamut.outlineEnds = positionsOf(surface.outline, surface.grid);
    }
    return data;
}
