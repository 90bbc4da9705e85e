#include "tests/plugin/host/HostTesting.h"

#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>

namespace vela {

HostRun RunHost(const std::string& library, const std::string& program, const std::string& options)
{
    std::string folder = (std::filesystem::temp_directory_path() / "host-test-XXXXXX").string();
    EXPECT_NE(nullptr, mkdtemp(folder.data()));
    std::ofstream(folder + "/program", std::ios::binary) << program;
    const std::string command =
        "cd '" + folder + "' && '" MOXA_HOST "' " + options + " '" + library + "' program 2>&1";
    HostRun run;
    FILE* pipe = popen(command.c_str(), "r");
    char buffer[4096];
    for (size_t size = 1; pipe != nullptr && size > 0;) {
        size = fread(buffer, 1, sizeof buffer, pipe);
        run.output.append(buffer, size);
    }
    const int status = pipe == nullptr ? -1 : pclose(pipe);
    run.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    std::filesystem::remove_all(folder);
    return run;
}

}   // namespace vela
