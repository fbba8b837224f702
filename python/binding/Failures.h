// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "model/problems/Problem.h"

#include <pybind11/pybind11.h>

#include <exception>

/// Failures of the program's model as Python exceptions.
namespace Failures {

/// A problem on its way from a thread without the GIL to the caller.
class Failed : public std::exception
{
public:
    explicit Failed(const Problem& problem) : m_problem(problem) {}
    const Problem& problem() const { return m_problem; }
    const char* what() const noexcept override { return "a problem of the program"; }

private:
    Problem m_problem;
};

/// Sets the Python exception for @p problem: ProfileError of an input, OSError of an output, MemoryError.
/// Needs the GIL.
void setError(const Problem& problem);

/// Translates Failed wherever it leaves a function of @p module.
void addTo(pybind11::module_& module);

} // namespace Failures
