// SPDX-License-Identifier: Apache-2.0

// The controls beside the view, and the keys and pointers on it.

const turnStep = 5;
const moveStep = 20;
const zoomStep = 1.15;
const announceDelayMs = 400;

function byId(id) {
    return document.getElementById(id);
}

/** Says a text to a screen reader. Of texts in quick succession only the last is said. */
const announce = (() => {
    let timer = 0;
    return (text) => {
        clearTimeout(timer);
        timer = setTimeout(() => { byId("status").textContent = text; }, announceDelayMs);
    };
})();

/** A row of the legend: key colour, whether the gamut is visible, its name, volume and opacity. */
function legendRow(gamut, i, scene) {
    const shown = element("input", { type: "checkbox", checked: gamut.visible, id: `shown-${i}` });
    const label = element("label", { htmlFor: shown.id, className: "check" }, keyElement(gamut), " ", nameElement(gamut));
    const opacity = element("input", { type: "range", min: 0, max: 100, step: 5, value: Math.round(100 * gamut.opacity),
                                       id: `opacity-${i}`, "aria-label": `Opacity of ${gamut.name}` });
    const value = element("output", { textContent: `${opacity.value} %` });
    value.htmlFor = opacity.id;
    shown.addEventListener("change", () => {
        gamut.visible = shown.checked;
        scene.updateBodies();
        announce(`${gamut.name} is ${shown.checked ? "shown" : "hidden"}`);
    });
    opacity.addEventListener("input", () => {
        gamut.opacity = opacity.value / 100;
        value.textContent = `${opacity.value} %`;
        opacity.setAttribute("aria-valuetext", value.textContent);
        scene.updateBodies();
    });
    return element("li", {},
        element("div", { className: "check" }, shown, label),
        element("p", { className: "note", textContent: `${volumeText(gamut)} ΔE³, ${gamut.intent}` }),
        element("div", { className: "slider" }, element("span", { textContent: "Opacity", "aria-hidden": "true" }),
                opacity, value));
}

function connectSection(scene) {
    const { section } = scene;
    const shown = byId("section-shown");
    const lightness = byId("section-lightness");
    const show = () => {
        byId("section-value").textContent = `L* ${lightness.value}`;
        lightness.setAttribute("aria-valuetext", `L* ${lightness.value}`);
        section.lightness = Number(lightness.value);
        section.shown = shown.checked;
        section.cut = byId("section-cut").checked;
        scene.updateSection();
    };
    lightness.addEventListener("input", () => {
        shown.checked = true;
        show();
        announce(`Section at L* ${lightness.value}`);
    });
    shown.addEventListener("change", () => {
        show();
        announce(shown.checked ? `Section at L* ${lightness.value}` : "No section");
    });
    byId("section-cut").addEventListener("change", show);
    show();
}

function connectView(scene) {
    const { camera } = scene;
    for (const name of Object.keys(directions)) {
        const button = element("button", { type: "button", textContent: name });
        button.addEventListener("click", () => {
            camera.lookFrom(name);
            announce(`View: ${name}`);
        });
        byId("directions").append(button);
    }
    byId("turn-left").addEventListener("click", () => camera.turn(15, 0));
    byId("turn-right").addEventListener("click", () => camera.turn(-15, 0));
    byId("zoom-in").addEventListener("click", () => camera.zoomBy(zoomStep));
    byId("zoom-out").addEventListener("click", () => camera.zoomBy(1 / zoomStep));
    byId("reset").addEventListener("click", () => scene.resetCamera());
    byId("perspective").addEventListener("change", (event) => camera.setPerspective(event.target.checked));
    byId("shading").addEventListener("change", (event) => scene.setShading(event.target.checked));
    byId("axes").addEventListener("change", (event) => scene.setAxes(event.target.checked));
    byId("theme").addEventListener("change", (event) => {
        document.documentElement.dataset.theme = event.target.value;
        scene.updateTheme();
    });
    matchMedia("(prefers-color-scheme: dark)").addEventListener("change", () => scene.updateTheme());
}

/** The keys of the 3D view. */
function connectKeys(canvas, scene) {
    const { camera } = scene;
    const arrows = { ArrowLeft: [1, 0], ArrowRight: [-1, 0], ArrowUp: [0, 1], ArrowDown: [0, -1] };
    canvas.addEventListener("keydown", (event) => {
        if (event.ctrlKey || event.altKey || event.metaKey)
            return;
        if (event.key in arrows) {
            const [x, y] = arrows[event.key];
            if (event.shiftKey)
                camera.move(-moveStep * x, -moveStep * y);
            else
                camera.turn(turnStep * x, turnStep * y);
            announce(scene.cameraText());
        } else if (event.key === "+" || event.key === "=") {
            camera.zoomBy(zoomStep);
        } else if (event.key === "-") {
            camera.zoomBy(1 / zoomStep);
        } else if (event.key === "Home") {
            scene.resetCamera();
        } else {
            return;
        }
        event.preventDefault();
    });
}

/** Mouse, pen and touch: one pointer turns, or moves with Shift or another button; two zoom and move. */
function connectPointers(canvas, camera) {
    const pointers = new Map();
    const middle = () => {
        const all = [...pointers.values()];
        return [all.reduce((sum, p) => sum + p[0], 0) / all.length, all.reduce((sum, p) => sum + p[1], 0) / all.length];
    };
    const spread = () => {
        const [one, other] = [...pointers.values()];
        return other ? Math.max(1, Math.hypot(one[0] - other[0], one[1] - other[1])) : 0;
    };
    canvas.addEventListener("pointerdown", (event) => {
        pointers.set(event.pointerId, [event.clientX, event.clientY]);
        canvas.setPointerCapture(event.pointerId);
    });
    canvas.addEventListener("pointermove", (event) => {
        if (!pointers.has(event.pointerId))
            return;
        const [from, width] = [middle(), spread()];
        pointers.set(event.pointerId, [event.clientX, event.clientY]);
        const by = middle().map((v, k) => v - from[k]);
        if (pointers.size > 1) {
            camera.zoomBy(spread() / width);
            camera.move(...by);
        } else if (event.shiftKey || event.buttons > 1) {
            camera.move(...by);
        } else {
            camera.turn(-0.4 * by[0], 0.4 * by[1]);
        }
    });
    for (const name of ["pointerup", "pointercancel"])
        canvas.addEventListener(name, (event) => pointers.delete(event.pointerId));
    canvas.addEventListener("contextmenu", (event) => event.preventDefault());
    canvas.addEventListener("wheel", (event) => {
        event.preventDefault();
        camera.zoomBy(Math.pow(zoomStep, -Math.sign(event.deltaY)));
    }, { passive: false });
}

function connectPanel(canvas, scene) {
    scene.gamuts.forEach((gamut, i) => byId("legend").append(legendRow(gamut, i, scene)));
    connectSection(scene);
    connectView(scene);
    connectKeys(canvas, scene);
    connectPointers(canvas, scene.camera);
    byId("panel").addEventListener("submit", (event) => event.preventDefault());
}
