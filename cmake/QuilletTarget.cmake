# What every target of Quillet has in common, and the walls between the folders.

# An include path of its own for each folder: <build>/walls/<folder>/<folder> points to the sources,
# so that "core/charset.h" is found only by targets that name quillet_core in their link line.
function(quillet_wall target folder)
  set(wall "${CMAKE_BINARY_DIR}/walls/${folder}")
  file(MAKE_DIRECTORY "${wall}")
  if(NOT EXISTS "${wall}/${folder}")
    get_filename_component(parent "${wall}/${folder}" DIRECTORY)
    file(MAKE_DIRECTORY "${parent}")
    if(CMAKE_HOST_WIN32)
      # A junction needs no privilege; a symbolic link would.
      file(TO_NATIVE_PATH "${wall}/${folder}" link)
      file(TO_NATIVE_PATH "${CMAKE_SOURCE_DIR}/${folder}" aim)
      execute_process(COMMAND cmd /c mklink /J "${link}" "${aim}" COMMAND_ERROR_IS_FATAL ANY OUTPUT_QUIET)
    else()
      file(CREATE_LINK "${CMAKE_SOURCE_DIR}/${folder}" "${wall}/${folder}" SYMBOLIC)
    endif()
  endif()
  get_target_property(type ${target} TYPE)
  if(type STREQUAL "INTERFACE_LIBRARY")
    target_include_directories(${target} INTERFACE "${wall}")
  else()
    target_include_directories(${target} PUBLIC "${wall}")
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

# quillet_library(core SOURCES a.cpp ... USES quillet_platform ...): the library quillet_core of folder core/.
function(quillet_library folder)
  cmake_parse_arguments(ARG "" "" "SOURCES;USES" ${ARGN})
  string(REPLACE "/" "_" name "${folder}")
  set(target quillet_${name})
  if(ARG_SOURCES)
    add_library(${target} STATIC ${ARG_SOURCES})
    quillet_options(${target})
    quillet_unity(${target})
    quillet_precompile(${target} library ${QUILLET_STD_HEADERS})
    target_link_libraries(${target} PUBLIC ${ARG_USES})
  else()
    add_library(${target} INTERFACE)
    target_link_libraries(${target} INTERFACE ${ARG_USES})
  endif()
  quillet_wall(${target} ${folder})
endfunction()

# quillet_program(name SOURCES ... USES ...): a program in <build>/bin.
function(quillet_program name)
  cmake_parse_arguments(ARG "" "" "SOURCES;USES" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  quillet_options(${name})
  target_link_libraries(${name} PRIVATE ${ARG_USES})
endfunction()
