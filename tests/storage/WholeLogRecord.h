#pragma once

#include <string>
#include <string_view>

#include "engine/storage/Checksum.h"
#include "engine/storage/CommitLogFormat.h"

namespace vela {

// The bytes of a record of the log with this payload; the header's size and checksum are worked out here.
inline std::string WholeLogRecord(LogHeader header, std::string_view payload)
{
    header.payloadSize = payload.size();
    header.checksum = 0;
    header.checksum =
        Checksum(LogHeaderChecksum(EncodeLogHeader(header).data()), payload.data(), payload.size());
    return EncodeLogHeader(header).append(payload);
}

}   // namespace vela
