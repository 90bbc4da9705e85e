#include "engine/rescue/DatabaseFiles.h"

#include <string_view>

namespace vela {

namespace {

// What stands before a suffix; empty when the name has another end, or nothing before it.
std::string Before(const std::string& name, std::string_view suffix)
{
    return name.ends_with(suffix) ? name.substr(0, name.size() - suffix.size()) : "";
}

// Index names have no "." in them, so the last one is where the table's name ends.
bool TakeIndex(const std::string& name, DatabaseFiles* found)
{
    const std::string both = Before(name, ".idx");
    const size_t dot = both.rfind('.');
    if (dot == std::string::npos || dot == 0)
        return false;
    found->tables[both.substr(0, dot)].indexes.push_back(both.substr(dot + 1));
    return true;
}

}   // namespace

DatabaseFiles ListDatabaseFiles(const VelaFileAccess& files)
{
    SimpleVector<string> names;
    files.FindFiles("*", &names);
    DatabaseFiles found;
    for (const string& fileName : names) {
        const std::string name(fileName.View());
        const std::string ofRecords = Before(name, ".dat");
        const std::string ofMap = Before(name, ".map");
        if (!ofRecords.empty())
            found.tables[ofRecords].hasRecords = true;
        else if (!ofMap.empty())
            found.tables[ofMap].hasMap = true;
        else if (!TakeIndex(name, &found))
            found.others.push_back(name);
    }
    return found;
}

std::string RecordFileName(const std::string& table)
{
    return table + ".dat";
}

std::string MapFileName(const std::string& table)
{
    return table + ".map";
}

std::string IndexFileName(const std::string& table, const std::string& index)
{
    return table + "." + index + ".idx";
}

}   // namespace vela
