#pragma once

#include <cstdint>
#include <string>

namespace vela::bench {

// DuckDBLibrary is the part of DuckDB's public C interface that the benchmark uses, declared here
// because neither its header nor its library need be at hand when the benchmark is built. The
// functions have DuckDB's names without "duckdb_".
//
// Handles are opaque pointers that DuckDB owns until they are given to close, disconnect or destroy.
struct DuckDBLibrary {
    using Handle = void*;
    enum Type : int {
        kInteger = 4,
        kBigint = 5,
        kDouble = 11,
        kDate = 13,
        kHugeint = 16,
        kVarchar = 17
    };
    struct Result {
        uint64_t deprecated[3];
        void* deprecatedColumns;
        char* deprecatedError;
        void* data;
    };
    struct Hugeint {
        uint64_t lower;
        int64_t upper;
    };
    // Up to 12 bytes stand in place; of a longer text the first 4 do, and the pointer.
    struct Text {
        uint32_t size;
        char start[4];
        char* bytes;
    };

    // Each returns 0 when it succeeded, where it returns an int.
    int (*open)(const char* path, Handle* database);
    void (*close)(Handle* database);
    int (*connect)(Handle database, Handle* connection);
    void (*disconnect)(Handle* connection);
    int (*query)(Handle connection, const char* sql, Result* result);
    void (*destroy_result)(Result* result);
    const char* (*result_error)(Result* result);
    uint64_t (*column_count)(Result* result);
    Type (*column_type)(Result* result, uint64_t column);
    // Null after the last one.
    Handle (*fetch_chunk)(Result result);
    void (*destroy_data_chunk)(Handle* chunk);
    uint64_t (*data_chunk_get_size)(Handle chunk);
    Handle (*data_chunk_get_vector)(Handle chunk, uint64_t column);
    void* (*vector_get_data)(Handle vector);
    // One bit for each row, from the lowest bit of the first word on, set for a value that is not
    // null; null when all are.
    uint64_t* (*vector_get_validity)(Handle vector);
    int (*appender_create)(Handle connection, const char* schema, const char* table,
                           Handle* appender);
    int (*append_int32)(Handle appender, int32_t value);
    int (*append_double)(Handle appender, double value);
    int (*append_varchar_length)(Handle appender, const char* value, uint64_t size);
    int (*appender_end_row)(Handle appender);
    int (*appender_destroy)(Handle* appender);
    const char* (*library_version)();

    // The functions of the library at path, which stays loaded. Ends the program when it can't be
    // loaded, or lacks one.
    [[nodiscard]] static DuckDBLibrary Load(const std::string& path);
};

}   // namespace vela::bench
