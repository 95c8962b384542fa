# What `cmake --install` and the Debian package put where. Everything finds its parts by paths relative to itself, so the
# whole can stand under any prefix.
include(CMakePackageConfigHelpers)
include(GNUInstallDirs)

set(libraryFolder lib) # petal looks for the bridge in ../lib, wherever it stands
set(headerFolder ${CMAKE_INSTALL_INCLUDEDIR}/kel)
set(configFolder ${libraryFolder}/cmake/kel)

install(TARGETS kel EXPORT kelTargets LIBRARY DESTINATION ${libraryFolder} INCLUDES DESTINATION ${headerFolder})
install(TARGETS KelIbmRationalRose40Import LIBRARY DESTINATION ${libraryFolder})
install(TARGETS petal RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})

# Hosts include "host/..."; what only the library itself includes stays out.
install(DIRECTORY src/host DESTINATION ${headerFolder} FILES_MATCHING PATTERN "*.h"
  PATTERN "KelManyLinks*.h" EXCLUDE PATTERN "KelPointerHash.h" EXCLUDE PATTERN "KelRBTreeBalance.h" EXCLUDE
  PATTERN "KelFewLinks.h" EXCLUDE PATTERN "KelDoomed.h" EXCLUDE)

install(EXPORT kelTargets NAMESPACE kel:: DESTINATION ${configFolder})
file(WRITE ${CMAKE_BINARY_DIR}/kelConfig.cmake "include(\"\${CMAKE_CURRENT_LIST_DIR}/kelTargets.cmake\")\n")
# As the soname says: what was built against 0.1.x goes with any 0.1.y, and with no other version.
write_basic_package_version_file(${CMAKE_BINARY_DIR}/kelConfigVersion.cmake COMPATIBILITY SameMinorVersion)
install(FILES ${CMAKE_BINARY_DIR}/kelConfig.cmake ${CMAKE_BINARY_DIR}/kelConfigVersion.cmake
  DESTINATION ${configFolder})
configure_file(cmake/kel.pc.in ${CMAKE_BINARY_DIR}/kel.pc @ONLY)
install(FILES ${CMAKE_BINARY_DIR}/kel.pc DESTINATION ${libraryFolder}/pkgconfig)

install(FILES README.md DESTINATION ${CMAKE_INSTALL_DOCDIR})
install(DIRECTORY docs/ DESTINATION ${CMAKE_INSTALL_DOCDIR} FILES_MATCHING PATTERN "*.md")
install(DIRECTORY examples DESTINATION ${CMAKE_INSTALL_DOCDIR})
file(GLOB schemas CONFIGURE_DEPENDS src/petal/schema/*.json)
install(FILES ${schemas} DESTINATION ${CMAKE_INSTALL_DATADIR}/petal/schema)
install(FILES docs/man/petal.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
install(FILES completions/petal.bash DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions RENAME petal)
install(FILES completions/_petal DESTINATION ${CMAKE_INSTALL_DATADIR}/zsh/vendor-completions)
install(FILES completions/petal.fish DESTINATION ${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME petal)
set(CPACK_PACKAGE_CONTACT "The petal developers <petal@localhost>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "reads Rose models into JSON and other forms")
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION devel)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_STRIP_FILES ON)
include(CPack)
