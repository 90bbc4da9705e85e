#include "plugin/host/DatabaseValue.h"

#include "plugin/host/Host.h"

namespace vela::host {

namespace {

Moment FromMoment(Host& host, int32_t type, const MOXAmoment& stored)
{
    Moment moment;
    moment.hasDate = type != kMOXATypeTime;
    moment.hasTime = type != kMOXATypeDate;
    moment.year = stored.year;
    moment.month = stored.month;
    moment.day = stored.day;
    moment.hour = stored.hour;
    moment.minute = stored.minute;
    moment.second = stored.second;
    if ((!moment.hasDate && (stored.year | stored.month | stored.day) != 0) ||
        (!moment.hasTime && (stored.hour | stored.minute | stored.second) != 0))
        host.complaints.Add("a date or time with parts that its type does not have");
    return moment;
}

bool FromBoolean(Host& host, int32_t stored)
{
    if (stored != 0 && stored != 1)
        host.complaints.Add("a Boolean that is neither 0 nor 1");
    return stored != 0;
}

// Stores a value that is no object into a record; see RowChanges.
struct Storer {
    Host& host;
    MOXAdbValue& stored;

    bool operator()(Nothing) const { return false; }
    bool operator()(HostObject*) const { return false; }
    bool operator()(Null) const
    {
        stored.isNull = 1;
        return true;
    }
    bool operator()(bool truth) const { return Integer(kMOXATypeBoolean, truth ? 1 : 0); }
    bool operator()(int32_t number) const { return Integer(kMOXATypeInteger, number); }
    bool operator()(double number) const
    {
        stored.type = kMOXATypeDouble;
        stored.value.number = number;
        return true;
    }
    bool operator()(const Text& text) const
    {
        stored.type = kMOXATypeText;
        stored.value.text = host.strings.Make(text.bytes, text.encoding);
        return true;
    }
    bool operator()(const Bytes& bytes) const
    {
        stored.type = kMOXATypeBinary;
        stored.value.text = host.strings.Make(bytes.bytes, kMOXAEncodingASCII);
        return true;
    }
    bool operator()(const Moment& moment) const
    {
        stored.type = !moment.hasTime   ? kMOXATypeDate
                      : !moment.hasDate ? kMOXATypeTime
                                        : kMOXATypeTimestamp;
        stored.value.moment = {moment.year, moment.month,  moment.day,
                               moment.hour, moment.minute, moment.second};
        return true;
    }

private:
    [[nodiscard]] bool Integer(int32_t type, int32_t number) const
    {
        stored.type = type;
        stored.value.integer = number;
        return true;
    }
};

bool HoldsString(const MOXAdbValue& value)
{
    return value.isNull == 0 && (value.type == kMOXATypeText || value.type == kMOXATypeBinary);
}

}   // namespace

Value FromDatabaseValue(Host& host, const MOXAdbValue& stored)
{
    if (stored.isNull != 0)
        return Null();
    switch (stored.type) {
        case kMOXATypeInteger:
            return stored.value.integer;
        case kMOXATypeBoolean:
            return FromBoolean(host, stored.value.integer);
        case kMOXATypeDouble:
            return stored.value.number;
        case kMOXATypeText:
            return host.strings.Take(stored.value.text);
        case kMOXATypeBinary:
            return Bytes{host.strings.Take(stored.value.text).bytes};
        case kMOXATypeDate:
        case kMOXATypeTime:
        case kMOXATypeTimestamp:
            return FromMoment(host, stored.type, stored.value.moment);
        default:
            host.complaints.Add("a value of the unknown type " + std::to_string(stored.type));
            return Nothing();
    }
}

RowChanges::~RowChanges()
{
    for (const MOXAdbChange& change : mChanges)
        if (HoldsString(change.value))
            mHost.strings.Release(change.value.value.text);
}

bool RowChanges::Add(int32_t column, const Value& value)
{
    MOXAdbChange change = {};
    change.column = column;
    if (!std::visit(Storer{mHost, change.value}, value))
        return false;
    mChanges.push_back(change);
    return true;
}

std::string FieldTypeName(int32_t type)
{
    switch (type) {
        case kMOXATypeNone:
            return "none";
        case kMOXATypeInteger:
            return "integer";
        case kMOXATypeText:
            return "text";
        case kMOXATypeDouble:
            return "double";
        case kMOXATypeDate:
            return "date";
        case kMOXATypeTime:
            return "time";
        case kMOXATypeTimestamp:
            return "timestamp";
        case kMOXATypeBoolean:
            return "boolean";
        case kMOXATypeBinary:
            return "binary";
        default:
            return std::to_string(type);
    }
}

}   // namespace vela::host
