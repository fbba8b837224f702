// SPDX-License-Identifier: Apache-2.0

// The floor with its grid, the axes L*, a* and b* with ticks and numbers, and the outlines of the gamuts on the floor.
// The numbers are at those edges of the box that face the reader, so that they never cover a body.

const tickSteps = [5, 10, 20, 25, 50, 100, 200, 500];
const maxTicks = 7;
const tickLength = 3;
const numberDistance = 12;
const titleDistance = 54;
const maxForeshortening = 0.95; // cosine between an axis and the line of sight; above it the axis has no numbers

function tickStep(range) {
    return tickSteps.find((step) => range / step <= maxTicks) || tickSteps[tickSteps.length - 1];
}

/** The multiples of `step` from `low` to `high`. */
function ticksOf(low, high, step) {
    const ticks = [];
    for (let i = Math.ceil(low / step - 1e-6); i * step <= high + 1e-6; ++i)
        ticks.push(i * step + 0);
    return ticks;
}

/** The box of ticks around all gamuts. */
function boxOf(gamuts) {
    const low = [0, 0, 0];
    const high = [0, 100, 0];
    for (const { positions } of gamuts)
        for (let i = 0; i < positions.length; ++i) {
            low[i % 3] = Math.min(low[i % 3], positions[i]);
            high[i % 3] = Math.max(high[i % 3], positions[i]);
        }
    const step = tickStep(Math.max(high[0] - low[0], high[2] - low[2]));
    const fine = step / 2;
    const rounded = (values, toGrid) => values.map((v, k) => (k === 1 ? v : toGrid(v / fine) * fine));
    return {
        step,
        low: new THREE.Vector3(...rounded(low, Math.floor)),
        high: new THREE.Vector3(...rounded(high, Math.ceil)),
    };
}

class Axes {
    constructor(gamuts, box, camera, labels) {
        this.gamuts = gamuts;
        this.box = box;
        this.camera = camera;
        this.shown = true;
        this.grid = new Lines(1, 0, order.under);
        this.edges = new Lines(1.5, 2e-4);
        this.outlines = new Lines(2.5, 3e-4);
        this.parts = [this.grid, this.edges, this.outlines];
        this.meshes = this.parts.map((part) => part.mesh);
        this.labels = labels;
        this.pool = [];
    }

    /** Takes over the theme, and which gamuts are visible. */
    update() {
        for (const mesh of this.meshes)
            mesh.visible = this.shown;
        const { low, high, step } = this.box;
        const lines = [];
        for (const a of ticksOf(low.x, high.x, step))
            lines.push(a, 0, low.z, a, 0, high.z);
        for (const z of ticksOf(low.z, high.z, step))
            lines.push(low.x, 0, z, high.x, 0, z);
        const frame = [low.x, 0, low.z, high.x, 0, low.z, high.x, 0, low.z, high.x, 0, high.z,
                       high.x, 0, high.z, low.x, 0, high.z, low.x, 0, high.z, low.x, 0, low.z];
        const zero = [low.x, 0, 0, high.x, 0, 0, 0, 0, low.z, 0, 0, high.z];
        this.grid.set([{ ends: [...lines, ...frame], colour: styleColour("--grid") },
                       { ends: zero, colour: styleColour("--zero") }]);
        this.outlines.set(this.gamuts.filter((gamut) => gamut.visible)
            .map((gamut) => ({ ends: flat(gamut.outlineEnds), colour: keyColour(gamut) })));
    }

    /** Chooses the edges with numbers for the present view, and places their numbers. */
    place() {
        const texts = [];
        const ends = [];
        if (this.shown) {
            const seen = this.camera.three();
            const on = (x, y, z) => this.camera.project(new THREE.Vector3(x, y, z), seen);
            this.placeHorizontal(on, texts, ends);
            this.placeVertical(on, texts, ends);
        }
        this.edges.mesh.visible = ends.length > 0;
        if (ends.length > 0)
            this.edges.set([{ ends, colour: styleColour("--ink") }]);
        this.showTexts(withoutCollisions(texts));
    }

    placeHorizontal(on, texts, ends) {
        const { low, high, step } = this.box;
        const lowest = (one, other) => (middleOf(one)[1] >= middleOf(other)[1] - 1 ? one : other);
        const alongA = (z) => ({ from: on(low.x, 0, z), to: on(high.x, 0, z), at: z });
        const alongB = (x) => ({ from: on(x, 0, low.z), to: on(x, 0, high.z), at: x });
        const a = lowest(alongA(high.z), alongA(low.z));
        const b = lowest(alongB(low.x), alongB(high.x));
        const middle = on(0.5 * (low.x + high.x), 0, 0.5 * (low.z + high.z));
        const { eye } = this.camera.axes();
        if (Math.abs(eye.x) < maxForeshortening) {
            const sign = Math.sign(a.at - 0.5 * (low.z + high.z));
            ends.push(low.x, 0, a.at, high.x, 0, a.at);
            for (const tick of ticksOf(low.x, high.x, step)) {
                ends.push(tick, 0, a.at, tick, 0, a.at + sign * tickLength);
                texts.push(beside(on(tick, 0, a.at), a, middle, numberText(tick), numberDistance));
            }
            texts.push(beside(middleOf(a), a, middle, "a*", titleDistance));
        }
        if (Math.abs(eye.z) < maxForeshortening) {
            const sign = Math.sign(b.at - 0.5 * (low.x + high.x));
            ends.push(b.at, 0, low.z, b.at, 0, high.z);
            for (const tick of ticksOf(-high.z, -low.z, step)) {
                ends.push(b.at, 0, -tick, b.at + sign * tickLength, 0, -tick);
                texts.push(beside(on(b.at, 0, -tick), b, middle, numberText(tick), numberDistance));
            }
            texts.push(beside(middleOf(b), b, middle, "b*", titleDistance));
        }
    }

    /** L* is at the edge that is farthest to the left. */
    placeVertical(on, texts, ends) {
        const { low, high } = this.box;
        const { eye, right } = this.camera.axes();
        if (Math.abs(eye.y) >= maxForeshortening)
            return;
        const edges = [low.x, high.x].flatMap((x) => [low.z, high.z].map((z) => (
            { x, z, from: on(x, 0, z), to: on(x, high.y, z) })));
        const edge = edges.reduce((one, other) => (middleOf(other)[0] < middleOf(one)[0] - 1 ? other : one));
        ends.push(edge.x, 0, edge.z, edge.x, high.y, edge.z);
        for (const tick of ticksOf(0, high.y, 20)) {
            ends.push(edge.x, tick, edge.z, edge.x - right.x * tickLength, tick, edge.z - right.z * tickLength);
            const [x, y] = on(edge.x, tick, edge.z);
            texts.push({ x: x - numberDistance, y, away: -1, text: numberText(tick) });
        }
        const [x, y] = middleOf(edge);
        texts.push({ x: x - titleDistance, y: y - 10, away: -1, text: "L*", isTitle: true });
    }

    showTexts(texts) {
        while (this.pool.length < texts.length)
            this.pool.push(this.labels.appendChild(document.createElement("span")));
        this.pool.forEach((element, i) => {
            element.hidden = i >= texts.length;
            if (element.hidden)
                return;
            const { x, y, away, text, isTitle } = texts[i];
            if (element.textContent !== text)
                element.textContent = text;
            element.className = isTitle ? "title" : "";
            element.style.transform =
                `translate(${x.toFixed(1)}px, ${y.toFixed(1)}px) translate(${(50 * away - 50).toFixed(1)}%, -50%)`;
        });
    }

    setPixelRatio(ratio) {
        for (const part of this.parts)
            part.setPixelRatio(ratio);
    }
}

function flat(positions) {
    return positions.map((v, i) => (i % 3 === 1 ? 0 : v));
}

function middleOf({ from, to }) {
    return [0.5 * (from[0] + to[0]), 0.5 * (from[1] + to[1])];
}

function lengthOf({ from, to }) {
    return Math.hypot(to[0] - from[0], to[1] - from[1]);
}

function numberText(value) {
    return String(value).replace("-", "\u2212");
}

/** A text at `point`, away from an edge on the side that faces away from `middle`. */
function beside(point, edge, middle, text, distance) {
    const length = lengthOf(edge);
    let normal = [(edge.to[1] - edge.from[1]) / length, (edge.from[0] - edge.to[0]) / length];
    const [x, y] = middleOf(edge);
    if (normal[0] * (x - middle[0]) + normal[1] * (y - middle[1]) < 0 || (normal[1] < 0 && Math.abs(normal[0]) < 0.1))
        normal = normal.map((v) => -v);
    return { x: point[0] + normal[0] * distance, y: point[1] + normal[1] * distance, away: normal[0], text,
             isTitle: distance === titleDistance };
}

/** `texts` without those that would cover an earlier one; titles come first. */
function withoutCollisions(texts) {
    const kept = [];
    const width = (text) => 8 * text.text.length + 4;
    for (const text of [...texts].sort((one, other) => Number(!!other.isTitle) - Number(!!one.isTitle)))
        if (!kept.some((other) => Math.abs(other.y - text.y) < 14 &&
                                  Math.abs(other.x - text.x) < 0.5 * (width(other) + width(text))))
            kept.push(text);
    return kept;
}
