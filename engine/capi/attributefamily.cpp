// Attributes by groups, by filters and across databases.
#include "engine/capi/handles.h"
#include "engine/schema/merge.h"
#include "engine/schema/namefilter.h"
#include "engine/session/attributegroups.h"

#include <set>

using namespace tarvo::engine;
using namespace tarvo::engine::capi;

namespace {

void giveGroup(Context& context, const session::AttributeGroup& found, const char** group,
               uint32_t* rank) {
    auto& out = given(rank, "rank");
    giveText(context, found.name, group);
    out = found.rank;
}

// The attribute tables of a database and the others, in this order.
std::vector<std::shared_ptr<const session::State>> statesOf(qrb_pointcloud* pointcloud,
                                                            qrb_pointcloud* const* others,
                                                            uint32_t count) {
    std::vector<std::shared_ptr<const session::State>> states{sessionOf(pointcloud)->state()};
    if (count > 0)
        given(others, "others");
    for (uint32_t i = 0; i < count; ++i)
        states.push_back(sessionOf(others[i])->state());
    return states;
}

}  // namespace

extern "C" {

qrb_status qrb_pointcloud_point_attributes_get_merged(qrb_context* context,
                                                      qrb_pointcloud* pointcloud,
                                                      qrb_pointcloud* const* others, uint32_t count,
                                                      const char* name,
                                                      qrb_point_attribute* attribute) {
    return call(context, [&] {
        auto& out = given(attribute, "attribute")->value;
        std::vector<schema::AttributeRecord> records;
        for (const auto& state : statesOf(pointcloud, others, count))
            if (const int index = state->attributes.find(textOf(name)); index >= 0)
                records.push_back(state->attributes[static_cast<std::size_t>(index)].record);
        if (records.empty())
            throw Failure(ErrorCode::NotFound,
                          "None of the databases has a point attribute \"" + textOf(name) + "\".");
        out = schema::merged(records);
    });
}

qrb_status qrb_pointcloud_point_attributes_get_merged_all(qrb_context* context,
                                                          qrb_pointcloud* pointcloud,
                                                          qrb_pointcloud* const* others,
                                                          uint32_t others_count, uint32_t* count,
                                                          const char** names) {
    return call(context, [&](Context& bound) {
        std::vector<std::string> list;
        std::set<std::string> known;
        for (const auto& state : statesOf(pointcloud, others, others_count))
            for (const schema::Attribute& attribute : state->attributes.all())
                if (known.insert(attribute.record.name).second)
                    list.push_back(attribute.record.name);
        giveNames(bound, list, count, names);
    });
}

qrb_status qrb_pointcloud_point_attributes_group(qrb_context* context, qrb_pointcloud* pointcloud,
                                                 const char* name, const char** group,
                                                 uint32_t* rank) {
    return call(context, [&](Context& bound) {
        giveGroup(bound, session::groupOf(sessionOf(pointcloud)->state()->attributes, textOf(name)),
                  group, rank);
    });
}

qrb_status qrb_pointcloud_point_attributes_group_default(qrb_context* context,
                                                         qrb_pointcloud* pointcloud,
                                                         const char* name, const char** group,
                                                         uint32_t* rank) {
    return call(context, [&](Context& bound) {
        checkUnused(pointcloud);
        giveGroup(bound, session::defaultGroup(textOf(name)), group, rank);
    });
}

qrb_status qrb_pointcloud_point_attributes_list_filtered(qrb_context* context,
                                                         qrb_pointcloud* pointcloud,
                                                         const char* filter, uint32_t* count,
                                                         const char** names) {
    return call(context, [&](Context& bound) {
        std::vector<std::string> list;
        const auto state = sessionOf(pointcloud)->state();
        for (const schema::Attribute& attribute : state->attributes.all())
            if (schema::matchesFilter(attribute.record, textOf(filter)))
                list.push_back(attribute.record.name);
        giveNames(bound, list, count, names);
    });
}

}  // extern "C"
