#include "tests/query/RandomQuery.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "engine/query/VExprAggregate.h"
#include "engine/query/VExprAndOr.h"
#include "engine/query/VExprCompare.h"
#include "engine/query/VExprCompareLike.h"
#include "engine/query/VExprConstant.h"
#include "engine/query/VExprField.h"
#include "engine/query/VExprMath.h"
#include "engine/query/VExprNot.h"
#include "engine/query/VExprScalarFunc.h"

namespace vela::test {

namespace {

constexpr VelaDataType kTypes[] = {kTypeInteger, kTypeString,    kTypeDouble,  kTypeDate,
                                   kTypeTime,    kTypeTimestamp, kTypeBoolean, kTypeBinary};
constexpr int32_t kIntegers[] = {0, 1, 1, 2, 2, 3, 5, -1, 20200101, INT32_MIN, INT32_MAX};
const double kDoubles[] = {0.0, -0.0, 1.0, 2.0, 2.5, -1.0, 2147483648.0,
                           // These two have no neighbours.
                           std::numeric_limits<double>::infinity(),
                           std::numeric_limits<double>::quiet_NaN()};
constexpr const char* kStrings[] = {
    "", "0", "1", "2", "01", "2.5", "a", "ab", "b", "B", "a", "TRUE", "false", "NULL", "nan",
    // Display forms of dates, and what is nearly one.
    "DATE 2020-01-01", "date 1999-12-31", "2020-01-01", "TIME 08:00:00", "DATE ",
    // They differ past the first machine word.
    "abcdefgh1", "abcdefgh2"};
constexpr const char* kDates[] = {"2020-01-01", "1999-12-31", "2020-01-02"};
constexpr const char* kTimes[] = {"08:00:00", "23:59:59"};
constexpr const char* kTimestamps[] = {"2020-01-01 08:00:00", "1999-12-31 23:59:59"};
constexpr const char* kPatterns[] = {"%", "a%",     "%b",        "_",    "%0%", "a",
                                     "",  "2020-%", "abcdefgh_", "%ab%", "%21%"};

template <class T, size_t n>
const T& Among(RandomQuery* random, const T (&items)[n])
{
    return items[random->Pick(n)];
}

VelaExprPtr Compare(VelaExprPtr left, uint16_t op, VelaExprPtr right)
{
    return std::make_unique<VExprCompare>(std::move(left), op, std::move(right));
}

}   // namespace

void RandomQuery::MakeTables()
{
    const uint32_t count = Chance(2) ? 0 : 1 + Pick(3);
    for (size_t i = 0; i < 3; i++)
        mTypes[i] = Among(this, kTypes);
    const uint32_t rowCounts[] = {1, 40, 14, 7};
    for (uint32_t i = 0; i < count; i++) {
        auto table = std::make_unique<MemoryTable>("t");
        const uint32_t columns = 1 + Pick(3);
        for (uint32_t c = 0; c < columns; c++)
            table->AddColumn("c", AnyType());
        FillTable(table.get(), Pick(rowCounts[count]), Chance(65));
        if (Chance(65))
            table->OfferColumns();
        for (long c = 1; c <= static_cast<long>(columns); c++) {
            if (Chance(30))
                table->OfferIndex(c);
        }
        mTableList.push_back(table.get());
        mTables.push_back(std::move(table));
    }
    mUsesAggregates = Chance(5);
}

VelaDataType RandomQuery::AnyType()
{
    return Chance(80) ? mTypes[Pick(4)] : Among(this, kTypes);
}

VelaValue RandomQuery::ValueOf(VelaDataType type)
{
    switch (type) {
        case kTypeInteger:
            return I(Among(this, kIntegers));
        case kTypeDouble:
            return D(Among(this, kDoubles));
        case kTypeBoolean:
            return B(Chance(50));
        case kTypeDate:
            return VelaValue::Text(type, Among(this, kDates));
        case kTypeTime:
            return VelaValue::Text(type, Among(this, kTimes));
        case kTypeTimestamp:
            return VelaValue::Text(type, Among(this, kTimestamps));
        default:
            return VelaValue::Text(
                type, string(Among(this, kStrings), Chance(90) ? kEncodingUTF8 : kEncodingLatin1));
    }
}

Cell RandomQuery::AnyCell(VelaDataType type, bool clean)
{
    if (clean)
        return ValueOf(type);
    if (Chance(5))
        return std::nullopt;
    if (Chance(5))
        return ValueOf(Among(this, kTypes));
    return Chance(15) ? Null(type) : ValueOf(type);
}

void RandomQuery::FillTable(MemoryTable* table, uint32_t rowCount, bool clean)
{
    std::vector<uint32_t> rowIDs;
    for (uint32_t i = 0; i < rowCount + 5; i++)
        rowIDs.push_back(i);
    std::shuffle(rowIDs.begin(), rowIDs.end(), mRandom);
    for (uint32_t i = 0; i < rowCount; i++) {
        std::vector<Cell> cells;
        for (long c = 1; c < table->QtyColumns(); c++)
            cells.push_back(AnyCell(table->Column(c)->Type(), clean));
        table->Row(rowIDs[i], std::move(cells));
    }
}

VelaExprPtr RandomQuery::Field()
{
    if (mTables.empty())
        return Constant();
    const uint32_t table = Pick(static_cast<uint32_t>(mTables.size()));
    const auto columns = static_cast<uint32_t>(mTables[table]->QtyColumns());
    const uint32_t column = Chance(12) ? 0 : 1 + Pick(columns - 1);
    return std::make_unique<VExprField>(table, column);
}

VelaExprPtr RandomQuery::Constant()
{
    if (Chance(5))
        return std::make_unique<VExprConstant>(Null(Chance(50) ? kTypeNone : AnyType()));
    return std::make_unique<VExprConstant>(ValueOf(AnyType()));
}

// Mostly of the field's type.
VelaExprPtr RandomQuery::ConstantFor(const VelaExpr& field)
{
    const VelaDataType type = field.GetType(mTableList);
    if (type == kTypeNone || Chance(30))
        return Constant();
    return std::make_unique<VExprConstant>(ValueOf(type));
}

VelaExprPtr RandomQuery::Operand(int depth)
{
    const uint32_t kind = Pick(100);
    if (mUsesAggregates && Chance(20))
        return Aggregate();
    if (depth > 0 && kind < 12) {
        constexpr char kOps[] = {'+', '-', '*', '/'};
        VelaExprPtr left = Operand(depth - 1);
        return std::make_unique<VExprMath>(std::move(left), Among(this, kOps), Operand(depth - 1));
    }
    if (depth > 0 && kind < 20) {
        constexpr VelaFuncCode kFuncs[] = {kFuncCharLength, kFuncUppercase, kFuncTrim};
        return std::make_unique<VExprScalarFunc>(Among(this, kFuncs), Operand(depth - 1), nullptr,
                                                 nullptr);
    }
    if (depth > 0 && kind < 24)
        return Condition(depth - 1);
    return kind < 70 ? Field() : Constant();
}

VelaExprPtr RandomQuery::Aggregate()
{
    constexpr VelaFuncCode kFuncs[] = {kFuncAvg, kFuncCount, kFuncMax, kFuncMin, kFuncSum};
    if (Chance(20))
        return std::make_unique<VExprAggregate>(kFuncCount, nullptr, false);
    VelaExprPtr operand = Chance(75) ? Field() : Operand(1);
    return std::make_unique<VExprAggregate>(Among(this, kFuncs), std::move(operand), Chance(25));
}

uint16_t RandomQuery::AnyOp()
{
    constexpr uint16_t kOps[] = {kOpEqual, kOpEqual,     kOpEqual,        kOpNotEqual,
                                 kOpLess,  kOpLessEqual, kOpGreaterEqual, kOpGreater};
    return Among(this, kOps);
}

VelaExprPtr RandomQuery::Term()
{
    const uint32_t kind = Pick(100);
    if (kind < 35) {
        VelaExprPtr left = Chance(90) ? Field() : Operand(1);
        return Compare(std::move(left), Chance(80) ? kOpEqual : AnyOp(), Field());
    }
    if (kind < 70)
        return FieldAndConstant();
    return kind < 80 ? Like() : Condition(2);
}

VelaExprPtr RandomQuery::FieldAndConstant()
{
    VelaExprPtr field = Field();
    VelaExprPtr constant = ConstantFor(*field);
    if (Chance(25))
        return Compare(std::move(constant), AnyOp(), std::move(field));
    return Compare(std::move(field), AnyOp(), std::move(constant));
}

VelaExprPtr RandomQuery::Like()
{
    VelaExprPtr pattern =
        std::make_unique<VExprConstant>(VelaValue::String(Among(this, kPatterns)));
    if (Chance(10))
        pattern = Field();
    VelaExprPtr escape;
    if (Chance(20))
        escape = std::make_unique<VExprConstant>(VelaValue::String(Chance(80) ? "a" : "ab"));
    return std::make_unique<VExprCompareLike>(Field(), std::move(pattern), std::move(escape));
}

VelaExprPtr RandomQuery::Condition(int depth)
{
    const uint32_t kind = Pick(100);
    if (depth > 0 && kind < 30)
        return Terms(kind < 12, depth - 1);
    if (depth > 0 && kind < 45)
        return std::make_unique<VExprNot>(Condition(depth - 1));
    if (kind < 55)
        return Operand(depth);
    if (kind < 65)
        return Like();
    VelaExprPtr left = Operand(depth);
    return Compare(std::move(left), AnyOp(), Operand(depth));
}

VelaExprPtr RandomQuery::Terms(bool conjunction, int depth)
{
    SimpleVector<VelaExprPtr> terms;
    const uint32_t count = Chance(5) ? 0 : 1 + Pick(3);
    for (uint32_t i = 0; i < count; i++)
        terms.push_back(Condition(depth));
    if (conjunction)
        return std::make_unique<VExprAnd>(std::move(terms));
    return std::make_unique<VExprOr>(std::move(terms));
}

VelaExprPtr RandomQuery::Where()
{
    const uint32_t kind = Pick(100);
    if (kind < 12)
        return nullptr;
    if (kind < 30)
        return Term();
    if (kind < 40)
        return Condition(3);
    SimpleVector<VelaExprPtr> terms;
    const uint32_t count = 1 + Pick(4);
    for (uint32_t i = 0; i < count; i++)
        terms.push_back(Chance(5) ? Terms(true, 1) : Term());
    return std::make_unique<VExprAnd>(std::move(terms));
}

VelaExprPtr RandomQuery::Having()
{
    if (Chance(60))
        return nullptr;
    VelaExprPtr aggregate = Aggregate();
    return Compare(std::move(aggregate), AnyOp(), Constant());
}

VelaExprPtr RandomQuery::Output(bool aggregate)
{
    if (aggregate && Chance(70))
        return Aggregate();
    return Chance(80) ? Field() : Operand(2);
}

void RandomQuery::AddOutput(VelaExprPtr output, QueryPair* pair)
{
    pair->reference.outputs.push_back(output.get());
    pair->query.AddOutput(std::move(output));
}

void RandomQuery::AddGroupBy(VelaExprPtr column, QueryPair* pair)
{
    pair->reference.groupBy.push_back(column.get());
    pair->query.AddGroupBy(std::move(column));
}

void RandomQuery::AddSortKeys(QueryPair* pair)
{
    const uint32_t keys = 1 + Pick(2);
    for (uint32_t i = 0; i < keys; i++) {
        const auto outputs = static_cast<uint32_t>(pair->reference.outputs.size());
        const auto column = static_cast<long>(Pick(outputs));
        const long direction = Chance(50) ? 1 : -1;
        pair->reference.sortColumns.push_back(column);
        pair->reference.sortDirections.push_back(direction);
        pair->query.AddSortKey(column, direction);
    }
}

}   // namespace vela::test
