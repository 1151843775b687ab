// Puts a recorder in front of every function of the loaded library, so that a test can tell which
// were called, with what outcome. Lives as long as the library is loaded.
#pragma once

#include "qrb/loader.h"

#include <map>
#include <set>
#include <string>

struct CallRecord {
    std::set<std::string> succeeded;
    std::set<std::string> failed;
    std::set<std::string> all;  // every function of the table
};

inline CallRecord& callRecord() {
    static CallRecord record;
    return record;
}

namespace recorder {

inline bool isSuccess(qrb_status status) {
    return status == QRB_SUCCESS;
}
inline bool isSuccess(const qrb_result* result) {
    return result == nullptr;
}

// One instance per function: Name is a type of its own.
template <typename Name, typename Result, typename... Parameters>
struct Recorder {
    static inline Result (*original)(Parameters...) = nullptr;
    static inline const char* name = nullptr;
    static Result call(Parameters... parameters) {
        const Result result = original(parameters...);
        (isSuccess(result) ? callRecord().succeeded : callRecord().failed).insert(name);
        return result;
    }
};

template <typename Name, typename Result, typename... Parameters>
void install(Result (*&slot)(Parameters...), const char* name) {
    using Own = Recorder<Name, Result, Parameters...>;
    Own::original = slot;
    Own::name = name;
    slot = &Own::call;
    callRecord().all.insert(name);
}

}  // namespace recorder

inline void recordCalls() {
    callRecord() = {};
    auto& table = const_cast<tarvo::qrb::FunctionTable&>(tarvo::qrb::functions());
#define QRB_FUNCTION(result, function, parameters) \
    recorder::install<struct function##_recorded>(table.function, #function);
#include "qrb/functions.def"
}
