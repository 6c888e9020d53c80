# What every target of this tree is built with.
set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_C_STANDARD 99)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/bin)
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/lib)
set(CMAKE_ARCHIVE_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/lib)
if(NOT CMAKE_BUILD_TYPE AND NOT CMAKE_CONFIGURATION_TYPES)
  set(CMAKE_BUILD_TYPE Release CACHE STRING "" FORCE)
endif()

find_package(PkgConfig REQUIRED)
find_package(Threads REQUIRED)
pkg_check_modules(CAIRO REQUIRED IMPORTED_TARGET cairo cairo-ft fontconfig freetype2)
pkg_check_modules(SHAPING REQUIRED IMPORTED_TARGET harfbuzz fribidi libthai)
find_library(UNIBREAK_LIBRARY unibreak REQUIRED)

add_library(qm_build_flags INTERFACE)
target_compile_options(qm_build_flags INTERFACE
  -Wall -Wextra -Wpedantic $<$<COMPILE_LANGUAGE:CXX>:-Wconversion -Wshadow>
  # Clang's -Wconversion is also about signs, GCC's is not.
  $<$<COMPILE_LANG_AND_ID:CXX,Clang>:-Wno-sign-conversion>
  # Every processor rounds alike, those too that could fuse a multiplication with an addition.
  -ffp-contract=off
  # Before 13 it raises false alarms on text + std::string.
  $<$<AND:$<CXX_COMPILER_ID:GNU>,$<VERSION_LESS:$<CXX_COMPILER_VERSION>,13>>:-Wno-restrict>
  $<$<BOOL:${QM_WERROR}>:-Werror>)
if(QM_SANITIZE)
  target_compile_options(qm_build_flags INTERFACE
    -fsanitize=${QM_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(qm_build_flags INTERFACE -fsanitize=${QM_SANITIZE})
endif()
if(QM_FUZZ)
  target_compile_options(qm_build_flags INTERFACE -fsanitize=fuzzer-no-link)
endif()
