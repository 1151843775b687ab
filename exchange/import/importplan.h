// Which attributes a new database gets from its input files, and with which definitions.
#pragma once

#include "exchange/import/filesurvey.h"
#include "exchange/import/importsteps.h"
#include "exchange/table/fit.h"
#include "exchange/table/pointsource.h"

#include <map>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace tarvo::exchange {

struct ImportPlan {
    struct Attribute {
        qrb::pointcloud::PointAttribute definition;
        // All points have the default value, so that nothing needs to be written.
        bool constant = false;
        std::optional<core::Failure> fault;  // why the values must not be taken
    };
    std::vector<std::string> order;  // names as they appear in the files
    std::map<std::string, Attribute> attributes;
    std::uint64_t pointCount = 0;
    // The smallest and largest number of each element of the primary attribute; none: no points.
    std::vector<std::pair<double, double>> extent;
    std::vector<std::string> notes;  // lines for the user

    // Throws NoAttributeToLeaveOut.
    void leaveOut(const std::string& name);
    // Throws Failure for a column or an attribute with a fault that is not left out.
    void refuseFaults(const PointSources& sources) const;
    std::vector<ColumnTarget> targets(const PointSource& source) const;
};

// Looks whether the sources have the attributes that were named. Throws Failure if one lacks the
// primary attribute or some of its elements, NoAttributeToLeaveOut.
void requireAttributes(const PointSources& sources, const std::string& primary,
                       const std::set<std::string>& leftOut);

// By what was found in the files; surveys: one per source, of its columns. Throws as the one below.
ImportPlan planImport(const PointSources& sources, const std::vector<FileSurvey>& surveys,
                      const std::string& primary);
// Reads all points of all sources once. progress may be empty. Throws Failure if no source has the
// primary attribute, or one lacks some of its elements.
ImportPlan planImport(const PointSources& sources, const std::string& primary,
                      const ImportProgress& progress);

}  // namespace tarvo::exchange
