# cmake -DOUT=page_files.cpp -P embed.cmake -- FILE...: writes the files into a source file.
set(rows "")
set(arrays "")
math(EXPR last "${CMAKE_ARGC} - 1")
set(taken FALSE)
foreach(i RANGE ${last})
  if(NOT taken)
    if(CMAKE_ARGV${i} STREQUAL "--")
      set(taken TRUE)
    endif()
    continue()
  endif()
  file(READ "${CMAKE_ARGV${i}}" hex HEX)
  string(REGEX REPLACE "([0-9a-f][0-9a-f])" "'\\\\x\\1'," bytes "${hex}")
  get_filename_component(name "${CMAKE_ARGV${i}}" NAME)
  string(APPEND arrays "constexpr char kFile${i}[] = {${bytes}};\n")
  string(APPEND rows "    {\"${name}\", {kFile${i}, sizeof kFile${i}}},\n")
endforeach()
file(WRITE "${OUT}" "#include \"simulator/web/page_files.h\"

namespace qm::sim {
namespace {

${arrays}
constexpr PageFile kFiles[] = {
${rows}};

} // namespace

std::span<const PageFile> page_files() { return kFiles; }

} // namespace qm::sim
")
