# Warnings, sanitizers and the floating-point rule, for our own targets only.

set(NQ_SANITIZE "" CACHE STRING "Sanitizers to build with, for example address,undefined")
option(NQ_WARNINGS_AS_ERRORS "Warnings are errors" OFF)
option(NQ_COVERAGE "Record line coverage" OFF)

function(nq_settings target)
  # What the compiler may fuse into a multiply-add must not decide a result.
  target_compile_options(${target} PRIVATE -ffp-contract=off -Wall -Wextra -Wpedantic -Wshadow
                                           -Wconversion -Wnon-virtual-dtor -Woverloaded-virtual)
  if(CMAKE_CXX_COMPILER_ID STREQUAL GNU)
    target_compile_options(${target} PRIVATE -Wno-restrict)  # GCC 12 warns of std::string's own code
  endif()
  if(NQ_WARNINGS_AS_ERRORS)
    target_compile_options(${target} PRIVATE -Werror)
  endif()
  if(NQ_SANITIZE)
    target_compile_options(${target} PRIVATE -fsanitize=${NQ_SANITIZE} -fno-sanitize-recover=all
                                             -fno-omit-frame-pointer)
    target_link_options(${target} PRIVATE -fsanitize=${NQ_SANITIZE})
  endif()
  if(NQ_COVERAGE)
    target_compile_options(${target} PRIVATE --coverage)
    target_link_options(${target} PRIVATE --coverage)
  endif()
endfunction()
