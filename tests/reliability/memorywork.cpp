#include "tests/reliability/memorywork.h"

#include <filesystem>
#include <stdexcept>

namespace tarvo::trial {

namespace {

constexpr const char* definition =
    R"({"name":"xyz","title":"xyz","length":3,"minimum_value":-100,"maximum_value":100,)"
    R"("resolution":0.01,"default_value":0,"storage_class":1})";
constexpr const char* numberDefinition =
    R"({"name":"n","title":"n","length":1,"minimum_value":0,"maximum_value":1000,"resolution":1,)"
    R"("default_value":3,"storage_class":2})";
constexpr const char* widerDefinition =
    R"({"name":"n","title":"n","length":1,"minimum_value":-5,"maximum_value":70000,)"
    R"("resolution":1,"default_value":3,"storage_class":3})";
constexpr std::uint8_t key[] = {1, 2, 3, 4};
constexpr std::uint32_t points = 400;

// A definition for one call. json: null leaves the record as it is.
void withAttribute(Bench& b, const char* json,
                   const std::function<qrb_status(qrb_point_attribute*)>& call) {
    qrb_point_attribute* attribute = nullptr;
    if (b.step(b.t.qrb_pointcloud_point_attribute_new(b.c, &attribute)) &&
        b.step(b.t.qrb_pointcloud_point_attribute_json_load(b.c, attribute, json)))
        b.step(call(attribute));
    b.t.qrb_pointcloud_point_attribute_delete_cf(attribute);
}

void select(Bench& b, const char* filter) {
    qrb_query_select* query = nullptr;
    static double out[points * 3];
    std::uint32_t done = 1;
    if (b.step(b.t.qrb_pointcloud_query_select_new(b.c, b.cloud, 0, filter, &query)) &&
        b.step(
            b.t.qrb_pointcloud_query_select_bind(b.c, query, "xyz", QRB_DATA_TYPE_DOUBLE, out, 24)))
        while (done > 0 &&
               b.step(b.t.qrb_pointcloud_query_select_next(b.c, query, points, &done))) {
        }
}

void update(Bench& b, const char* attribute) {
    qrb_query_update* query = nullptr;
    std::uint64_t ids[100];
    double values[300];
    for (std::uint64_t i = 0; i < 100; ++i)
        ids[i] = i * 3 + 1;
    for (int i = 0; i < 300; ++i)
        values[i] = i % 50;
    std::uint32_t done = 0;
    b.begin();
    if (b.step(b.failed ? QRB_FAILURE
                        : b.t.qrb_pointcloud_query_update_new(b.c, b.cloud, &query)) &&
        b.step(b.t.qrb_pointcloud_query_update_bind(b.c, query, "tarvo.id", QRB_DATA_TYPE_UINT64,
                                                    ids, 8)) &&
        b.step(b.t.qrb_pointcloud_query_update_bind(b.c, query, attribute, QRB_DATA_TYPE_DOUBLE,
                                                    values, 24)) &&
        b.step(b.t.qrb_pointcloud_query_update_next(b.c, query, 100, &done)) &&
        b.step(b.t.qrb_pointcloud_query_update_delete(b.c, query)))
        b.commit();
}

void fill(Bench& b) {
    qrb_query_fill* query = nullptr;
    const double value = 77;
    std::uint32_t done = 1;
    b.begin();
    if (b.failed ||
        !b.step(b.t.qrb_pointcloud_query_fill_new(b.c, b.cloud, 0, "xyz[0] > 3", &query)) ||
        !b.step(
            b.t.qrb_pointcloud_query_fill_bind(b.c, query, "n", QRB_DATA_TYPE_DOUBLE, &value, 8)))
        return;
    while (done > 0 && b.step(b.t.qrb_pointcloud_query_fill_next(b.c, query, 90, &done))) {
    }
    if (!b.failed && b.step(b.t.qrb_pointcloud_query_fill_delete(b.c, query)))
        b.commit();
}

void remove(Bench& b) {
    qrb_query_remove* query = nullptr;
    std::uint32_t ids[80];
    for (std::uint32_t i = 0; i < 80; ++i)
        ids[i] = i * 4 + 1;
    std::uint32_t done = 0;
    b.begin();
    if (!b.failed && b.step(b.t.qrb_pointcloud_query_remove_new(b.c, b.cloud, &query)) &&
        b.step(b.t.qrb_pointcloud_query_remove_bind(b.c, query, QRB_DATA_TYPE_UINT32, ids, 4)) &&
        b.step(b.t.qrb_pointcloud_query_remove_next(b.c, query, 80, &done)) &&
        b.step(b.t.qrb_pointcloud_query_remove_delete(b.c, query)))
        b.commit();
}

void setLevels(Bench& b) {
    b.begin();
    if (!b.failed && b.step(b.t.qrb_pointcloud_management_set_lod_mode(b.c, b.cloud, 2)) &&
        b.step(b.t.qrb_pointcloud_management_set_chunk_size_lod(b.c, b.cloud, 3)))
        b.commit();
}

// One call within a transaction.
std::function<void(Bench&)> changed(const std::function<qrb_status(Bench&)>& call) {
    return [call](Bench& b) {
        b.begin();
        if (!b.failed && b.step(call(b)))
            b.commit();
    };
}

void setItems(Bench& b) {
    b.begin();
    if (!b.failed &&
        b.step(b.t.qrb_pointcloud_meta_data_set(b.c, b.cloud, "item", "{\"a\": [1, 2]}")) &&
        b.step(b.t.qrb_pointcloud_meta_data_create_signature(b.c, b.cloud, "item", 1, 4, key)) &&
        b.step(b.t.qrb_pointcloud_changelog_append_log_message(b.c, b.cloud, "a message")))
        b.step(b.t.qrb_pointcloud_transaction_commit_with_signature(b.c, b.cloud, nullptr, nullptr,
                                                                    1, 4, key));
}

void statistics(Bench& b) {
    qrb_query_stat* query = nullptr;
    qrb_graph_node* node = nullptr;
    double values[3];
    if (b.step(b.t.qrb_pointcloud_query_stat_new(b.c, b.cloud, &query)) &&
        b.step(b.t.qrb_pointcloud_graph_node_new(b.c, &node)) &&
        b.step(b.t.qrb_pointcloud_query_stat_index_filter(b.c, query, node, "xyz[0] < 10")))
        b.step(b.t.qrb_pointcloud_query_stat_minimum(b.c, query, 1, "xyz", QRB_DATA_TYPE_DOUBLE,
                                                     values));
}

void validate(Bench& b) {
    b.step(b.t.qrb_pointcloud_meta_data_validate_json(
        b.c, nullptr, R"({"a": [1, 2], "b": "text"})",
        R"({"type": "object", "properties": {"a": {"type": "array", "items": {"type": "number",
        "enum": [1, 2]}}, "b": {"type": "string", "pattern": "^t.*t$"}}, "required": ["a"]})"));
}

Work inspection(const char* name, std::uint8_t format) {
    return {name, true, {}, [format](Bench& b) {
                const char* report = nullptr;
                b.step(b.t.qrb_pointcloud_inspect(b.c, b.cloud, format, &report));
            }};
}

}  // namespace

void Bench::start() {
    failed = false;
    cloud = nullptr;
    if (t.qrb_context_new(&c, nullptr, nullptr) != QRB_SUCCESS ||
        t.qrb_pointcloud_new(c, &cloud) != QRB_SUCCESS)
        throw std::runtime_error("The library gives no context.");
}

void Bench::end() {
    if (t.qrb_context_delete(c) != QRB_SUCCESS)
        throw std::runtime_error("The context can't be deleted.");
}

bool Bench::step(qrb_status status) {
    if (failed || status == QRB_SUCCESS)
        return !failed;
    failed = true;
    const char* details = nullptr;
    // Needs no memory itself.
    if (t.qrb_context_get_last_error(c, &code, &text, &details) != QRB_SUCCESS)
        text = nullptr;
    return false;
}

void Bench::create() {
    qrb_create_settings* settings = nullptr;
    if (step(t.qrb_pointcloud_create_settings_new(c, &settings)))
        withAttribute(*this, definition, [&](qrb_point_attribute* attribute) {
            return t.qrb_pointcloud_create_settings_set_primary_attribute(c, settings, attribute);
        });
    if (!failed && step(t.qrb_pointcloud_create_settings_set_chunk_size(c, settings, 100)))
        step(t.qrb_pointcloud_create(c, cloud, m_file.c_str(), settings));
    t.qrb_pointcloud_create_settings_delete_cf(settings);
}

void Bench::open() {
    step(t.qrb_pointcloud_open(c, cloud, m_file.c_str(), nullptr));
}

void Bench::begin() {
    std::uint32_t id = 0;
    if (!failed)
        step(t.qrb_pointcloud_transaction_begin(c, cloud, "t", "a", "", "", &id));
}

void Bench::commit() {
    if (!failed)
        step(t.qrb_pointcloud_transaction_commit(c, cloud));
}

void Bench::insert(std::uint32_t count) {
    static double xyz[points * 3];
    for (std::uint32_t i = 0; i < count * 3; ++i)
        xyz[i] = (i * 7919) % 199 - 99.0;
    qrb_query_insert* query = nullptr;
    std::uint32_t done = 0;
    if (!failed && step(t.qrb_pointcloud_query_insert_new(c, cloud, &query)) &&
        step(t.qrb_pointcloud_query_insert_bind(c, query, "xyz", QRB_DATA_TYPE_DOUBLE, xyz, 24)) &&
        step(t.qrb_pointcloud_query_insert_next(c, query, count, &done)))
        step(t.qrb_pointcloud_query_insert_delete(c, query));
}

std::string Bench::contents() {
    std::string result;
    const auto must = [this](qrb_status status) {
        if (!step(status))
            throw std::runtime_error(std::string("The file can't be read: ") + text);
    };
    std::uint32_t count = 0;
    must(t.qrb_pointcloud_transaction_list(c, cloud, &count, nullptr));
    std::vector<std::uint32_t> ids(count);
    must(t.qrb_pointcloud_transaction_list(c, cloud, &count, ids.data()));
    std::uint32_t current = 0;
    must(t.qrb_pointcloud_transaction_current(c, cloud, &current));
    for (const std::uint32_t id : ids)
        result += std::to_string(id) + (id == current ? "* " : " ");
    const char* value = nullptr;
    const char* json = nullptr;
    must(t.qrb_pointcloud_meta_data_get(c, cloud, "item", &value, "none"));
    result += std::string(" item ") + value;
    must(t.qrb_pointcloud_point_attributes_list(c, cloud, &count, &value));
    std::vector<std::string> names;
    for (std::uint32_t i = 0; i < count; ++i, value += std::string_view(value).size() + 1)
        names.emplace_back(value);
    qrb_point_attribute* attribute = nullptr;
    must(t.qrb_pointcloud_point_attribute_new(c, &attribute));
    for (const std::string& name : names) {
        must(t.qrb_pointcloud_point_attributes_get(c, cloud, name.c_str(), attribute));
        must(t.qrb_pointcloud_point_attribute_json_save(c, attribute, &json));
        result += json;
    }
    t.qrb_pointcloud_point_attribute_delete(c, attribute);
    std::vector<std::vector<double>> columns(names.size(), std::vector<double>(6000));
    qrb_query_select* query = nullptr;
    must(t.qrb_pointcloud_query_select_new(c, cloud, 0, "", &query));
    for (std::size_t i = 0; i < names.size(); ++i)
        must(t.qrb_pointcloud_query_select_bind(c, query, names[i].c_str(), QRB_DATA_TYPE_DOUBLE,
                                                columns[i].data(), 24));
    must(t.qrb_pointcloud_query_select_next(c, query, 2000, &count));
    result += " points " + std::to_string(count) + " ";
    for (const std::vector<double>& column : columns)
        result.append(reinterpret_cast<const char*>(column.data()), count * 24);
    must(t.qrb_pointcloud_query_select_delete(c, query));
    return result;
}

const std::vector<Work>& allWork() {
    static const std::uint32_t third = 3;
    static const std::vector<Work> all{
        {"create", false, {}, [](Bench& b) { b.create(); }},
        {"open", true, [](Bench& b) { b.step(b.t.qrb_pointcloud_close(b.c, b.cloud)); },
         [](Bench& b) { b.open(); }},
        {"insert",
         true,
         {},
         [](Bench& b) {
             b.begin();
             b.insert(points);
             b.commit();
         }},
        {"levels of detail", true, {}, setLevels},
        {"select", true, {}, [](Bench& b) { select(b, "xyz[0] > 3 && xyz[1] < 50 || n == 3"); }},
        {"items", true, {}, setItems},
        {"validation", true, {}, validate},
        inspection("report as text", 1),
        inspection("report as JSON", 2),
        inspection("report as HTML", 3),
        inspection("histograms", 4),
        inspection("check", 5),
        {"vacuum", true,
         [](Bench& b) { b.step(b.t.qrb_pointcloud_transaction_discard(b.c, b.cloud, 1, &third)); },
         [](Bench& b) {
             b.step(b.t.qrb_pointcloud_management_vacuum(b.c, b.cloud, nullptr, nullptr));
         }},
        {"update", true, {}, [](Bench& b) { update(b, "n"); }},
        {"update of places", true, {}, [](Bench& b) { update(b, "xyz"); }},
        {"fill", true, {}, fill},
        {"remove", true, {}, remove},
        {"restore",
         true,
         {},
         [](Bench& b) { b.step(b.t.qrb_pointcloud_transaction_restore(b.c, b.cloud, 2)); }},
        {"discard",
         true,
         {},
         [](Bench& b) { b.step(b.t.qrb_pointcloud_transaction_discard(b.c, b.cloud, 1, &third)); }},
        {"finalize",
         true,
         {},
         [](Bench& b) { b.step(b.t.qrb_pointcloud_management_finalize(b.c, b.cloud)); }},
        {"size",
         true,
         {},
         [](Bench& b) {
             std::uint64_t bytes = 0;
             b.step(b.t.qrb_pointcloud_transaction_size(b.c, b.cloud, 1, &third, &bytes));
         }},
        {"statistics", true, {}, statistics},
        {"attribute added", true, {}, changed([](Bench& b) {
             return b.t.qrb_pointcloud_point_attributes_add_default(b.c, b.cloud, "tarvo.class");
         })},
        {"attribute redefined",
         true,
         {},
         [](Bench& b) {
             b.begin();
             if (!b.failed)
                 withAttribute(b, widerDefinition, [&](qrb_point_attribute* attribute) {
                     return b.t.qrb_pointcloud_point_attributes_put(b.c, b.cloud, attribute);
                 });
             b.commit();
         }},
        {"attribute duplicated", true, {}, changed([](Bench& b) {
             return b.t.qrb_pointcloud_point_attributes_duplicate(b.c, b.cloud, "n", "copy");
         })},
        {"values discarded", true, {}, changed([](Bench& b) {
             return b.t.qrb_pointcloud_point_attributes_discard(b.c, b.cloud, "n");
         })},
        {"attribute removed", true, {}, changed([](Bench& b) {
             return b.t.qrb_pointcloud_point_attributes_remove(b.c, b.cloud, "n");
         })},
        {"changelog imported", true, {}, changed([](Bench& b) {
             return b.t.qrb_pointcloud_changelog_import_from_database(b.c, b.cloud,
                                                                      b.other().c_str());
         })},
        {"changelog exported",
         true,
         {},
         [](Bench& b) {
             b.step(b.t.qrb_pointcloud_changelog_export_to_textfile(b.c, b.cloud,
                                                                    b.textFile().c_str()));
         }},
        {"number defined",
         true,
         {},  // what the others find in the file
         [](Bench& b) {
             b.begin();
             if (!b.failed)
                 withAttribute(b, numberDefinition, [&](qrb_point_attribute* attribute) {
                     qrb_status status =
                         b.t.qrb_pointcloud_point_attributes_remove(b.c, b.cloud, "n");
                     return status == QRB_SUCCESS
                                ? b.t.qrb_pointcloud_point_attributes_add(b.c, b.cloud, attribute)
                                : status;
                 });
             b.commit();
         }},
    };
    return all;
}

}  // namespace tarvo::trial
