# SPDX-FileCopyrightText: The qen authors
# SPDX-License-Identifier: GPL-3.0-or-later
# What every target of the program has in common, carried by the interface target qen_common.

option(QEN_WERROR "Warnings are errors" ON)
option(QEN_SANITIZE "Address and undefined-behaviour sanitizers" OFF)

set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_AUTOMOC ON)
set(CMAKE_AUTOUIC ON)
set(CMAKE_AUTORCC ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/lib)

find_package(Qt6 6.4 REQUIRED COMPONENTS Core Gui Widgets Sql PrintSupport SerialPort Svg SvgWidgets Charts Test)
find_package(PkgConfig REQUIRED)
pkg_check_modules(SODIUM REQUIRED IMPORTED_TARGET libsodium)
pkg_check_modules(XLSXWRITER REQUIRED IMPORTED_TARGET xlsxwriter)
find_library(FBCLIENT_LIBRARY fbclient REQUIRED)

find_program(CCACHE_PROGRAM ccache)
if(CCACHE_PROGRAM)
  # The precompiled header's own time stamps say nothing about its content.
  set(CMAKE_CXX_COMPILER_LAUNCHER
    ${CMAKE_COMMAND} -E env CCACHE_SLOPPINESS=pch_defines,time_macros,include_file_mtime,include_file_ctime ${CCACHE_PROGRAM})
endif()

add_library(qen_common INTERFACE)
target_compile_features(qen_common INTERFACE cxx_std_20)
target_compile_options(qen_common INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual
  $<$<BOOL:${QEN_WERROR}>:-Werror> $<$<CXX_COMPILER_ID:GNU>:-fpch-preprocess>)
target_compile_definitions(qen_common INTERFACE
  QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_URL_CAST_FROM_STRING QT_NO_CAST_FROM_BYTEARRAY
  QT_NO_FOREACH QT_STRICT_ITERATORS QT_NO_NARROWING_CONVERSIONS_IN_CONNECT)
target_include_directories(qen_common INTERFACE ${PROJECT_SOURCE_DIR})
target_link_libraries(qen_common INTERFACE Qt6::Core Qt6::Gui Qt6::Widgets Qt6::Sql Qt6::PrintSupport
  Qt6::SerialPort Qt6::Svg)

if(QEN_SANITIZE)
  target_compile_options(qen_common INTERFACE -fsanitize=address,undefined -fno-omit-frame-pointer)
  target_link_options(qen_common INTERFACE -fsanitize=address,undefined)
endif()

# One precompiled header for all: every target has the same flags, so it is compiled once.
add_library(qen_pch OBJECT ${PROJECT_SOURCE_DIR}/cmake/pch.cpp)
target_link_libraries(qen_pch PUBLIC qen_common)
target_precompile_headers(qen_pch PRIVATE ${PROJECT_SOURCE_DIR}/cmake/pch.h)

# qen_setup(target): common flags and the shared precompiled header.
function(qen_setup target)
  set_target_properties(${target} PROPERTIES DEFINE_SYMBOL "")
  target_link_libraries(${target} PUBLIC qen_common)
  target_precompile_headers(${target} REUSE_FROM qen_pch)
endfunction()
