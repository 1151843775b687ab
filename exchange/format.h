// What kind of point cloud a file is, told by its content.
#pragma once

#include <span>
#include <string>
#include <string_view>

namespace tarvo::exchange {

// The names of the formats, as --format takes them.
std::span<const char* const> formatNames();

struct FileKind {
    std::string format;  // one of the names, never "laz"; empty: none that is known
    std::string what;    // what it is, where that is known: "a PDF document"; else why it is none
    // The content tells it for certain. A text of any kind may be one of separated values.
    bool isCertain = false;
};

// By the first bytes of a file, 64 KiB where there are as many.
FileKind kindOf(std::string_view begin);
// Throws Failure if the file can't be read.
FileKind kindOfFile(const std::string& fileName);

}  // namespace tarvo::exchange
