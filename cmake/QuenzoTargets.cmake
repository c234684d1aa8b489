# How every target of the project is built.

include(CheckCXXSymbolExists)
include(CheckLinkerFlag)

# Warnings, the language level and the rules that make results the same on every machine.
function(quenzo_compile_settings target)
  target_compile_features(${target} PUBLIC cxx_std_20)
  set_target_properties(${target} PROPERTIES CXX_EXTENSIONS OFF)
  target_compile_options(
    ${target}
    PRIVATE -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Wnon-virtual-dtor -Wold-style-cast
            $<$<BOOL:${QUENZO_WERROR}>:-Werror>
            # A multiplication and an addition are fused only where the code says so, or x86-64 and AArch64 would differ.
            -ffp-contract=off
            # Errors record the file they come from: relative to the root, so that builds do not differ by folder.
            -ffile-prefix-map=${PROJECT_SOURCE_DIR}/=)
  if(QUENZO_SANITIZE)
    target_compile_options(${target} PRIVATE -fsanitize=${QUENZO_SANITIZE} -fno-sanitize-recover=all
                                             -fno-omit-frame-pointer)
    target_link_options(${target} PRIVATE -fsanitize=${QUENZO_SANITIZE})
    if(QUENZO_SANITIZE MATCHES address)
      target_compile_definitions(${target} PRIVATE QUENZO_SEPARATE_NODES)
    endif()
  endif()
endfunction()

# A library with only its public interface visible. Headers are included by their path from the root.
function(quenzo_library target)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "EXPORT_NAME;OUTPUT_NAME" "SOURCES;HEADERS;PRIVATE_HEADERS")
  add_library(${target} ${arg_SOURCES} ${arg_PRIVATE_HEADERS})
  add_library(Quenzo::${arg_EXPORT_NAME} ALIAS ${target})
  # Row files are installed with the headers that include them but are no headers: they do not compile alone.
  set(rows ${arg_HEADERS})
  list(FILTER rows INCLUDE REGEX "\\.def$")
  list(FILTER arg_HEADERS EXCLUDE REGEX "\\.def$")
  target_sources(${target} PUBLIC FILE_SET HEADERS BASE_DIRS ${PROJECT_SOURCE_DIR} FILES ${arg_HEADERS})
  target_sources(${target} PUBLIC FILE_SET rows TYPE HEADERS BASE_DIRS ${PROJECT_SOURCE_DIR} FILES ${rows})
  set_target_properties(
    ${target}
    PROPERTIES EXPORT_NAME ${arg_EXPORT_NAME}
               OUTPUT_NAME ${arg_OUTPUT_NAME}
               VERSION ${PROJECT_VERSION}
               SOVERSION ${PROJECT_VERSION_MAJOR}
               CXX_VISIBILITY_PRESET hidden
               VISIBILITY_INLINES_HIDDEN ON
               POSITION_INDEPENDENT_CODE ON
               VERIFY_INTERFACE_HEADER_SETS ON
               INTERFACE_HEADER_SETS_TO_VERIFY HEADERS)
  quenzo_compile_settings(${target})
  # As fast as with -O3, save for the hot sources, and a tenth smaller.
  target_compile_options(${target} PRIVATE $<$<CONFIG:Release>:-O2>)
  quenzo_fast_loading(${target})
endfunction()

# The sources of this folder that gain from more effort. Their functions begin where a line of the processor's caches does,
# so that their speed does not depend on what the linker happens to put before them.
function(quenzo_hot_sources)
  set_source_files_properties(${ARGN} PROPERTIES COMPILE_OPTIONS "$<$<CONFIG:Release>:-O3;-falign-functions=64>")
endfunction()

# The sources of this folder that hardly ever run: failures, and what is done once for a job.
function(quenzo_cold_sources)
  set_source_files_properties(${ARGN} PROPERTIES COMPILE_OPTIONS "$<$<CONFIG:Release>:-Os>")
endfunction()

# What keeps the time short that a shared library takes to load, and its file small.
function(quenzo_fast_loading target)
  # Nobody may replace a function of the libraries by one of the same name: calls inside them are put in place or lead
  # straight to their function, which also leaves the loader few names to look up.
  target_compile_options(${target} PRIVATE -fno-semantic-interposition -ffunction-sections -fdata-sections
                                           # Whether a library can be unloaded is decided here, not by which symbols are unique.
                                           $<$<CXX_COMPILER_ID:GNU>:-fno-gnu-unique>)
  set(exports ${PROJECT_SOURCE_DIR}/cmake/exports.map)
  target_link_options(
    ${target}
    PRIVATE
    -Wl,-Bsymbolic
    -Wl,--version-script=${exports}
    -Wl,--gc-sections
    -Wl,-O1)
  set_target_properties(${target} PROPERTIES LINK_DEPENDS ${exports})
  # Other C++ runtime libraries know a type by the address of its description, which then must be the same everywhere.
  check_cxx_symbol_exists(__GLIBCXX__ version QUENZO_TYPES_ARE_KNOWN_BY_NAME)
  if(NOT QUENZO_TYPES_ARE_KNOWN_BY_NAME)
    target_link_options(${target} PRIVATE -Wl,--dynamic-list=${PROJECT_SOURCE_DIR}/cmake/types.list)
  endif()
  # Addresses that only depend on where the library lies take a bit each instead of 24 bytes.
  check_linker_flag(CXX "-Wl,--fatal-warnings,-z,pack-relative-relocs" QUENZO_HAS_PACKED_RELOCATIONS)
  if(QUENZO_HAS_PACKED_RELOCATIONS)
    target_link_options(${target} PRIVATE -Wl,-z,pack-relative-relocs)
  endif()
endfunction()

# Has the constants of a library looked up at load that a program may not find otherwise. A program that names a constant
# may hold a copy of it, which the loader fills with the bytes that the constant has before any code runs. A constant that
# the compiler has made is right in both places; one that code makes at load has to be made where the program looks for
# it. All of these are in one source. Each costs a little of the time of loading, so the others are not looked up.
function(quenzo_constants_in target source)
  set(list ${CMAKE_CURRENT_BINARY_DIR}/${target}-constants.list)
  add_custom_command(
    TARGET ${target}
    PRE_LINK
    COMMAND ${CMAKE_COMMAND} -DNM=${CMAKE_NM} "-DOBJECT=$<FILTER:$<TARGET_OBJECTS:${target}>,INCLUDE,/${source}>"
            -DLIST=${list} -P ${PROJECT_SOURCE_DIR}/cmake/ConstantsList.cmake
    VERBATIM)
  target_link_options(${target} PRIVATE -Wl,--dynamic-list=${list})
endfunction()
