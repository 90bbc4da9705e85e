#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "engine/rescue/RescueWatch.h"
#include "engine/storage/VelaFileAccess.h"

namespace vela {

// What a repair saved of one table, and what not.
struct RepairedTable {
    std::string name;
    bool isSaved = true;                    // else notes say why nothing is
    uint64_t rows = 0;                      // saved
    uint64_t lostRows = 0;                  // live records whose bytes are not whole
    uint64_t duplicates = 0;                // other whole records under row ids that were saved
    int64_t bytesPassedOver = 0;            // of the record file, lost records included
    std::vector<std::string> indexes;       // made anew
    std::vector<std::string> lostIndexes;   // whose columns can't be told
    std::vector<std::string> notes;         // what else is not as it was, a sentence each

    // Whether everything that the table's files should hold is there again.
    [[nodiscard]] bool IsComplete() const
    {
        return isSaved && lostRows == 0 && duplicates == 0 && bytesPassedOver == 0 &&
               lostIndexes.empty() && notes.empty();
    }
};

struct RepairReport {
    std::vector<RepairedTable> tables;
    std::vector<std::string> notes;   // on the schema and the files at large
    std::string error;   // why the new database could not be written; empty when it was
    [[nodiscard]] bool IsComplete() const;
};

// Opens the files of the new database for writing; called several times, and each time after what
// was opened before has been closed. Null: it failed.
using OpenNewFiles = std::function<std::unique_ptr<VelaFileAccess>()>;

// Saves everything that can be read of a database into a new one, whose files are empty to begin
// with. The damaged one is only read.
//
// Each live record that is whole becomes a row, with its row id and its values as they are stored,
// in file order. Of several under one row id the one that the map names is taken, or the last.
// Tables and columns are those of _schema; where it says nothing, they are made up from what the
// records hold, as c1, c2, ... by their column ids. Indexes are made anew on the columns that their
// files name. Row ids and column ids that were used up stay so.
//
// True: the new database is written and committed; the report says what is missing in it. False: it
// is not, since writing failed (report->error), or watch stopped it; what was written of it is of
// no use.
bool RepairDatabase(VelaFileAccess* damaged, const OpenNewFiles& openNew, RepairReport* report,
                    RescueWatch* watch);

}   // namespace vela
