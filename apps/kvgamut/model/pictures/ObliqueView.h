// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtGui/QVector3D>

#include <algorithm>

/// The initial camera of pictures and windows: in front, where a* points to the right, and slightly from the
/// side and from above, so that all three axes are distinct.
struct ObliqueView
{
    QVector3D eye{265.0f, 160.0f, -450.0f};
    QVector3D lookAt{40.0f, 0.0f, 0.0f};

    /// For a picture with this ratio of width to height. A narrow one has a larger distance, so that the grid
    /// fits.
    static ObliqueView inAspect(float aspect)
    {
        constexpr float fullAspect = 1.25f;
        ObliqueView view;
        view.eye = view.lookAt + (view.eye - view.lookAt) * std::max(1.0f, fullAspect / aspect);
        return view;
    }
};
