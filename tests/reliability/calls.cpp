// Any sequence of calls on the C interface is survived: functions at random with arguments at
// random, out of callbacks, too. Each answers success, or a failure with code and text; afterwards
// the file opens, can be read, and has what was committed.
//
// A round is a process of its own with many sequences, so that a crash or a report of a sanitizer
// is one bad round. In the control what was committed is lost.
#include "qrb/loader.h"
#include "tests/reliability/callpool.h"
#include "tests/reliability/trial.h"
#include "tests/reliability/workfolder.h"

#include <sys/wait.h>
#include <unistd.h>
#include <algorithm>
#include <cstring>
#include <filesystem>
#include <iostream>
#include <optional>
#include <set>
#include <stdexcept>
#include <string_view>
#include <tuple>
#include <utility>

// Nothing here is to survive a power cut.
extern "C" __attribute__((visibility("default"))) int fsync(int) {
    return 0;
}
extern "C" __attribute__((visibility("default"))) int fdatasync(int) {
    return 0;
}

namespace {

using namespace tarvo;
using trial::CallPool;
using trial::Random;
namespace fs = std::filesystem;

constexpr std::uint64_t sequencesPerRound = 100;
constexpr unsigned deepest = 2;  // callbacks within callbacks

const char* const database = "a.qrbx";

[[noreturn]] void broken(const std::string& what) {
    throw std::runtime_error(what);
}

void ok(bool isTrue, const char* what) {
    if (!isTrue)
        broken(std::string(what) + " failed");
}

// Which functions take the size of the caller's memory as a number.
bool isCounted(std::string_view name) {
    for (const char* const part : {"insert_next", "update_next", "remove_next", "nodes_new",
                                   "discard", "size", "merged", "signature", "verify"})
        if (name.find(part) != std::string_view::npos)
            return true;
    return false;
}

class Sequence {
public:
    explicit Sequence(Random& random) : m_pool(random) { current = this; }
    ~Sequence() { current = nullptr; }
    Sequence(const Sequence&) = delete;
    Sequence& operator=(const Sequence&) = delete;

    void call();
    void end();
    void checkFiles();

private:
    template <typename T>
    class Argument;
    template <typename Function>
    struct Caller;
    struct Entry {
        const char* name;
        void (*call)(Sequence&, const char* name);
        bool isOfRecord;  // settings and attributes: many functions, much alike
    };
    static const std::vector<Entry>& entries();

    void callAny();
    void check(const char* name, qrb_status status, qrb_context* context);
    void check(const char* name, qrb_result* result, qrb_context* context);
    void note(std::string_view name, qrb_context* context, qrb_pointcloud* pointcloud,
              const char* text);
    std::set<std::uint32_t> transactions(qrb_context* context, qrb_pointcloud* pointcloud);
    static std::uint8_t progress(std::uint8_t, void*);
    static std::uint8_t answer(const std::uint8_t* challenge, std::uint32_t challengeSize,
                               std::uint8_t* out, std::uint32_t size, void*);

    static inline Sequence* current = nullptr;
    const qrb::FunctionTable& t = qrb::functions();
    CallPool m_pool;
    unsigned m_depth = 0;
    std::optional<std::string> m_brokenInCallback;
    std::map<qrb_pointcloud*, std::string> m_files;              // what handles were opened on
    std::map<std::string, std::set<std::uint32_t>> m_committed;  // what each file must have
    std::vector<char*> m_texts;
};

// An argument of the type: how it is chosen, passed, and what is done with it after a success.
template <typename T>
class Sequence::Argument {
    using Pointee = std::remove_pointer_t<T>;
    static constexpr bool isOutput = std::is_pointer_v<Pointee> && !std::is_const_v<Pointee>;
    static constexpr bool isMemory =
        std::is_pointer_v<T> && (std::is_arithmetic_v<Pointee> || std::is_void_v<Pointee>);
    static constexpr bool isHandle =
        std::is_pointer_v<T> && std::is_class_v<std::remove_const_t<Pointee>>;

public:
    Argument(Sequence& sequence, const char* name) {
        CallPool& pool = sequence.m_pool;
        if constexpr (isOutput)
            m_isGiven = !pool.chance(3);
        else if constexpr (std::is_arithmetic_v<T>)
            m_value = pool.number<T>(isCounted(name));
        else if constexpr (std::is_same_v<T, qrb_progress_function>)
            m_value = pool.chance(30) ? nullptr : &Sequence::progress;
        else if constexpr (std::is_same_v<T, qrb_authentication_function>)
            m_value = pool.chance(30) ? nullptr : &Sequence::answer;
        else if constexpr (std::is_same_v<T, const char*>)
            m_value = pool.text();
        else if constexpr (std::is_same_v<T, char*>)
            // Texts that the caller owns are no handles: only one that lives can be passed.
            m_value = sequence.m_texts.empty() ? nullptr : sequence.m_texts.back();
        else if constexpr (std::is_same_v<T, qrb_pointcloud* const*>)
            m_others = std::vector<qrb_pointcloud*>(256, pool.handle<qrb_pointcloud>());
        else if constexpr (isMemory)
            m_value = pool.memory<Pointee>();
        else
            m_value = pool.handle<std::remove_const_t<Pointee>>();
    }
    T value() {
        if constexpr (isOutput)
            return m_isGiven ? &m_output : nullptr;
        else if constexpr (std::is_same_v<T, qrb_pointcloud* const*>)
            return m_others.data();
        else
            return m_value;
    }
    void succeeded(Sequence& sequence, std::string_view name) {
        const auto has = [&](const char* part) { return name.find(part) != std::string::npos; };
        if constexpr (isOutput) {
            if (!m_isGiven)
                return;
            if constexpr (std::is_same_v<T, char**>)
                sequence.m_texts.push_back(m_output);
            if constexpr (std::is_same_v<T, char**> || std::is_same_v<T, const char**>) {
                // Of a list that is empty the block must not be read.
                if (!has("list") && !has("merged") && std::strlen(m_output) == SIZE_MAX)
                    broken("a text without end");
            } else {
                sequence.m_pool.made(m_output);
            }
        } else if constexpr (std::is_same_v<T, char*>) {
            if (m_value)
                sequence.m_texts.pop_back();
        } else if constexpr (isHandle) {
            if (has("_delete") && (!std::is_same_v<T, qrb_context*> || has("context_delete")))
                sequence.m_pool.gone(m_value);
        }
    }

private:
    T m_value{};
    bool m_isGiven = true;
    std::conditional_t<isOutput, Pointee, char> m_output{};
    std::vector<qrb_pointcloud*> m_others;
};

template <typename Result, typename... Parameters>
struct Sequence::Caller<Result (*)(Parameters...)> {
    using Arguments = std::tuple<Argument<Parameters>...>;

    static void call(Sequence& sequence, const char* name, Result (*function)(Parameters...)) {
        Arguments arguments{Argument<Parameters>(sequence, name)...};
        std::apply(
            [&](auto&... argument) {
                const std::tuple<Parameters...> values{argument.value()...};
                const auto contexts = sequence.m_pool.alive<qrb_context>();
                qrb_context* context = first<qrb_context*>(values);
                if (std::find(contexts.begin(), contexts.end(), context) == contexts.end())
                    context = nullptr;
                const Result result = std::apply(function, values);
                sequence.check(name, result, context);
                if constexpr (std::is_same_v<Result, qrb_status>) {
                    if (result != QRB_SUCCESS)
                        return;
                } else if (result) {
                    return;
                }
                (argument.succeeded(sequence, name), ...);
                sequence.note(name, context, first<qrb_pointcloud*>(values),
                              first<const char*>(values));
            },
            arguments);
    }
    template <typename T>
    static T first(const std::tuple<Parameters...>& values) {
        std::optional<T> found;
        std::apply(
            [&](const auto&... value) {
                const auto look = [&](const auto& one) {
                    if constexpr (std::is_same_v<std::remove_cvref_t<decltype(one)>, T>)
                        if (!found)
                            found = one;
                };
                (look(value), ...);
            },
            values);
        return found.value_or(T{});
    }
};

const std::vector<Sequence::Entry>& Sequence::entries() {
    static const std::vector<Entry> all{
#define QRB_FUNCTION(result, function, parameters)                                        \
    {#function,                                                                           \
     [](Sequence& sequence, const char* name) {                                           \
         Caller<decltype(qrb::FunctionTable::function)>::call(sequence, name,             \
                                                              qrb::functions().function); \
     },                                                                                   \
     std::strstr(#function, "_settings_") || std::strstr(#function, "_attribute_")},
#include "qrb/functions.def"
    };
    return all;
}

std::uint8_t Sequence::progress(std::uint8_t, void*) {
    Sequence& self = *current;
    if (self.m_depth < deepest) {
        ++self.m_depth;
        try {
            for (std::uint64_t i = self.m_pool.pick(3); i > 0; --i)
                self.callAny();
        } catch (const std::exception& exception) {
            self.m_brokenInCallback = exception.what();
        }
        --self.m_depth;
    }
    return !self.m_pool.chance(10);
}

std::uint8_t Sequence::answer(const std::uint8_t* challenge, std::uint32_t challengeSize,
                              std::uint8_t* out, std::uint32_t size, void* data) {
    for (std::uint32_t i = 0; i < size; ++i)
        out[i] = challenge[i % challengeSize];
    return progress(0, data);
}

void Sequence::check(const char* name, qrb_status status, qrb_context* context) {
    if (status == QRB_SUCCESS || !context || std::string_view(name).starts_with("qrb_context_"))
        return;
    std::int32_t code = 0;
    const char* text = nullptr;
    const char* details = nullptr;
    if (t.qrb_context_get_last_error(context, &code, &text, &details) != QRB_SUCCESS)
        broken(std::string(name) + ": the error can't be asked for");
    if (code == 0 || code == QRB_ERROR_INTERNAL || !text || !*text || !details)
        broken(std::string(name) + " failed with code " + std::to_string(code) + ": " +
               (text ? text : "no text"));
}

void Sequence::check(const char* name, qrb_result* result, qrb_context*) {
    if (!result)
        return;
    std::int32_t code = 0;
    char* text = nullptr;
    ok(!t.qrb_result_get_error_code_cf(result, &code), "the code of a result");
    ok(!t.qrb_result_get_error_text_cf(result, &text), "the text of a result");
    const std::string found = text;
    ok(!t.qrb_string_delete_cf(text), "deleting a text");
    m_pool.made(result);
    if (code == 0 || code == QRB_ERROR_INTERNAL || found.empty())
        broken(std::string(name) + " failed with code " + std::to_string(code) + ": " + found);
}

std::set<std::uint32_t> Sequence::transactions(qrb_context* context, qrb_pointcloud* pointcloud) {
    std::uint32_t count = 0;
    ok(t.qrb_pointcloud_transaction_list(context, pointcloud, &count, nullptr), "counting states");
    std::vector<std::uint32_t> ids(count);
    ok(t.qrb_pointcloud_transaction_list(context, pointcloud, &count, ids.data()),
       "listing states");
    return {ids.begin(), ids.end()};
}

// Keeps up with what must be in the files.
void Sequence::note(std::string_view name, qrb_context* context, qrb_pointcloud* pointcloud,
                    const char* text) {
    if (name == "qrb_context_delete") {
        m_pool.contextGone();
    } else if (name == "qrb_pointcloud_open" || name.starts_with("qrb_pointcloud_create")) {
        if (pointcloud && text && fs::exists(text))
            m_files[pointcloud] = fs::canonical(text).string();
    } else if (name.starts_with("qrb_pointcloud_transaction_commit")) {
        std::uint32_t id = 0;
        ok(t.qrb_pointcloud_transaction_current(context, pointcloud, &id), "the current state");
        m_committed[m_files[pointcloud]].insert(id);
    } else if (name == "qrb_pointcloud_transaction_discard" ||
               name == "qrb_pointcloud_management_finalize") {
        const std::set<std::uint32_t> left = transactions(context, pointcloud);
        std::erase_if(m_committed[m_files[pointcloud]],
                      [&](std::uint32_t id) { return !left.contains(id); });
    }
}

void Sequence::callAny() {
    const std::vector<Entry>& all = entries();
    const Entry* entry = &all[m_pool.pick(all.size())];
    while (entry->isOfRecord && m_pool.chance(80))
        entry = &all[m_pool.pick(all.size())];
    entry->call(*this, entry->name);
}

void Sequence::call() {
    // Something to work with, most times.
    qrb_context* context = nullptr;
    qrb_pointcloud* pointcloud = nullptr;
    ok(t.qrb_context_new(&context, nullptr, nullptr), "a context");
    m_pool.made(context);
    ok(t.qrb_pointcloud_new(context, &pointcloud), "a handle");
    m_pool.made(pointcloud);
    if (!m_pool.chance(5)) {
        ok(t.qrb_pointcloud_open(context, pointcloud, database, nullptr), "opening");
        m_files[pointcloud] = fs::canonical(database).string();
        std::uint32_t id = 0;
        if (m_pool.chance(60))
            ok(t.qrb_pointcloud_transaction_begin(context, pointcloud, "t", "a", "", "", &id),
               "beginning");
    }
    for (std::uint64_t calls = 20 + m_pool.pick(41); calls > 0; --calls) {
        callAny();
        if (m_brokenInCallback)
            broken("in a callback: " + *m_brokenInCallback);
    }
}

// Deletes everything: what is left is a leak of the library.
void Sequence::end() {
    for (qrb_context* const context : m_pool.alive<qrb_context>())
        ok(t.qrb_context_delete(context), "deleting a context");
    for (char* const text : m_texts)
        ok(!t.qrb_string_delete_cf(text), "deleting a text");
    const auto deleteRecord = [&](auto* record, auto* function) {
        auto* const object = reinterpret_cast<qrb_object*>(record);
        while (qrb_result* const locked = function(record)) {
            m_pool.made(locked);
            qrb_result* const failed = t.qrb_object_unlock_cf(object);
            if (failed) {
                m_pool.made(failed);
                broken("a record can be neither deleted nor unlocked");
            }
        }
    };
    for (auto* const record : m_pool.alive<qrb_create_settings>())
        deleteRecord(record, t.qrb_pointcloud_create_settings_delete_cf);
    for (auto* const record : m_pool.alive<qrb_open_settings>())
        deleteRecord(record, t.qrb_pointcloud_open_settings_delete_cf);
    for (auto* const record : m_pool.alive<qrb_point_attribute>())
        deleteRecord(record, t.qrb_pointcloud_point_attribute_delete_cf);
    for (qrb_result* const result : m_pool.alive<qrb_result>())
        ok(!t.qrb_result_delete_cf(result), "deleting a result");
}

void Sequence::checkFiles() {
    m_committed[fs::canonical(database).string()].insert(1);  // and it can be read
    for (const auto& [file, committed] : m_committed) {
        qrb_context* context = nullptr;
        qrb_pointcloud* pointcloud = nullptr;
        ok(t.qrb_context_new(&context, nullptr, nullptr), "a context");
        ok(t.qrb_pointcloud_new(context, &pointcloud), "a handle");
        ok(t.qrb_pointcloud_open(context, pointcloud, file.c_str(), nullptr), "opening afterwards");
        const std::set<std::uint32_t> kept = transactions(context, pointcloud);
        if (!std::includes(kept.begin(), kept.end(), committed.begin(), committed.end()))
            broken("A committed transaction is lost.");
        qrb_query_select* select = nullptr;
        std::uint32_t count = 1;
        std::vector<double> x(1000);
        ok(t.qrb_pointcloud_query_select_new(context, pointcloud, 0, "", &select), "a query");
        (void)t.qrb_pointcloud_query_select_bind(context, select, "xyz[0]", QRB_DATA_TYPE_DOUBLE,
                                                 x.data(), sizeof x[0]);
        while (count > 0)
            ok(t.qrb_pointcloud_query_select_next(context, select, 1000, &count), "reading");
        std::uint32_t id = 0;
        ok(t.qrb_pointcloud_transaction_begin(context, pointcloud, "", "", "", "", &id),
           "beginning afterwards");
        ok(t.qrb_context_delete(context), "deleting a context");
    }
}

// A database with two commits of points in small leaves.
void makeDatabase(const std::string& file) {
    const qrb::FunctionTable& t = qrb::functions();
    qrb_context* context = nullptr;
    qrb_pointcloud* pointcloud = nullptr;
    qrb_create_settings* settings = nullptr;
    ok(t.qrb_context_new(&context, nullptr, nullptr), "a context");
    ok(t.qrb_pointcloud_new(context, &pointcloud), "a handle");
    ok(t.qrb_pointcloud_create_settings_new(context, &settings), "settings");
    ok(t.qrb_pointcloud_create_settings_json_load(
           context, settings,
           R"({"primary_attribute": {"name": "xyz", "length": 3, "minimum_value": -100,
               "maximum_value": 100, "resolution": 0.001, "storage_class": 2}, "chunk_size": 50})"),
       "settings");
    ok(t.qrb_pointcloud_create(context, pointcloud, file.c_str(), settings), "a file");
    ok(t.qrb_pointcloud_create_settings_delete(context, settings), "deleting settings");
    std::vector<double> xyz(3 * 200);
    for (std::size_t i = 0; i < xyz.size(); ++i)
        xyz[i] = static_cast<double>(i * 7 % 97);
    for (int round = 0; round < 2; ++round) {
        std::uint32_t number = 0;
        qrb_query_insert* insert = nullptr;
        ok(t.qrb_pointcloud_transaction_begin(context, pointcloud, "t", "a", "", "", &number),
           "beginning");
        ok(t.qrb_pointcloud_meta_data_set(context, pointcloud, "own", "{\"a\": 1}"), "an item");
        ok(t.qrb_pointcloud_query_insert_new(context, pointcloud, &insert), "a query");
        ok(t.qrb_pointcloud_query_insert_bind(context, insert, "xyz", QRB_DATA_TYPE_DOUBLE,
                                              xyz.data(), 24),
           "binding");
        ok(t.qrb_pointcloud_query_insert_next(context, insert, 200, &number), "inserting");
        ok(t.qrb_pointcloud_transaction_commit(context, pointcloud), "committing");
    }
    ok(t.qrb_context_delete(context), "deleting a context");
}

// The sequences of a round, in a folder of their own.
int runSequences(const fs::path& folder, std::uint64_t seed, bool control) {
    const fs::path original = folder / "original";
    const fs::path place = folder / "place";
    fs::create_directories(folder);
    qrb::loadLibrary(QRBLIB_FILE);
    makeDatabase(original.string());
    for (std::uint64_t i = 0; i < sequencesPerRound; ++i) {
        fs::remove_all(place);
        fs::create_directories(place);
        fs::current_path(place);
        fs::copy_file(original, database);
        Random random(seed + i);
        Sequence sequence(random);
        try {
            sequence.call();
            sequence.end();
            if (control)
                fs::copy_file(original, database, fs::copy_options::overwrite_existing);
            sequence.checkFiles();
        } catch (const std::exception& exception) {
            std::cout << "Sequence " << i << ": " << exception.what() << std::endl;
            return 1;
        }
    }
    fs::current_path("/");
    fs::remove_all(folder);
    qrb::freeLibrary();
    return 0;
}

int run(int argc, char** argv) {
#ifdef QRB_SANITIZED
    constexpr std::uint64_t least = 20'000;
#else
    constexpr std::uint64_t least = 2'000;
#endif
    constexpr int workers = 2;
    trial::Trial trial("calls_trial", "sequences", argc, argv);
    const trial::WorkFolder work("calls");
    const fs::path folder = work.path();
    while (trial.next(least)) {
        ::pid_t children[workers];
        for (int worker = 0; worker < workers; ++worker) {
            const std::uint64_t seed = trial.random()();
            std::cout.flush();
            children[worker] = ::fork();
            if (children[worker] == 0)
                std::exit(runSequences(folder / std::to_string(worker), seed, trial.isControl()));
        }
        for (const ::pid_t child : children) {
            int status = 0;
            ::waitpid(child, &status, 0);
            trial.tried(sequencesPerRound);
            if (WIFSIGNALED(status))
                trial.badInControlsToo("a process was ended by signal " +
                                       std::to_string(WTERMSIG(status)));
            else if (status != 0)
                trial.bad("a process ended with status " + std::to_string(status));
        }
    }
    return trial.finish();
}

}  // namespace

int main(int argc, char** argv) {
    return tarvo::trial::guarded(run, argc, argv);
}
