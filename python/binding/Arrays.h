// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/KVVelmoraFramework.h>

#include <pybind11/numpy.h>

#include <cstddef>
#include <memory>
#include <utility>
#include <vector>

/// NumPy arrays. All functions need the GIL.
namespace Arrays {

/// What kvgamut/_arrays.py has made of an argument: contiguous, in single precision.
using Points = pybind11::array_t<float, pybind11::array::c_style>;
using Indices = pybind11::array_t<int, pybind11::array::c_style>;

/// A copy of an array of n x 3 Lab values.
/// Throws std::invalid_argument for another shape, NaN and infinite values; the sentence begins with @p what.
std::vector<KVGamut::LabPoint> labOf(const Points& array, const char* what);

/// A read-only array of @p shape that shows the memory at @p data. @p owner keeps the memory.
template <typename T>
pybind11::array view(const T* data, const std::vector<pybind11::ssize_t>& shape,
                     std::shared_ptr<const void> owner)
{
    namespace py = pybind11;
    const py::capsule base(new std::shared_ptr<const void>(std::move(owner)),
                           [](void* p) { delete static_cast<std::shared_ptr<const void>*>(p); });
    py::array_t<T> array(shape, data, base);
    array.attr("setflags")(py::arg("write") = false);
    return array;
}

/// An array of @p shape that owns @p values.
template <typename T>
pybind11::array moved(std::vector<T> values, const std::vector<pybind11::ssize_t>& shape)
{
    namespace py = pybind11;
    auto owned = std::make_unique<std::vector<T>>(std::move(values));
    const T* const data = owned->data();
    const py::capsule base(owned.get(), [](void* p) { delete static_cast<std::vector<T>*>(p); });
    static_cast<void>(owned.release());
    return py::array_t<T>(shape, data, base);
}

} // namespace Arrays
