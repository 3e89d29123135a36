# What every target is compiled with, held by one interface target.
option(TONELIFT_WERROR "Treat warnings as errors" OFF)
option(TONELIFT_BENCH "Build the benchmarks" ON)
option(TONELIFT_FUZZ "Build the fuzz targets; needs clang and its fuzzer-no-link among the sanitizers" OFF)
set(TONELIFT_SANITIZE "" CACHE STRING "Sanitizers to build with, such as address,undefined")

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
if(NOT CMAKE_BUILD_TYPE)
  set(CMAKE_BUILD_TYPE Release)
endif()

add_library(tonelift_options INTERFACE)
target_compile_options(tonelift_options INTERFACE -Wall -Wextra -Wpedantic -Wnon-virtual-dtor -Woverloaded-virtual)
target_compile_definitions(tonelift_options INTERFACE
  QT_NO_CAST_FROM_BYTEARRAY QT_NO_CAST_TO_ASCII QT_NO_URL_CAST_FROM_STRING QT_NO_NARROWING_CONVERSIONS_IN_CONNECT
  QT_NO_FOREACH QT_NO_KEYWORDS QT_DISABLE_DEPRECATED_BEFORE=0x060400)
if(TONELIFT_WERROR)
  target_compile_options(tonelift_options INTERFACE -Werror)
endif()
if(TONELIFT_SANITIZE)
  # What has the property stays as fast as it is: the arithmetic of encoders, in builds that look at parsers.
  set(plain $<BOOL:$<TARGET_PROPERTY:TONELIFT_UNSANITIZED>>)
  target_compile_options(tonelift_options INTERFACE
    $<$<NOT:${plain}>:-fsanitize=${TONELIFT_SANITIZE}> $<$<NOT:${plain}>:-O1> -fno-omit-frame-pointer)
  target_link_options(tonelift_options INTERFACE -fsanitize=${TONELIFT_SANITIZE})
endif()
