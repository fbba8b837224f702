// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtGui/QVector3D>

#include <algorithm>

/// The view that every picture and window starts from: from the front, where a* runs to the right, a
/// little from the side and from above, so that all three axes are told apart.
struct ObliqueView
{
    QVector3D eye{265.0f, 160.0f, -450.0f};
    QVector3D lookAt{40.0f, 0.0f, 0.0f};

    /// For a picture of this width over height: a narrow one is taken from farther away, so that the
    /// grid stays in it.
    static ObliqueView inAspect(float aspect)
    {
        constexpr float fullAspect = 1.25f;
        ObliqueView view;
        view.eye = view.lookAt + (view.eye - view.lookAt) * std::max(1.0f, fullAspect / aspect);
        return view;
    }
};
