#include "engine/rescue/DatabaseFault.h"

namespace vela {

const char* FaultWord(FaultKind kind)
{
    switch (kind) {
        case FaultKind::kTag:
            return "tag";
        case FaultKind::kLength:
            return "length";
        case FaultKind::kBody:
            return "body";
        case FaultKind::kTypeCode:
            return "type-code";
        case FaultKind::kPayload:
            return "payload";
        case FaultKind::kEncoding:
            return "encoding";
        case FaultKind::kColumnID:
            return "column-id";
        case FaultKind::kRowID:
            return "row-id";
        case FaultKind::kDuplicateRow:
            return "duplicate-row";
        case FaultKind::kMetadata:
            return "metadata";
        case FaultKind::kCounter:
            return "counter";
        case FaultKind::kMapState:
            return "map-state";
        case FaultKind::kMapCount:
            return "map-count";
        case FaultKind::kMapPair:
            return "map-pair";
        case FaultKind::kMapRow:
            return "map-row";
        case FaultKind::kIndex:
            return "index";
        case FaultKind::kIndexEntry:
            return "index-entry";
        case FaultKind::kIndexValue:
            return "index-value";
        case FaultKind::kIndexRow:
            return "index-row";
        case FaultKind::kSchemaRow:
            return "schema-row";
        case FaultKind::kSchemaSelf:
            return "schema-self";
        case FaultKind::kMissingFile:
            return "missing-file";
        case FaultKind::kOrphanFile:
            return "orphan-file";
        case FaultKind::kCommitLog:
            return "commit-log";
        case FaultKind::kUnreadable:
            return "unreadable";
    }
    return "";
}

}   // namespace vela
