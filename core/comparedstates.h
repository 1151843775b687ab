// Two states to be compared, opened to be read: of two files, or two transactions of one.
#pragma once

#include "qrb/pointcloud.h"

#include <cstdint>
#include <optional>
#include <string>

namespace tarvo::core {

struct StateName {
    std::string file;
    std::uint32_t transaction = 0;  // a kept one; 0: the current one
};

class ComparedStates {
public:
    // Opens both on the context. They stay as they are, whatever becomes current meanwhile. Throws
    // qrb::Error for what can't be opened.
    ComparedStates(const qrb::Context& context, const StateName& before, const StateName& after,
                   std::optional<std::uint64_t> cacheSize = std::nullopt);

    const qrb::Pointcloud& before() const { return m_before; }
    const qrb::Pointcloud& after() const { return m_after; }
    // With their transactions.
    const StateName& nameBefore() const { return m_nameBefore; }
    const StateName& nameAfter() const { return m_nameAfter; }
    // Whether both are states of one file, whatever its names.
    bool areOfOneFile() const { return m_ofOneFile; }

private:
    StateName m_nameBefore;
    StateName m_nameAfter;
    qrb::Pointcloud m_before;
    qrb::Pointcloud m_after;
    bool m_ofOneFile = false;
};

}  // namespace tarvo::core
