#include "window/dialogs/attribute/lodsettings.h"

#include "catalogue/jsonmemory.h"
#include "window/widgets/jsonvalues.h"

#include <rapidjson/error/en.h>
#include <rapidjson/memorystream.h>

#include <algorithm>
#include <iterator>
#include <stdexcept>

namespace tarvo::window {

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
    settings.method = QString::fromStdString(method.method);
    if (!isBlank(method.remainder))
        settings.lost = QString::fromStdString(method.remainder).trimmed();
    const std::size_t start = text.find_first_not_of(" \t\r\n");
    if (start == std::string::npos || text[start] != '{')
        return settings;
    tarvo::rapidjson::StringBuffer buffer;
    tarvo::rapidjson::PrettyWriter<tarvo::rapidjson::StringBuffer> writer(buffer);
    writer.StartObject();
    const auto copier = copyMembers<rapidjson::kParseStopWhenDoneFlag>(text, writer);
    writer.EndObject();
    if (copier.copied > 0)
        settings.members = QString::fromUtf8(buffer.GetString(), qsizetype(buffer.GetSize()));
    return settings;
}

std::string writeLodSettings(const QString& method, const QString& members) {
    const std::string text = members.toStdString();
    const std::string name = method.toStdString();
    tarvo::rapidjson::StringBuffer buffer;
    tarvo::rapidjson::Writer<tarvo::rapidjson::StringBuffer> writer(buffer);
    writer.StartObject();
    writer.Key(methodMember);
    writer.String(name.data(), static_cast<rapidjson::SizeType>(name.size()));
    int copied = 0;
    if (!isBlank(text)) {
        const auto copier = copyMembers<rapidjson::kParseDefaultFlags>(text, writer);
        if (copier.hasMethod)
            throw std::runtime_error("The method is chosen above; take the member \"method\" out.");
        copied = copier.copied;
    }
    writer.EndObject();
    const bool bare = copied == 0 && name.find_first_of("{}[]\"\\") == std::string::npos;
    return bare ? name : std::string(buffer.GetString(), buffer.GetSize());
}

QString lodSettingsProblem(const std::string& text) {
    try {
        const LodSettings settings = readLodSettings(text);
        if (!settings.lost.isEmpty())
            return QString("\"%0\" stands behind the JSON value, where nothing may follow.")
                .arg(settings.lost.left(40));
        const bool known =
            std::any_of(std::begin(knownMethods), std::end(knownMethods),
                        [&](const LodMethodEntry& entry) { return settings.method == entry.name; });
        if (known)
            return {};
        return QString(
                   "The method \"%0\" is unknown; default, average, minimum, maximum, majority, "
                   "first and thinout are known.")
            .arg(settings.method.left(40));
    } catch (const std::exception& problem) {
        return QString::fromStdString(problem.what());
    }
}

}  // namespace tarvo::window
