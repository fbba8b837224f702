// SPDX-License-Identifier: Apache-2.0

// The section at a lightness: the outline of each body, and a lid over all of them in the colours of that lightness.
// The lid is marked in the stencil buffer by triangles from one point to each piece of the outlines, which counts how
// often they surround a pixel. So it is exact, with holes and several parts.

const lidVertexShader = `
precision highp float;
attribute vec3 position;
uniform mat4 modelViewMatrix;
uniform mat4 projectionMatrix;
varying vec3 place;
void main() {
    place = position;
    gl_Position = projectionMatrix * modelViewMatrix * vec4(position, 1.0);
}`;

const lidFragmentShader = `
precision highp float;
varying vec3 place;
${labToScreen}
void main() {
    gl_FragColor = vec4(screenColour(vec3(place.y, place.x, -place.z)), 1.0);
}`;

/** The pieces of the cut through a body at a lightness, six coordinates each, all in the same sense of rotation. */
function cutOf(gamut, lightness) {
    const ends = [];
    const { positions, triangles } = gamut;
    for (let i = 0; i < triangles.length; i += 3) {
        const above = [0, 1, 2].map((k) => positions[3 * triangles[i + k] + 1] >= lightness);
        if (above[0] === above[1] && above[1] === above[2])
            continue;
        const piece = [];
        for (let k = 0; k < 3; ++k) {
            const next = (k + 1) % 3;
            if (above[k] !== above[next])
                piece.push([above[k], crossing(positions, triangles[i + k], triangles[i + next], lightness)]);
        }
        piece.sort((one, other) => Number(one[0]) - Number(other[0]));
        ends.push(...piece[0][1], ...piece[1][1]);
    }
    return ends;
}

/** The point of an edge at a lightness. The same for both triangles of the edge, so that outlines are closed. */
function crossing(positions, one, other, lightness) {
    const from = 3 * Math.min(one, other);
    const to = 3 * Math.max(one, other);
    const share = (lightness - positions[from + 1]) / (positions[to + 1] - positions[from + 1]);
    const at = (k) => positions[from + k] + share * (positions[to + k] - positions[from + k]);
    return [at(0), lightness, at(2)];
}

class Section {
    constructor(gamuts) {
        this.gamuts = gamuts;
        this.shown = false;
        this.cut = true;
        this.lightness = 50;
        const mark = { depthTest: false, depthWrite: false, colorWrite: false, stencilWrite: true };
        this.up = this.mesh({ ...mark, side: THREE.FrontSide, stencilZPass: THREE.IncrementWrapStencilOp }, order.mark);
        this.down = this.mesh({ ...mark, side: THREE.BackSide, stencilZPass: THREE.DecrementWrapStencilOp }, order.mark);
        this.lid = this.mesh({ side: THREE.DoubleSide, stencilWrite: true, stencilFunc: THREE.NotEqualStencilFunc },
                             order.lid);
        this.casing = new Lines(4.5, 3e-4, order.under); // keeps an outline apart from a lid in the same colour
        this.outlines = new Lines(2.5, 4e-4);
        this.lines = [this.casing, this.outlines];
        this.meshes = [this.up, this.down, this.lid, this.casing.mesh, this.outlines.mesh];
    }

    mesh(parameters, renderOrder) {
        const mesh = new THREE.Mesh(new THREE.BufferGeometry(), new THREE.RawShaderMaterial({
            vertexShader: lidVertexShader,
            fragmentShader: lidFragmentShader,
            ...parameters,
        }));
        mesh.frustumCulled = false;
        mesh.renderOrder = renderOrder;
        return mesh;
    }

    /** Above which lightness the bodies are cut off. */
    get cutAt() {
        return this.shown && this.cut ? this.lightness : uncut;
    }

    update() {
        const groups = this.shown ? this.gamuts.filter((gamut) => gamut.visible)
            .map((gamut) => ({ ends: cutOf(gamut, this.lightness), colour: keyColour(gamut) })) : [];
        const pieces = groups.reduce((sum, group) => sum + group.ends.length / 6, 0);
        for (const mesh of this.meshes)
            mesh.visible = pieces > 0;
        if (pieces === 0)
            return;
        this.casing.set(groups.map(({ ends }) => ({ ends, colour: [1, 1, 1] })));
        this.outlines.set(groups);
        const fan = new Float32Array(9 * pieces);
        let at = 0;
        for (const { ends } of groups)
            for (let i = 0; i < ends.length; i += 6, at += 9)
                fan.set([0, this.lightness, 0, ...ends.slice(i, i + 6)], at);
        setTriangles(this.up, fan);
        setTriangles(this.down, fan);
        setTriangles(this.lid, this.square(groups));
    }

    /** Two triangles around all outlines. */
    square(groups) {
        let reach = 0;
        for (const { ends } of groups)
            for (let i = 0; i < ends.length; i += 3)
                reach = Math.max(reach, Math.abs(ends[i]), Math.abs(ends[i + 2]));
        const at = (x, z) => [x * reach, this.lightness, z * reach];
        return new Float32Array([at(-1, -1), at(-1, 1), at(1, 1), at(1, 1), at(1, -1), at(-1, -1)].flat());
    }
}

function setTriangles(mesh, positions) {
    mesh.geometry.dispose();
    mesh.geometry = new THREE.BufferGeometry();
    mesh.geometry.setAttribute("position", new THREE.BufferAttribute(positions, 3));
}
