// The database handle, its transactions, management, metadata and attribute definitions.
#include "engine/capi/handles.h"
#include "engine/report/report.h"
#include "qrb/defaults/catalogue.h"

#include <algorithm>

using namespace tarvo::engine;
using namespace tarvo::engine::capi;

namespace {

session::Session& sessionOf(qrb_pointcloud* pointcloud) {
    return given(pointcloud, "pointcloud").open();
}

}  // namespace

extern "C" {

qrb_status qrb_pointcloud_new(qrb_context* context, qrb_pointcloud** pointcloud) {
    return call(context, [&] { given(pointcloud, "pointcloud") = new qrb_pointcloud; });
}

qrb_status qrb_pointcloud_delete(qrb_context* context, qrb_pointcloud* pointcloud) {
    return call(context, [&] { delete pointcloud; });
}

qrb_status qrb_pointcloud_open(qrb_context* context, qrb_pointcloud* pointcloud,
                               const char* file_name, const qrb_open_settings* settings) {
    return call(context, [&] {
        auto& slot = given(pointcloud, "pointcloud").session;
        if (slot)
            throw Failure(ErrorCode::State, "A database is open already.", "Close it first.");
        slot = std::make_unique<session::Session>(
            textOf(file_name), settings ? settings->value : session::OpenSettings(), context->api);
    });
}

qrb_status qrb_pointcloud_create(qrb_context* context, qrb_pointcloud* pointcloud,
                                 const char* file_name, const qrb_create_settings* settings) {
    return call(context, [&] {
        auto& slot = given(pointcloud, "pointcloud").session;
        if (slot)
            throw Failure(ErrorCode::State, "A database is open already.", "Close it first.");
        const session::CreateSettings values =
            settings ? settings->value : session::CreateSettings();
        session::Session::create(textOf(file_name), values, context->api);
        slot = std::make_unique<session::Session>(
            textOf(file_name), session::OpenSettings{values.cacheSize}, context->api);
    });
}

qrb_status qrb_pointcloud_close(qrb_context* context, qrb_pointcloud* pointcloud) {
    return call(context, [&] { given(pointcloud, "pointcloud").session.reset(); });
}

qrb_status qrb_pointcloud_is_open(qrb_context* context, qrb_pointcloud* pointcloud,
                                  uint8_t* is_open) {
    return call(context, [&] {
        given(is_open, "is_open") = given(pointcloud, "pointcloud").session != nullptr;
    });
}

qrb_status qrb_pointcloud_is_empty(qrb_context* context, qrb_pointcloud* pointcloud,
                                   uint8_t* is_empty) {
    return call(context, [&] {
        given(is_empty, "is_empty") = sessionOf(pointcloud).state()->pointCount == 0;
    });
}

qrb_status qrb_pointcloud_get_uuid(qrb_context* context, qrb_pointcloud* pointcloud,
                                   const char** uuid) {
    return call(context, [&] { giveText(*context, sessionOf(pointcloud).identity().uuid, uuid); });
}

qrb_status qrb_pointcloud_inspect(qrb_context* context, qrb_pointcloud* pointcloud, uint8_t format,
                                  const char** report) {
    return call(context, [&] {
        giveText(*context, report::inspect(sessionOf(pointcloud), format), report);
    });
}

qrb_status qrb_pointcloud_clear_cache(qrb_context* context, qrb_pointcloud* pointcloud) {
    return call(context, [&] { sessionOf(pointcloud).clearCache(); });
}

// Transactions.

qrb_status qrb_pointcloud_transaction_new(qrb_context* context, qrb_transaction** transaction) {
    return call(context, [&] { given(transaction, "transaction") = new qrb_transaction; });
}

qrb_status qrb_pointcloud_transaction_delete(qrb_context* context, qrb_transaction* transaction) {
    return call(context, [&] { delete transaction; });
}

qrb_status qrb_pointcloud_transaction_get_id(qrb_context* context,
                                             const qrb_transaction* transaction, uint32_t* id) {
    return call(context, [&] { given(id, "id") = given(transaction, "transaction").value.id; });
}

#define TRANSACTION_TEXT(field)                                                         \
    qrb_status qrb_pointcloud_transaction_get_##field(                                  \
        qrb_context* context, const qrb_transaction* transaction, const char** field) { \
        return call(context, [&] {                                                      \
            giveText(*context, given(transaction, "transaction").value.field, field);   \
        });                                                                             \
    }
TRANSACTION_TEXT(qrb)
TRANSACTION_TEXT(title)
TRANSACTION_TEXT(agent)
TRANSACTION_TEXT(comments)
TRANSACTION_TEXT(settings)
TRANSACTION_TEXT(start)
TRANSACTION_TEXT(stop)

qrb_status qrb_pointcloud_transaction_begin(qrb_context* context, qrb_pointcloud* pointcloud,
                                            const char* title, const char* agent,
                                            const char* comments, const char* settings,
                                            uint32_t* id) {
    return call(context, [&] {
        given(id, "id") =
            sessionOf(pointcloud)
                .begin(textOf(title), textOf(agent), textOf(comments), textOf(settings));
    });
}

qrb_status qrb_pointcloud_transaction_commit(qrb_context* context, qrb_pointcloud* pointcloud) {
    return call(context, [&] { sessionOf(pointcloud).commit(); });
}

qrb_status qrb_pointcloud_transaction_commit_with_progress(qrb_context* context,
                                                           qrb_pointcloud* pointcloud,
                                                           qrb_progress_function progress,
                                                           void* data) {
    return call(context, [&] { sessionOf(pointcloud).commit(progressOf(progress, data)); });
}

qrb_status qrb_pointcloud_transaction_commit_with_signature(qrb_context* context,
                                                            qrb_pointcloud* pointcloud,
                                                            qrb_progress_function progress,
                                                            void* data, uint32_t method, uint32_t,
                                                            const uint8_t*) {
    return call(context, [&] {
        session::Session& session = sessionOf(pointcloud);
        if (method != 0)
            throw Failure(ErrorCode::NotAvailable,
                          "Committing with a signature is not available yet.",
                          "Commit with method 0 (none).");
        session.commit(progressOf(progress, data));
    });
}

qrb_status qrb_pointcloud_transaction_rollback(qrb_context* context, qrb_pointcloud* pointcloud) {
    return call(context, [&] { sessionOf(pointcloud).rollback(); });
}

qrb_status qrb_pointcloud_transaction_list(qrb_context* context, qrb_pointcloud* pointcloud,
                                           uint32_t* count, uint32_t* ids) {
    return call(context, [&] {
        const std::vector<std::uint32_t> all = sessionOf(pointcloud).transactions();
        uint32_t& slot = given(count, "count");
        if (ids)
            std::copy_n(all.begin(), std::min<std::size_t>(slot, all.size()), ids);
        slot = static_cast<uint32_t>(all.size());
    });
}

qrb_status qrb_pointcloud_transaction_current(qrb_context* context, qrb_pointcloud* pointcloud,
                                              uint32_t* id) {
    return call(context, [&] { given(id, "id") = sessionOf(pointcloud).current(); });
}

qrb_status qrb_pointcloud_transaction_pending(qrb_context* context, qrb_pointcloud* pointcloud,
                                              uint8_t* pending) {
    return call(context, [&] { given(pending, "pending") = sessionOf(pointcloud).pending(); });
}

qrb_status qrb_pointcloud_transaction_details(qrb_context* context, qrb_pointcloud* pointcloud,
                                              uint32_t id, qrb_transaction* transaction) {
    return call(context, [&] {
        given(transaction, "transaction").value = sessionOf(pointcloud).details(id);
    });
}

// Management.

qrb_status qrb_pointcloud_management_get_lod_mode(qrb_context* context, qrb_pointcloud* pointcloud,
                                                  uint32_t* lod_mode) {
    return call(context,
                [&] { given(lod_mode, "lod_mode") = sessionOf(pointcloud).state()->lodMode; });
}

qrb_status qrb_pointcloud_management_get_chunk_size_lod(qrb_context* context,
                                                        qrb_pointcloud* pointcloud,
                                                        uint32_t* chunk_size) {
    return call(context, [&] {
        given(chunk_size, "chunk_size") = sessionOf(pointcloud).state()->chunkSizeLod;
    });
}

// Metadata.

qrb_status qrb_pointcloud_meta_data_list(qrb_context* context, qrb_pointcloud* pointcloud,
                                         uint32_t* count, const char** names) {
    return call(context, [&] {
        std::vector<std::string> list;
        for (const auto& [name, value] : sessionOf(pointcloud).state()->metaData)
            list.push_back(name);
        giveNames(*context, list, count, names);
    });
}

qrb_status qrb_pointcloud_meta_data_exists(qrb_context* context, qrb_pointcloud* pointcloud,
                                           const char* name, uint8_t* exists) {
    return call(context, [&] {
        given(exists, "exists") = sessionOf(pointcloud).state()->metaData.count(textOf(name)) > 0;
    });
}

qrb_status qrb_pointcloud_meta_data_get(qrb_context* context, qrb_pointcloud* pointcloud,
                                        const char* name, const char** value,
                                        const char* default_value) {
    return call(context, [&] {
        session::Session& session = sessionOf(pointcloud);
        const std::string item = textOf(name);
        giveText(
            *context,
            session.state()->metaData.count(item) ? session.metaData(item) : textOf(default_value),
            value);
    });
}

qrb_status qrb_pointcloud_meta_data_set(qrb_context* context, qrb_pointcloud* pointcloud,
                                        const char* name, const char* value) {
    return call(context, [&] { sessionOf(pointcloud).setMetaData(textOf(name), textOf(value)); });
}

qrb_status qrb_pointcloud_meta_data_remove(qrb_context* context, qrb_pointcloud* pointcloud,
                                           const char* name) {
    return call(context, [&] { sessionOf(pointcloud).removeMetaData(textOf(name)); });
}

// Attribute definitions.

qrb_status qrb_pointcloud_point_attributes_add(qrb_context* context, qrb_pointcloud* pointcloud,
                                               const qrb_point_attribute* attribute) {
    return call(context,
                [&] { sessionOf(pointcloud).addAttribute(given(attribute, "attribute").value); });
}

qrb_status qrb_pointcloud_point_attributes_add_default(qrb_context* context,
                                                       qrb_pointcloud* pointcloud,
                                                       const char* name) {
    return call(context, [&] {
        sessionOf(pointcloud).addAttribute(session::defaultAttribute(textOf(name)));
    });
}

qrb_status qrb_pointcloud_point_attributes_exists(qrb_context* context, qrb_pointcloud* pointcloud,
                                                  const char* name, uint8_t* exists) {
    return call(context, [&] {
        given(exists, "exists") = sessionOf(pointcloud).state()->attributes.find(textOf(name)) >= 0;
    });
}

qrb_status qrb_pointcloud_point_attributes_get(qrb_context* context, qrb_pointcloud* pointcloud,
                                               const char* name, qrb_point_attribute* attribute) {
    return call(context, [&] {
        const auto state = sessionOf(pointcloud).state();
        const int index = state->attributes.find(textOf(name));
        if (index < 0)
            throw Failure(ErrorCode::NotFound,
                          "The database has no point attribute \"" + textOf(name) + "\".");
        given(attribute, "attribute").value = state->attributes[index].record;
    });
}

qrb_status qrb_pointcloud_point_attributes_get_default(qrb_context* context, qrb_pointcloud*,
                                                       const char* name,
                                                       qrb_point_attribute* attribute) {
    return call(context, [&] {
        given(attribute, "attribute").value = session::defaultAttribute(textOf(name));
    });
}

qrb_status qrb_pointcloud_point_attributes_list(qrb_context* context, qrb_pointcloud* pointcloud,
                                                uint32_t* count, const char** names) {
    return call(context, [&] {
        std::vector<std::string> list;
        for (const schema::Attribute& attribute : sessionOf(pointcloud).state()->attributes.all())
            list.push_back(attribute.record.name);
        giveNames(*context, list, count, names);
    });
}

qrb_status qrb_pointcloud_point_attributes_list_default(qrb_context* context, qrb_pointcloud*,
                                                        uint32_t* count, const char** names) {
    return call(context, [&] {
        std::vector<std::string> list;
        for (const auto& entry : tarvo::qrb::defaults::attributes())
            list.push_back(entry.name);
        giveNames(*context, list, count, names);
    });
}

qrb_status qrb_pointcloud_point_attributes_point_id_name(qrb_context* context, qrb_pointcloud*,
                                                         const char** name) {
    return call(context, [&] { giveText(*context, std::string(schema::pointIdName), name); });
}

qrb_status qrb_pointcloud_point_attributes_point_id_type(qrb_context* context,
                                                         qrb_pointcloud* pointcloud,
                                                         uint32_t* data_type) {
    return call(context, [&] {
        given(data_type, "data_type") =
            schema::dataType(sessionOf(pointcloud).state()->pointId().record);
    });
}

qrb_status qrb_pointcloud_point_attributes_point_id_unit(qrb_context* context,
                                                         qrb_pointcloud* pointcloud,
                                                         const char** unit) {
    return call(context, [&] {
        giveText(*context, sessionOf(pointcloud).state()->pointId().record.unitSymbol, unit);
    });
}

qrb_status qrb_pointcloud_point_attributes_primary_attribute_name(qrb_context* context,
                                                                  qrb_pointcloud* pointcloud,
                                                                  const char** name) {
    return call(context, [&] {
        giveText(*context, sessionOf(pointcloud).state()->primary().record.name, name);
    });
}

qrb_status qrb_pointcloud_point_attributes_remove(qrb_context* context, qrb_pointcloud* pointcloud,
                                                  const char* name) {
    return call(context, [&] { sessionOf(pointcloud).removeAttribute(textOf(name)); });
}

}  // extern "C"
