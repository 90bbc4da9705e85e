#pragma once

#include <functional>
#include <string>

#include "engine/storage/RandomAccessMechanism.h"

namespace vela {

// Runs count random operations (reads, writes, seeks, changes of length; small and large, near and
// far) on an empty stream and on a plain std::string, and fails the test at the first answer that
// differs. model receives the final content. now and then calls extra, when given; it may do
// whatever leaves content and position alone.
void CompareWithString(RandomAccessMechanism& stream, unsigned seed, int count, std::string* model,
                       const std::function<void(unsigned)>& extra = nullptr);

// Bytes that differ from their neighbours and repeat late, so that a shifted copy shows.
std::string PatternBytes(size_t count, unsigned seed = 1);

}   // namespace vela
