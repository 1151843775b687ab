// Takes the place of every function of the loaded stub library: writes down each call with its
// arguments, hands out handles, texts and numbers that tell where they come from, fails the call
// that a test wants to fail, and notices what is not given back, or twice.
#pragma once

#include "qrb/loader.h"

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <list>
#include <map>
#include <set>
#include <string>
#include <type_traits>
#include <vector>

namespace spy {

struct Log {
    std::vector<std::string> calls;  // "name(argument, ...)", outputs as ">value"
    std::vector<std::string> names;
    int failing = -1;          // the index of the call that fails
    bool listsShrink = false;  // a list that is read has one fewer than was told
    std::map<const void*, std::string> live;
    std::map<const void*, int> ordinals;  // "#1" is the context, "#2" and "#3" the databases
    std::map<const void*, int> locks;
    std::set<char*> texts;
    std::set<const void*> results;
    std::vector<std::string> faults;  // given back twice, used after its end, ...
    std::list<std::string> kept;      // what const char* outputs refer to
    std::uint32_t number = 10;        // of the last output
    std::uintptr_t handle = 0x1000;   // the last one
    unsigned handles = 0;
    int failures = 0;
};
inline Log& log() {
    static Log one;
    return one;
}

// What a call is made of while its arguments are looked at.
struct Call {
    std::string name;
    std::vector<std::string> arguments;
    bool fails = false;
    bool isDelete = false;
    std::uint32_t count = 0;              // the last number given, or handed out
    std::uint32_t* told = nullptr;        // where that number was put
    const std::uint32_t* list = nullptr;  // one whose length comes behind it
    qrb_pointcloud* const* databases = nullptr;

    std::string shortName() const {
        const std::size_t at = name.rfind("get_");
        return at == std::string::npos ? name : name.substr(at + 4);
    }
    void add(std::string text) { arguments.push_back(std::move(text)); }
    static std::string numbers(const std::uint32_t* values, std::uint32_t count) {
        std::string text = "[";
        for (std::uint32_t i = 0; i < count; ++i)
            text += (i > 0 ? " " : "") + std::to_string(values[i]);
        return text + "]";
    }
};

inline std::string handleName(const void* handle) {
    return "#" + std::to_string(log().ordinals[handle]);
}

template <typename T>
void take(Call& call, T value) {
    Log& l = log();
    if constexpr (std::is_same_v<T, const char*>) {
        call.add(value ? "'" + std::string(value) + "'" : "null");
    } else if constexpr (std::is_arithmetic_v<T>) {
        if (call.list) {
            call.arguments.back() = Call::numbers(call.list, static_cast<std::uint32_t>(value));
            call.list = nullptr;
        }
        if (call.databases) {
            std::string text;
            for (std::size_t i = 0; i < static_cast<std::size_t>(value); ++i)
                text += handleName(call.databases[i]);
            call.arguments.back() = "[" + text + "]";
            call.databases = nullptr;
        }
        if constexpr (std::is_integral_v<T>) {
            call.count = static_cast<std::uint32_t>(value);
            call.add(std::to_string(value));
        } else {
            std::string text = std::to_string(value);
            text.erase(text.find_last_not_of('0') + 1);
            call.add(text);
        }
    } else if constexpr (std::is_same_v<T, const std::uint32_t*>) {
        if (call.count > 0 && call.name.find("transaction") != std::string::npos) {
            call.add(Call::numbers(value, call.count));
        } else {
            call.list = value;
            call.add("list");
        }
    } else if constexpr (std::is_same_v<T, const std::uint8_t*>) {
        call.add(value && call.count > 0 ? "key " + std::to_string(value[0]) : "no key");
    } else if constexpr (std::is_same_v<T, qrb_progress_function>) {
        call.add(value ? "progress" : "no progress");
    } else if constexpr (std::is_pointer_v<T> && std::is_function_v<std::remove_pointer_t<T>>) {
        call.add("function");
    } else if constexpr (std::is_same_v<T, const char**>) {
        if (call.fails)
            return;
        const bool list = call.name.find("list") != std::string::npos ||
                          call.name.find("merged_all") != std::string::npos;
        std::string text;
        for (std::uint32_t i = 0; list && i < call.count; ++i)
            text += call.shortName() + std::to_string(i) + '\0';
        l.kept.push_back(list ? text : "<" + call.shortName() + ">");
        *value = l.kept.back().c_str();
        call.add(list ? ">names" : ">text");
    } else if constexpr (std::is_same_v<T, char**>) {
        if (call.fails)
            return;
        *value = ::strdup(("<" + call.shortName() + ">").c_str());
        l.texts.insert(*value);
        call.add(">text");
    } else if constexpr (std::is_pointer_v<T>) {
        using Target = std::remove_pointer_t<T>;
        if constexpr (std::is_pointer_v<Target>) {
            if constexpr (std::is_const_v<Target>) {
                call.databases = value;
                call.add("databases");
            } else if (!call.fails) {
                l.handle += 16;
                if constexpr (std::is_same_v<Target, qrb_graph_node*>) {
                    static qrb_graph_node child{8, 7, 60, 6, 0, nullptr};
                    static qrb_graph_node* children[] = {&child, nullptr};
                    static qrb_graph_node node{5, 4, 90, 9, 2, children};
                    *value = &node;
                } else {
                    *value = reinterpret_cast<Target>(l.handle);
                }
                l.live[*value] = call.name;
                l.ordinals[*value] = static_cast<int>(++l.handles);
                call.add(">" + handleName(*value));
            }
        } else if constexpr (std::is_void_v<std::remove_const_t<Target>>) {
            call.add(value ? "buffer" : "null");
        } else if constexpr (std::is_arithmetic_v<Target>) {
            if (!value) {
                call.add("null");
            } else if (!call.fails) {
                if (call.name.find("transaction_list") != std::string::npos &&
                    call.arguments.size() == 3) {
                    if (l.listsShrink)
                        *call.told = --call.count;
                    for (std::uint32_t i = 0; i < call.count; ++i)
                        value[i] = 70 + i;
                    call.add(">list");
                    return;
                }
                const bool isCount = call.name.find("list") != std::string::npos ||
                                     call.name.find("merged_all") != std::string::npos;
                *value = static_cast<Target>(isCount ? 2 : ++l.number);
                call.count = 2;
                if constexpr (std::is_same_v<Target, std::uint32_t>)
                    call.told = value;
                call.add(">" + std::to_string(isCount ? 2 : l.number));
            }
        } else {
            // Calls that delete something else are made on a context.
            const bool ends = call.isDelete && (!std::is_same_v<T, qrb_context*> ||
                                                call.name == "qrb_context_delete");
            if (ends && value) {
                if (l.live.erase(value) == 0)
                    l.faults.push_back(call.name + " of what is not there");
                if (l.locks[value] != 0)
                    l.faults.push_back(call.name + " of what is locked");
            } else if (value && l.live.count(value) == 0) {
                l.faults.push_back(call.name + " on what is not there");
            }
            if (call.name == "qrb_object_lock_cf" && !call.fails)
                ++l.locks[value];
            if (call.name == "qrb_object_unlock_cf")
                --l.locks[value];
            call.add(value ? handleName(value) : "null");
        }
    }
}

template <typename Result>
Result answer(bool success) {
    if constexpr (std::is_pointer_v<Result>) {
        if (success)
            return nullptr;
        auto* const result = reinterpret_cast<qrb_result*>(log().handle += 16);
        log().results.insert(result);
        return result;
    } else {
        return success ? QRB_SUCCESS : QRB_FAILURE;
    }
}

template <typename Name, typename Result, typename... Parameters>
struct Spy {
    static inline const char* name = nullptr;
    static Result call(Parameters... parameters) {
        Log& l = log();
        Call call;
        call.name = name;
        call.isDelete = call.name.find("_delete") != std::string::npos;
        call.fails = static_cast<int>(l.calls.size()) == l.failing;
        (take<Parameters>(call, parameters), ...);
        std::string text = call.name.substr(4) + "(";
        for (std::size_t i = 0; i < call.arguments.size(); ++i)
            text += (i > 0 ? ", " : "") + call.arguments[i];
        l.calls.push_back(text + ")");
        l.names.push_back(call.name);
        l.failures += call.fails;
        return answer<Result>(!call.fails);
    }
};

template <typename Name, typename Result, typename... Parameters>
void install(Result (*&slot)(Parameters...), const char* name) {
    using Own = Spy<Name, Result, Parameters...>;
    Own::name = name;
    slot = &Own::call;
}

// The functions that tell errors and take texts back are no calls of their own.
inline qrb_status lastError(qrb_context*, std::int32_t* code, const char** text,
                            const char** details) {
    *code = 77;
    *text = "broken";
    *details = "here";
    return QRB_SUCCESS;
}
inline qrb_result* errorCode(const qrb_result*, std::int32_t* code) {
    *code = 77;
    return nullptr;
}
inline qrb_result* errorText(const qrb_result*, char** text) {
    log().texts.insert(*text = ::strdup("broken"));
    return nullptr;
}
inline qrb_result* errorDetails(const qrb_result*, char** text) {
    log().texts.insert(*text = ::strdup("here"));
    return nullptr;
}
inline qrb_result* deleteResult(qrb_result* result) {
    if (log().results.erase(result) == 0)
        log().faults.push_back("a result was deleted twice");
    return nullptr;
}
inline qrb_result* deleteText(char* text) {
    if (log().texts.erase(text) == 0)
        log().faults.push_back("a text was deleted twice");
    ::free(text);
    return nullptr;
}

// Call it with the stub library loaded; until that is freed.
inline void installAll() {
    log() = {};
    auto& table = const_cast<tarvo::qrb::FunctionTable&>(tarvo::qrb::functions());
#define QRB_FUNCTION(result, function, parameters) \
    install<struct function##_spied>(table.function, #function);
#include "qrb/functions.def"
    table.qrb_context_get_last_error = lastError;
    table.qrb_result_get_error_code_cf = errorCode;
    table.qrb_result_get_error_text_cf = errorText;
    table.qrb_result_get_error_details_cf = errorDetails;
    table.qrb_result_delete_cf = deleteResult;
    table.qrb_string_delete_cf = deleteText;
}

}  // namespace spy
