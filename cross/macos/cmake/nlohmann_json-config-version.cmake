# Whichever version prepare-sysroot found; read from the library's own header.
file(STRINGS "${CMAKE_CURRENT_LIST_DIR}/../../../build/mac/include/nlohmann/detail/abi_macros.hpp"
     _lines REGEX "define NLOHMANN_JSON_VERSION_(MAJOR|MINOR|PATCH) ")
if(NOT _lines)
  file(STRINGS "${CMAKE_CURRENT_LIST_DIR}/../../../build/mac/include/nlohmann/json.hpp" _lines
       REGEX "define NLOHMANN_JSON_VERSION_(MAJOR|MINOR|PATCH) ")
endif()
string(REGEX MATCHALL "[0-9]+" _numbers "${_lines}")
string(REPLACE ";" "." PACKAGE_VERSION "${_numbers}")
if(PACKAGE_VERSION VERSION_GREATER_EQUAL PACKAGE_FIND_VERSION)
  set(PACKAGE_VERSION_COMPATIBLE TRUE)
endif()
