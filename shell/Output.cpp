#include "shell/Output.h"

#include <unistd.h>

#include <cerrno>

namespace vela::shell {

bool Output::Flush()
{
    PassOn();
    return mError == 0;
}

void Output::PassOn()
{
    if (mError == 0 && !mBuffer.empty())
        mError = Consume(mBuffer);
    mBuffer.clear();
}

int FileOutput::Consume(std::string_view text)
{
    while (!text.empty()) {
        const ssize_t written = write(mDescriptor, text.data(), text.size());
        if (written < 0 && errno != EINTR)
            return errno;
        if (written > 0)
            text.remove_prefix(static_cast<size_t>(written));
    }
    return 0;
}

}   // namespace vela::shell
