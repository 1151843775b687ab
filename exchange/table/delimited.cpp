#include "exchange/table/delimited.h"

#include <algorithm>
#include <vector>

namespace tarvo::exchange {

void addBatch(core::DelimitedWriter& writer, const PointSource& source, std::uint32_t count) {
    const std::vector<Column>& columns = source.columns();
    std::vector<const void*> values(columns.size());
    for (std::uint32_t begin = 0; begin < count; begin += writer.rows()) {
        for (std::size_t i = 0; i < columns.size(); ++i) {
            values[i] = static_cast<const std::uint8_t*>(source.values(i)) +
                        begin * dataTypeSize(columns[i].type);
        }
        writer.add(values, std::min(writer.rows(), count - begin));
    }
}

}  // namespace tarvo::exchange
