// SPDX-License-Identifier: Apache-2.0
// Selects what a fuzzer tests: FUZZ_READER of Readers.h, with the changes FUZZ_MUTATION of Mutations.h.
// CMakeLists.txt compiles this once for each reader.

#include "FuzzedReader.h"
#include "Mutations.h"

#define KV_TEXT_OF(word) #word
#define KV_NAME_OF(macro) KV_TEXT_OF(macro)

namespace kvfuzz {
namespace readers {

void FUZZ_READER(const QByteArray& bytes);

} // namespace readers

const FuzzedReader fuzzedReader = {KV_NAME_OF(FUZZ_READER), readers::FUZZ_READER, mutations::FUZZ_MUTATION};

} // namespace kvfuzz
