# Lays out a macOS application around a program: at building, in the build folder; at installing,
# whole. A Mac's own build and the cross build both use it; the latter joins two of them afterwards
# (scripts/mac/join-bundles).

# What codesign calls the signer; "-" is nobody, which is enough on the Mac that builds.
set(KELVANE_SIGN_AS "-" CACHE STRING "Identity for codesign, on a Mac")

# kelvane_mac_bundle(target NAME name DESTINATION folder RESOURCES folder/file ... GENERATED file ...)
# Its folder has Info.plist.in. RESOURCES keep their folder inside the bundle's, GENERATED have none.
function(kelvane_mac_bundle target)
  cmake_parse_arguments(ARG "" "NAME;DESTINATION" "RESOURCES;GENERATED" ${ARGN})
  configure_file(Info.plist.in Info.plist @ONLY)
  # Type and creator, as the Finder has asked for since before there were property lists.
  file(CONFIGURE OUTPUT PkgInfo CONTENT "APPL????")
  target_sources(${target} PRIVATE "${CMAKE_CURRENT_BINARY_DIR}/PkgInfo" ${ARG_RESOURCES} ${ARG_GENERATED})
  set_source_files_properties("${CMAKE_CURRENT_BINARY_DIR}/PkgInfo" PROPERTIES MACOSX_PACKAGE_LOCATION .)
  set_source_files_properties(${ARG_GENERATED} PROPERTIES MACOSX_PACKAGE_LOCATION Resources)
  foreach(resource IN LISTS ARG_RESOURCES)
    cmake_path(GET resource PARENT_PATH folder)
    set_source_files_properties("${resource}" PROPERTIES MACOSX_PACKAGE_LOCATION "Resources/${folder}")
  endforeach()
  # The program's name in the bundle is also the one in the signature that the linker makes.
  set_target_properties(
    ${target} PROPERTIES OUTPUT_NAME "${ARG_NAME}" MACOSX_BUNDLE ON
                         MACOSX_BUNDLE_INFO_PLIST "${CMAKE_CURRENT_BINARY_DIR}/Info.plist")
  install(TARGETS ${target} BUNDLE DESTINATION "${ARG_DESTINATION}")
  if(CMAKE_HOST_APPLE)
    # What is inside is installed, and so signed, before what is around it.
    install(
      CODE "execute_process(
              COMMAND codesign --force --sign \"${KELVANE_SIGN_AS}\"
                      --entitlements \"${PROJECT_SOURCE_DIR}/src/programs/mac/entitlements.plist\"
                      \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/${ARG_DESTINATION}/${ARG_NAME}.app\"
              COMMAND_ERROR_IS_FATAL ANY)")
  endif()
endfunction()
