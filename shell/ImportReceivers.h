#pragma once

#include <unordered_set>

#include "engine/storage/VelaTrans.h"
#include "shell/CsvReader.h"
#include "shell/FieldTypes.h"
#include "shell/ImportJob.h"

namespace vela::shell {

// What an import does with a file's lines, one pass over the file each.

// Takes the header, the first line, and stops.
class HeaderReceiver : public CsvReceiver {
public:
    bool TakeRow(const CsvRow& row, size_t line) override;
    bool TakeMalformed(size_t line, const std::string& reason) override;

    // Empty when there is no line.
    [[nodiscard]] const std::vector<std::string>& Names() const { return mNames; }
    // What is wrong with the line; empty when nothing is.
    [[nodiscard]] const std::string& Fault() const { return mFault; }

private:
    std::vector<std::string> mNames;
    std::string mFault;
};

// Passes over the header, reports lines that are malformed or have too many or too few fields, and
// gives the others to its subclass.
class BodyReceiver : public CsvReceiver {
public:
    explicit BodyReceiver(ImportJob* job) : mJob(job) {}

    bool TakeRow(const CsvRow& row, size_t line) override;
    bool TakeMalformed(size_t line, const std::string& reason) override;

protected:
    // False stops the pass.
    virtual bool TakeGoodRow(const CsvRow& row, size_t line) = 0;
    [[nodiscard]] ImportJob& Job() { return *mJob; }

private:
    ImportJob* mJob;
    bool mIsHeader = true;
};

// Finds the types for a new table's columns.
class TypeReceiver : public BodyReceiver {
public:
    explicit TypeReceiver(ImportJob* job) : BodyReceiver(job), mTypes(job->columns.size()) {}

    [[nodiscard]] VelaDataType TypeOf(size_t column) const { return mTypes[column].Type(); }

protected:
    bool TakeGoodRow(const CsvRow& row, size_t line) override;

private:
    std::vector<FieldTypes> mTypes;
};

// Checks that every row can be added, without adding any, and counts them. Reports fields that their
// column's type can't hold, and row ids that are taken.
class CheckReceiver : public BodyReceiver {
public:
    // table is null when it is still to be made.
    CheckReceiver(ImportJob* job, VelaTrans* table);

    // Whether the table runs out of row ids.
    [[nodiscard]] bool HasTooManyRows() const { return mHasTooManyRows; }

protected:
    bool TakeGoodRow(const CsvRow& row, size_t line) override;

private:
    bool CheckField(const CsvRow& row, size_t field, size_t line, uint32_t* rowID);
    bool TakeRowID(int32_t number, size_t line, uint32_t* rowID);
    void ReportTaken(uint32_t rowID, size_t line);

    VelaTrans* mTable;
    uint32_t mNextRowID;
    bool mGivesRowIDs = false;
    std::unordered_set<uint32_t> mRowIDs;   // of this file, when it gives any
    bool mHasTooManyRows = false;
};

// Adds the rows, which were checked.
class AddReceiver : public BodyReceiver {
public:
    AddReceiver(ImportJob* job, VelaTrans* table) : BodyReceiver(job), mTable(table) {}

    // How many rows the table took; it stops at the first that it refuses.
    [[nodiscard]] size_t Added() const { return mAdded; }

protected:
    bool TakeGoodRow(const CsvRow& row, size_t line) override;

private:
    VelaTrans* mTable;
    size_t mAdded = 0;
};

}   // namespace vela::shell
