#include "bench/DuckDBLibrary.h"

#include <dlfcn.h>

#include "bench/Peer.h"

namespace vela::bench {

namespace {

// Finds the function that has the member's name.
template <class Function>
void Find(void* library, const char* name, Function* function)
{
    void* const address = dlsym(library, (std::string("duckdb_") + name).c_str());
    if (address == nullptr)
        Die(std::string("DuckDB's library has no duckdb_") + name);
    *function = reinterpret_cast<Function>(address);
}

}   // namespace

DuckDBLibrary DuckDBLibrary::Load(const std::string& path)
{
    void* const library = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (library == nullptr)
        Die(std::string("DuckDB can't be loaded: ") + dlerror());
    DuckDBLibrary f;
    Find(library, "open", &f.open);
    Find(library, "close", &f.close);
    Find(library, "connect", &f.connect);
    Find(library, "disconnect", &f.disconnect);
    Find(library, "query", &f.query);
    Find(library, "destroy_result", &f.destroy_result);
    Find(library, "result_error", &f.result_error);
    Find(library, "column_count", &f.column_count);
    Find(library, "column_type", &f.column_type);
    Find(library, "fetch_chunk", &f.fetch_chunk);
    Find(library, "destroy_data_chunk", &f.destroy_data_chunk);
    Find(library, "data_chunk_get_size", &f.data_chunk_get_size);
    Find(library, "data_chunk_get_vector", &f.data_chunk_get_vector);
    Find(library, "vector_get_data", &f.vector_get_data);
    Find(library, "vector_get_validity", &f.vector_get_validity);
    Find(library, "appender_create", &f.appender_create);
    Find(library, "append_int32", &f.append_int32);
    Find(library, "append_double", &f.append_double);
    Find(library, "append_varchar_length", &f.append_varchar_length);
    Find(library, "appender_end_row", &f.appender_end_row);
    Find(library, "appender_destroy", &f.appender_destroy);
    Find(library, "library_version", &f.library_version);
    return f;
}

}   // namespace vela::bench
