#include "engine/core/VelaStatus.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

namespace vela {
namespace {

TEST(VelaStatus, StatesHaveTheirSQLSTATEAndDefaultMessage)
{
    struct {
        VelaState state;
        const char* code;
        const char* message;
    } cases[] = {
        {kVEStateSuccess, "00000", "Success"},
        {kVEStateNoData, "02000", "No records found."},
        {kVEWarnStringRightTruncated, "01004", "Warning: String truncated on right."},
        {kVEWarnInvalidKeyword, "01S09", "Warning: Invalid SQL keyword."},
        {kVEDynamicSQLError, "07000", "Error: Dynamic SQL error."},
        {kVETableAlreadyExists, "42S01", "Error: Table already exists."},
        {kVETableNotFound, "42S02", "Error: Table not found."},
        {kVEIndexAlreadyExists, "42S11", "Error: Index already exists."},
        {kVEIndexNotFound, "42S12", "Error: Index not found."},
        {kVEColumnAlreadyExists, "42S21", "Error: Column already exists."},
        {kVEColumnNotFound, "42S22", "Error: Column not found."},
        {kVEInsertValuesMismatch, "21S01", "Error: Insert value list does not match column list."},
        {kVEDataException, "22000", "Error: Data exception."},
        {kVEInvalidParameter, "22023", "Error: Invalid parameter."},
        {kVEIntegrityConstraintViolation, "23000", "Error: Integrity constraint violation."},
        {kVEInvalidTransactionState, "25000", "Error: Invalid transaction state."},
        {kVETransactionInProgress, "25S02", "Error: Transaction in progress."},
        {kVEFeatureNotSupported, "0A000", "Error: Unsupported SQL feature."},
        {kVEInternalSQLError, "72000", "Error: Internal SQL processor error."},
        {kVEOutOfMemory, "53200", "Error: Out of memory."},
        {kVETransactionLost, "40000",
         "Error: Out of memory. The changes since the last COMMIT are lost."},
    };
    std::set<VelaState> states;
    for (const auto& c : cases) {
        EXPECT_STREQ(c.code, c.state);
        const VelaStatus status(c.state, "");
        EXPECT_EQ(c.state, status.State());
        EXPECT_STREQ(c.message, status.Description().CString());
        EXPECT_EQ(kEncodingASCII, status.Description().Encoding());
        EXPECT_STREQ("Cool beans!", VelaStatus(c.state, "Cool beans!").Description().CString());
        EXPECT_TRUE(states.insert(c.state).second) << c.code << " is another state too";
    }
    EXPECT_EQ(21u, states.size());
}

TEST(VelaStatus, AStateIsKnownByIdentityNotByItsCharacters)
{
    const char lookAlike[] = "42S02";
    EXPECT_STREQ("", VelaStatus(lookAlike, "").Description().CString());
    EXPECT_STREQ("why", VelaStatus(lookAlike, "why").Description().CString());
    EXPECT_STREQ("", VelaStatus(nullptr, "").Description().CString());
}

TEST(VelaStatus, FailSetsStateAndMessageTogetherAndBearsNoStatus)
{
    VelaStatus status(kVEColumnNotFound, "old");
    const VelaStatus before = status;
    EXPECT_FALSE(Fail(&status, kVETableNotFound, ""));
    EXPECT_STREQ("old", before.Description().CString()) << "a copy is its own";
    EXPECT_EQ(kVETableNotFound, status.State());
    EXPECT_STREQ("Error: Table not found.", status.Description().CString())
        << "the old message must go";
    EXPECT_FALSE(Fail(nullptr, kVETableNotFound, "x"));
}

}   // namespace
}   // namespace vela
