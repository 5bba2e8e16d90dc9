# One static library for each folder under src/, so that the linker sees the floors too, and one test
# program for the folder's *_test.cpp files.

if(CMAKE_SYSTEM_NAME STREQUAL "Linux")
  find_package(PkgConfig REQUIRED)
endif()
find_package(nlohmann_json 3.11 REQUIRED)

add_library(kelvane_options INTERFACE)
target_include_directories(kelvane_options INTERFACE "${PROJECT_SOURCE_DIR}/src")
target_compile_features(kelvane_options INTERFACE cxx_std_20)
target_compile_options(
  kelvane_options
  INTERFACE -Wall
            -Wextra
            -Wpedantic
            -Wconversion
            -Wshadow
            # Designated initialisers leave members out on purpose.
            -Wno-missing-field-initializers
            # GCC 12 sees both where there is nothing, in inlined strings and optionals (GCC 105651).
            $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict>
            $<$<CXX_COMPILER_ID:GNU>:-Wno-maybe-uninitialized>
            $<$<BOOL:${KELVANE_WERROR}>:-Werror>
            -ffunction-sections
            -fdata-sections
            -fvisibility=hidden)
if(CMAKE_SYSTEM_NAME STREQUAL "Darwin")
  # Not in a program that asks for everything.
  target_link_options(kelvane_options
                      INTERFACE $<$<NOT:$<BOOL:$<TARGET_PROPERTY:KELVANE_KEEP_ALL>>>:-Wl,-dead_strip>)
else()
  target_link_options(kelvane_options INTERFACE -Wl,--gc-sections -Wl,--as-needed)
endif()
# The libraries hold both forms of their code: only a target with the property KELVANE_LTO takes the
# one for the whole program, all others link as fast as ever.
if(KELVANE_LTO AND CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND NOT KELVANE_SANITIZE)
  target_compile_options(kelvane_options INTERFACE $<$<CONFIG:Release>:-flto=auto>
                                                   $<$<CONFIG:Release>:-ffat-lto-objects>)
  target_link_options(
    kelvane_options
    INTERFACE $<$<CONFIG:Release>:$<IF:$<BOOL:$<TARGET_PROPERTY:KELVANE_LTO>>,-flto=auto,-fno-lto>>)
endif()
if(KELVANE_SANITIZE)
  target_compile_options(kelvane_options INTERFACE -fsanitize=${KELVANE_SANITIZE}
                                                   -fno-omit-frame-pointer)
  target_link_options(kelvane_options INTERFACE -fsanitize=${KELVANE_SANITIZE})
endif()
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_OBJCXX_EXTENSIONS OFF)
# Small code is less memory; nothing here is hot enough for more.
set(CMAKE_CXX_FLAGS_RELEASE "-Os -DNDEBUG")
set(CMAKE_OBJCXX_FLAGS_RELEASE "${CMAKE_CXX_FLAGS_RELEASE}")
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

# kelvane_library(name SOURCES a.cpp ... DEPENDS other ...)
function(kelvane_library name)
  cmake_parse_arguments(ARG "" "" "SOURCES;DEPENDS" ${ARGN})
  if(ARG_SOURCES)
    add_library(${name} STATIC ${ARG_SOURCES})
    target_link_libraries(${name} PUBLIC kelvane_options ${ARG_DEPENDS})
  else()
    add_library(${name} INTERFACE)
    target_link_libraries(${name} INTERFACE kelvane_options ${ARG_DEPENDS})
  endif()
endfunction()

# kelvane_unit_tests(name SOURCES a_test.cpp ... DEPENDS lib ...)
function(kelvane_unit_tests name)
  if(NOT BUILD_TESTING)
    return()
  endif()
  cmake_parse_arguments(ARG "" "" "SOURCES;DEPENDS" ${ARGN})
  find_package(GTest REQUIRED)
  include(GoogleTest)
  add_executable(${name} ${ARG_SOURCES})
  target_link_libraries(${name} PRIVATE kelvane_options ${ARG_DEPENDS} GTest::gmock
                                        GTest::gtest_main)
  gtest_discover_tests(${name} TEST_PREFIX "${name}." PROPERTIES LABELS unit
                       DISCOVERY_TIMEOUT 60)
endfunction()
