// SPDX-License-Identifier: Apache-2.0
import QtQuick
import KV3DViewer.Quick

KVGamutQuickView {
    id: view
    width: 640; height: 480
    cameraPosition: Qt.vector3d(265, 160, -450)
    interestPoint: Qt.vector3d(40, 0, 0)
    Component.onCompleted: profiles.forEach((url, i) => { setLook(url, {opacity: i === 0 ? 1 : 0.4}); load(url, url) })

    ListView {
        anchors { fill: parent; margins: 12 }
        interactive: false
        model: view.gamuts
        delegate: Text { text: model.gamutId.split("/").pop() + ": " + Math.round(model.volume) + " dE76³" }
    }
}
