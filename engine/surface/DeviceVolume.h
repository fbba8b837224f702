// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "DeviceCells.h"

namespace velmora {

/// The volume of all colours of a device, and its uncertainty, measured relative to surfaces of the device.
class DeviceVolume
{
public:
    /// @param cells must outlive this object
    DeviceVolume(const DeviceTransform& transform, DeviceCells& cells, const Task& task);

    double value() const { return m_value; }             ///< dE76 cubed; 0 before it is known
    double uncertainty() const { return m_uncertainty; } ///< dE76 cubed
    /// Whether colours of the surface are inside the device hypercube, and not on its two-dimensional faces.
    bool hasInterior() const { return m_hasInterior; }

    void set(double value, double uncertainty);
    /// Takes the nodes of the device's table only.
    void followTable() { m_isExact = true; }

    /// Measures the volume of a device with any map.
    /// @param surface see coveredVolume()
    /// @param ofLines relative error of what lies between the lines of the measurement
    /// @return fails as coveredVolume(), or with TooSmall
    [[nodiscard]] Result<void> measure(const Mesh& surface, double ofLines, const Task& task);
    /// Measures the volume of inks. If the hull of the two-dimensional faces contains all colours, and a
    /// quick look at all cells finds the same volume, it is that of the hull.
    /// @param ofHull uncertainty of the hull's volume
    [[nodiscard]] Result<void> measureInks(const Mesh& hull, double ofHull, const Task& task);
    /// Measures again, relative to a better surface. Does nothing if the volume was not measured.
    [[nodiscard]] Result<void> measureAgain(const Mesh& surface, const Task& task);

private:
    using Grid = DeviceCells::Grid;

    Result<void> measureSmoothInks(const Mesh& hull, double look, const Task& task);
    Result<void> measureTable(const Mesh& surface, double ofLines, const Task& task);
    Result<void> takeCoarse(double volume, const Mesh& surface);
    Result<void> take(Grid grid, double volume, double uncertainty);

    const DeviceTransform& m_transform;
    DeviceCells& m_cells;
    const Task m_task;
    double m_value = 0.0;
    double m_uncertainty = 0.0;
    bool m_isExact = false;
    bool m_hasInterior = false;
    Grid m_measuredWith = Grid::Look;
    double m_measured = 0.0; // volume of the cells of that grid; 0 if not measured
};

} // namespace velmora
