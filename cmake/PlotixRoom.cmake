# How every folder of the house is built: same flags, precompiled headers by what it may know, sources found by folder.

option(PLOTIX_UNITY "Compile the sources of a room in few batches: much quicker from nothing" ON)

add_library(plotix_platform INTERFACE)
target_include_directories(plotix_platform INTERFACE ${PROJECT_SOURCE_DIR})
target_link_libraries(plotix_platform INTERFACE Threads::Threads)
target_compile_options(plotix_platform INTERFACE -Wall -Wextra -Wpedantic -Werror -Wshadow -Wnon-virtual-dtor
                                                 -Winvalid-pch)
target_compile_definitions(plotix_platform INTERFACE QT_NO_FOREACH QT_NO_CAST_TO_ASCII)

if(PLOTIX_SANITIZE)
  # What is not set yet is told wrongly where a sanitizer's own code stands in between; the release build tells it.
  add_compile_options(-fsanitize=${PLOTIX_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all
                      -Wno-maybe-uninitialized)
  add_link_options(-fsanitize=${PLOTIX_SANITIZE})
endif()

# ccache understands precompiled headers when gcc leaves their use in the preprocessed text and it may trust the
# header's definitions and times.
find_program(CCACHE_PROGRAM ccache)
if(CCACHE_PROGRAM)
  set(CMAKE_CXX_COMPILER_LAUNCHER
      ${CMAKE_COMMAND} -E env CCACHE_SLOPPINESS=pch_defines,time_macros,include_file_mtime,include_file_ctime
      CCACHE_BASEDIR=${PROJECT_SOURCE_DIR} CCACHE_NOHASHDIR=1 ${CCACHE_PROGRAM})
  add_compile_options(-fpch-preprocess)
endif()

# What a room may know of the toolkit. Each step brings its libraries and its precompiled header; what lies above it is
# fenced off, so that including it fails to compile wherever the toolkit's headers are installed.
set(plotix_knows_Core Qt6::Core)
set(plotix_knows_Gui Qt6::Core Qt6::Gui)
set(plotix_knows_Widgets Qt6::Core Qt6::Gui Qt6::Widgets)
set(plotix_knows_Print Qt6::Core Qt6::Gui Qt6::Widgets Qt6::PrintSupport)
set(plotix_fences_Core gui widgets print)
set(plotix_fences_Gui widgets print)
set(plotix_fences_Widgets print)
set(plotix_fences_Print)

function(plotix_precompiled name header)
  add_library(${name} STATIC ${PROJECT_SOURCE_DIR}/cmake/pch/compiled.cpp)
  target_link_libraries(${name} PRIVATE plotix_platform ${ARGN})
  target_precompile_headers(${name} PRIVATE ${PROJECT_SOURCE_DIR}/cmake/pch/${header})
  set_target_properties(${name} PROPERTIES AUTOMOC OFF AUTOUIC OFF AUTORCC OFF UNITY_BUILD OFF)
endfunction()
plotix_precompiled(plotix_pch_Core core.h Qt6::Core)
plotix_precompiled(plotix_pch_Gui gui.h Qt6::Core Qt6::Gui)
plotix_precompiled(plotix_pch_Widgets widgets.h Qt6::Core Qt6::Gui Qt6::Widgets)

# True when a source of the list asks for the toolkit's meta-object compiler. Looked at while configuring: a room's
# first such class wants cmake to run again.
function(plotix_needs_moc result)
  set(${result} OFF PARENT_SCOPE)
  foreach(source ${ARGN})
    if(source MATCHES "\\.(h|cpp)$" AND EXISTS ${source})
      file(STRINGS ${source} marks REGEX "Q_OBJECT|Q_GADGET|Q_NAMESPACE" LIMIT_COUNT 1)
      if(marks)
        set(${result} ON PARENT_SCOPE)
        return()
      endif()
    endif()
  endforeach()
endfunction()

# plotix_room(NAME STATIC|SHARED|MODULE|EXECUTABLE KNOWS Core|Gui|Widgets|Print [APART] [SOURCES files…]
#             [LINK libraries…] [PCH target] [KERNELS files…])
# Builds the .cpp, .h, .ui and .qrc files of the current folder (not of its subfolders), unless SOURCES names them.
# APART: every source by itself. KERNELS are those that compile themselves for several processors, see base/vectors.
function(plotix_room name kind)
  cmake_parse_arguments(ROOM "APART" "KNOWS;PCH" "SOURCES;LINK;KERNELS" ${ARGN})
  if(NOT DEFINED plotix_knows_${ROOM_KNOWS})
    message(FATAL_ERROR "${name}: say what the room KNOWS: Core, Gui, Widgets or Print")
  endif()
  if(NOT ROOM_SOURCES)
    file(GLOB ROOM_SOURCES CONFIGURE_DEPENDS *.cpp *.h *.ui *.qrc)
  endif()
  list(TRANSFORM ROOM_SOURCES PREPEND ${CMAKE_CURRENT_SOURCE_DIR}/ REGEX "^[^/]")
  if(kind STREQUAL "EXECUTABLE")
    add_executable(${name} ${ROOM_SOURCES})
  else()
    add_library(${name} ${kind} ${ROOM_SOURCES})
  endif()
  target_link_libraries(${name} PUBLIC plotix_platform ${plotix_knows_${ROOM_KNOWS}} ${ROOM_LINK})
  foreach(fence ${plotix_fences_${ROOM_KNOWS}})
    target_include_directories(${name} BEFORE PRIVATE ${PROJECT_SOURCE_DIR}/cmake/fences/${fence})
  endforeach()
  if(NOT ROOM_PCH)
    set(ROOM_PCH plotix_pch_${ROOM_KNOWS})
  endif()
  if(ROOM_PCH STREQUAL "plotix_pch_Print")
    set(ROOM_PCH plotix_pch_Widgets)  # printers are seldom met
  endif()
  target_precompile_headers(${name} REUSE_FROM ${ROOM_PCH})
  set_target_properties(${name} PROPERTIES LINKER_LANGUAGE CXX)
  plotix_needs_moc(moc ${ROOM_SOURCES})
  set_target_properties(${name} PROPERTIES AUTOMOC ${moc})
  if(PLOTIX_UNITY AND NOT ROOM_APART)
    set_target_properties(${name} PROPERTIES UNITY_BUILD ON UNITY_BUILD_BATCH_SIZE 10)
  endif()
  # Each is a translation unit of its own. A product and a sum stay two roundings also where one instruction does both,
  # so that all processors give the same bits.
  set_source_files_properties(${ROOM_KERNELS} PROPERTIES SKIP_PRECOMPILE_HEADERS ON SKIP_UNITY_BUILD_INCLUSION ON
                                                         COMPILE_OPTIONS -ffp-contract=off)
endfunction()
