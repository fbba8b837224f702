// SPDX-License-Identifier: Apache-2.0

// Lines of any width: WebGL draws lines of one pixel only. Each segment is a rectangle on the screen.

const order = { opaque: 0, mark: 1, lid: 2, under: 3, lines: 4, translucent: 5 };

const lineVertexShader = `
precision highp float;
attribute vec3 position;
attribute vec3 other;
attribute vec3 colour;
attribute vec2 corner;
uniform mat4 modelViewMatrix;
uniform mat4 projectionMatrix;
uniform vec2 viewport;
uniform float width;
uniform float towardsEye;
varying vec3 shown;
void main() {
    vec4 here = projectionMatrix * modelViewMatrix * vec4(position, 1.0);
    vec4 there = projectionMatrix * modelViewMatrix * vec4(other, 1.0);
    vec2 along = (there.xy / there.w - here.xy / here.w) * viewport;
    along = length(along) > 1e-4 ? normalize(along) : vec2(1.0, 0.0);
    // longer by half of the width, so that consecutive segments join
    vec2 shift = (vec2(-along.y, along.x) * corner.x - along * corner.y) * width / viewport;
    here.xy += shift * here.w;
    here.z -= towardsEye * here.w;
    shown = colour;
    gl_Position = here;
}`;

const lineFragmentShader = `
precision highp float;
varying vec3 shown;
void main() {
    gl_FragColor = vec4(shown, 1.0);
}`;

const viewportUniform = { value: null };

class Lines {
    /** @param width in CSS pixels */
    constructor(width, towardsEye, renderOrder = order.lines) {
        this.width = width;
        this.material = new THREE.RawShaderMaterial({
            vertexShader: lineVertexShader,
            fragmentShader: lineFragmentShader,
            uniforms: { viewport: viewportUniform, width: { value: width }, towardsEye: { value: towardsEye } },
            side: THREE.DoubleSide,
            depthWrite: renderOrder !== order.under, // others are drawn over them
        });
        this.mesh = new THREE.Mesh(new THREE.BufferGeometry(), this.material);
        this.mesh.frustumCulled = false;
        this.mesh.renderOrder = renderOrder;
    }

    /** @param groups lists of {ends, colour}: six coordinates for each segment, and its colour */
    set(groups) {
        const count = groups.reduce((sum, group) => sum + group.ends.length / 6, 0);
        const position = new Float32Array(12 * count);
        const other = new Float32Array(12 * count);
        const colour = new Float32Array(12 * count);
        const corner = new Float32Array(8 * count);
        const index = new Uint32Array(6 * count);
        let at = 0;
        for (const { ends, colour: shown } of groups)
            for (let i = 0; i < ends.length; i += 6, ++at) {
                const from = ends.slice(i, i + 3);
                const to = ends.slice(i + 3, i + 6);
                [from, from, to, to].forEach((end, k) => position.set(end, 12 * at + 3 * k));
                [to, to, from, from].forEach((end, k) => other.set(end, 12 * at + 3 * k));
                for (let k = 0; k < 4; ++k)
                    colour.set(shown, 12 * at + 3 * k);
                // "along" points the other way at the second end
                corner.set([1, 1, -1, 1, -1, 1, 1, 1], 8 * at);
                index.set([0, 1, 2, 2, 1, 3].map((k) => 4 * at + k), 6 * at);
            }
        this.mesh.geometry.dispose();
        const geometry = new THREE.BufferGeometry();
        geometry.setAttribute("position", new THREE.BufferAttribute(position, 3));
        geometry.setAttribute("other", new THREE.BufferAttribute(other, 3));
        geometry.setAttribute("colour", new THREE.BufferAttribute(colour, 3));
        geometry.setAttribute("corner", new THREE.BufferAttribute(corner, 2));
        geometry.setIndex(new THREE.BufferAttribute(index, 1));
        this.mesh.geometry = geometry;
        this.isEmpty = count === 0;
    }

    setPixelRatio(ratio) {
        this.material.uniforms.width.value = this.width * ratio;
    }
}
