// Transactions and management.
#include "engine/capi/handles.h"
#include "engine/query/commit.h"

#include <algorithm>

using namespace tarvo::engine;
using namespace tarvo::engine::capi;

namespace {

std::vector<std::uint32_t> idsOf(std::uint32_t count, const std::uint32_t* ids) {
    if (count > 0)
        given(ids, "ids");
    return {ids, ids + count};
}

}  // namespace

extern "C" {

qrb_status qrb_pointcloud_transaction_new(qrb_context* context, qrb_transaction** transaction) {
    return call(context, [&] { make(transaction, "transaction", context); });
}

qrb_status qrb_pointcloud_transaction_delete(qrb_context* context, qrb_transaction* transaction) {
    return call(context, [&] { deleteObject(transaction, "transaction"); });
}

qrb_status qrb_pointcloud_transaction_get_id(qrb_context* context,
                                             const qrb_transaction* transaction, uint32_t* id) {
    return call(context, [&] {
        auto& out = given(id, "id");
        out = given(transaction, "transaction")->value.id;
    });
}

#define TRANSACTION_TEXT(field)                                                         \
    qrb_status qrb_pointcloud_transaction_get_##field(                                  \
        qrb_context* context, const qrb_transaction* transaction, const char** field) { \
        return call(context, [&](Context& bound) {                                      \
            giveText(bound, given(transaction, "transaction")->value.field, field);     \
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
        auto& out = given(id, "id");
        out = sessionOf(pointcloud)
                  ->begin(textOf(title), textOf(agent), textOf(comments), textOf(settings));
    });
}

qrb_status qrb_pointcloud_transaction_commit(qrb_context* context, qrb_pointcloud* pointcloud) {
    return call(context, [&] { query::commit(*sessionOf(pointcloud)); });
}

qrb_status qrb_pointcloud_transaction_commit_with_progress(qrb_context* context,
                                                           qrb_pointcloud* pointcloud,
                                                           qrb_progress_function progress,
                                                           void* data) {
    return call(context, [&](Context& bound) {
        const CallingBack calling(bound, pointcloud);
        query::commit(calling.session(), progressOf(progress, data));
    });
}

qrb_status qrb_pointcloud_transaction_commit_with_signature(
    qrb_context* context, qrb_pointcloud* pointcloud, qrb_progress_function progress, void* data,
    uint32_t method, uint32_t key_length, const uint8_t* key) {
    return call(context, [&](Context& bound) {
        const CallingBack calling(bound, pointcloud);
        query::commit(calling.session(), progressOf(progress, data),
                      signerOf(&bound, method, key_length, key));
    });
}

qrb_status qrb_pointcloud_transaction_rollback(qrb_context* context, qrb_pointcloud* pointcloud) {
    return call(context, [&] { sessionOf(pointcloud)->rollback(); });
}

qrb_status qrb_pointcloud_transaction_restore(qrb_context* context, qrb_pointcloud* pointcloud,
                                              uint32_t id) {
    return call(context, [&] { sessionOf(pointcloud)->restore(id); });
}

qrb_status qrb_pointcloud_transaction_list(qrb_context* context, qrb_pointcloud* pointcloud,
                                           uint32_t* count, uint32_t* ids) {
    return call(context, [&] {
        const std::vector<std::uint32_t> all = sessionAnytime(pointcloud)->history().transactions();
        uint32_t& slot = given(count, "count");
        if (ids)
            std::copy_n(all.begin(), std::min<std::size_t>(slot, all.size()), ids);
        slot = static_cast<uint32_t>(all.size());
    });
}

qrb_status qrb_pointcloud_transaction_current(qrb_context* context, qrb_pointcloud* pointcloud,
                                              uint32_t* id) {
    return call(context, [&] {
        auto& out = given(id, "id");
        out = sessionAnytime(pointcloud)->current();
    });
}

qrb_status qrb_pointcloud_transaction_pending(qrb_context* context, qrb_pointcloud* pointcloud,
                                              uint8_t* pending) {
    return call(context, [&] {
        auto& out = given(pending, "pending");
        out = sessionAnytime(pointcloud)->pending();
    });
}

qrb_status qrb_pointcloud_transaction_details(qrb_context* context, qrb_pointcloud* pointcloud,
                                              uint32_t id, qrb_transaction* transaction) {
    return call(context, [&] {
        given(transaction, "transaction")->value = sessionOf(pointcloud)->history().details(id);
    });
}

qrb_status qrb_pointcloud_transaction_discard(qrb_context* context, qrb_pointcloud* pointcloud,
                                              uint32_t count, const uint32_t* ids) {
    return call(context, [&] { sessionOf(pointcloud)->history().discard(idsOf(count, ids)); });
}

qrb_status qrb_pointcloud_transaction_size(qrb_context* context, qrb_pointcloud* pointcloud,
                                           uint32_t count, const uint32_t* ids, uint64_t* bytes) {
    return call(context, [&] {
        auto& out = given(bytes, "bytes");
        out = sessionOf(pointcloud)->history().size(idsOf(count, ids));
    });
}

qrb_status qrb_pointcloud_management_finalize(qrb_context* context, qrb_pointcloud* pointcloud) {
    return call(context, [&] { sessionOf(pointcloud)->history().finalize(); });
}

qrb_status qrb_pointcloud_management_vacuum(qrb_context* context, qrb_pointcloud* pointcloud,
                                            qrb_progress_function progress, void* data) {
    return call(context, [&](Context& bound) {
        const CallingBack calling(bound, pointcloud);
        calling.session().history().vacuum(progressOf(progress, data));
    });
}

qrb_status qrb_pointcloud_management_unused_size(qrb_context* context, qrb_pointcloud* pointcloud,
                                                 uint64_t* bytes) {
    return call(context, [&] {
        auto& out = given(bytes, "bytes");
        out = sessionOf(pointcloud)->history().unusedSize();
    });
}

qrb_status qrb_pointcloud_management_set_lod_mode(qrb_context* context, qrb_pointcloud* pointcloud,
                                                  uint32_t lod_mode) {
    return call(context, [&] {
        const auto session = sessionOf(pointcloud);
        const session::State& state = session->change();
        session->setLevelOfDetail(lod_mode, state.chunkSizeLod);
    });
}

qrb_status qrb_pointcloud_management_set_chunk_size_lod(qrb_context* context,
                                                        qrb_pointcloud* pointcloud,
                                                        uint32_t chunk_size) {
    return call(context, [&] {
        const auto session = sessionOf(pointcloud);
        const session::State& state = session->change();
        session->setLevelOfDetail(state.lodMode, chunk_size);
    });
}

qrb_status qrb_pointcloud_management_get_lod_mode(qrb_context* context, qrb_pointcloud* pointcloud,
                                                  uint32_t* lod_mode) {
    return call(context, [&] {
        auto& out = given(lod_mode, "lod_mode");
        out = sessionOf(pointcloud)->state()->lodMode;
    });
}

qrb_status qrb_pointcloud_management_get_chunk_size_lod(qrb_context* context,
                                                        qrb_pointcloud* pointcloud,
                                                        uint32_t* chunk_size) {
    return call(context, [&] {
        auto& out = given(chunk_size, "chunk_size");
        out = sessionOf(pointcloud)->state()->chunkSizeLod;
    });
}

}  // extern "C"
