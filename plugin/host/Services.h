#pragma once

#include <string>
#include <vector>

#include "plugin/MOXAPlugin.h"

namespace vela::host {

class Host;

// The resolver that the plug-in is given. It offers the services of Host::Current(), but for those
// that are withheld, and complains about names it doesn't know and about a found service that is
// asked for again.
[[nodiscard]] MOXAresolver ServiceResolver();

// All services by name, in the order of MOXAPlugin.h.
[[nodiscard]] std::vector<std::string> ServiceNames();

// Compares what the plug-in has registered with what the offered services allow: everything that
// can work, and nothing else. Complains about each difference.
void CheckRegistrations(Host& host);

}   // namespace vela::host
