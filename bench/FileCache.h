#pragma once

#include <string>

namespace vela::bench {

// Takes the contents of a folder's files out of the operating system's memory, so that the next
// read goes to the device. Names and sizes stay known. No file may be open or mapped.
void DropFromCache(const std::string& folder);

}   // namespace vela::bench
