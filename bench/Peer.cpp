#include "bench/Peer.h"

#include <cstdio>
#include <cstdlib>

namespace vela::bench {

void Die(const std::string& message)
{
    std::fprintf(stderr, "bench: %s\n", message.c_str());
    std::exit(2);
}

}   // namespace vela::bench
