# What every target of Quillet has in common, and the walls between the folders.

# An include path of its own for each room: <build>/walls/<folder>/<folder> holds links to the room's headers and
# to nothing else, so that "core/charset.h" is found only by targets that name quillet_core in their link line.
# Folders below it belong to the room unless they are rooms, which have a CMakeLists.txt of their own.
function(quillet_wall target folder)
  set(wall "${CMAKE_BINARY_DIR}/walls/${folder}")
  file(GLOB_RECURSE headers CONFIGURE_DEPENDS RELATIVE "${CMAKE_SOURCE_DIR}" "${CMAKE_SOURCE_DIR}/${folder}/*.h")
  file(REMOVE_RECURSE "${wall}/own")
  foreach(header IN LISTS headers)
    get_filename_component(place "${header}" DIRECTORY)
    set(room "${place}")
    while(NOT room STREQUAL folder AND NOT EXISTS "${CMAKE_SOURCE_DIR}/${room}/CMakeLists.txt")
      get_filename_component(room "${room}" DIRECTORY)
    endwhile()
    if(room STREQUAL folder)
      file(MAKE_DIRECTORY "${wall}/own/${place}")
      if(CMAKE_HOST_WIN32)
        # A hard link needs no privilege; a symbolic one would.
        file(CREATE_LINK "${CMAKE_SOURCE_DIR}/${header}" "${wall}/own/${header}" COPY_ON_ERROR)
      else()
        file(CREATE_LINK "${CMAKE_SOURCE_DIR}/${header}" "${wall}/own/${header}" SYMBOLIC)
      endif()
    endif()
  endforeach()
  get_target_property(type ${target} TYPE)
  if(type STREQUAL "INTERFACE_LIBRARY")
    target_include_directories(${target} INTERFACE "${wall}/own")
  else()
    target_include_directories(${target} PUBLIC "${wall}/own")
  endif()
endfunction()

function(quillet_options target)
  target_compile_features(${target} PRIVATE cxx_std_20)
  target_link_libraries(${target} PRIVATE Threads::Threads)
  if(MSVC)
    target_compile_options(${target} PRIVATE /W4 /utf-8 $<$<BOOL:${QUILLET_WERROR}>:/WX>)
  else()
    target_compile_options(${target} PRIVATE
      -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wnon-virtual-dtor -Wold-style-cast
      # g++ 12 sees overlaps and overflows in "literal" + std::string that are not there (its bug 105651), and
      # takes precompiled headers for the program's own.
      "$<$<CXX_COMPILER_ID:GNU>:-Wno-restrict;-Wno-stringop-overflow;-Wno-array-bounds>"
      $<$<BOOL:${QUILLET_WERROR}>:-Werror>)
  endif()
  if(WIN32)
    target_compile_definitions(${target} PRIVATE _WIN32_WINNT=0x0A00 WIN32_LEAN_AND_MEAN NOMINMAX UNICODE _UNICODE)
  endif()
  if(QUILLET_SANITIZE)
    target_compile_options(${target} PRIVATE -fsanitize=${QUILLET_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all)
    target_link_options(${target} PRIVATE -fsanitize=${QUILLET_SANITIZE})
  endif()
endfunction()

# What nearly every source includes, read once. Targets that say the same headers with the same options share
# what the first of them has made.
set(QUILLET_STD_HEADERS <algorithm> <array> <atomic> <chrono> <cstdint> <functional> <map> <memory> <mutex>
  <optional> <span> <string> <string_view> <thread> <unordered_map> <utility> <vector>)

# The same of the toolkit: all of it would take longer to load than to compile most of the sources.
set(QUILLET_TEXT_HEADERS <QObject> <QString> <QStringList>)
set(QUILLET_PAINT_HEADERS <QFont> <QFontMetricsF> <QGuiApplication> <QImage> <QPainter> <QPointF> <QRectF> <QString>
  <QStringList>)
set(QUILLET_WIDGET_HEADERS ${QUILLET_PAINT_HEADERS} <QApplication> <QCheckBox> <QComboBox> <QDialog>
  <QDialogButtonBox> <QFormLayout> <QGroupBox> <QKeyEvent> <QLabel> <QLineEdit> <QPointer> <QPushButton> <QTimer>
  <QVBoxLayout> <QWidget>)

# quillet_precompile(target kind header...): the headers of a kind are those of the first target of that kind.
function(quillet_precompile target kind)
  get_property(first GLOBAL PROPERTY QUILLET_PRECOMPILED_${kind})
  if(first)
    target_precompile_headers(${target} REUSE_FROM ${first})
  else()
    target_precompile_headers(${target} PRIVATE ${ARGN})
    set_property(GLOBAL PROPERTY QUILLET_PRECOMPILED_${kind} ${target})
  endif()
endfunction()

# quillet_unity(target): its sources a few at a time, where that is asked for.
function(quillet_unity target)
  if(QUILLET_UNITY)
    set_target_properties(${target} PROPERTIES UNITY_BUILD ON UNITY_BUILD_BATCH_SIZE 10)
  endif()
endfunction()

# quillet_library(core SOURCES a.cpp ... PUBLIC quillet_platform ... PRIVATE ...): the library quillet_core of folder
# core/. PUBLIC is what its headers need.
function(quillet_library folder)
  cmake_parse_arguments(ARG "" "" "SOURCES;PUBLIC;PRIVATE" ${ARGN})
  string(REPLACE "/" "_" name "${folder}")
  set(target quillet_${name})
  if(ARG_SOURCES)
    add_library(${target} STATIC ${ARG_SOURCES})
    quillet_options(${target})
    quillet_unity(${target})
    quillet_precompile(${target} library ${QUILLET_STD_HEADERS})
    target_link_libraries(${target} PUBLIC ${ARG_PUBLIC} PRIVATE ${ARG_PRIVATE})
  else()
    add_library(${target} INTERFACE)
    target_link_libraries(${target} INTERFACE ${ARG_PUBLIC})
  endif()
  quillet_wall(${target} ${folder})
endfunction()

# quillet_room(session TOOLKIT text|widgets SOURCES ... PUBLIC ... PRIVATE ...): the library quillet_app_session of
# folder app/session/. TOOLKIT is what most of its sources use of Qt.
function(quillet_room room)
  cmake_parse_arguments(ARG "" "TOOLKIT" "SOURCES;PUBLIC;PRIVATE" ${ARGN})
  string(REPLACE "/" "_" name "${room}")
  set(target quillet_app_${name})
  add_library(${target} STATIC ${ARG_SOURCES})
  quillet_options(${target})
  quillet_wall(${target} app/${room})
  quillet_unity(${target})
  set_target_properties(${target} PROPERTIES AUTOMOC ON)
  target_link_libraries(${target} PUBLIC ${ARG_PUBLIC} PRIVATE ${ARG_PRIVATE})
  if(ARG_TOOLKIT STREQUAL "text")
    quillet_precompile(${target} text ${QUILLET_TEXT_HEADERS} ${QUILLET_STD_HEADERS})
  else()
    quillet_precompile(${target} widgets ${QUILLET_WIDGET_HEADERS} ${QUILLET_STD_HEADERS})
  endif()
endfunction()

# quillet_draws_anywhere(target): its windows can be off-screen too. Where Qt is no library of the system's, what a
# program may need of it at run time is named at its link.
function(quillet_draws_anywhere target)
  get_target_property(kind Qt6::Core TYPE)
  if(kind STREQUAL "STATIC_LIBRARY")
    qt_import_plugins(${target} INCLUDE Qt6::QOffscreenIntegrationPlugin)
  endif()
endfunction()

# quillet_program(name SOURCES ... USES ...): a program in <build>/bin.
function(quillet_program name)
  cmake_parse_arguments(ARG "" "" "SOURCES;USES" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  quillet_options(${name})
  target_link_libraries(${name} PRIVATE ${ARG_USES})
  if(UNIX AND NOT APPLE)
    # Where functions of libraries are is settled at the start, and cannot be written over afterwards.
    target_link_options(${name} PRIVATE -Wl,-z,relro,-z,now)
  endif()
endfunction()
