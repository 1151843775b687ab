#include "engine/index/rows.h"

namespace tarvo::engine::index {

RowLayout::RowLayout(const schema::AttributeTable& table) {
    for (const schema::Attribute& attribute : table.all()) {
        m_firstField.push_back(m_fields.size());
        if (!has(attribute))
            continue;
        if (attribute.record.name == schema::pointIdName)
            m_idField = m_fields.size();
        for (std::uint32_t element = 0; element < attribute.record.length; ++element) {
            m_fields.push_back({attribute.uid, element, attribute.grid.width(), m_stride});
            m_stride += attribute.grid.width();
        }
    }
}

}  // namespace tarvo::engine::index
