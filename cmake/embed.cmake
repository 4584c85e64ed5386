# Makes a C++ source out of text files: cmake -DOUTPUT=... "-DSOURCES=NAME=FILE+FILE,..." -P embed.cmake
# defines `const std::string_view NAME` in larkstone::cli with the bytes of the files after each
# other.
set(code "#include \"cli/web_files.hpp\"\n\nnamespace larkstone::cli {\n\n")
string(REPLACE "," ";" entries "${SOURCES}")
foreach(entry IN LISTS entries)
  string(REGEX MATCH "^([^=]+)=(.*)$" _ "${entry}")
  set(name ${CMAKE_MATCH_1})
  string(REPLACE "+" ";" files "${CMAKE_MATCH_2}")
  set(bytes "")
  foreach(file IN LISTS files)
    file(READ "${file}" hex HEX)
    string(APPEND bytes "${hex}")
  endforeach()
  string(REGEX REPLACE "(..)" "0x\\1," bytes "${bytes}")
  string(REGEX REPLACE "(................................................................................)"
    "\\1\n" bytes "${bytes}")
  string(APPEND code "static constexpr unsigned char bytesOf_${name}[] = {\n${bytes}};\n"
    "const std::string_view ${name}(reinterpret_cast<const char*>(bytesOf_${name}), "
    "sizeof(bytesOf_${name}));\n\n")
endforeach()
string(APPEND code "}  // namespace larkstone::cli\n")
file(WRITE "${OUTPUT}" "${code}")
