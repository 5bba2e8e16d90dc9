# Builds for macOS on a system that is none: Debian's clang 19 and lld 19 over the sysroot that
# scripts/mac/prepare-sysroot lays out. KELVANE_MAC_ARCHITECTURE chooses the processor.

set(CMAKE_SYSTEM_NAME Darwin)
set(CMAKE_SYSTEM_VERSION 20)
if(KELVANE_MAC_ARCHITECTURE STREQUAL "x86_64")
  set(_target x86_64-apple-macos10.15)
elseif(KELVANE_MAC_ARCHITECTURE STREQUAL "arm64")
  # The first system that runs on these processors.
  set(_target arm64-apple-macos11.0)
else()
  message(FATAL_ERROR "KELVANE_MAC_ARCHITECTURE is '${KELVANE_MAC_ARCHITECTURE}', not x86_64 or arm64")
endif()
set(CMAKE_SYSTEM_PROCESSOR ${KELVANE_MAC_ARCHITECTURE})
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES KELVANE_MAC_ARCHITECTURE)

get_filename_component(_root "${CMAKE_CURRENT_LIST_DIR}/../.." ABSOLUTE)
set(_sdk "${_root}/build/mac/sdk")
if(NOT EXISTS "${_sdk}/prepared")
  message(FATAL_ERROR "There is no sysroot: run scripts/mac/prepare-sysroot")
endif()
# Either of them would put this system's own libraries and headers into the Mac's program.
foreach(_leak IN ITEMS LIBRARY_PATH CPATH C_INCLUDE_PATH CPLUS_INCLUDE_PATH)
  unset(ENV{${_leak}})
endforeach()

set(CMAKE_OSX_SYSROOT "${_sdk}" CACHE PATH "The sysroot")
set(CMAKE_OSX_DEPLOYMENT_TARGET "" CACHE STRING "Part of the target already")
foreach(_language IN ITEMS C CXX OBJCXX)
  set(CMAKE_${_language}_COMPILER_TARGET ${_target})
endforeach()
find_program(KELVANE_CLANG clang-19 REQUIRED)
find_program(KELVANE_CLANGXX clang++-19 REQUIRED)
set(CMAKE_C_COMPILER "${KELVANE_CLANG}")
set(CMAKE_CXX_COMPILER "${KELVANE_CLANGXX}")
set(CMAKE_OBJCXX_COMPILER "${KELVANE_CLANGXX}")
find_program(CMAKE_AR llvm-ar-19 REQUIRED)
find_program(CMAKE_RANLIB llvm-ranlib-19 REQUIRED)
find_program(CMAKE_INSTALL_NAME_TOOL llvm-install-name-tool-19 REQUIRED)
find_program(CMAKE_OTOOL llvm-otool-19 REQUIRED)

# The site configuration of our own goes before libc++'s: it marks what the old system library lacks.
set(_cxx "-nostdinc++ -isystem ${_sdk}/usr/include/c++/site -isystem ${_sdk}/usr/include/c++/v1")
# What is newer than the oldest system is used behind a check or not at all.
set(_checks "-Werror=partial-availability -Werror=unguarded-availability -Werror=unguarded-availability-new")
set(CMAKE_CXX_FLAGS_INIT "${_cxx} ${_checks}")
set(CMAKE_OBJCXX_FLAGS_INIT "${_cxx} ${_checks}")
set(CMAKE_EXE_LINKER_FLAGS_INIT
    "-fuse-ld=lld -nodefaultlibs -lSystem -lc++ -lobjc -Wl,-adhoc_codesign,-fatal_warnings @${CMAKE_CURRENT_LIST_DIR}/stubs/anywhere.rsp")

# Only the sysroot is searched, but for the header-only library that prepare-sysroot sets apart.
set(CMAKE_FIND_ROOT_PATH "${_sdk}")
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
foreach(_mode IN ITEMS LIBRARY INCLUDE PACKAGE)
  set(CMAKE_FIND_ROOT_PATH_MODE_${_mode} ONLY)
endforeach()
set(CMAKE_FIND_APPBUNDLE NEVER)
set(CMAKE_FIND_FRAMEWORK NEVER)
set(nlohmann_json_DIR "${CMAKE_CURRENT_LIST_DIR}/cmake" CACHE PATH "")
# Checks of the compiler compile only; the program itself is linked for real.
set(CMAKE_TRY_COMPILE_TARGET_TYPE STATIC_LIBRARY)
