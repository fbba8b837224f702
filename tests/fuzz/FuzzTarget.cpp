// SPDX-License-Identifier: Apache-2.0
// What libFuzzer calls in every fuzzer of a reader.

#include "Budget.h"
#include "FuzzedReader.h"
#include "HeapLimit.h"

#include <QtCore/QByteArray>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>

#include <cstdint>
#include <cstdlib>

namespace {

std::ptrdiff_t highestPeak = 0, highestTotal = 0, sizeOfPeak = 0, sizeOfTotal = 0;

void printHighest()
{
    std::fprintf(stderr, "most heap: %td bytes at a time (input of %td), %td in total (input of %td)\n",
                 highestPeak, sizeOfPeak, highestTotal, sizeOfTotal);
}

void silent(QtMsgType, const QMessageLogContext&, const QString&) {}

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char*** arguments)
{
    const QFileInfo plugins(
        QFileInfo(QFile::decodeName((*arguments)[0])).dir().filePath(QStringLiteral("plugins")));
    if (plugins.exists()) // on a machine without Qt
        qputenv("QT_PLUGIN_PATH", QFile::encodeName(plugins.absoluteFilePath()));
    qInstallMessageHandler(silent); // Qt's picture decoders report damage to standard error
    std::atexit(printHighest);
    return 0;
}

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size, std::size_t maxSize,
                                               unsigned seed)
{
    return kvfuzz::fuzzedReader.mutate(data, size, maxSize, seed);
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const auto length = static_cast<std::ptrdiff_t>(size);
    const auto budget = kvfuzz::Budget::of(kvfuzz::fuzzedReader.name, size);
    const kvfuzz::HeapLimit limit(budget.atATime, budget.total);
    kvfuzz::fuzzedReader.read(QByteArray(reinterpret_cast<const char*>(data), length));
    if (limit.peak() > highestPeak) {
        highestPeak = limit.peak();
        sizeOfPeak = length;
    }
    if (limit.total() > highestTotal) {
        highestTotal = limit.total();
        sizeOfTotal = length;
    }
    return 0;
}
