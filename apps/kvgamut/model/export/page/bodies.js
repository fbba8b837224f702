// SPDX-License-Identifier: Apache-2.0

// The bodies: one set of vertices for all, an index of the opaque triangles, and an index of the translucent ones, which
// is sorted from far to near for each frame.

const bodyVertexShader = `
precision highp float;
attribute vec3 position;
attribute vec3 normal;
attribute vec3 colour;
attribute float opacity;
uniform mat4 modelViewMatrix;
uniform mat4 projectionMatrix;
varying vec3 place;
varying vec3 facing;
varying vec4 shown;
void main() {
    place = position;
    facing = normal;
    shown = vec4(colour, opacity);
    gl_Position = projectionMatrix * modelViewMatrix * vec4(position, 1.0);
}`;

// The same light as in the pictures of the program: above, and weak enough to keep the colours recognisable.
const bodyFragmentShader = `
precision highp float;
uniform float ambient;
uniform float cutAt;
varying vec3 place;
varying vec3 facing;
varying vec4 shown;
void main() {
    if (place.y > cutAt)
        discard;
    vec3 towardsLight = normalize(vec3(0.0, 300.0, 0.0) - place);
    float cosine = dot(normalize(facing), towardsLight);
    float wrapped = 0.5 + 0.5 * (gl_FrontFacing ? cosine : -cosine);
    float light = mix(0.25 + 0.75 * wrapped, 1.0, ambient);
    gl_FragColor = vec4(shown.rgb * light, shown.a);
}`;

const shadedAmbient = 0.55;
const uncut = 1e9;
const depthClasses = 65536;

class Bodies {
    constructor(gamuts) {
        this.gamuts = gamuts;
        const vertices = gamuts.reduce((sum, gamut) => sum + gamut.positions.length / 3, 0);
        this.positions = new Float32Array(3 * vertices);
        const colours = new Uint8Array(3 * vertices);
        this.opacity = new Uint8Array(vertices);
        this.firstVertex = [];
        let first = 0;
        for (const gamut of gamuts) {
            this.firstVertex.push(first);
            this.positions.set(gamut.positions, 3 * first);
            colours.set(gamut.colours, 3 * first);
            first += gamut.positions.length / 3;
        }
        this.triangles = gamuts.map((gamut, i) => gamut.triangles.map((vertex) => vertex + this.firstVertex[i]));
        this.attributes = {
            position: new THREE.BufferAttribute(this.positions, 3),
            normal: new THREE.BufferAttribute(this.normals(), 3),
            colour: new THREE.BufferAttribute(colours, 3, true),
            opacity: new THREE.BufferAttribute(this.opacity, 1, true),
        };
        this.uniforms = { ambient: { value: shadedAmbient }, cutAt: { value: uncut } };
        this.opaque = this.mesh(false);
        this.translucent = this.mesh(true);
        this.meshes = [this.opaque, this.translucent];
    }

    /** The normal of each vertex: the mean of its triangles, weighted with their areas. */
    normals() {
        const normals = new Float32Array(this.positions.length);
        const geometry = new THREE.BufferGeometry();
        geometry.setAttribute("position", new THREE.BufferAttribute(this.positions, 3));
        geometry.setIndex(new THREE.BufferAttribute(joined(this.triangles), 1));
        geometry.computeVertexNormals();
        normals.set(geometry.attributes.normal.array);
        return normals;
    }

    mesh(translucent) {
        const geometry = new THREE.BufferGeometry();
        for (const [name, attribute] of Object.entries(this.attributes))
            geometry.setAttribute(name, attribute);
        const material = new THREE.RawShaderMaterial({
            vertexShader: bodyVertexShader,
            fragmentShader: bodyFragmentShader,
            uniforms: this.uniforms,
            side: THREE.DoubleSide,
            transparent: translucent,
            depthWrite: !translucent,
        });
        const mesh = new THREE.Mesh(geometry, material);
        mesh.frustumCulled = false;
        mesh.renderOrder = translucent ? order.translucent : order.opaque;
        return mesh;
    }

    /** Takes over which gamuts are visible, and their opacities. */
    update() {
        const opaque = [];
        const translucent = [];
        this.gamuts.forEach((gamut, i) => {
            const end = i + 1 < this.gamuts.length ? this.firstVertex[i + 1] : this.opacity.length;
            this.opacity.fill(Math.round(255 * gamut.opacity), this.firstVertex[i], end);
            if (gamut.visible && gamut.opacity > 0)
                (gamut.opacity < 1 ? translucent : opaque).push(this.triangles[i]);
        });
        this.attributes.opacity.needsUpdate = true;
        this.show(this.opaque, joined(opaque));
        this.unsorted = joined(translucent);
        this.middles = this.middlesOf(this.unsorted);
        this.show(this.translucent, this.unsorted.slice());
    }

    show(mesh, indices) {
        mesh.geometry.setIndex(new THREE.BufferAttribute(indices, 1));
        mesh.visible = indices.length > 0;
    }

    middlesOf(indices) {
        const middles = new Float32Array(indices.length);
        const p = this.positions;
        for (let i = 0; i < indices.length; i += 3)
            for (let k = 0; k < 3; ++k)
                middles[i + k] = (p[3 * indices[i] + k] + p[3 * indices[i + 1] + k] + p[3 * indices[i + 2] + k]) / 3;
        return middles;
    }

    /** Sorts the translucent triangles from far to near, along `direction` away from the eye. */
    sort(direction) {
        const count = this.unsorted.length / 3;
        if (count === 0)
            return;
        const depth = new Float32Array(count);
        const m = this.middles;
        let nearest = Infinity;
        let farthest = -Infinity;
        for (let i = 0; i < count; ++i) {
            depth[i] = m[3 * i] * direction.x + m[3 * i + 1] * direction.y + m[3 * i + 2] * direction.z;
            nearest = Math.min(nearest, depth[i]);
            farthest = Math.max(farthest, depth[i]);
        }
        const scale = (depthClasses - 1) / Math.max(farthest - nearest, 1e-6);
        const starts = new Uint32Array(depthClasses + 1);
        const classes = new Uint16Array(count);
        for (let i = 0; i < count; ++i) {
            classes[i] = (farthest - depth[i]) * scale;
            ++starts[classes[i] + 1];
        }
        for (let i = 0; i < depthClasses; ++i)
            starts[i + 1] += starts[i];
        const index = this.translucent.geometry.index;
        for (let i = 0; i < count; ++i) {
            const to = 3 * starts[classes[i]]++;
            for (let k = 0; k < 3; ++k)
                index.array[to + k] = this.unsorted[3 * i + k];
        }
        index.needsUpdate = true;
    }
}

function joined(arrays) {
    const all = new Uint32Array(arrays.reduce((sum, array) => sum + array.length, 0));
    let at = 0;
    for (const array of arrays) {
        all.set(array, at);
        at += array.length;
    }
    return all;
}
