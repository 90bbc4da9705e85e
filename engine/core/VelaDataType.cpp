#include "engine/core/VelaDataType.h"

namespace vela {

const char* DataTypeName(VelaDataType type)
{
    switch (type) {
        case kTypeNone:
            return "None";
        case kTypeInteger:
            return "Integer";
        case kTypeString:
            return "String";
        case kTypeDouble:
            return "Double";
        case kTypeDate:
            return "Date";
        case kTypeTime:
            return "Time";
        case kTypeTimestamp:
            return "Timestamp";
        case kTypeBoolean:
            return "Boolean";
        case kTypeBinary:
            return "Binary";
    }
    return nullptr;
}

}   // namespace vela
