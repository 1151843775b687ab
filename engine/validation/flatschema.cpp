#include "engine/validation/flatschema.h"

#include "engine/validation/pattern.h"

#include <rapidjson/pointer.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <vector>

namespace tarvo::engine::validation {

namespace {

using Value = rapidjson::Value;

constexpr std::size_t maximumNodes = 20000;
constexpr std::size_t maximumDepth = 120;

constexpr std::array typeNames{"null", "boolean", "object", "array", "number", "integer", "string"};
constexpr std::array laterKeywords{"prefixItems",       "unevaluatedProperties", "unevaluatedItems",
                                   "dependentRequired", "dependentSchemas",      "minContains",
                                   "maxContains",       "$dynamicRef",           "$recursiveRef"};

std::string textOf(const Value& value) {
    return {value.GetString(), value.GetStringLength()};
}

class Flattener {
public:
    explicit Flattener(const Value& root) : m_root(root) {
        Value flat = schema(root, "");
        static_cast<Value&>(m_document).Swap(flat);
    }
    rapidjson::Document take() { return std::move(m_document); }

private:
    [[noreturn]] static void fail(const std::string& place, const std::string& reason,
                                  const std::string& hint = {}) {
        throw Failure(
            ErrorCode::Argument,
            "The JSON schema is not valid at \"" + (place.empty() ? "/" : place) + "\": " + reason,
            hint);
    }

    rapidjson::Document::AllocatorType& allocator() { return m_document.GetAllocator(); }

    void count(const std::string& place) {
        if (++m_nodes > maximumNodes)
            fail(place, "it unfolds into more than " + std::to_string(maximumNodes) + " parts.",
                 "Refer less often to definitions that refer to others.");
    }

    void add(Value& object, const char* name, Value&& value) {
        object.AddMember(Value(rapidjson::StringRef(name)), value, allocator());
    }

    Value copied(const Value& value) { return Value(value, allocator()); }

    Value schema(const Value& node, const std::string& place) {
        count(place);
        Value flat(rapidjson::kObjectType);
        if (node.IsBool()) {
            if (!node.GetBool())
                add(flat, "=forbidden", Value(true));
            return flat;
        }
        if (!node.IsObject())
            fail(place, "expected a schema: an object, true or false.");
        if (std::find(m_active.begin(), m_active.end(), &node) != m_active.end())
            fail(place, "it refers back to itself, recursive schemas are not supported.",
                 "Write the levels that are needed one below the other.");
        if (m_active.size() >= maximumDepth)
            fail(place, "it nests more than " + std::to_string(maximumDepth) + " schemas.");
        m_active.push_back(&node);
        const auto reference = node.FindMember("$ref");
        if (reference != node.MemberEnd()) {
            flat = schema(target(reference->value, place), place);
        } else {
            add(flat, "=visit", Value(true));
            for (const char* keyword : laterKeywords)
                if (node.HasMember(keyword))
                    fail(place, "the keyword \"" + std::string(keyword) +
                                    "\" is newer than draft 7, which is supported.");
            values(node, flat, place);
            limits(node, flat, place);
            members(node, flat, place);
            Value rest = elements(node, flat, place);
            combinations(node, flat, place, std::move(rest));
        }
        m_active.pop_back();
        return flat;
    }

    const Value& target(const Value& reference, const std::string& place) {
        if (!reference.IsString())
            fail(place, "\"$ref\" is not a text.");
        const std::string text = textOf(reference);
        if (text.empty() || text[0] != '#' || (text.size() > 1 && text[1] != '/'))
            fail(place, "it refers to \"" + text + "\".",
                 "Only references within the schema (\"#/definitions/NAME\") are followed; nothing "
                 "is loaded from files or the network.");
        const rapidjson::GenericPointer<Value, rapidjson::CrtAllocator> pointer(text.data(),
                                                                                text.size());
        const Value* found = pointer.IsValid() ? pointer.Get(m_root) : nullptr;
        if (!found)
            fail(place, "it refers to \"" + text + "\", which the schema does not have.");
        return *found;
    }

    // The value of a keyword, or null.
    static const Value* find(const Value& node, const char* keyword) {
        const auto found = node.FindMember(keyword);
        return found == node.MemberEnd() ? nullptr : &found->value;
    }

    std::vector<const Value*> texts(const Value& value, const std::string& place) {
        if (!value.IsArray())
            fail(place, "expected an array of texts.");
        std::vector<const Value*> result;
        for (const Value& text : value.GetArray()) {
            count(place);
            if (!text.IsString())
                fail(place, "expected an array of texts.");
            result.push_back(&text);
        }
        return result;
    }

    void values(const Value& node, Value& flat, const std::string& place) {
        if (const Value* type = find(node, "type")) {
            const std::string at = place + "/type";
            Value names(rapidjson::kArrayType);
            if (type->IsString())
                names.PushBack(copied(*type), allocator());
            else
                for (const Value* name : texts(*type, at))
                    names.PushBack(copied(*name), allocator());
            for (const Value& name : names.GetArray())
                if (std::none_of(typeNames.begin(), typeNames.end(),
                                 [&](const char* known) { return textOf(name) == known; }))
                    fail(at, "\"" + textOf(name) + "\" is not a type.");
            if (names.Empty())
                fail(at, "it names no type.");
            add(flat, "=type", std::move(names));
        }
        if (const Value* list = find(node, "enum")) {
            if (!list->IsArray() || list->Empty())
                fail(place + "/enum", "expected an array of values.");
            countAll(*list, place);
            add(flat, "=enum", copied(*list));
        }
        if (const Value* value = find(node, "const")) {
            countAll(*value, place);
            add(flat, "=const", copied(*value));
        }
        if (const Value* pattern = find(node, "pattern")) {
            if (!pattern->IsString())
                fail(place + "/pattern", "expected a regular expression.");
            checkPattern(textOf(*pattern), place + "/pattern");
            add(flat, "=pattern", copied(*pattern));
        }
    }

    // A constant is copied wherever its schema is referred to: all its parts count.
    void countAll(const Value& value, const std::string& place) {
        count(place);
        if (value.IsArray())
            for (const Value& element : value.GetArray())
                countAll(element, place);
        else if (value.IsObject())
            for (const auto& member : value.GetObject())
                countAll(member.value, place);
    }

    static void checkPattern(const std::string& expression, const std::string& place) {
        try {
            (void)Pattern(expression);
        } catch (const Failure& failure) {
            fail(place, failure.what(), failure.details());
        }
    }

    void limits(const Value& node, Value& flat, const std::string& place) {
        // Draft 4 has the exclusive limits as a switch beside the usual ones.
        const auto isSwitch = [&](const char* keyword) {
            const Value* value = find(node, keyword);
            return value && value->IsBool() && value->GetBool();
        };
        const auto limit = [&](const char* keyword, const char* ours) {
            const Value* value = find(node, keyword);
            if (!value || value->IsBool())
                return;
            if (!value->IsNumber())
                fail(childPointer(place, keyword), "expected a number.");
            add(flat, ours, copied(*value));
        };
        limit("minimum", isSwitch("exclusiveMinimum") ? "=exclusiveMinimum" : "=minimum");
        limit("maximum", isSwitch("exclusiveMaximum") ? "=exclusiveMaximum" : "=maximum");
        limit("exclusiveMinimum", "=exclusiveMinimum");
        limit("exclusiveMaximum", "=exclusiveMaximum");
        if (const Value* divisor = find(node, "multipleOf")) {
            if (!divisor->IsNumber() || !(divisor->GetDouble() > 0))
                fail(place + "/multipleOf", "expected a number above 0.");
            add(flat, "=multipleOf", copied(*divisor));
        }
        constexpr const char* sizes[][2] = {
            {"minLength", "=minLength"},         {"maxLength", "=maxLength"},
            {"minItems", "=minItems"},           {"maxItems", "=maxItems"},
            {"minProperties", "=minProperties"}, {"maxProperties", "=maxProperties"}};
        for (const auto& [keyword, ours] : sizes) {
            const Value* value = find(node, keyword);
            if (!value)
                continue;
            if (!value->IsNumber() || value->GetDouble() < 0 ||
                value->GetDouble() != std::floor(value->GetDouble()))
                fail(childPointer(place, keyword), "expected a whole number from 0.");
            add(flat, ours, Value(value->GetDouble()));
        }
    }

    Value map(const Value& value, const std::string& place) {
        if (!value.IsObject())
            fail(place, "expected an object of schemas.");
        Value result(rapidjson::kObjectType);
        for (const auto& member : value.GetObject())
            result.AddMember(copied(member.name),
                             schema(member.value, childPointer(place, textOf(member.name))),
                             allocator());
        return result;
    }

    void members(const Value& node, Value& flat, const std::string& place) {
        if (const Value* required = find(node, "required")) {
            // Draft 3 has a switch here, which later drafts don't know.
            (void)texts(*required, place + "/required");
            add(flat, "=required", copied(*required));
        }
        const Value* properties = find(node, "properties");
        const Value* patterns = find(node, "patternProperties");
        const Value* additional = find(node, "additionalProperties");
        if (properties)
            add(flat, "properties", map(*properties, place + "/properties"));
        if (patterns) {
            const std::string at = place + "/patternProperties";
            Value rules(rapidjson::kObjectType);
            Value known(rapidjson::kArrayType);
            if (properties)
                for (const auto& member : properties->GetObject())
                    known.PushBack(copied(member.name), allocator());
            add(rules, "known", std::move(known));
            add(rules, "patterns", map(*patterns, at));
            for (const auto& member : patterns->GetObject())
                checkPattern(textOf(member.name), at);
            if (additional)
                add(rules, "additional", schema(*additional, place + "/additionalProperties"));
            add(flat, "=members", std::move(rules));
        } else if (additional) {
            add(flat, "additionalProperties", schema(*additional, place + "/additionalProperties"));
        }
        if (const Value* names = find(node, "propertyNames"))
            add(flat, "=propertyNames", schema(*names, place + "/propertyNames"));
        if (const Value* dependencies = find(node, "dependencies")) {
            const std::string at = place + "/dependencies";
            if (!dependencies->IsObject())
                fail(at, "expected an object.");
            Value result(rapidjson::kObjectType);
            for (const auto& member : dependencies->GetObject()) {
                const std::string here = childPointer(at, textOf(member.name));
                if (member.value.IsArray())
                    (void)texts(member.value, here);
                result.AddMember(
                    copied(member.name),
                    member.value.IsArray() ? copied(member.value) : schema(member.value, here),
                    allocator());
            }
            add(flat, "dependencies", std::move(result));
        }
    }

    Value list(const Value& value, const std::string& place) {
        if (!value.IsArray() || value.Empty())
            fail(place, "expected an array of schemas.");
        Value result(rapidjson::kArrayType);
        for (rapidjson::SizeType i = 0; i < value.Size(); ++i)
            result.PushBack(schema(value[i], childPointer(place, std::to_string(i))), allocator());
        return result;
    }

    // Returns a schema for the elements behind a list of "items", null where there is none.
    Value elements(const Value& node, Value& flat, const std::string& place) {
        if (const Value* unique = find(node, "uniqueItems")) {
            if (!unique->IsBool())
                fail(place + "/uniqueItems", "expected true or false.");
            if (unique->GetBool())
                add(flat, "=uniqueItems", Value(true));
        }
        if (const Value* contains = find(node, "contains"))
            add(flat, "contains", schema(*contains, place + "/contains"));
        const Value* items = find(node, "items");
        if (!items)
            return Value();
        if (!items->IsArray()) {
            add(flat, "items", schema(*items, place + "/items"));
            return Value();
        }
        const Value* additional = find(node, "additionalItems");
        if (items->Empty()) {
            if (additional)
                add(flat, "items", schema(*additional, place + "/additionalItems"));
            return Value();
        }
        add(flat, "items", list(*items, place + "/items"));
        add(flat, "additionalItems", Value(rapidjson::kObjectType));
        if (!additional)
            return Value();
        // Apart from the others: the schema library miscounts them where one of those fails.
        Value anything(rapidjson::kArrayType);
        for (rapidjson::SizeType i = 0; i < items->Size(); ++i)
            anything.PushBack(Value(rapidjson::kObjectType), allocator());
        Value rest(rapidjson::kObjectType);
        add(rest, "items", std::move(anything));
        add(rest, "additionalItems", schema(*additional, place + "/additionalItems"));
        return rest;
    }

    void combinations(const Value& node, Value& flat, const std::string& place, Value&& rest) {
        Value all(rapidjson::kArrayType);
        if (!rest.IsNull())
            all.PushBack(rest, allocator());
        if (const Value* given = find(node, "allOf")) {
            Value schemas = list(*given, place + "/allOf");
            for (Value& one : schemas.GetArray())
                all.PushBack(one, allocator());
        }
        if (!all.Empty())
            add(flat, "=allOf", std::move(all));
        for (const char* keyword : {"anyOf", "oneOf"})
            if (const Value* alternatives = find(node, keyword))
                add(flat, keyword, list(*alternatives, childPointer(place, keyword)));
        if (const Value* negated = find(node, "not"))
            add(flat, "not", schema(*negated, place + "/not"));
        if (!node.HasMember("if"))
            return;
        for (const char* keyword : {"if", "then", "else"})
            if (const Value* part = find(node, keyword))
                add(flat, keyword, schema(*part, childPointer(place, keyword)));
    }

    const Value& m_root;
    rapidjson::Document m_document;
    std::vector<const Value*> m_active;  // being flattened
    std::size_t m_nodes = 0;
};

}  // namespace

rapidjson::Document flattenSchema(const rapidjson::Value& schema) {
    return Flattener(schema).take();
}

void tameNumbers(rapidjson::Value& value) {
    if (value.IsArray()) {
        for (Value& element : value.GetArray())
            tameNumbers(element);
    } else if (value.IsObject()) {
        const auto end = value.MemberEnd();
        for (auto member = value.MemberBegin(); member < end; ++member)
            tameNumbers(member->value);
    } else if (value.IsUint64() && !value.IsInt64()) {
        value.SetDouble(static_cast<double>(value.GetUint64()));
    }
}

std::string childPointer(const std::string& parent, std::string_view name) {
    std::string result = parent + "/";
    for (const char c : name) {
        if (c == '~')
            result += "~0";
        else if (c == '/')
            result += "~1";
        else
            result += c;
    }
    return result;
}

}  // namespace tarvo::engine::validation
