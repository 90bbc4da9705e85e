# How Vela's targets are compiled: defaults, flags that all code shares, warnings for our own code.

# Sets variable to the source files that match the patterns, recursively, below the calling folder. New files are
# noticed by the next build without an edit.
function(vela_glob variable)
    list(TRANSFORM ARGN PREPEND "${CMAKE_CURRENT_SOURCE_DIR}/" OUTPUT_VARIABLE patterns)
    file(GLOB_RECURSE files CONFIGURE_DEPENDS ${patterns})
    set(${variable} ${files} PARENT_SCOPE)
endfunction()

# A build without a type would be unoptimised; users of a plain "cmake -S . -B DIR" want the fast one.
function(vela_set_default_build_type type)
    get_property(isMultiConfig GLOBAL PROPERTY GENERATOR_IS_MULTI_CONFIG)
    if(PROJECT_IS_TOP_LEVEL AND NOT isMultiConfig AND NOT CMAKE_BUILD_TYPE)
        set(CMAKE_BUILD_TYPE ${type} CACHE STRING "Release, RelWithDebInfo, Debug or MinSizeRel" FORCE)
    endif()
endfunction()

# Flags that the whole program must agree on, libraries built along with it included.
macro(vela_set_global_flags)
    set(CMAKE_CXX_STANDARD 20)
    set(CMAKE_CXX_STANDARD_REQUIRED ON)
    set(CMAKE_CXX_EXTENSIONS OFF)
    set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

    set(VELA_PLATFORM_DEFINITIONS "")
    if(CMAKE_SIZEOF_VOID_P EQUAL 4)
        set(VELA_PLATFORM_DEFINITIONS _FILE_OFFSET_BITS=64 _TIME_BITS=64)
        add_compile_definitions(${VELA_PLATFORM_DEFINITIONS})
        if(CMAKE_SYSTEM_PROCESSOR MATCHES "x86|i.86|AMD64")
            # The x87 registers round doubles differently; results must not depend on the platform.
            add_compile_options(-msse2 -mfpmath=sse)
        endif()
    endif()

    if(VELA_SANITIZE)
        add_compile_options(-fsanitize=${VELA_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
        add_link_options(-fsanitize=${VELA_SANITIZE})
        # g++ takes what the sanitizers add for reads of variables that were never set.
        if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
            add_compile_options(-Wno-maybe-uninitialized)
        endif()
    endif()
    if(VELA_FUZZ)
        add_compile_options(-fsanitize=fuzzer-no-link)
    endif()
endmacro()

# Warnings and strictness for a target of our own code.
function(vela_configure_target target)
    target_compile_options(${target} PRIVATE -Wall -Wextra -Wconversion -Wshadow -ffp-contract=off)
    if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
        # Falsely found by g++ 12 inside the library's own "text" + std::string.
        target_compile_options(${target} PRIVATE -Wno-restrict)
    endif()
    if(VELA_WERROR)
        target_compile_options(${target} PRIVATE -Werror)
    endif()
endfunction()

# For code that ends up in a shared library: it can stand at any address, and nothing in it is seen from outside unless
# it is marked.
function(vela_hide_symbols target)
    set_target_properties(${target} PROPERTIES
        POSITION_INDEPENDENT_CODE ON CXX_VISIBILITY_PRESET hidden VISIBILITY_INLINES_HIDDEN ON)
endfunction()
