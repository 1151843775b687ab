// RapidJSON with memory that is checked. The library uses what its allocator gives without a look,
// so that one that finds no memory must throw; its own doesn't. Whoever includes this header, in
// place of RapidJSON's, means the checked types when writing rapidjson::Document and so on within
// the namespace tarvo.
#pragma once

#include <rapidjson/allocators.h>
#include <rapidjson/internal/strtod.h>

#include <charconv>
#include <cstddef>
#include <cstdlib>
#include <limits>
#include <new>
#include <string>
#include <system_error>

#ifdef RAPIDJSON_DOCUMENT_H_
#error "Include catalogue/jsonmemory.h before RapidJSON's own headers."
#endif

namespace tarvo {

class CheckedAllocator {
public:
    static const bool kNeedFree = true;
    void* Malloc(std::size_t size) { return size == 0 ? nullptr : checked(std::malloc(size)); }
    void* Realloc(void* original, std::size_t, std::size_t size) {
        if (size != 0)
            return checked(std::realloc(original, size));
        std::free(original);
        return nullptr;
    }
    static void Free(void* memory) { std::free(memory); }

private:
    static void* checked(void* memory) {
        if (memory == nullptr)
            throw std::bad_alloc();
        return memory;
    }
};

}  // namespace tarvo

namespace rapidjson::internal {

// In place of the library's own, which makes any number of a zero with an exponent (0e-324), and
// reads beyond its tables for many digits with a large one. The number is 0.DECIMALS, times ten to
// the power of point + exponent; one that is too large is infinite.
inline double exactNumber(double, int, const char* decimals, std::size_t length, std::size_t point,
                          int exponent) {
    const int power = static_cast<int>(point) + exponent;
    const std::string text = "0." + std::string(decimals, length) + "e" + std::to_string(power);
    double number = 0;
    const auto read = std::from_chars(text.data(), text.data() + text.size(), number);
    if (read.ec == std::errc::result_out_of_range) {
        const std::size_t zeros = std::string_view(decimals, length).find_first_not_of('0');
        return power > static_cast<int>(zeros) ? std::numeric_limits<double>::infinity() : 0.0;
    }
    return number;
}

}  // namespace rapidjson::internal

#define StrtodFullPrecision exactNumber
// A copy of a value passes through a document with the default allocator, which this sets.
#define CrtAllocator ::tarvo::CheckedAllocator
#include <rapidjson/document.h>
#include <rapidjson/prettywriter.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>
#undef CrtAllocator
#undef StrtodFullPrecision

namespace tarvo {
namespace rapidjson {

using namespace ::rapidjson;

using CrtAllocator = CheckedAllocator;
using Document =
    ::rapidjson::GenericDocument<UTF8<>, MemoryPoolAllocator<CheckedAllocator>, CheckedAllocator>;
using Value = Document::ValueType;
using StringBuffer = ::rapidjson::GenericStringBuffer<UTF8<>, CheckedAllocator>;
template <typename Output, typename Source = UTF8<>, typename Target = UTF8<>,
          typename Stack = CheckedAllocator, unsigned flags = kWriteDefaultFlags>
using Writer = ::rapidjson::Writer<Output, Source, Target, Stack, flags>;
template <typename Output, typename Source = UTF8<>, typename Target = UTF8<>,
          typename Stack = CheckedAllocator, unsigned flags = kWriteDefaultFlags>
using PrettyWriter = ::rapidjson::PrettyWriter<Output, Source, Target, Stack, flags>;

}  // namespace rapidjson
}  // namespace tarvo
