# Flags that all of our own targets share.
add_library(tecelagem_options INTERFACE)
target_include_directories(tecelagem_options INTERFACE ${CMAKE_SOURCE_DIR})
target_compile_options(tecelagem_options INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wnon-virtual-dtor -Woverloaded-virtual -Werror)
if(CMAKE_BUILD_TYPE STREQUAL "Debug")
  # Line numbers are enough for the stack traces of tests and sanitizers, and build much faster.
  target_compile_options(tecelagem_options INTERFACE -g1)
elseif(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  # Falsely raised by the optimizer of g++ 12 wherever a literal is joined with a std::string.
  target_compile_options(tecelagem_options INTERFACE -Wno-restrict)
endif()
if(TECELAGEM_SANITIZE)
  target_compile_options(tecelagem_options INTERFACE -fsanitize=address,undefined -fno-sanitize-recover=all
    -fno-omit-frame-pointer)
  target_link_options(tecelagem_options INTERFACE -fsanitize=address,undefined)
endif()
# Links several times faster; what it makes is the same.
find_program(LLD NAMES ld.lld ld.lld-14)
if(LLD AND CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  target_link_options(tecelagem_options INTERFACE -fuse-ld=lld)
endif()
