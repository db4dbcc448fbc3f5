# The Debian package that cpack makes of what is installed (QuilletInstall.cmake). script/package calls it.
set(QUILLET_MAINTAINER "The Quillet developers <maintainers@quillet.example>" CACHE STRING
  "Who answers for the package: a name and an address, as Debian writes them")
set(QUILLET_DEB_REVISION 1)

configure_file(packaging/debian/changelog.in packaging/changelog.Debian @ONLY)
quillet_compressed(changelog.Debian.gz "${CMAKE_BINARY_DIR}/packaging/changelog.Debian")
# Only in the package: its file of licences stands for those that are installed otherwise.
install(FILES packaging/debian/copyright "${CMAKE_BINARY_DIR}/packaging/changelog.Debian.gz"
  DESTINATION "${QUILLET_DOC_FOLDER}" COMPONENT debian EXCLUDE_FROM_ALL)
install(FILES packaging/debian/lintian-overrides DESTINATION "${CMAKE_INSTALL_DATAROOTDIR}/lintian/overrides" RENAME quillet
  COMPONENT debian EXCLUDE_FROM_ALL)

set(CPACK_GENERATOR DEB)
set(CPACK_INSTALL_CMAKE_PROJECTS "${CMAKE_BINARY_DIR};Quillet;program;/;${CMAKE_BINARY_DIR};Quillet;debian;/")
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_STRIP_FILES ON)
set(CPACK_PACKAGE_NAME quillet)
set(CPACK_PACKAGE_CONTACT "${QUILLET_MAINTAINER}")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "desktop client for a Chinese-language bulletin-board system")
set(CPACK_PACKAGE_DESCRIPTION "An 80x24 Big5 terminal that reads the screen it draws. It keeps the look of the
BBS, draws it as crisp, scaled text at any window size, takes Chinese from the
input method, and knows which page is showing.

Sites are reached by SSH, WebSocket and telnet. Articles are shown whole,
scrolled smoothly and searched; users can be noted in black and white lists;
hot, tracked and bookmarked articles stand in lists of their own. A demo BBS
runs inside the program and needs no network.")

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE ${QUILLET_DEB_REVISION})
set(CPACK_DEBIAN_PACKAGE_SECTION net)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# A Chinese input method, the letters to show, and what links and certificates need; all can be done without.
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "fcitx5-frontend-qt6, fonts-noto-cjk, ca-certificates, xdg-utils, qt6-image-formats-plugins")
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)

# `package_source` takes what lies in the folder, and should not take what was built in it.
set(CPACK_SOURCE_GENERATOR TGZ)
set(CPACK_SOURCE_PACKAGE_FILE_NAME "quillet-${PROJECT_VERSION}")
set(CPACK_SOURCE_IGNORE_FILES "/build/;/out/;/\\.git/;/\\.git$;/\\.cache/")
include(CPack)
