// The attribute definitions of a database and of the default catalogue.
#include "engine/capi/handles.h"
#include "engine/query/redefine.h"
#include "catalogue/catalogue.h"

using namespace tarvo::engine;
using namespace tarvo::engine::capi;

extern "C" {

qrb_status qrb_pointcloud_point_attributes_add(qrb_context* context, qrb_pointcloud* pointcloud,
                                               const qrb_point_attribute* attribute) {
    return call(context,
                [&] { sessionOf(pointcloud)->addAttribute(given(attribute, "attribute")->value); });
}

qrb_status qrb_pointcloud_point_attributes_add_default(qrb_context* context,
                                                       qrb_pointcloud* pointcloud,
                                                       const char* name) {
    return call(context, [&] {
        sessionOf(pointcloud)->addAttribute(session::defaultAttribute(textOf(name)));
    });
}

qrb_status qrb_pointcloud_point_attributes_exists(qrb_context* context, qrb_pointcloud* pointcloud,
                                                  const char* name, uint8_t* exists) {
    return call(context, [&] {
        auto& out = given(exists, "exists");
        out = sessionOf(pointcloud)->state()->attributes.find(textOf(name)) >= 0;
    });
}

qrb_status qrb_pointcloud_point_attributes_get(qrb_context* context, qrb_pointcloud* pointcloud,
                                               const char* name, qrb_point_attribute* attribute) {
    return call(context, [&] {
        const auto state = sessionOf(pointcloud)->state();
        const int index = state->attributes.find(textOf(name));
        if (index < 0)
            throw Failure(ErrorCode::NotFound,
                          "The database has no point attribute \"" + textOf(name) + "\".");
        given(attribute, "attribute")->value = state->attributes[index].record;
    });
}

qrb_status qrb_pointcloud_point_attributes_get_default(qrb_context* context,
                                                       qrb_pointcloud* pointcloud, const char* name,
                                                       qrb_point_attribute* attribute) {
    return call(context, [&] {
        checkUnused(pointcloud);
        given(attribute, "attribute")->value = session::defaultAttribute(textOf(name));
    });
}

qrb_status qrb_pointcloud_point_attributes_list(qrb_context* context, qrb_pointcloud* pointcloud,
                                                uint32_t* count, const char** names) {
    return call(context, [&](Context& bound) {
        std::vector<std::string> list;
        const auto state = sessionOf(pointcloud)->state();
        for (const schema::Attribute& attribute : state->attributes.all())
            list.push_back(attribute.record.name);
        giveNames(bound, list, count, names);
    });
}

qrb_status qrb_pointcloud_point_attributes_list_default(qrb_context* context,
                                                        qrb_pointcloud* pointcloud, uint32_t* count,
                                                        const char** names) {
    return call(context, [&](Context& bound) {
        checkUnused(pointcloud);
        std::vector<std::string> list;
        for (const auto& entry : tarvo::catalogue::attributes())
            list.push_back(entry.name);
        giveNames(bound, list, count, names);
    });
}

qrb_status qrb_pointcloud_point_attributes_point_id_name(qrb_context* context,
                                                         qrb_pointcloud* pointcloud,
                                                         const char** name) {
    return call(context, [&](Context& bound) {
        checkUnused(pointcloud);
        giveText(bound, std::string(schema::pointIdName), name);
    });
}

qrb_status qrb_pointcloud_point_attributes_point_id_type(qrb_context* context,
                                                         qrb_pointcloud* pointcloud,
                                                         uint32_t* data_type) {
    return call(context, [&] {
        auto& out = given(data_type, "data_type");
        out = schema::dataType(sessionOf(pointcloud)->state()->pointId().record);
    });
}

qrb_status qrb_pointcloud_point_attributes_point_id_unit(qrb_context* context,
                                                         qrb_pointcloud* pointcloud,
                                                         const char** unit) {
    return call(context, [&](Context& bound) {
        giveText(bound, sessionOf(pointcloud)->state()->pointId().record.unitSymbol, unit);
    });
}

qrb_status qrb_pointcloud_point_attributes_primary_attribute_name(qrb_context* context,
                                                                  qrb_pointcloud* pointcloud,
                                                                  const char** name) {
    return call(context, [&](Context& bound) {
        giveText(bound, sessionOf(pointcloud)->state()->primary().record.name, name);
    });
}

qrb_status qrb_pointcloud_point_attributes_remove(qrb_context* context, qrb_pointcloud* pointcloud,
                                                  const char* name) {
    return call(context, [&] { query::removeAttribute(*sessionOf(pointcloud), textOf(name)); });
}

qrb_status qrb_pointcloud_point_attributes_put(qrb_context* context, qrb_pointcloud* pointcloud,
                                               const qrb_point_attribute* attribute) {
    return call(context, [&] {
        query::putAttribute(*sessionOf(pointcloud), given(attribute, "attribute")->value);
    });
}

qrb_status qrb_pointcloud_point_attributes_duplicate(qrb_context* context,
                                                     qrb_pointcloud* pointcloud, const char* name,
                                                     const char* new_name) {
    return call(context, [&] {
        query::duplicateAttribute(*sessionOf(pointcloud), textOf(name), textOf(new_name));
    });
}

qrb_status qrb_pointcloud_point_attributes_discard(qrb_context* context, qrb_pointcloud* pointcloud,
                                                   const char* name) {
    return call(context, [&] { query::discardAttribute(*sessionOf(pointcloud), textOf(name)); });
}

}  // extern "C"
