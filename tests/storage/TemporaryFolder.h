#pragma once

#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "runtime/FileLocator.h"

namespace vela {

// The bytes of a file, read by other means than the engine's.
inline std::string FileContent(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
}

// A new, empty folder that goes with everything in it when this object does.
class TemporaryFolder {
public:
    TemporaryFolder()
    {
        std::string pattern =
            (std::filesystem::temp_directory_path() / "vela_test_XXXXXX").string();
        const char* made = mkdtemp(pattern.data());
        mPath = made ? made : "";
    }
    ~TemporaryFolder()
    {
        std::error_code ignored;
        std::filesystem::remove_all(mPath, ignored);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const std::string& Path() const { return mPath; }
    FileLocator Locator() const { return FileLocator(mPath.c_str()); }
    std::string File(const std::string& name) const { return mPath + "/" + name; }

    std::string Read(const std::string& name) const { return FileContent(File(name)); }
    void Write(const std::string& name, const std::string& bytes) const
    {
        std::ofstream(File(name), std::ios::binary | std::ios::trunc) << bytes;
    }

private:
    std::string mPath;
};

}   // namespace vela
