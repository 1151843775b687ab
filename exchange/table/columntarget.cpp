#include "exchange/table/columntarget.h"

namespace tarvo::exchange {

std::string attributeMeantBy(const Column& column,
                             const qrb::pointcloud::PointAttributes& attributes) {
    // A name that is not one of the usual form is renamed when it is read.
    const std::string own = column.title.substr(0, column.title.find('['));
    return !column.isMapped && !own.empty() && !attributes.exists(column.attribute) &&
                   attributes.exists(own)
               ? own
               : column.attribute;
}

std::string elementDescriptor(const std::string& attribute, std::uint32_t length,
                              std::uint32_t element) {
    return length == 1 && element == 0 ? attribute
                                       : attribute + "[" + std::to_string(element) + "]";
}

void refuseFault(const Column& column, const std::string& advice) {
    if (column.fault) {
        throw core::Failure(column.fault->what(),
                            column.fault->details() + (advice.empty() ? "" : "\n" + advice));
    }
}

}  // namespace tarvo::exchange
