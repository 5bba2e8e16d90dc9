# The header-only library of this system, by a folder in which nothing else can be found.
if(NOT TARGET nlohmann_json::nlohmann_json)
  add_library(nlohmann_json::nlohmann_json INTERFACE IMPORTED)
  set_target_properties(
    nlohmann_json::nlohmann_json
    PROPERTIES INTERFACE_INCLUDE_DIRECTORIES "${CMAKE_CURRENT_LIST_DIR}/../../../build/mac/include")
endif()
