# The two Debian packages: what depends on the machine, and the data for all of them. CPack packs the
# two components that the install rules name; scripts/package sets how they are configured.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME brindle-run)
set(CPACK_PACKAGE_VERSION "${PROJECT_VERSION}")
set(CPACK_PACKAGE_CONTACT "The Brindle Run developers <brindle-run@example.org>")
set(CPACK_PACKAGE_DIRECTORY "${CMAKE_BINARY_DIR}")
set(CPACK_PACKAGING_INSTALL_PREFIX "${CMAKE_INSTALL_PREFIX}")
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_STRIP_FILES ON)

set(CPACK_COMPONENTS_ALL program data)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_PACKAGE_SECTION games)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "") # else it comes before each package's own synopsis
set(synopsis "two-player split-screen rally racer")

# --- the program

set(CPACK_DEBIAN_PROGRAM_PACKAGE_NAME brindle-run)
set(CPACK_COMPONENT_PROGRAM_DESCRIPTION "${synopsis}
Two cars, red and blue, race on one screen, seen from above, with one
keyboard or with pads. Every lap is timed to the millisecond, the best ones
are kept, and the best of all comes back as a ghost that drives beside you.
.
There are practice and races, an arcade mode with bumps and drivers of the
computer's, and nine tracks. The package also has brindle-track, which makes
tracks of your own, and brindle-ghost, which shares laps with friends.")
set(CPACK_DEBIAN_PROGRAM_PACKAGE_SHLIBDEPS ON)
# SDL opens the graphics library at run time, where shlibdeps does not see it.
set(CPACK_DEBIAN_PROGRAM_PACKAGE_DEPENDS "brindle-run-data (= ${PROJECT_VERSION}), libgl1")

# --- the data

set(CPACK_DEBIAN_DATA_PACKAGE_NAME brindle-run-data)
set(CPACK_DEBIAN_DATA_PACKAGE_ARCHITECTURE all)
set(CPACK_COMPONENT_DATA_DESCRIPTION "${synopsis} (data)
Two cars, red and blue, race on one screen, seen from above, with one
keyboard or with pads.
.
This package has the art, music, sounds and tracks of the game, and the
themes for tracks of your own. The game itself is in brindle-run.")
set(CPACK_DEBIAN_DATA_PACKAGE_RECOMMENDS brindle-run)

# The packages that the linked fonts are in.
if(BRINDLE_SYSTEM_FONTS)
  set(font_packages)
  foreach(face IN LISTS brindle_faces)
    string(REGEX REPLACE "^.*=" "${brindle_font_root}/" file "${face}")
    execute_process(COMMAND dpkg-query --search "${file}" OUTPUT_VARIABLE owner
                    COMMAND_ERROR_IS_FATAL ANY)
    string(REGEX REPLACE ":.*" "" owner "${owner}")
    list(APPEND font_packages "${owner}")
  endforeach()
  list(REMOVE_DUPLICATES font_packages)
  list(JOIN font_packages ", " CPACK_DEBIAN_DATA_PACKAGE_DEPENDS)
endif()

include(CPack)
