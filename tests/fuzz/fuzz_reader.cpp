// SPDX-License-Identifier: Apache-2.0
// Fuzzes one reader of the program, FUZZ_READER in Readers.h, with the changes FUZZ_MUTATION of Mutations.h.
// CMakeLists.txt compiles this once for each reader.

#include "Budget.h"
#include "HeapLimit.h"
#include "Mutations.h"
#include "Readers.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>

#include <cstdint>
#include <cstdlib>

namespace {

#define KV_TEXT_OF(word) #word
#define KV_NAME_OF(macro) KV_TEXT_OF(macro)
constexpr const char* reader = KV_NAME_OF(FUZZ_READER);

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
    return kvfuzz::mutations::FUZZ_MUTATION(data, size, maxSize, seed);
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const auto length = static_cast<std::ptrdiff_t>(size);
    const auto budget = kvfuzz::Budget::of(reader, size);
    const kvfuzz::HeapLimit limit(budget.atATime, budget.total);
    kvfuzz::readers::FUZZ_READER(QByteArray(reinterpret_cast<const char*>(data), length));
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
