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
