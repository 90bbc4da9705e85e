# The libraries that the shell is built on, as the one target vela_shell_libraries.
#
# Sets VELA_SHELL_LIBRARIES_FOUND. Where a library is missing, says which package to install and leaves it off.
set(VELA_SHELL_LIBRARIES_FOUND OFF)
set(missingPackages "")

# find_library() prefers the host's folders; a 32-bit build must look in its own, or where scripts/install-deps unpacks.
set(libraryFolders "")
set(packageSuffix "")
if(CMAKE_SIZEOF_VOID_P EQUAL 4 AND CMAKE_HOST_SYSTEM_PROCESSOR STREQUAL "x86_64")
    set(libraryFolders PATHS /usr/lib/i386-linux-gnu "${PROJECT_SOURCE_DIR}/build/i386/usr/lib/i386-linux-gnu"
        NO_DEFAULT_PATH)
    set(packageSuffix ":i386")
endif()

find_path(CLI11_INCLUDE_DIR CLI/CLI.hpp)
find_path(NLOHMANN_JSON_INCLUDE_DIR nlohmann/json.hpp)
find_path(CSV_INCLUDE_DIR csv.h)
find_library(CSV_LIBRARY csv ${libraryFolders})
find_path(UTF8PROC_INCLUDE_DIR utf8proc.h)
find_library(UTF8PROC_LIBRARY utf8proc ${libraryFolders})

foreach(need IN ITEMS
        "CLI11_INCLUDE_DIR libcli11-dev" "NLOHMANN_JSON_INCLUDE_DIR nlohmann-json3-dev"
        "CSV_INCLUDE_DIR libcsv-dev${packageSuffix}" "CSV_LIBRARY libcsv-dev${packageSuffix}"
        "UTF8PROC_INCLUDE_DIR libutf8proc-dev${packageSuffix}" "UTF8PROC_LIBRARY libutf8proc-dev${packageSuffix}")
    string(REPLACE " " ";" need "${need}")
    list(POP_FRONT need variable package)
    if(NOT ${variable})
        list(APPEND missingPackages ${package})
    endif()
endforeach()

if(missingPackages)
    list(REMOVE_DUPLICATES missingPackages)
    list(JOIN missingPackages " " missingPackages)
    message(WARNING "veladb is not built: libraries are missing. Run scripts/install-deps, or: "
        "apt-get install ${missingPackages}")
    return()
endif()

add_library(vela_shell_libraries INTERFACE)
target_include_directories(vela_shell_libraries SYSTEM INTERFACE "${CLI11_INCLUDE_DIR}"
    "${NLOHMANN_JSON_INCLUDE_DIR}" "${CSV_INCLUDE_DIR}" "${UTF8PROC_INCLUDE_DIR}")
target_link_libraries(vela_shell_libraries INTERFACE "${CSV_LIBRARY}" "${UTF8PROC_LIBRARY}")
set(VELA_SHELL_LIBRARIES_FOUND ON)
