#pragma once

#include <cstdint>

namespace vela {

// The word after a DROP. It makes no difference; the canonical text repeats what was written.
enum class SQLDropBehavior : uint8_t { kNotWritten, kRestrict, kCascade };

// " RESTRICT", " CASCADE" or nothing.
[[nodiscard]] constexpr const char* DropBehaviorText(SQLDropBehavior behavior)
{
    switch (behavior) {
        case SQLDropBehavior::kRestrict:
            return " RESTRICT";
        case SQLDropBehavior::kCascade:
            return " CASCADE";
        case SQLDropBehavior::kNotWritten:
            break;
    }
    return "";
}

}   // namespace vela
