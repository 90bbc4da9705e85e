#pragma once

#include <string_view>

namespace vela {

// The mark in front of exported schema data; what follows it are the bytes of the schema's record file.
constexpr std::string_view kSchemaDataMark = "SCHEMADA";

// Whether bytes are a whole record file (RecordFormat.h) that holds the seven rows with which _schema describes itself.
[[nodiscard]] bool IsSchemaRecordFile(std::string_view bytes);

}   // namespace vela
