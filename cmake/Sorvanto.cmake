# Build rules shared by all folders: compiler flags, precompiled headers,
# and one function each for a library, a program, a test and a benchmark.

find_program(CCACHE ccache)
if(CCACHE)
  set(CMAKE_CXX_COMPILER_LAUNCHER
      ${CMAKE_COMMAND} -E env CCACHE_SLOPPINESS=pch_defines,time_macros
      CCACHE_BASEDIR=${CMAKE_SOURCE_DIR} ${CCACHE})
endif()
find_program(MOLD mold)
if(MOLD)
  add_link_options(-fuse-ld=mold)
endif()

add_compile_options(-Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wnon-virtual-dtor -Woverloaded-virtual
                    -fpch-preprocess)
if(SORVANTO_SANITIZE)
  add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=undefined
                      -fno-omit-frame-pointer)
  add_link_options(-fsanitize=address,undefined)
endif()
if(SORVANTO_COVERAGE)
  add_compile_options(--coverage)
  add_link_options(--coverage)
endif()

# _sorvanto_precompiled(<kind> <targets>...): the precompiled header cmake/precompiled_<kind>.h for code on these targets.
function(_sorvanto_precompiled kind)
  file(WRITE ${CMAKE_BINARY_DIR}/pch_${kind}.cpp "")
  add_library(pch_${kind} OBJECT ${CMAKE_BINARY_DIR}/pch_${kind}.cpp)
  set_target_properties(pch_${kind} PROPERTIES AUTOMOC OFF AUTOUIC OFF AUTORCC OFF)
  target_precompile_headers(pch_${kind} PRIVATE ${CMAKE_SOURCE_DIR}/cmake/precompiled_${kind}.h)
  target_link_libraries(pch_${kind} PRIVATE ${ARGN})
endfunction()

# For code on QtCore alone and code with windows, where each literal says whether it is a QString; for programs and
# benchmarks, which may write literals as they come; and for tests (tests/CMakeLists.txt), which may so as well.
_sorvanto_precompiled(core Qt6::Core)
_sorvanto_precompiled(gui Qt6::Widgets)
_sorvanto_precompiled(program Qt6::Widgets)
set(kinds_of_strict_literals core gui)
foreach(kind ${kinds_of_strict_literals})
  target_compile_definitions(pch_${kind} PRIVATE QT_NO_CAST_FROM_ASCII)
endforeach()

# kind: of its precompiled header
function(_sorvanto_common target kind)
  target_include_directories(${target} PUBLIC ${CMAKE_SOURCE_DIR}/src)
  if(kind IN_LIST kinds_of_strict_literals)
    target_compile_definitions(${target} PRIVATE QT_NO_CAST_FROM_ASCII)
  endif()
  if(SORVANTO_PRECOMPILE)
    target_precompile_headers(${target} REUSE_FROM pch_${kind})
  else()
    target_compile_options(${target} PRIVATE -include ${CMAKE_SOURCE_DIR}/cmake/precompiled_${kind}.h)
  endif()
endfunction()

# Qt's generators cost a fifth of the build: a target runs them only when one of its sources asks for them.
function(_sorvanto_generators target)
  set(moc OFF)
  set(uic OFF)
  foreach(source ${ARGN})
    if(source MATCHES "[.]ui$")
      set(uic ON)
    else()
      file(STRINGS ${source} asks REGEX "^ *Q_(OBJECT|GADGET|NAMESPACE)" LIMIT_COUNT 1)
      if(asks)
        set(moc ON)
      endif()
    endif()
  endforeach()
  set_target_properties(${target} PROPERTIES AUTOMOC ${moc} AUTOUIC ${uic} AUTORCC OFF)
endfunction()

# Sources compiled together, so many at a time (0: all). Each is compiled by itself as well where developers work, so
# the warnings about what another source of the batch has are no news.
function(_sorvanto_unity target batch)
  set_target_properties(${target} PROPERTIES UNITY_BUILD ${SORVANTO_UNITY} UNITY_BUILD_BATCH_SIZE ${batch})
  if(SORVANTO_UNITY)
    target_compile_options(${target} PRIVATE -Wno-shadow -Wno-subobject-linkage)
  endif()
endfunction()

# sorvanto_library(<folder below src> [GUI] [PARTS <folders below it>] LINKS <targets>...)
# One static library of all sources of the folder, as sorvanto::<folder with _>.
# Its link line is its place in the house: it may only name lower layers.
function(sorvanto_library folder)
  cmake_parse_arguments(ARG "GUI" "" "PARTS;LINKS" ${ARGN})
  string(REPLACE "/" "_" name ${folder})
  file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/${folder}/*.cpp
       ${CMAKE_CURRENT_SOURCE_DIR}/${folder}/*.h ${CMAKE_CURRENT_SOURCE_DIR}/${folder}/*.ui)
  foreach(part ${ARG_PARTS})
    file(GLOB found CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/${folder}/${part}/*.cpp
         ${CMAKE_CURRENT_SOURCE_DIR}/${folder}/${part}/*.h)
    list(APPEND sources ${found})
  endforeach()
  if(NOT sources MATCHES "[.]cpp")
    file(WRITE ${CMAKE_BINARY_DIR}/empty/${name}.cpp "")
    list(APPEND sources ${CMAKE_BINARY_DIR}/empty/${name}.cpp)
  endif()
  add_library(sorvanto_${name} STATIC ${sources})
  add_library(sorvanto::${name} ALIAS sorvanto_${name})
  foreach(part ${ARG_PARTS})
    add_library(sorvanto::${name}_${part} ALIAS sorvanto_${name})
  endforeach()
  target_link_libraries(sorvanto_${name} PUBLIC ${ARG_LINKS})
  _sorvanto_unity(sorvanto_${name} 0)
  _sorvanto_generators(sorvanto_${name} ${sources})
  if(ARG_GUI)
    _sorvanto_common(sorvanto_${name} gui)
  else()
    _sorvanto_common(sorvanto_${name} core)
  endif()
endfunction()

# sorvanto_resources(<name> <.qrc>): resources as an object library, which no linker drops.
function(sorvanto_resources name qrc)
  add_library(sorvanto_${name} OBJECT ${qrc})
  add_library(sorvanto::${name} ALIAS sorvanto_${name})
  target_link_libraries(sorvanto_${name} PUBLIC Qt6::Core)
endfunction()

# sorvanto_program(<name> SOURCES <files>... LINKS <targets>...)
function(sorvanto_program name)
  cmake_parse_arguments(ARG "" "" "SOURCES;LINKS" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  target_link_libraries(${name} PRIVATE ${ARG_LINKS} Qt6::Widgets)
  _sorvanto_common(${name} program)
  add_dependencies(whole_program ${name})
endfunction()

# What is tested as it is delivered, without the sanitizers: the programs, their benchmarks, and the tests that run them.
add_custom_target(whole_program)

# sorvanto_suites(<folder below tests> SUITES <names>... LINKS <targets>...)
# Suites of the folder that two test programs run: compiled once, as sorvanto_<folder>_suites. The folder's own program
# takes them from there.
function(sorvanto_suites folder)
  cmake_parse_arguments(ARG "" "" "SUITES;LINKS" ${ARGN})
  string(REPLACE "/" "_" name ${folder})
  list(TRANSFORM ARG_SUITES PREPEND ${CMAKE_CURRENT_SOURCE_DIR}/${folder}/)
  list(TRANSFORM ARG_SUITES APPEND .cpp)
  add_library(sorvanto_${name}_suites OBJECT ${ARG_SUITES})
  target_link_libraries(sorvanto_${name}_suites PUBLIC ${ARG_LINKS})
  _sorvanto_test_sources(sorvanto_${name}_suites ${ARG_SUITES})
endfunction()

# What is the same for all that tests are compiled into.
function(_sorvanto_test_sources target)
  _sorvanto_unity(${target} 8)
  _sorvanto_generators(${target} ${ARGN})
  target_link_libraries(${target} PRIVATE sorvanto_test_support)
  target_compile_definitions(${target} PRIVATE
      SORVANTO_TEST_DATA="${CMAKE_SOURCE_DIR}/tests/data"
      SORVANTO_GOLDEN="${CMAKE_SOURCE_DIR}/tests/golden"
      SORVANTO_SOURCE_DIR="${CMAKE_SOURCE_DIR}"
      SORVANTO_BIN_DIR="${CMAKE_RUNTIME_OUTPUT_DIRECTORY}")
  _sorvanto_common(${target} test)
  target_include_directories(${target} PRIVATE ${CMAKE_SOURCE_DIR}/tests)
endfunction()

# sorvanto_test(<folder below tests> LABEL unit|gui|server|e2e|fault|slow [ON_SERVER] LINKS <targets>...)
# One GoogleTest program of all sources of the folder. Those of unit and gui run under the sanitizers.
# ON_SERVER: its records are on a server in place of a file.
function(sorvanto_test folder)
  cmake_parse_arguments(ARG "ON_SERVER" "LABEL" "LINKS" ${ARGN})
  string(REPLACE "/" "_" name ${folder})
  file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/${folder}/*.cpp
       ${CMAKE_CURRENT_SOURCE_DIR}/${folder}/*.h)
  if(TARGET sorvanto_${name}_suites)
    get_target_property(compiled sorvanto_${name}_suites SOURCES)
    list(REMOVE_ITEM sources ${compiled})
    list(APPEND ARG_LINKS sorvanto_${name}_suites)
  endif()
  if(ARG_ON_SERVER)
    list(APPEND sources ${CMAKE_CURRENT_SOURCE_DIR}/support/ServerPlace.cpp)
    list(APPEND ARG_LINKS sorvanto_test_server)
  endif()
  add_executable(test_${name} ${sources})
  target_link_libraries(test_${name} PRIVATE ${ARG_LINKS})
  _sorvanto_test_sources(test_${name} ${sources})
  add_test(NAME ${name} COMMAND test_${name})
  if(NOT ARG_LABEL MATCHES "unit|gui")
    add_dependencies(whole_program test_${name})
  endif()
  set_tests_properties(${name} PROPERTIES LABELS "${ARG_LABEL}" TIMEOUT 1200
      ENVIRONMENT "QT_QPA_PLATFORM=offscreen;LC_ALL=C.UTF-8;TZ=UTC")
endfunction()

# sorvanto_bench(<name> SOURCES <files>... LINKS <targets>...): a Google Benchmark program.
function(sorvanto_bench name)
  cmake_parse_arguments(ARG "" "" "SOURCES;LINKS" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  add_dependencies(whole_program ${name})
  set_target_properties(${name} PROPERTIES AUTOMOC OFF AUTOUIC OFF AUTORCC OFF)
  target_link_libraries(${name} PRIVATE ${ARG_LINKS} benchmark::benchmark Qt6::Widgets)
  _sorvanto_common(${name} program)
endfunction()
