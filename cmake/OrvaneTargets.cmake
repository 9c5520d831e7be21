# How every target of the project is compiled.

include(GenerateExportHeader)
include(GNUInstallDirs)

function(orvane_target_options target)
  target_compile_features(${target} PUBLIC cxx_std_20)
  set_target_properties(${target} PROPERTIES CXX_EXTENSIONS OFF)
  # GCC 12 sees overlapping copies in inlined std::string operators where there are none.
  target_compile_options(${target} PRIVATE
    -Wall -Wextra -Wpedantic -Wconversion -Wsign-conversion -Wshadow -Wnon-virtual-dtor
    -Wold-style-cast -Wcast-qual -Wcast-align -Woverloaded-virtual -Wundef
    $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict>
    $<$<BOOL:${ORVANE_WERROR}>:-Werror>)
  if(ORVANE_SANITIZE)
    # ON, or "thread".
    set(sanitizers address,undefined)
    if(ORVANE_SANITIZE STREQUAL "thread")
      set(sanitizers thread)
    endif()
    target_compile_options(${target} PRIVATE
      -fsanitize=${sanitizers} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_compile_definitions(${target} PRIVATE _GLIBCXX_ASSERTIONS)
    target_link_options(${target} PRIVATE -fsanitize=${sanitizers})
  endif()
  if(ORVANE_BUILD_FUZZ AND ORVANE_FUZZ_SANITIZERS)
    target_compile_options(${target} PRIVATE
      -fsanitize=fuzzer-no-link,${ORVANE_FUZZ_SANITIZERS} -fno-sanitize-recover=all)
    target_link_options(${target} PRIVATE -fsanitize=${ORVANE_FUZZ_SANITIZERS})
  endif()
endfunction()

# What those who link the library need, from the build tree and from where it is installed.
function(orvane_public_headers target)
  target_compile_features(${target} PUBLIC cxx_std_20)
  target_include_directories(${target}
    PUBLIC $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/include>
           $<BUILD_INTERFACE:${PROJECT_BINARY_DIR}/include>
           $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>)
endfunction()

# The library itself: hidden visibility, a soname, and the generated export header.
function(orvane_library target)
  add_library(${target} ${ARGN})
  add_library(OrvaneUpid::${target} ALIAS ${target})
  orvane_target_options(${target})
  orvane_public_headers(${target})
  generate_export_header(${target}
    EXPORT_MACRO_NAME ORVANE_EXPORT
    STATIC_DEFINE ORVANE_STATIC_DEFINE
    EXPORT_FILE_NAME ${PROJECT_BINARY_DIR}/include/orvane/export.h)
  target_include_directories(${target} PRIVATE ${PROJECT_SOURCE_DIR})
  set_target_properties(${target} PROPERTIES
    VERSION ${PROJECT_VERSION}
    SOVERSION ${PROJECT_VERSION_MAJOR}
    CXX_VISIBILITY_PRESET hidden
    VISIBILITY_INLINES_HIDDEN ON
    POSITION_INDEPENDENT_CODE ON)
  if(NOT BUILD_SHARED_LIBS)
    target_compile_definitions(${target} PUBLIC ORVANE_STATIC_DEFINE)
  elseif(CMAKE_SYSTEM_NAME STREQUAL "Linux")
    set(map ${PROJECT_SOURCE_DIR}/cmake/orvane.map)
    target_link_options(${target} PRIVATE -Wl,--version-script=${map})
    set_property(TARGET ${target} APPEND PROPERTY LINK_DEPENDS ${map})
  endif()
endfunction()

# The objects of a shared library once more, as a static library beside it.
function(orvane_static_library target shared)
  add_library(${target} STATIC $<TARGET_OBJECTS:${shared}>)
  add_library(OrvaneUpid::${target} ALIAS ${target})
  orvane_public_headers(${target})
  target_compile_definitions(${target} PUBLIC ORVANE_STATIC_DEFINE)
  set_target_properties(${target} PROPERTIES
    OUTPUT_NAME ${shared}
    LINKER_LANGUAGE CXX)
endfunction()
