# Compiler flags of our own targets, linked privately: a host that uses the library keeps its own.
add_library(larkstone_flags INTERFACE)
target_compile_options(larkstone_flags INTERFACE
  -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Wold-style-cast)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  # g++ 12 warns of overlapping copies inside std::string that cannot happen (GCC bug 105651).
  target_compile_options(larkstone_flags INTERFACE -Wno-restrict)
endif()
if(LARKSTONE_WERROR)
  target_compile_options(larkstone_flags INTERFACE -Werror)
endif()
if(CMAKE_BUILD_TYPE STREQUAL "Debug")
  target_compile_definitions(larkstone_flags INTERFACE _GLIBCXX_ASSERTIONS)
endif()
if(LARKSTONE_SANITIZE)
  add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=address,undefined)
endif()
