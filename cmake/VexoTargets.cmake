# The flags every target shares, and the functions that declare a layer, a module, a test and a benchmark.

add_library(vexo_flags INTERFACE)
target_compile_features(vexo_flags INTERFACE cxx_std_20)
# Results are the contract's to the bit: no fast-math, no contraction of a*b+c.
target_compile_options(vexo_flags INTERFACE
  -Wall -Wextra -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual -ffp-contract=off -fno-semantic-interposition)
if(VEXO_SANITIZE)
  target_compile_options(vexo_flags INTERFACE -fsanitize=${VEXO_SANITIZE} -fno-omit-frame-pointer
    -fno-sanitize-recover=all)
  target_link_options(vexo_flags INTERFACE -fsanitize=${VEXO_SANITIZE})
endif()
if(VEXO_FUZZ)
  # The layers tell the fuzzer which of their branches an input takes; without that it guesses blindly.
  target_compile_options(vexo_flags INTERFACE -fsanitize=fuzzer-no-link)
endif()
find_program(VEXO_MOLD mold)
if(VEXO_MOLD AND NOT VEXO_FUZZ)
  target_link_options(vexo_flags INTERFACE -fuse-ld=mold)
endif()
find_program(VEXO_CCACHE ccache)
if(VEXO_CCACHE)
  set(CMAKE_CXX_COMPILER_LAUNCHER ${VEXO_CCACHE})
endif()

# vexo_layer(platform LINKS runtime ... ROOMS ...): one kit layer, one folder with the rooms in it, one shared
# library. Its headers are found by their bare names, so that the library can be built against another host by
# swapping the include directories.
function(vexo_layer name)
  cmake_parse_arguments(arg "" "" "LINKS;ROOMS" ${ARGN})
  set(folders ${CMAKE_CURRENT_SOURCE_DIR})
  foreach(room IN LISTS arg_ROOMS)
    list(APPEND folders ${CMAKE_CURRENT_SOURCE_DIR}/${room})
  endforeach()
  list(TRANSFORM folders APPEND /*.cpp OUTPUT_VARIABLE source_patterns)
  list(TRANSFORM folders APPEND /*.h OUTPUT_VARIABLE header_patterns)
  file(GLOB sources CONFIGURE_DEPENDS ${source_patterns})
  file(GLOB headers CONFIGURE_DEPENDS ${header_patterns})
  set(target vexokit_${name})
  if(sources)
    add_library(${target} SHARED ${sources} ${headers})
    target_link_libraries(${target} PRIVATE $<BUILD_INTERFACE:vexo_flags>)
    # A function that a program happens to name alike is not taken for the layer's own.
    target_link_options(${target} PRIVATE -Wl,-Bsymbolic-functions)
    set(scope PUBLIC)
  else()
    add_library(${target} INTERFACE)
    set(scope INTERFACE)
  endif()
  target_compile_features(${target} ${scope} cxx_std_20)
  target_include_directories(${target} ${scope}
    "$<BUILD_INTERFACE:${folders}>" $<INSTALL_INTERFACE:include/VEXOTools10/hostkit>)
  foreach(below IN LISTS arg_LINKS)
    target_link_libraries(${target} ${scope} vexokit_${below})
  endforeach()
  add_library(VEXOTools10::${name} ALIAS ${target})
  set_target_properties(${target} PROPERTIES EXPORT_NAME ${name})
  install(TARGETS ${target} EXPORT VEXOTools10Targets LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR})
  install(FILES ${headers} DESTINATION include/VEXOTools10/hostkit)
endfunction()

# vexo_module(slab LINKS ...): a loadable module; its name is its file name, without a lib prefix. It exports what the
# map names, by default its entries, and calls what it has itself: no program or other module can stand in for it.
function(vexo_module name)
  cmake_parse_arguments(arg "" "EXPORTS" "SOURCES;LINKS" ${ARGN})
  if(NOT arg_EXPORTS)
    set(arg_EXPORTS ${PROJECT_SOURCE_DIR}/cmake/moduleexports.map)
  endif()
  add_library(${name} SHARED ${arg_SOURCES})
  set_target_properties(${name} PROPERTIES PREFIX "" LINK_DEPENDS ${arg_EXPORTS})
  target_link_options(${name} PRIVATE -Wl,--version-script=${arg_EXPORTS} -Wl,-Bsymbolic-functions)
  target_link_libraries(${name} PRIVATE $<BUILD_INTERFACE:vexo_flags> PUBLIC ${arg_LINKS})
endfunction()

# vexo_test(geometry LINKS ...): one test program from all .cpp files of this folder.
function(vexo_test name)
  cmake_parse_arguments(arg "" "" "LINKS;DEFINITIONS" ${ARGN})
  file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*.cpp)
  if(NOT sources)
    return()
  endif()
  set(target test_${name})
  add_executable(${target} ${sources})
  target_include_directories(${target} PRIVATE ${PROJECT_SOURCE_DIR}/tests/support)
  target_compile_definitions(${target} PRIVATE
    VEXO_SOURCE_DIR="${PROJECT_SOURCE_DIR}" VEXO_BINARY_DIR="${PROJECT_BINARY_DIR}" ${arg_DEFINITIONS})
  target_link_libraries(${target} PRIVATE vexo_flags GTest::gtest_main ${arg_LINKS})
  add_test(NAME ${name} COMMAND ${target} --gtest_brief=1)
endfunction()

# vexo_benchmark(geometry LINKS ...): benchmarks/<name>.cpp as one program.
function(vexo_benchmark name)
  cmake_parse_arguments(arg "" "" "LINKS" ${ARGN})
  if(NOT EXISTS ${CMAKE_CURRENT_SOURCE_DIR}/${name}.cpp)
    return()
  endif()
  add_executable(bench_${name} ${name}.cpp)
  target_include_directories(bench_${name} PRIVATE ${PROJECT_SOURCE_DIR}/tests/support)
  target_compile_definitions(bench_${name} PRIVATE VEXO_SOURCE_DIR="${PROJECT_SOURCE_DIR}")
  target_link_libraries(bench_${name} PRIVATE vexo_flags benchmark::benchmark_main ${arg_LINKS})
endfunction()
