// SPDX-License-Identifier: Apache-2.0

// Puts the page together. Nothing is drawn unless something changed.

class Scene {
    constructor(canvas, gamuts) {
        this.canvas = canvas;
        this.gamuts = gamuts;
        const attributes = { antialias: true, alpha: true, stencil: true, premultipliedAlpha: true,
                             preserveDrawingBuffer: true };
        const context = canvas.getContext("webgl2", attributes) || canvas.getContext("webgl", attributes);
        if (!context)
            throw new Error("no WebGL");
        this.renderer = new THREE.WebGLRenderer({ canvas, context });
        this.renderer.setClearColor(0x000000, 0); // the ground is that of the page
        viewportUniform.value = new THREE.Vector2(1, 1);

        const box = boxOf(gamuts);
        this.camera = new Camera(box, () => this.request());
        this.bodies = new Bodies(gamuts);
        this.section = new Section(gamuts);
        this.axes = new Axes(gamuts, box, this.camera, byId("labels"));
        this.three = new THREE.Scene();
        for (const part of [this.bodies, this.section, this.axes])
            this.three.add(...part.meshes);
        this.updateTheme();
        new ResizeObserver(() => this.resize()).observe(byId("view"));
        this.resize();
    }

    resize() {
        const { clientWidth, clientHeight } = byId("view");
        const ratio = window.devicePixelRatio || 1;
        this.renderer.setPixelRatio(ratio);
        this.renderer.setSize(clientWidth, clientHeight, false);
        viewportUniform.value.set(clientWidth * ratio, clientHeight * ratio);
        for (const lines of [...this.axes.parts, ...this.section.lines])
            lines.setPixelRatio(ratio);
        this.camera.resize(Math.max(1, clientWidth), Math.max(1, clientHeight));
        this.draw(); // before the browser shows the resized canvas, which is empty
    }

    /** Draws before the next frame of the browser. */
    request() {
        if (this.pending)
            return;
        this.pending = true;
        requestAnimationFrame(() => this.draw());
    }

    draw() {
        this.pending = false;
        this.bodies.sort(this.camera.axes().eye.multiplyScalar(-1));
        this.axes.place();
        this.renderer.render(this.three, this.camera.three());
    }

    updateBodies() {
        this.bodies.update();
        this.axes.update();
        this.updateSection();
    }

    updateSection() {
        this.section.update();
        this.bodies.uniforms.cutAt.value = this.section.cutAt;
        this.request();
    }

    updateTheme() {
        for (const key of document.querySelectorAll(".key")) {
            const gamut = this.gamuts.find(({ name }) => name === key.dataset.gamut);
            key.style.backgroundColor = cssColour(keyColour(gamut));
        }
        this.updateBodies();
    }

    setShading(shaded) {
        this.bodies.uniforms.ambient.value = shaded ? shadedAmbient : 1;
        this.request();
    }

    setAxes(shown) {
        this.axes.shown = shown;
        this.axes.update();
        this.request();
    }

    resetCamera() {
        this.camera.reset();
        this.request();
        announce(`View: Oblique`);
    }

    cameraText() {
        const { yaw, pitch } = this.camera;
        return `Turned to ${Math.round(((yaw % 360) + 360) % 360)} degrees, ${Math.round(Math.abs(pitch))} degrees from ` +
            (pitch < 0 ? "below" : "above");
    }
}

const page = (() => {
    const data = readData();
    showTexts(data);
    showTables(data);
    try {
        const scene = new Scene(byId("canvas"), data.gamuts);
        connectPanel(byId("canvas"), scene);
        return {
            /** For scripts: where a Lab colour is on the canvas, in CSS pixels from its top left corner. */
            project: (lab) => scene.camera.project(new THREE.Vector3(...sceneOf(lab))).slice(0, 2),
            /** For scripts: yaw and pitch in degrees, and the zoom. */
            camera: () => ({ yaw: scene.camera.yaw, pitch: scene.camera.pitch, zoom: scene.camera.zoom }),
        };
    } catch (error) {
        byId("no-drawing").textContent = "This browser cannot draw the 3D view (it needs WebGL). The numbers below are complete.";
        byId("no-drawing").hidden = false;
        byId("canvas").hidden = true;
        byId("panel").hidden = true;
        console.warn(`The 3D view cannot be drawn: ${error.message}`);
        return {};
    }
})();
