// The smallest program on an installed Vela: makes a database in a folder, writes a row, reads it back.
#include <cstdio>

#include "engine/sql/VelaSQL.h"
#include "engine/storage/VelaDatabase.h"
#include "engine/storage/VelaFolderFileAccess.h"

using namespace vela;

int main(int, char** arguments)
{
    VelaDatabase database(std::make_unique<VelaFolderFileAccess>(
        FileLocator(arguments[1]), VelaFolderFileAccess::Mode::kCreate));
    VelaStatus status;
    VelaSQLExecute("CREATE TABLE t (a integer, b string)", database, &status);
    VelaSQLExecute("INSERT INTO t VALUES (42, 'installed')", database, &status);
    database.Commit();

    VelaValue value;
    const auto rows = VelaSQLQuery("SELECT b FROM t WHERE a = 42", database, &status);
    if (!rows || !rows->GetValue(0, 0, &value))
        return 1;
    std::puts(value.GetString().CString());
    return 0;
}
