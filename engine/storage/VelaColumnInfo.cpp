#include "engine/storage/VelaColumnInfo.h"

namespace vela {

const VelaColumnInfo& RowIDColumn()
{
    static const VelaColumnInfo kRowIDColumn{"_rowid", VelaValue::Null(kTypeInteger), 0};
    return kRowIDColumn;
}

}   // namespace vela
