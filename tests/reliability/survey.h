// A small database that several processes of a trial change and look at: points in groups of equal
// size, whose number its metadata tells.
#pragma once

#include "qrb/pointcloud.h"

#include <cstdint>
#include <string>

namespace tarvo::trial {

class Survey {
public:
    static constexpr std::uint32_t groupSize = 20;
    // Makes the file.
    static void create(const std::string& file);

    // Opens it. All functions throw qrb::Error.
    explicit Survey(const std::string& file);

    // Adds the points of a group, within a transaction that is pending.
    void addGroup(std::uint32_t group);
    void removeGroup(std::uint32_t group);
    // Numbers kept in the metadata; 0 where there is none.
    std::uint64_t number(const std::string& name) const;
    void setNumber(const std::string& name, std::uint64_t value);
    // Writes an item of as many bytes, other ones each time, in the pending transaction.
    void setLargeItem(std::size_t bytes, std::uint64_t seed);

    // Reads all points: the number of groups. Tells in `wrong` when a group is not whole.
    std::uint64_t groups(std::string& wrong) const;
    // Forgets all kept states but the first and the newest ones.
    void forgetOld();

    qrb::Pointcloud& cloud() { return m_cloud; }

private:
    qrb::Pointcloud m_cloud;
};

}  // namespace tarvo::trial
