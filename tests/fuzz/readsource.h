// Reads a source of points as an import does: its description, every value twice, the definitions
// that hold them.
#pragma once

#include "core/error.h"
#include "exchange/import/importplan.h"
#include "qrb/error.h"
#include "tests/fuzz/survive.h"

#include <memory>

namespace tarvo::fuzz {

template <typename Open>
void readSource(const Open& open) {
    try {
        exchange::PointSources sources;
        sources.push_back(open());
        exchange::PointSource& source = *sources.front();
        (void)source.metaData();
        if (const auto system = source.origin().system)
            require(!system->isUnderstood() || core::isSame(*system, *system),
                    "a system is the same as itself");
        const exchange::ImportPlan plan = exchange::planImport(sources, "tarvo.xyz", {});
        source.rewind();
        std::uint64_t count = 0;
        while (const std::uint32_t points = source.next())
            count += points;
        require(count == plan.pointCount, "a source has the same points twice");
    } catch (const core::Failure& failure) {
        require(*failure.what() != 0, "failures have words");
    } catch (const qrb::Error& error) {
        require(*error.what() != 0, "errors have words");
    }
}

}  // namespace tarvo::fuzz
