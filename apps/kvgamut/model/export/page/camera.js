// SPDX-License-Identifier: Apache-2.0

// The camera turns around a point. Angles are in degrees: yaw 0 looks from -b*, pitch 90 from above.

const directions = {
    Oblique: [20, 25],
    Front: [0, 0],
    Back: [180, 0],
    Left: [-90, 0],
    Right: [90, 0],
    Top: [0, 90],
    Bottom: [0, -90],
};
const fieldOfView = 30;
const moveMs = 300;
const margin = { side: 84, top: 24, bottom: 68 }; // for labels, in CSS pixels

class Camera {
    /** @param box {low, high}: the corners of what is shown, in the scene */
    constructor(box, changed) {
        this.box = box;
        this.changed = changed;
        this.perspective = true;
        this.width = 1;
        this.height = 1;
        this.reset();
    }

    reset() {
        this.motion = null;
        [this.yaw, this.pitch] = directions.Oblique;
        this.frame();
    }

    resize(width, height) {
        this.width = width;
        this.height = height;
        this.frame();
    }

    /** Chooses the distance, and the point that is looked at, so that the box fits. */
    frame() {
        this.target = this.middle();
        this.zoom = 1;
        for (let round = 0; round < 3; ++round) {
            this.distance = this.fittingDistance();
            this.centre();
        }
    }

    fittingDistance() {
        let near = 1;
        let far = 20000;
        for (let i = 0; i < 40; ++i) {
            this.distance = 0.5 * (near + far);
            if (this.fits())
                far = this.distance;
            else
                near = this.distance;
        }
        return far;
    }

    /** The bounds of the box on the screen, in CSS pixels. */
    bounds() {
        const camera = this.three();
        const bounds = { left: Infinity, right: -Infinity, top: Infinity, bottom: -Infinity, isInFront: true };
        for (const corner of this.corners()) {
            const [x, y, depth] = this.project(corner, camera);
            bounds.left = Math.min(bounds.left, x);
            bounds.right = Math.max(bounds.right, x);
            bounds.top = Math.min(bounds.top, y);
            bounds.bottom = Math.max(bounds.bottom, y);
            bounds.isInFront = bounds.isInFront && depth > 0;
        }
        return bounds;
    }

    fits() {
        const bounds = this.bounds();
        return bounds.isInFront &&
            bounds.right - bounds.left <= Math.max(this.width - 2 * margin.side, 0.5 * this.width) &&
            bounds.bottom - bounds.top <= Math.max(this.height - margin.top - margin.bottom, 0.5 * this.height);
    }

    /** Moves the target so that the box is in the middle of the space that the margins leave. */
    centre() {
        const bounds = this.bounds();
        const middle = 0.5 * (margin.top + this.height - margin.bottom);
        this.moveTarget(0.5 * (bounds.left + bounds.right - this.width), 0.5 * (bounds.top + bounds.bottom) - middle);
    }

    moveTarget(x, y) {
        const scale = this.heightAtTarget() / this.height;
        const { right, up } = this.axes();
        this.target.addScaledVector(right, x * scale).addScaledVector(up, -y * scale);
    }

    corners() {
        const { low, high } = this.box;
        return [0, 1, 2, 3, 4, 5, 6, 7].map((i) => new THREE.Vector3(
            i & 1 ? high.x : low.x, i & 2 ? high.y : low.y, i & 4 ? high.z : low.z));
    }

    heightAtTarget() {
        return 2 * this.distance / this.zoom * Math.tan(0.5 * fieldOfView * Math.PI / 180);
    }

    /** Unit vectors to the right, up, and towards the eye. */
    axes() {
        const yaw = this.yaw * Math.PI / 180;
        const pitch = this.pitch * Math.PI / 180;
        const eye = new THREE.Vector3(Math.sin(yaw) * Math.cos(pitch), Math.sin(pitch), Math.cos(yaw) * Math.cos(pitch));
        const right = new THREE.Vector3(Math.cos(yaw), 0, -Math.sin(yaw));
        return { right, up: eye.clone().cross(right), eye };
    }

    three() {
        const { right, up, eye } = this.axes();
        const aspect = this.width / this.height;
        const reach = this.box.low.distanceTo(this.box.high) + this.target.distanceTo(this.middle());
        const distance = this.perspective ? this.distance / this.zoom : 2 * reach;
        const height = this.heightAtTarget();
        const camera = this.perspective
            ? new THREE.PerspectiveCamera(fieldOfView, aspect, Math.max(0.02 * distance, distance - reach),
                                          distance + reach)
            : new THREE.OrthographicCamera(-0.5 * height * aspect, 0.5 * height * aspect, 0.5 * height, -0.5 * height,
                                           distance - reach, distance + reach);
        camera.position.copy(this.target).addScaledVector(eye, distance);
        camera.quaternion.setFromRotationMatrix(new THREE.Matrix4().makeBasis(right, up, eye));
        camera.updateMatrixWorld();
        camera.updateProjectionMatrix();
        return camera;
    }

    middle() {
        return this.box.low.clone().add(this.box.high).multiplyScalar(0.5);
    }

    /** The place of a point on the screen, in CSS pixels from the top left, and its depth: positive in front. */
    project(point, camera = this.three()) {
        const seen = point.clone().applyMatrix4(camera.matrixWorldInverse);
        const depth = -seen.z;
        seen.applyMatrix4(camera.projectionMatrix);
        return [0.5 * (seen.x + 1) * this.width, 0.5 * (1 - seen.y) * this.height, depth];
    }

    turn(yaw, pitch) {
        this.motion = null;
        this.yaw += yaw;
        this.pitch = Math.max(-90, Math.min(90, this.pitch + pitch));
        this.changed();
    }

    zoomBy(factor) {
        this.motion = null;
        this.zoom = Math.max(0.2, Math.min(20, this.zoom * factor));
        this.changed();
    }

    move(x, y) {
        this.motion = null;
        this.moveTarget(-x, -y);
        this.changed();
    }

    setPerspective(perspective) {
        this.perspective = perspective;
        this.frame();
        this.changed();
    }

    /** Looks from a named direction; moves there unless the reader wants no motion. */
    lookFrom(name) {
        const [yaw, pitch] = directions[name];
        const from = [this.yaw, this.pitch];
        const by = [(yaw - from[0] + 540) % 360 - 180, pitch - from[1]];
        const start = performance.now();
        const duration = matchMedia("(prefers-reduced-motion: reduce)").matches ? 0 : moveMs;
        const motion = {};
        this.motion = motion;
        const step = (now) => {
            if (this.motion !== motion)
                return;
            const share = duration > 0 ? Math.min(1, Math.max(0, (now - start) / duration)) : 1;
            const eased = share * share * (3 - 2 * share);
            this.yaw = share < 1 ? from[0] + eased * by[0] : yaw;
            this.pitch = share < 1 ? from[1] + eased * by[1] : pitch;
            this.frame();
            this.changed();
            if (share < 1)
                requestAnimationFrame(step);
        };
        step(start);
    }
}
