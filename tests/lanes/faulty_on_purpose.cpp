// SPDX-License-Identifier: Apache-2.0
#include <cstdio>
#include <cstring>
#include <limits>
#include <vector>

// Three deliberate faults that the sanitizers must report.

namespace {

[[gnu::noinline]] void leak(int size)
{
    int* volatile lost = new int[static_cast<std::size_t>(size)];
    lost[0] = size;
    lost = nullptr;
}

[[gnu::noinline]] int overrun(const std::vector<int>& list)
{
    const int* volatile data = list.data();
    return data[list.size()];
}

[[gnu::noinline]] int overflow(int value)
{
    return value + 1;
}

} // namespace

int main(int argc, char** argv)
{
    const char* fault = argc > 1 ? argv[1] : "";
    int result = 0;
    if (std::strcmp(fault, "leak") == 0)
        leak(argc * 100);
    if (std::strcmp(fault, "overrun") == 0)
        result = overrun({1, 2, 3});
    if (std::strcmp(fault, "overflow") == 0)
        result = overflow(std::numeric_limits<int>::max() - 2 + argc);
    std::printf("%d\n", result);
}
