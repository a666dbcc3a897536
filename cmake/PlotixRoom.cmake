# How every folder of the house is built: same flags, same precompiled header, sources found by folder.

add_library(plotix_platform INTERFACE)
target_include_directories(plotix_platform INTERFACE ${PROJECT_SOURCE_DIR})
target_link_libraries(plotix_platform INTERFACE Qt6::Core Qt6::Gui Qt6::Widgets Threads::Threads)
target_compile_options(plotix_platform INTERFACE -Wall -Wextra -Wpedantic -Werror -Wshadow -Wnon-virtual-dtor
                                                 -Winvalid-pch)
target_compile_definitions(plotix_platform INTERFACE QT_NO_FOREACH QT_NO_CAST_TO_ASCII)

if(PLOTIX_SANITIZE)
  add_compile_options(-fsanitize=${PLOTIX_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all)
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

add_library(plotix_pch STATIC ${PROJECT_SOURCE_DIR}/cmake/pch.cpp)
target_link_libraries(plotix_pch PRIVATE plotix_platform)
target_precompile_headers(plotix_pch PRIVATE ${PROJECT_SOURCE_DIR}/cmake/pch.h)
set_target_properties(plotix_pch PROPERTIES AUTOMOC OFF AUTOUIC OFF AUTORCC OFF)

# plotix_room(NAME STATIC|SHARED|MODULE|EXECUTABLE [SOURCES files…] [LINK libraries…] [KERNELS files…])
# Builds the .cpp, .h, .ui and .qrc files of the current folder (not of its subfolders), unless SOURCES names them.
# KERNELS are those of them that compile themselves for several processors, see base/vectors.
function(plotix_room name kind)
  cmake_parse_arguments(ROOM "" "" "SOURCES;LINK;KERNELS" ${ARGN})
  if(NOT ROOM_SOURCES)
    file(GLOB ROOM_SOURCES CONFIGURE_DEPENDS *.cpp *.h *.ui *.qrc)
  endif()
  if(NOT ROOM_SOURCES)
    file(WRITE ${CMAKE_CURRENT_BINARY_DIR}/empty.cpp "")
    set(ROOM_SOURCES ${CMAKE_CURRENT_BINARY_DIR}/empty.cpp)
  endif()
  if(kind STREQUAL "EXECUTABLE")
    add_executable(${name} ${ROOM_SOURCES})
  else()
    add_library(${name} ${kind} ${ROOM_SOURCES})
  endif()
  target_link_libraries(${name} PUBLIC plotix_platform ${ROOM_LINK})
  target_precompile_headers(${name} REUSE_FROM plotix_pch)
  set_target_properties(${name} PROPERTIES LINKER_LANGUAGE CXX)
  # Each is a translation unit of its own. A product and a sum stay two roundings also where one instruction does both,
  # so that all processors give the same bits.
  set_source_files_properties(${ROOM_KERNELS} PROPERTIES SKIP_PRECOMPILE_HEADERS ON SKIP_UNITY_BUILD_INCLUSION ON
                                                         COMPILE_OPTIONS -ffp-contract=off)
endfunction()
