# What `cmake --install` puts where. The Debian package is made of the same: QuilletPackage.cmake.
#
# Two components: "program" is what everybody gets; "licence" is what a Debian package has a file of its own for.
include(GNUInstallDirs)

set(QUILLET_PROGRAM_FOLDER "${CMAKE_INSTALL_BINDIR}")
set(QUILLET_DOC_FOLDER "${CMAKE_INSTALL_DATAROOTDIR}/doc/quillet")
# Where the program looks for it (platform/folders.h), wherever else the system keeps shared files.
cmake_path(SET QUILLET_RESOURCE_FOLDER NORMALIZE "${CMAKE_INSTALL_BINDIR}/../share/quillet")
if(WIN32)
  # One folder that can be put anywhere.
  set(QUILLET_PROGRAM_FOLDER .)
  set(QUILLET_DOC_FOLDER doc)
  set(QUILLET_RESOURCE_FOLDER .)
endif()

# What an installed file is made of may say @PROJECT_VERSION@ and the time of the sources: SOURCE_DATE_EPOCH where it is
# set, so that the same sources give the same package.
string(TIMESTAMP QUILLET_DAY "%Y-%m-%d" UTC)
string(TIMESTAMP QUILLET_DATE "%a, %d %b %Y %H:%M:%S +0000" UTC)

add_custom_target(quillet_package_files ALL)

# quillet_compressed(name source): <build>/packaging/<name>, as manual pages and changelogs are installed.
find_program(QUILLET_GZIP gzip)
function(quillet_compressed name source)
  set(compressed "${CMAKE_BINARY_DIR}/packaging/${name}")
  add_custom_command(OUTPUT "${compressed}"
    COMMAND "${QUILLET_GZIP}" -9nc "${source}" > "${compressed}"
    DEPENDS "${source}" VERBATIM)
  string(MAKE_C_IDENTIFIER "quillet_${name}" target)
  add_custom_target(${target} DEPENDS "${compressed}")
  add_dependencies(quillet_package_files ${target})
endfunction()

install(TARGETS quillet RUNTIME DESTINATION "${QUILLET_PROGRAM_FOLDER}" COMPONENT program)
install(DIRECTORY Data DESTINATION "${QUILLET_RESOURCE_FOLDER}" COMPONENT program
  PATTERN README.md EXCLUDE PATTERN licences EXCLUDE)
install(DIRECTORY demo/content DESTINATION "${QUILLET_RESOURCE_FOLDER}/demo" COMPONENT program)
install(FILES README.md SECURITY.md DESTINATION "${QUILLET_DOC_FOLDER}" COMPONENT program)
install(FILES Data/README.md DESTINATION "${QUILLET_DOC_FOLDER}" RENAME Data-README.md COMPONENT program)
install(FILES LICENSE DESTINATION "${QUILLET_DOC_FOLDER}" COMPONENT licence)
install(DIRECTORY Data/licences DESTINATION "${QUILLET_DOC_FOLDER}" COMPONENT licence)

if(UNIX AND QUILLET_GZIP)
  set(icons "${CMAKE_BINARY_DIR}/packaging/icons")
  add_custom_command(OUTPUT "${icons}/made"
    COMMAND quillet_make_icons "${CMAKE_SOURCE_DIR}/packaging/quillet.svg" "${icons}"
    COMMAND ${CMAKE_COMMAND} -E touch "${icons}/made"
    DEPENDS quillet_make_icons packaging/quillet.svg VERBATIM)
  add_custom_target(quillet_icons DEPENDS "${icons}/made")
  add_dependencies(quillet_package_files quillet_icons)
  quillet_compressed(quillet.1.gz "${CMAKE_SOURCE_DIR}/packaging/quillet.1")
  quillet_compressed(changelog.gz "${CMAKE_SOURCE_DIR}/CHANGELOG.md")
  configure_file(packaging/quillet.metainfo.xml.in packaging/org.example.quillet.metainfo.xml @ONLY)

  set(desktop "${CMAKE_INSTALL_DATAROOTDIR}")
  install(DIRECTORY "${icons}/" DESTINATION "${desktop}/icons/hicolor" COMPONENT program
    FILES_MATCHING PATTERN "*.png")
  install(FILES packaging/quillet.svg DESTINATION "${desktop}/icons/hicolor/scalable/apps" COMPONENT program)
  install(FILES packaging/quillet.desktop DESTINATION "${desktop}/applications" COMPONENT program)
  install(FILES "${CMAKE_BINARY_DIR}/packaging/org.example.quillet.metainfo.xml"
    DESTINATION "${desktop}/metainfo" COMPONENT program)
  install(FILES "${CMAKE_BINARY_DIR}/packaging/quillet.1.gz" DESTINATION "${CMAKE_INSTALL_MANDIR}/man1" COMPONENT program)
  install(FILES "${CMAKE_BINARY_DIR}/packaging/changelog.gz" DESTINATION "${QUILLET_DOC_FOLDER}" COMPONENT program)
endif()
