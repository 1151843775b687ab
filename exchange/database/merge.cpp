#include "exchange/database/merge.h"

#include "core/databasecopy.h"
#include "core/utf8.h"
#include "exchange/database/source.h"
#include "qrb/error.h"

#include <algorithm>

namespace tarvo::exchange::database {

namespace {

using qrb::pointcloud::PointAttribute;
using qrb::pointcloud::PointAttributes;

CommonOrigin originOf(const std::vector<MergeInput>& inputs, bool asTheyAre) {
    PointSources sources;
    for (const MergeInput& input : inputs) {
        sources.push_back(std::make_unique<DatabaseSource>(*input.cloud, input.fileName,
                                                           core::PointSelection{},
                                                           input.cloud->pointAttributes().list()));
    }
    return commonOrigin(sources, nullptr, {}, asTheyAre);
}

void copyItems(qrb::pointcloud::MetaData& to, const qrb::pointcloud::MetaData& from) {
    for (const std::string& name : from.list()) {
        addItem(to, core::validUtf8(name), core::validUtf8(from.get(name)));
    }
}

std::uint64_t copyPoints(qrb::Pointcloud& target, const MergeInput& input,
                         const MergeOptions& options, const ImportProgress& progress) {
    const PointAttributes& attributes = input.cloud->pointAttributes();
    core::Selection selection;
    selection.attributes = attributes.list();
    if (!options.keepIds) {
        std::erase(selection.attributes, attributes.pointIdName());
    }
    selection.shaper = options.shaper;
    const std::string step = "Copying " + input.fileName;
    try {
        return copyDatabase(*input.cloud, target, selection, [&](int percent) {
            if (progress) {
                progress(step, percent / 100.0);
            }
        });
    } catch (const qrb::Error& error) {
        if (error.code() != QRB_ERROR_EXISTS || !options.keepIds) {
            throw;
        }
        throw core::Failure(
            "A point of \"" + input.fileName + "\" has the id of another point: " + error.what(),
            "Leave --keep-ids out to number the points anew.");
    }
}

// Numbers of two units in one attribute could never be told apart again.
void refuseOtherUnits(const std::vector<MergeInput>& inputs, const std::string& name) {
    const MergeInput* first = nullptr;
    const auto unitIn = [&](const MergeInput& input) {
        const std::string unit = input.cloud->pointAttributes().get(name).unitSymbol;
        return unit.empty() ? std::string("no unit") : "\"" + unit + "\"";
    };
    for (const MergeInput& input : inputs) {
        if (!input.cloud->pointAttributes().exists(name)) {
            continue;
        }
        first = first == nullptr ? &input : first;
        if (unitIn(input) != unitIn(*first)) {
            throw core::Failure(
                "The attribute \"" + name + "\" has " + unitIn(*first) + " in \"" +
                    first->fileName + "\" and " + unitIn(input) + " in \"" + input.fileName + "\".",
                "Values of different units are not mixed, with --crs-as-is neither. If both mean "
                "the same unit,\nwrite it alike first, with \"qrbtool attributes FILE put\"; else "
                "convert the values of one.");
        }
    }
}

// The same brightness is told by different numbers, of which nobody can say any more which are
// which.
void noteOtherColours(const std::vector<MergeInput>& inputs, std::vector<std::string>& notes) {
    constexpr double brightestByte = 255;
    const char* const colour = "tarvo.rgba";
    const MergeInput* bytes = nullptr;
    const MergeInput* larger = nullptr;
    for (const MergeInput& input : inputs) {
        if (input.cloud->pointAttributes().exists(colour)) {
            const double most = input.cloud->pointAttributes().get(colour).maximumValue;
            (most <= brightestByte ? bytes : larger) = &input;
        }
    }
    if (bytes != nullptr && larger != nullptr) {
        notes.push_back("The colours of \"" + bytes->fileName + "\" go to 255, those of \"" +
                        larger->fileName +
                        "\" beyond: each keeps its numbers, so that the former look dark.");
    }
}

}  // namespace

MergePlan planMerge(const std::vector<MergeInput>& inputs, bool asTheyAre) {
    MergePlan plan;
    plan.origin = originOf(inputs, asTheyAre);
    const PointAttributes& first = inputs.front().cloud->pointAttributes();
    const std::string primary = first.primaryAttributeName();
    PointAttributes::Others others;
    for (const MergeInput& input : inputs) {
        const PointAttributes& own = input.cloud->pointAttributes();
        if (!own.exists(primary)) {
            throw core::Failure("\"" + input.fileName + "\" has no attribute \"" + primary +
                                    "\", by which the points of \"" + inputs.front().fileName +
                                    "\" are found.",
                                "Name another database first.");
        }
        if (&own != &first) {
            others.push_back(&own);
        }
    }
    for (const std::string& name : first.listMerged(others)) {
        if (name == first.pointIdName()) {
            continue;
        }
        refuseOtherUnits(inputs, name);
        plan.attributes.push_back(core::definitionForCopy(first.getMerged(others, name)));
        if (name == primary) {
            plan.primary = plan.attributes.back();
        }
    }
    noteOtherColours(inputs, plan.origin.notes);
    if (primary == first.pointIdName()) {
        plan.primary = core::definitionForCopy(first.get(primary));
    }
    return plan;
}

std::uint64_t mergeInto(qrb::Pointcloud& target, const std::vector<MergeInput>& inputs,
                        MergePlan& plan, const MergeOptions& options,
                        const ImportProgress& progress) {
    for (const PointAttribute& attribute : plan.attributes) {
        if (!target.pointAttributes().exists(attribute.name)) {
            target.pointAttributes().add(attribute);
        }
    }
    for (const MergeInput& input : inputs) {
        copyItems(target.metaData(), input.cloud->metaData());
    }
    setOrigin(target, plan.origin);
    std::uint64_t points = 0;
    for (const MergeInput& input : inputs) {
        points += copyPoints(target, input, options, progress);
    }
    return points;
}

}  // namespace tarvo::exchange::database
