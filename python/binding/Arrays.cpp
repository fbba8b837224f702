// SPDX-License-Identifier: Apache-2.0
#include "Arrays.h"

#include <cmath>
#include <stdexcept>
#include <string>

std::vector<KVGamut::LabPoint> Arrays::labOf(const Points& array, const char* what)
{
    if (array.ndim() != 2 || array.shape(1) != 3)
        throw std::invalid_argument(std::string(what) + " must have the shape (n, 3): L*, a*, b*");
    std::vector<KVGamut::LabPoint> lab(static_cast<std::size_t>(array.shape(0)));
    const float* value = array.data();
    for (std::size_t i = 0; i < lab.size(); ++i, value += 3) {
        if (!std::isfinite(value[0]) || !std::isfinite(value[1]) || !std::isfinite(value[2]))
            throw std::invalid_argument(std::string(what) + " have a NaN or infinite value in row " +
                                        std::to_string(i));
        lab[i] = {value[0], value[1], value[2]};
    }
    return lab;
}
