#include "engine/storage/BodyPatcher.h"

#include <algorithm>
#include <cstring>

#include "engine/core/VelaValue.h"
#include "engine/storage/RecordFormat.h"
#include "runtime/ByteOrder.h"

namespace vela {

namespace {

struct Column {
    uint32_t id;
    VelaDataType type;
};

// The columns that a body lists; false when it doesn't do that as EncodeRecordBody would. list receives the bytes.
bool ReadList(std::string_view body, std::vector<Column>* columns, std::string* list)
{
    uint32_t count = 0;
    const char* end = body.data() + body.size();
    const char* from = DecodeByteChunk(body.data(), end, &count);
    if (from == nullptr || count > static_cast<size_t>(end - from) / 2)
        return false;
    for (uint32_t i = 0; i < count; i++) {
        Column column{0, kTypeNone};
        from = DecodeByteChunk(from, end, &column.id);
        if (from == nullptr || from == end)
            return false;
        column.type = static_cast<VelaDataType>(*from++);
        columns->push_back(column);
    }
    list->assign(body.data(), from);
    size_t size = ByteChunkSize(count);
    for (const Column& column : *columns)
        size += ByteChunkSize(column.id) + 1;
    return size == list->size();   // there is one shortest way to write a number
}

bool IsFixed(VelaDataType type)
{
    return type == kTypeInteger || type == kTypeDouble || type == kTypeBoolean;
}

uint32_t FixedSize(VelaDataType type)
{
    return type == kTypeInteger ? 4 : (type == kTypeDouble ? 8 : 1);
}

bool ListsTwice(const std::vector<Column>& columns)
{
    for (size_t i = 0; i < columns.size(); i++)
        for (size_t k = 0; k < i; k++)
            if (columns[i].id == columns[k].id)
                return true;
    return false;
}

}   // namespace

bool BodyPatcher::FindDifferences(std::string_view base, std::string_view changes,
                                  std::vector<Difference>* differences, size_t* bodySize)
{
    if (!Knows(base, changes))
        Learn(base, changes);
    if (!mServes || changes.size() != mChangesSize)
        return false;
    differences->clear();
    size_t at = mBaseList.size();
    for (const Step& step : mSteps) {
        size_t size = step.size;
        if (size > base.size() - at)
            return false;
        const char* bytes = base.data() + at;
        if (step.kind == Step::kChanged) {
            const std::string_view newBytes =
                changes.substr(mChangesList.size() + step.newFrom, size);
            if (std::memcmp(bytes, newBytes.data(), size) != 0)
                differences->push_back({at, newBytes});
        } else if (step.kind == Step::kText) {
            const uint32_t space = LoadBigEndian32(bytes);
            if (space != LoadBigEndian32(bytes + 4) || space > base.size() - at - size)
                return false;
            size += space;
        } else if (step.kind == Step::kBoolean && static_cast<uint8_t>(*bytes) > 1) {
            return false;
        }
        at += size;
    }
    *bodySize = at;
    return true;
}

bool BodyPatcher::Knows(std::string_view base, std::string_view changes) const
{
    return !mBaseList.empty() && base.substr(0, mBaseList.size()) == mBaseList &&
           changes.substr(0, mChangesList.size()) == mChangesList;
}

void BodyPatcher::Learn(std::string_view base, std::string_view changes)
{
    mBaseList.clear();
    mServes = MakeSteps(base, changes);
}

bool BodyPatcher::MakeSteps(std::string_view base, std::string_view changes)
{
    std::vector<Column> columns;
    std::vector<Column> changed;
    mSteps.clear();
    std::string baseList;
    if (!ReadList(changes, &changed, &mChangesList) || !ReadList(base, &columns, &baseList))
        return false;
    mBaseList = std::move(baseList);
    if (ListsTwice(columns) || ListsTwice(changed))
        return false;
    size_t found = 0;
    for (const Column& column : columns) {
        uint32_t newFrom = 0;
        const auto change =
            std::find_if(changed.begin(), changed.end(), [&](const Column& candidate) {
                if (candidate.id != column.id)
                    newFrom += IsFixed(candidate.type) ? FixedSize(candidate.type) : 0;
                return candidate.id == column.id;
            });
        if (change != changed.end()) {
            if (change->type != column.type || !IsFixed(column.type))
                return false;
            found++;
            AddStep({Step::kChanged, FixedSize(column.type), newFrom});
        } else if (column.type == kTypeBoolean) {
            AddStep({Step::kBoolean, 1, 0});
        } else if (IsFixed(column.type)) {
            AddStep({Step::kKept, FixedSize(column.type), 0});
        } else if (IsTextBacked(column.type)) {
            AddStep({Step::kText, column.type == kTypeString ? 12u : 8u, 0});
        } else {
            return false;
        }
    }
    mChangesSize = mChangesList.size();
    for (const Column& column : changed)
        mChangesSize += IsFixed(column.type) ? FixedSize(column.type) : 0;
    return found == changed.size();
}

void BodyPatcher::AddStep(const Step& step)
{
    if (step.kind == Step::kKept && !mSteps.empty() && mSteps.back().kind == Step::kKept)
        mSteps.back().size += step.size;
    else
        mSteps.push_back(step);
}

}   // namespace vela
