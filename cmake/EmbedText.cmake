# embed_text(TARGET FILE NAME): compiles the text file into the target as the function
#   std::string_view tarvo::embedded::NAME();
# A change of the file makes the object again.
function(embed_text target file name)
  get_filename_component(path ${file} ABSOLUTE)
  set(source ${CMAKE_CURRENT_BINARY_DIR}/embedded_${name}.cpp)
  file(CONFIGURE OUTPUT ${source} CONTENT [=[
#include <string_view>
asm(".section .rodata\n"
    ".local embedded_@name@_begin\n.local embedded_@name@_end\n"
    "embedded_@name@_begin:\n.incbin \"@path@\"\n"
    "embedded_@name@_end:\n.byte 0\n.previous\n");
extern "C" const char embedded_@name@_begin[] __attribute__((visibility("hidden")));
extern "C" const char embedded_@name@_end[] __attribute__((visibility("hidden")));
namespace tarvo::embedded {
std::string_view @name@() {
    return {embedded_@name@_begin,
            static_cast<std::size_t>(embedded_@name@_end - embedded_@name@_begin)};
}
}  // namespace tarvo::embedded
]=] @ONLY)
  set_source_files_properties(${source} PROPERTIES
    OBJECT_DEPENDS ${path} SKIP_UNITY_BUILD_INCLUSION ON)
  target_sources(${target} PRIVATE ${source})
endfunction()

# embed_folder(TARGET FOLDER NAME GLOB...): compiles text files of a folder into the target as
#   std::vector<std::pair<std::string, std::string_view>> tarvo::embedded::NAME();
# names relative to the folder, and texts.
function(embed_folder target folder name)
  set(declarations "")
  set(entries "")
  foreach(glob IN LISTS ARGN)
    file(GLOB files RELATIVE ${folder} CONFIGURE_DEPENDS ${folder}/${glob})
    foreach(file IN LISTS files)
      string(MAKE_C_IDENTIFIER "${name}_${file}" symbol)
      embed_text(${target} ${folder}/${file} ${symbol})
      string(APPEND declarations "std::string_view ${symbol}();\n")
      string(APPEND entries "        {\"${file}\", ${symbol}()},\n")
    endforeach()
  endforeach()
  set(source ${CMAKE_CURRENT_BINARY_DIR}/embedded_${name}.cpp)
  file(CONFIGURE OUTPUT ${source} CONTENT [=[
#include <string>
#include <string_view>
#include <utility>
#include <vector>
namespace tarvo::embedded {
@declarations@
std::vector<std::pair<std::string, std::string_view>> @name@() {
    return {
@entries@    };
}
}  // namespace tarvo::embedded
]=] @ONLY)
  target_sources(${target} PRIVATE ${source})
endfunction()
