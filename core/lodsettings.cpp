#include "core/lodsettings.h"

#include "catalogue/jsonmemory.h"
#include "core/jsonvalues.h"
#include "core/utf8.h"

#include <rapidjson/error/en.h>
#include <rapidjson/memorystream.h>

#include <algorithm>
#include <iterator>
#include <stdexcept>

namespace tarvo::core {

namespace {

constexpr LodMethodEntry knownMethods[] = {
    {"default",
     "Most frequent value for enumerations and booleans, the first one for the point "
     "id, else the average."},
    {"average",
     "Average of the valid values, weighted by the points that they stand for; invalid where "
     "there is none."},
    {"minimum", "Smallest of the valid values."},
    {"maximum", "Largest of the valid values."},
    {"majority", "Most frequent value; of equally frequent ones the smallest."},
    {"first", "Value of the first point in the order of the index."},
    {"thinout", "The same: the value of one of the points as it is."},
};

constexpr int deepestNesting = 100;  // the library takes no more
constexpr const char* methodMember = "method";

// Passes the members of the top-level object on to a writer, without the method. Numbers are passed
// on as they are written.
template <typename Writer>
class MemberCopier {
public:
    explicit MemberCopier(Writer& writer) : m_writer(writer) {}

    int copied = 0;
    bool hasMethod = false;
    bool isObject = false;
    bool tooDeep = false;

    bool Null() {
        return scalar([&] { m_writer.Null(); });
    }
    bool Bool(bool value) {
        return scalar([&] { m_writer.Bool(value); });
    }
    bool RawNumber(const char* digits, rapidjson::SizeType length, bool) {
        return scalar([&] { m_writer.RawValue(digits, length, rapidjson::kNumberType); });
    }
    // Numbers come as they are written.
    bool Int(int) { return false; }
    bool Uint(unsigned) { return false; }
    bool Int64(std::int64_t) { return false; }
    bool Uint64(std::uint64_t) { return false; }
    bool Double(double) { return false; }
    bool String(const char* text, rapidjson::SizeType length, bool) {
        return scalar([&] { m_writer.String(text, length); });
    }
    bool Key(const char* text, rapidjson::SizeType length, bool) {
        if (m_depth == 1) {
            m_skip = std::string(text, length) == methodMember;
            hasMethod = hasMethod || m_skip;
            copied += !m_skip;
        }
        if (!m_skip)
            m_writer.Key(text, length);
        return true;
    }
    bool StartObject() {
        if (m_depth == 0)
            isObject = true;
        return start([&] { m_writer.StartObject(); });
    }
    bool StartArray() {
        return m_depth > 0 && start([&] { m_writer.StartArray(); });
    }
    bool EndObject(rapidjson::SizeType) {
        return end([&] { m_writer.EndObject(); });
    }
    bool EndArray(rapidjson::SizeType) {
        return end([&] { m_writer.EndArray(); });
    }

private:
    template <typename Write>
    bool scalar(Write write) {
        if (m_depth > 0 && !m_skip)
            write();
        return m_depth > 0;
    }
    template <typename Write>
    bool start(Write write) {
        tooDeep = ++m_depth > deepestNesting;
        if (m_depth > 1 && !m_skip)
            write();
        return !tooDeep;
    }
    template <typename Write>
    bool end(Write write) {
        if (--m_depth > 0 && !m_skip)
            write();
        return true;
    }

    Writer& m_writer;
    int m_depth = 0;
    bool m_skip = false;  // the method's value
};

// Copies the further members of the JSON object in the text; throws where there is none.
template <unsigned flags, typename Writer>
MemberCopier<Writer> copyMembers(const std::string& text, Writer& writer) {
    constexpr unsigned asWritten =
        flags | rapidjson::kParseNumbersAsStringsFlag | rapidjson::kParseIterativeFlag;
    MemberCopier<Writer> copier(writer);
    rapidjson::Reader reader;
    rapidjson::MemoryStream source(text.data(), text.size());
    const rapidjson::ParseResult result = reader.Parse<asWritten>(source, copier);
    if (copier.tooDeep)
        throw std::runtime_error("The JSON text nests more than " + std::to_string(deepestNesting) +
                                 " levels.");
    if (result.IsError() && (copier.isObject || result.Code() != rapidjson::kParseErrorTermination))
        throw std::runtime_error(std::string(rapidjson::GetParseError_En(result.Code())) +
                                 " Position: " + std::to_string(result.Offset()));
    if (!copier.isObject)
        throw std::runtime_error("JSON object expected");
    return copier;
}

// What a message shows of a text.
std::string shortened(const std::string& text) {
    std::size_t end = std::min<std::size_t>(text.size(), 40);
    while (end < text.size() && (static_cast<unsigned char>(text[end]) & 0xc0) == 0x80)
        --end;
    return text.substr(0, end);
}

bool isBlank(const std::string& text) {
    return text.find_first_not_of(" \t\r\n") == std::string::npos;
}

}  // namespace

std::span<const LodMethodEntry> lodMethods() {
    return knownMethods;
}

LodSettings readLodSettings(const std::string& text) {
    const LodMethod method = parseLodMethod(text);
    LodSettings settings;
    settings.method = method.method;
    if (!isBlank(method.remainder))
        settings.lost = trimmed(method.remainder);
    const std::size_t start = text.find_first_not_of(" \t\r\n");
    if (start == std::string::npos || text[start] != '{')
        return settings;
    rapidjson::StringBuffer buffer;
    rapidjson::PrettyWriter<rapidjson::StringBuffer> writer(buffer);
    writer.StartObject();
    const auto copier = copyMembers<rapidjson::kParseStopWhenDoneFlag>(text, writer);
    writer.EndObject();
    if (copier.copied > 0)
        settings.members = {buffer.GetString(), buffer.GetSize()};
    return settings;
}

std::string writeLodSettings(const std::string& method, const std::string& members) {
    rapidjson::StringBuffer buffer;
    rapidjson::Writer<rapidjson::StringBuffer> writer(buffer);
    writer.StartObject();
    writer.Key(methodMember);
    writer.String(method.data(), static_cast<rapidjson::SizeType>(method.size()));
    int copied = 0;
    if (!isBlank(members)) {
        const auto copier = copyMembers<rapidjson::kParseDefaultFlags>(members, writer);
        if (copier.hasMethod)
            throw std::runtime_error("The method is chosen above; take the member \"method\" out.");
        copied = copier.copied;
    }
    writer.EndObject();
    const bool bare = copied == 0 && method.find_first_of("{}[]\"\\") == std::string::npos;
    return bare ? method : std::string(buffer.GetString(), buffer.GetSize());
}

LodProblem lodSettingsProblem(const std::string& text) {
    try {
        const LodSettings settings = readLodSettings(text);
        if (!settings.lost.empty())
            return {true, "\"" + shortened(settings.lost) +
                              "\" stands behind the JSON value, where nothing may follow."};
        const bool known =
            std::any_of(std::begin(knownMethods), std::end(knownMethods),
                        [&](const LodMethodEntry& entry) { return settings.method == entry.name; });
        if (known)
            return {};
        return {true, "The method \"" + shortened(settings.method) +
                          "\" is unknown; default, average, minimum, maximum, majority, first and "
                          "thinout are known."};
    } catch (const NoJson& problem) {
        return {false, problem.what()};
    } catch (const std::exception& problem) {
        return {true, problem.what()};
    }
}

}  // namespace tarvo::core
