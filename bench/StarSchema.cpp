#include "bench/StarSchema.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>

namespace vela::bench {

namespace {

using std::chrono::sys_days;
using std::chrono::year_month_day;

constexpr uint32_t kBatch = 4096;
constexpr uint32_t kRowsAtScale1 = 6000000;
constexpr uint32_t kCities = 250;
constexpr sys_days kFirstDay = std::chrono::year(1992) / 1 / 1;
constexpr int kDays = 7 * 365 + 2;
constexpr int kOrderDays = kDays - 151;   // so that what is ordered can still be delivered

const char* const kLineorderColumns =
    "lo_orderkey integer, lo_linenumber integer, lo_custkey integer, lo_partkey integer, "
    "lo_suppkey integer, lo_orderdate integer, lo_orderpriority varchar, lo_shippriority varchar, "
    "lo_quantity integer, lo_extendedprice integer, lo_ordtotalprice integer, "
    "lo_discount integer, lo_revenue integer, lo_supplycost integer, lo_tax integer, "
    "lo_commitdate integer, lo_shipmode varchar";
const char* const kCustomerColumns =
    "c_custkey integer, c_name varchar, c_address varchar, c_city varchar, c_nation varchar, "
    "c_region varchar, c_phone varchar, c_mktsegment varchar";
const char* const kSupplierColumns =
    "s_suppkey integer, s_name varchar, s_address varchar, s_city varchar, s_nation varchar, "
    "s_region varchar, s_phone varchar";
const char* const kPartColumns =
    "p_partkey integer, p_name varchar, p_mfgr varchar, p_category varchar, p_brand1 varchar, "
    "p_color varchar, p_type varchar, p_size integer, p_container varchar";
const char* const kDateColumns =
    "d_datekey integer, d_date varchar, d_dayofweek varchar, d_month varchar, d_year integer, "
    "d_yearmonthnum integer, d_yearmonth varchar, d_daynuminweek integer, "
    "d_daynuminmonth integer, d_daynuminyear integer, d_monthnuminyear integer, "
    "d_weeknuminyear integer, d_sellingseason varchar, d_lastdayinweekfl integer, "
    "d_lastdayinmonthfl integer, d_holidayfl integer, d_weekdayfl integer";

struct Nation {
    const char* name;
    const char* region;
};
const Nation kNations[25] = {
    {"ALGERIA", "AFRICA"},       {"ARGENTINA", "AMERICA"},  {"BRAZIL", "AMERICA"},
    {"CANADA", "AMERICA"},       {"EGYPT", "MIDDLE EAST"},  {"ETHIOPIA", "AFRICA"},
    {"FRANCE", "EUROPE"},        {"GERMANY", "EUROPE"},     {"INDIA", "ASIA"},
    {"INDONESIA", "ASIA"},       {"IRAN", "MIDDLE EAST"},   {"IRAQ", "MIDDLE EAST"},
    {"JAPAN", "ASIA"},           {"JORDAN", "MIDDLE EAST"}, {"KENYA", "AFRICA"},
    {"MOROCCO", "AFRICA"},       {"MOZAMBIQUE", "AFRICA"},  {"PERU", "AMERICA"},
    {"CHINA", "ASIA"},           {"ROMANIA", "EUROPE"},     {"SAUDI ARABIA", "MIDDLE EAST"},
    {"VIETNAM", "ASIA"},         {"RUSSIA", "EUROPE"},      {"UNITED KINGDOM", "EUROPE"},
    {"UNITED STATES", "AMERICA"}};

const char* const kPriorities[5] = {"1-URGENT", "2-HIGH", "3-MEDIUM", "4-NOT SPECI", "5-LOW"};
const char* const kShipModes[7] = {"REG AIR", "AIR", "RAIL", "SHIP", "TRUCK", "MAIL", "FOB"};
const char* const kSegments[5] = {"AUTOMOBILE", "BUILDING", "FURNITURE", "MACHINERY", "HOUSEHOLD"};
const char* const kColors[16] = {"almond", "azure",  "beige", "black", "blue",  "brown",
                                 "coral",  "cream",  "green", "ivory", "khaki", "lemon",
                                 "maroon", "orange", "plum",  "white"};
const char* const kTypes[6] = {"STANDARD TIN", "SMALL NICKEL",   "MEDIUM BRASS",
                               "LARGE STEEL",  "ECONOMY COPPER", "PROMO BRASS"};
const char* const kContainers[5] = {"SM CASE", "LG BOX", "MED BAG", "JUMBO JAR", "WRAP DRUM"};
const char* const kMonths[12] = {"January",   "February", "March",    "April",
                                 "May",       "June",     "July",     "August",
                                 "September", "October",  "November", "December"};
const char* const kWeekDays[7] = {"Sunday",   "Monday", "Tuesday", "Wednesday",
                                  "Thursday", "Friday", "Saturday"};

// Draws gives numbers that follow from a table and a row's number alone.
class Draws {
public:
    Draws(uint64_t table, uint64_t row) : mSeed((table << 56) + (row << 8)) {}
    // 0 .. count - 1.
    int32_t Below(uint64_t count) { return static_cast<int32_t>(Scatter(mSeed++) % count); }
    int32_t Between(int32_t low, int32_t high)
    {
        return low + Below(static_cast<uint64_t>(high - low) + 1);
    }
    template <size_t count>
    const char* OneOf(const char* const (&texts)[count])
    {
        return texts[Below(count)];
    }
    std::string Letters(int32_t shortest, int32_t longest)
    {
        std::string text(static_cast<size_t>(Between(shortest, longest)), ' ');
        for (char& letter : text)
            letter = static_cast<char>('a' + Below(26));
        return text;
    }

private:
    uint64_t mSeed;
};

enum : uint64_t { kCustomer = 1, kSupplier, kPart, kOrder };

template <class... Numbers>
std::string Format(const char* format, Numbers... numbers)
{
    char text[80];
    std::snprintf(text, sizeof text, format, numbers...);
    return text;
}

// ---- how many

uint32_t CustomerCount(uint32_t lineorders)
{
    return std::max(lineorders / 200, kCities);
}

uint32_t SupplierCount(uint32_t lineorders)
{
    return std::max(lineorders / 3000, 20u);
}

uint32_t PartCount(uint32_t lineorders)
{
    if (lineorders <= kRowsAtScale1)
        return std::max(lineorders / 30, 1000u);
    const double doublings = std::floor(std::log2(lineorders / double{kRowsAtScale1}));
    return static_cast<uint32_t>(200000 * (1 + doublings));
}

// ---- dimensions

// The city of the row of that number, 0 .. kCities - 1: in turn, neighbours far apart.
uint32_t CityOf(uint32_t row)
{
    return row * 109 % kCities;
}

// Address, city, nation, region and phone: what customers and suppliers have alike.
void AddPlace(uint32_t row, Draws& draws, Row* cells)
{
    const uint32_t city = CityOf(row);
    const Nation& nation = kNations[city / 10];
    cells->push_back(draws.Letters(10, 25));
    cells->push_back(Format("%-9.9s%u", nation.name, city % 10));
    cells->push_back(nation.name);
    cells->push_back(nation.region);
    cells->push_back(Format("%02u-%03d-%03d-%04d", 10 + city / 10, draws.Between(100, 999),
                            draws.Between(100, 999), draws.Between(1000, 9999)));
}

Row MakeCustomer(uint32_t row)
{
    Draws draws(kCustomer, row);
    Row cells = {static_cast<int32_t>(row) + 1, Format("Customer#%09u", row + 1)};
    AddPlace(row, draws, &cells);
    cells.push_back(draws.OneOf(kSegments));
    return cells;
}

Row MakeSupplier(uint32_t row)
{
    Draws draws(kSupplier, row);
    Row cells = {static_cast<int32_t>(row) + 1, Format("Supplier#%09u", row + 1)};
    AddPlace(row, draws, &cells);
    return cells;
}

int32_t PriceOf(int32_t partKey)
{
    return 90000 + partKey / 10 % 20001 + 100 * (partKey % 1000);
}

Row MakePart(uint32_t row)
{
    Draws draws(kPart, row);
    const std::string maker = Format("MFGR#%d", draws.Between(1, 5));
    const std::string category = maker + Format("%d", draws.Between(1, 5));
    const std::string brand = category + Format("%d", draws.Between(1, 40));
    const char* const color = draws.OneOf(kColors);
    return {static_cast<int32_t>(row) + 1,
            std::string(color) + " " + draws.OneOf(kColors),
            maker,
            category,
            brand,
            color,
            draws.OneOf(kTypes),
            draws.Between(1, 50),
            draws.OneOf(kContainers)};
}

int32_t DateKey(const year_month_day& date)
{
    return static_cast<int>(date.year()) * 10000 +
           static_cast<int32_t>(unsigned{date.month()} * 100 + unsigned{date.day()});
}

const char* SeasonOf(unsigned month, unsigned day)
{
    if (month == 12 || (month == 11 && day > 20))
        return "Christmas";
    const char* const seasons[4] = {"Winter", "Spring", "Summer", "Fall"};
    return seasons[month % 12 / 3];
}

bool IsHoliday(unsigned month, unsigned day)
{
    return (month == 1 && day == 1) || (month == 7 && day == 4) || (month == 12 && day >= 24);
}

Row MakeDate(uint32_t row)
{
    const sys_days day = kFirstDay + std::chrono::days(row);
    const year_month_day date(day);
    const int32_t year = static_cast<int>(date.year());
    const unsigned month{date.month()}, dayOfMonth{date.day()};
    const unsigned weekDay = std::chrono::weekday(day).c_encoding();
    const int32_t dayOfYear =
        static_cast<int32_t>((day - sys_days(date.year() / 1 / 1)).count()) + 1;
    const std::string monthName = kMonths[month - 1];
    const bool lastOfMonth = year_month_day(day + std::chrono::days(1)).month() != date.month();
    return {DateKey(date),
            monthName + Format(" %u, %d", dayOfMonth, year),
            kWeekDays[weekDay],
            monthName,
            year,
            year * 100 + static_cast<int32_t>(month),
            monthName.substr(0, 3) + std::to_string(year),
            static_cast<int32_t>(weekDay) + 1,
            static_cast<int32_t>(dayOfMonth),
            dayOfYear,
            static_cast<int32_t>(month),
            (dayOfYear - 1) / 7 + 1,
            SeasonOf(month, dayOfMonth),
            int32_t{weekDay == 6},
            int32_t{lastOfMonth},
            int32_t{IsHoliday(month, dayOfMonth)},
            int32_t{weekDay >= 1 && weekDay <= 5}};
}

// ---- orders

// All lines of an order, with 0 for the order's total price, which none of them knows alone.
std::vector<Row> MakeLines(uint32_t order, uint32_t lineorders, int64_t* total)
{
    Draws draws(kOrder, order);
    const int32_t customer = draws.Below(CustomerCount(lineorders)) + 1;
    const int day = draws.Below(kOrderDays);
    const int32_t orderDate = DateKey(kFirstDay + std::chrono::days(day));
    const char* const priority = draws.OneOf(kPriorities);
    const int32_t count = draws.Between(1, 7);
    std::vector<Row> lines;
    for (int32_t line = 1; line <= count; line++) {
        const int32_t part = draws.Below(PartCount(lineorders)) + 1;
        const int32_t supplier = draws.Below(SupplierCount(lineorders)) + 1;
        const int32_t quantity = draws.Between(1, 50);
        const int32_t price = quantity * PriceOf(part);
        const int32_t discount = draws.Below(11);
        const int32_t tax = draws.Below(9);
        const int32_t revenue = static_cast<int32_t>(int64_t{price} * (100 - discount) / 100);
        const int commitDay = day + draws.Between(30, 90);
        *total += int64_t{revenue} * (100 + tax) / 100;
        lines.push_back(
            {static_cast<int32_t>(order) + 1, line, customer, part, supplier, orderDate, priority,
             "0", quantity, price, 0, discount, revenue, PriceOf(part) * 6 / 10, tax,
             DateKey(kFirstDay + std::chrono::days(commitDay)), draws.OneOf(kShipModes)});
    }
    return lines;
}

void AddOrder(uint32_t order, uint32_t lineorders, std::vector<Row>* rows)
{
    constexpr size_t kTotalPrice = 10;
    int64_t total = 0;
    for (Row& line : MakeLines(order, lineorders, &total)) {
        line[kTotalPrice] = static_cast<int32_t>(total);
        rows->push_back(std::move(line));
    }
}

void LoadLineorders(Peer* peer, uint32_t count)
{
    peer->CreateTable("lineorder", kLineorderColumns);
    std::vector<Row> rows;
    uint32_t added = 0;
    for (uint32_t order = 0; added < count; order++) {
        AddOrder(order, count, &rows);
        if (rows.size() < kBatch && added + rows.size() < count)
            continue;
        rows.resize(std::min(rows.size(), size_t{count - added}));
        peer->AddRows("lineorder", rows);
        added += static_cast<uint32_t>(rows.size());
        rows.clear();
    }
}

void LoadDimension(Peer* peer, const std::string& table, const char* columns, uint32_t count,
                   Row (*makeRow)(uint32_t row))
{
    peer->CreateTable(table, columns);
    std::vector<Row> rows;
    for (uint32_t row = 0; row < count; row++)
        rows.push_back(makeRow(row));
    peer->AddRows(table, rows);
}

}   // namespace

uint32_t LineorderCount(double scale)
{
    return static_cast<uint32_t>(std::lround(kRowsAtScale1 * scale));
}

void LoadStarSchema(Peer* peer, uint32_t lineorderCount)
{
    peer->Begin();
    LoadDimension(peer, "customer", kCustomerColumns, CustomerCount(lineorderCount), MakeCustomer);
    LoadDimension(peer, "supplier", kSupplierColumns, SupplierCount(lineorderCount), MakeSupplier);
    LoadDimension(peer, "part", kPartColumns, PartCount(lineorderCount), MakePart);
    LoadDimension(peer, "dates", kDateColumns, kDays, MakeDate);
    LoadLineorders(peer, lineorderCount);
    peer->Commit();
    peer->Begin();
    peer->Execute("CREATE INDEX by_custkey ON customer (c_custkey)");
    peer->Execute("CREATE INDEX by_suppkey ON supplier (s_suppkey)");
    peer->Execute("CREATE INDEX by_partkey ON part (p_partkey)");
    peer->Execute("CREATE INDEX by_datekey ON dates (d_datekey)");
    peer->Commit();
}

const std::vector<StarQuery>& StarQueries()
{
    static const std::vector<StarQuery> queries = {
        {"SSB Q1.1",
         "SELECT SUM(lo_extendedprice * lo_discount) AS revenue FROM lineorder, dates "
         "WHERE lo_orderdate = d_datekey AND d_year = 1993 "
         "AND lo_discount >= 1 AND lo_discount <= 3 AND lo_quantity < 25",
         RowOrder::kFixed},
        {"SSB Q1.2",
         "SELECT SUM(lo_extendedprice * lo_discount) AS revenue FROM lineorder, dates "
         "WHERE lo_orderdate = d_datekey AND d_yearmonthnum = 199401 "
         "AND lo_discount >= 4 AND lo_discount <= 6 AND lo_quantity >= 26 AND lo_quantity <= 35",
         RowOrder::kFixed},
        {"SSB Q1.3",
         "SELECT SUM(lo_extendedprice * lo_discount) AS revenue FROM lineorder, dates "
         "WHERE lo_orderdate = d_datekey AND d_weeknuminyear = 6 AND d_year = 1994 "
         "AND lo_discount >= 5 AND lo_discount <= 7 AND lo_quantity >= 26 AND lo_quantity <= 35",
         RowOrder::kFixed},
        {"SSB Q2.1",
         "SELECT SUM(lo_revenue) AS revenue, d_year, p_brand1 "
         "FROM lineorder, dates, part, supplier "
         "WHERE lo_orderdate = d_datekey AND lo_partkey = p_partkey AND lo_suppkey = s_suppkey "
         "AND p_category = 'MFGR#12' AND s_region = 'AMERICA' "
         "GROUP BY d_year, p_brand1 ORDER BY d_year, p_brand1",
         RowOrder::kFixed},
        {"SSB Q2.2",
         "SELECT SUM(lo_revenue) AS revenue, d_year, p_brand1 "
         "FROM lineorder, dates, part, supplier "
         "WHERE lo_orderdate = d_datekey AND lo_partkey = p_partkey AND lo_suppkey = s_suppkey "
         "AND p_brand1 >= 'MFGR#2221' AND p_brand1 <= 'MFGR#2228' AND s_region = 'ASIA' "
         "GROUP BY d_year, p_brand1 ORDER BY d_year, p_brand1",
         RowOrder::kFixed},
        {"SSB Q2.3",
         "SELECT SUM(lo_revenue) AS revenue, d_year, p_brand1 "
         "FROM lineorder, dates, part, supplier "
         "WHERE lo_orderdate = d_datekey AND lo_partkey = p_partkey AND lo_suppkey = s_suppkey "
         "AND p_brand1 = 'MFGR#2239' AND s_region = 'EUROPE' "
         "GROUP BY d_year, p_brand1 ORDER BY d_year, p_brand1",
         RowOrder::kFixed},
        {"SSB Q3.1",
         "SELECT c_nation, s_nation, d_year, SUM(lo_revenue) AS revenue "
         "FROM customer, lineorder, supplier, dates "
         "WHERE lo_custkey = c_custkey AND lo_suppkey = s_suppkey AND lo_orderdate = d_datekey "
         "AND c_region = 'ASIA' AND s_region = 'ASIA' AND d_year >= 1992 AND d_year <= 1997 "
         "GROUP BY c_nation, s_nation, d_year ORDER BY d_year ASC, revenue DESC",
         RowOrder::kAny},
        {"SSB Q3.2",
         "SELECT c_city, s_city, d_year, SUM(lo_revenue) AS revenue "
         "FROM customer, lineorder, supplier, dates "
         "WHERE lo_custkey = c_custkey AND lo_suppkey = s_suppkey AND lo_orderdate = d_datekey "
         "AND c_nation = 'UNITED STATES' AND s_nation = 'UNITED STATES' "
         "AND d_year >= 1992 AND d_year <= 1997 "
         "GROUP BY c_city, s_city, d_year ORDER BY d_year ASC, revenue DESC",
         RowOrder::kAny},
        {"SSB Q3.3",
         "SELECT c_city, s_city, d_year, SUM(lo_revenue) AS revenue "
         "FROM customer, lineorder, supplier, dates "
         "WHERE lo_custkey = c_custkey AND lo_suppkey = s_suppkey AND lo_orderdate = d_datekey "
         "AND (c_city = 'UNITED KI1' OR c_city = 'UNITED KI5') "
         "AND (s_city = 'UNITED KI1' OR s_city = 'UNITED KI5') "
         "AND d_year >= 1992 AND d_year <= 1997 "
         "GROUP BY c_city, s_city, d_year ORDER BY d_year ASC, revenue DESC",
         RowOrder::kAny},
        {"SSB Q3.4",
         "SELECT c_city, s_city, d_year, SUM(lo_revenue) AS revenue "
         "FROM customer, lineorder, supplier, dates "
         "WHERE lo_custkey = c_custkey AND lo_suppkey = s_suppkey AND lo_orderdate = d_datekey "
         "AND (c_city = 'UNITED KI1' OR c_city = 'UNITED KI5') "
         "AND (s_city = 'UNITED KI1' OR s_city = 'UNITED KI5') AND d_yearmonth = 'Dec1997' "
         "GROUP BY c_city, s_city, d_year ORDER BY d_year ASC, revenue DESC",
         RowOrder::kAny},
        {"SSB Q4.1",
         "SELECT d_year, c_nation, SUM(lo_revenue - lo_supplycost) AS profit "
         "FROM dates, customer, supplier, part, lineorder "
         "WHERE lo_custkey = c_custkey AND lo_suppkey = s_suppkey AND lo_partkey = p_partkey "
         "AND lo_orderdate = d_datekey AND c_region = 'AMERICA' AND s_region = 'AMERICA' "
         "AND (p_mfgr = 'MFGR#1' OR p_mfgr = 'MFGR#2') "
         "GROUP BY d_year, c_nation ORDER BY d_year, c_nation",
         RowOrder::kFixed},
        {"SSB Q4.2",
         "SELECT d_year, s_nation, p_category, SUM(lo_revenue - lo_supplycost) AS profit "
         "FROM dates, customer, supplier, part, lineorder "
         "WHERE lo_custkey = c_custkey AND lo_suppkey = s_suppkey AND lo_partkey = p_partkey "
         "AND lo_orderdate = d_datekey AND c_region = 'AMERICA' AND s_region = 'AMERICA' "
         "AND (d_year = 1997 OR d_year = 1998) AND (p_mfgr = 'MFGR#1' OR p_mfgr = 'MFGR#2') "
         "GROUP BY d_year, s_nation, p_category ORDER BY d_year, s_nation, p_category",
         RowOrder::kFixed},
        {"SSB Q4.3",
         "SELECT d_year, s_city, p_brand1, SUM(lo_revenue - lo_supplycost) AS profit "
         "FROM dates, customer, supplier, part, lineorder "
         "WHERE lo_custkey = c_custkey AND lo_suppkey = s_suppkey AND lo_partkey = p_partkey "
         "AND lo_orderdate = d_datekey AND s_nation = 'UNITED STATES' "
         "AND (d_year = 1997 OR d_year = 1998) AND p_category = 'MFGR#14' "
         "GROUP BY d_year, s_city, p_brand1 ORDER BY d_year, s_city, p_brand1",
         RowOrder::kFixed},
    };
    return queries;
}

}   // namespace vela::bench
