#include "engine/core/VelaStatus.h"

namespace vela {

namespace {

// Arrays of their own, since states are told apart by address and equal literals may share one.
constexpr char kSuccess[] = "00000";
constexpr char kNoData[] = "02000";
constexpr char kStringRightTruncated[] = "01004";
constexpr char kInvalidKeyword[] = "01S09";
constexpr char kDynamicSQLError[] = "07000";
constexpr char kTableAlreadyExists[] = "42S01";
constexpr char kTableNotFound[] = "42S02";
constexpr char kIndexAlreadyExists[] = "42S11";
constexpr char kIndexNotFound[] = "42S12";
constexpr char kColumnAlreadyExists[] = "42S21";
constexpr char kColumnNotFound[] = "42S22";
constexpr char kInsertValuesMismatch[] = "21S01";
constexpr char kDataException[] = "22000";
constexpr char kInvalidParameter[] = "22023";
constexpr char kIntegrityConstraintViolation[] = "23000";
constexpr char kInvalidTransactionState[] = "25000";
constexpr char kTransactionInProgress[] = "25S02";
constexpr char kFeatureNotSupported[] = "0A000";
constexpr char kInternalSQLError[] = "72000";
constexpr char kOutOfMemory[] = "53200";
constexpr char kTransactionLost[] = "40000";

}   // namespace

const VelaState kVEStateSuccess = kSuccess;
const VelaState kVEStateNoData = kNoData;
const VelaState kVEWarnStringRightTruncated = kStringRightTruncated;
const VelaState kVEWarnInvalidKeyword = kInvalidKeyword;
const VelaState kVEDynamicSQLError = kDynamicSQLError;
const VelaState kVETableAlreadyExists = kTableAlreadyExists;
const VelaState kVETableNotFound = kTableNotFound;
const VelaState kVEIndexAlreadyExists = kIndexAlreadyExists;
const VelaState kVEIndexNotFound = kIndexNotFound;
const VelaState kVEColumnAlreadyExists = kColumnAlreadyExists;
const VelaState kVEColumnNotFound = kColumnNotFound;
const VelaState kVEInsertValuesMismatch = kInsertValuesMismatch;
const VelaState kVEDataException = kDataException;
const VelaState kVEInvalidParameter = kInvalidParameter;
const VelaState kVEIntegrityConstraintViolation = kIntegrityConstraintViolation;
const VelaState kVEInvalidTransactionState = kInvalidTransactionState;
const VelaState kVETransactionInProgress = kTransactionInProgress;
const VelaState kVEFeatureNotSupported = kFeatureNotSupported;
const VelaState kVEInternalSQLError = kInternalSQLError;
const VelaState kVEOutOfMemory = kOutOfMemory;
const VelaState kVETransactionLost = kTransactionLost;

namespace {

struct DefaultMessage {
    VelaState state;
    const char* text;
};

constexpr DefaultMessage kDefaultMessages[] = {
    {kSuccess, "Success"},
    {kStringRightTruncated, "Warning: String truncated on right."},
    {kInvalidKeyword, "Warning: Invalid SQL keyword."},
    {kNoData, "No records found."},
    {kDynamicSQLError, "Error: Dynamic SQL error."},
    {kTableAlreadyExists, "Error: Table already exists."},
    {kTableNotFound, "Error: Table not found."},
    {kIndexAlreadyExists, "Error: Index already exists."},
    {kIndexNotFound, "Error: Index not found."},
    {kColumnAlreadyExists, "Error: Column already exists."},
    {kColumnNotFound, "Error: Column not found."},
    {kInsertValuesMismatch, "Error: Insert value list does not match column list."},
    {kDataException, "Error: Data exception."},
    {kInvalidParameter, "Error: Invalid parameter."},
    {kIntegrityConstraintViolation, "Error: Integrity constraint violation."},
    {kInvalidTransactionState, "Error: Invalid transaction state."},
    {kTransactionInProgress, "Error: Transaction in progress."},
    {kFeatureNotSupported, "Error: Unsupported SQL feature."},
    {kInternalSQLError, "Error: Internal SQL processor error."},
    {kOutOfMemory, "Error: Out of memory."},
    {kTransactionLost, "Error: Out of memory. The changes since the last COMMIT are lost."},
};

}   // namespace

string VelaStatus::Description() const
{
    if (!mMessage.empty())
        return mMessage;
    for (const DefaultMessage& message : kDefaultMessages) {
        if (message.state == mState)
            return message.text;
    }
    return string();
}

bool Fail(VelaStatus* status, VelaState state, const string& message)
{
    if (status)
        *status = VelaStatus(state, message);
    return false;
}

}   // namespace vela
