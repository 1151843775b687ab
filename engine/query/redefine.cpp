#include "engine/query/redefine.h"

#include "engine/index/rows.h"
#include "engine/query/blocks.h"
#include "engine/query/columns.h"
#include "engine/query/treeedit.h"
#include "engine/schema/lodmethod.h"
#include "numbers/gridconversion.h"
#include "numbers/numbertext.h"

#include <algorithm>
#include <atomic>
#include <cmath>
#include <optional>

namespace tarvo::engine::query {

namespace {

using schema::Attribute;
using schema::AttributeRecord;

std::size_t findAttribute(const session::State& state, const std::string& name) {
    const int index = state.attributes.find(name);
    if (index < 0)
        throw Failure(ErrorCode::NotFound, "The database has no point attribute \"" + name + "\".");
    return static_cast<std::size_t>(index);
}

void refuseForKeys(const session::State& state, std::size_t index, const char* what) {
    if (index == 0 || index == state.pointIdIndex())
        throw Failure(ErrorCode::Argument, "The point attribute \"" +
                                               state.attributes[index].record.name +
                                               "\" can't be " + what + ": points are found by it.");
}

bool sameNumber(double a, double b) {
    return a == b || (std::isnan(a) && std::isnan(b));
}

// Whether codes mean the same values.
bool sameCodes(const AttributeRecord& a, const AttributeRecord& b) {
    return a.length == b.length && a.resolution == b.resolution &&
           a.minimumValue == b.minimumValue && a.maximumValue == b.maximumValue &&
           sameNumber(a.invalidValue, b.invalidValue);
}

// Whether levels of detail get the same values: tags and named values imply a method, too.
bool sameMethod(const AttributeRecord& stored, const AttributeRecord& record) {
    const schema::LodMethod method = schema::lodMethod(record);
    try {
        return schema::lodMethod(stored) == method;
    } catch (const Failure&) {  // of another program's file
        return false;
    }
}

// Codes of one definition as those of another; tells how many values are not what they were.
class Conversion {
public:
    Conversion(const Attribute& from, const Attribute& to)
        : m_from(from), m_to(to), m_grids(from.grid, to.grid, to.defaultCode()) {}

    // An element of a leaf; any thread.
    schema::Column column(const schema::Column& column) {
        schema::Column result(m_to.grid.width(), column.size());
        numbers::FateCounts fates;
        std::uint64_t last = 0;
        auto converted = m_grids.of(last);
        for (std::size_t i = 0; i < column.size(); ++i) {
            if (const std::uint64_t code = column[i]; code != last) {
                last = code;
                converted = m_grids.of(code);
            }
            result.set(i, converted.code);
            fates.add(converted.fate);
        }
        m_changed += fates.changed();
        return result;
    }
    // One element of all points.
    std::uint64_t code(std::uint64_t code, std::uint64_t pointCount) {
        const auto converted = m_grids.of(code);
        if (converted.fate != numbers::Fate::Kept)
            m_changed += pointCount;
        return converted.code;
    }
    // The one value of an attribute that has one for all points.
    std::vector<std::uint64_t> constant(std::uint64_t pointCount) {
        std::vector<std::uint64_t> codes;
        for (std::uint32_t e = 0; e < m_to.record.length; ++e)
            codes.push_back(e < m_from.record.length ? code(m_from.absentCode(e), pointCount)
                                                     : m_to.defaultCode());
        return codes;
    }
    // Of the elements that stay.
    std::uint64_t changed() const { return m_changed; }

private:
    const Attribute& m_from;
    const Attribute& m_to;
    numbers::GridConversion m_grids;
    std::atomic<std::uint64_t> m_changed = 0;
};

// Takes the data of an attribute out of every node. Blocks that shared a blob with it move to a new
// one, so that its bytes can be given back.
void strip(session::Session& session, session::State& state, std::uint32_t uid) {
    TreeEdit edit;
    edit.touches = [uid](const index::Node& node) { return node.find(uid) != nullptr; };
    edit.leaf = [&](const index::Node& leaf) {
        EditedLeaf edited(session.identity().settings.compressionLevel);
        edited.changed = true;
        edited.count = leaf.ownCount;
        std::vector<std::uint64_t> blobs;
        for (const index::ElementData& element : leaf.find(uid)->elements)
            if (element.block)
                blobs.push_back(element.block.blob);
        for (const index::AttributeData& data : leaf.attributes) {
            if (data.uid == uid)
                continue;
            edited.attributes.push_back(data);
            const int index = state.attributes.findUid(data.uid);
            for (index::ElementData& element : edited.attributes.back().elements)
                if (index >= 0 &&
                    std::find(blobs.begin(), blobs.end(), element.block.blob) != blobs.end())
                    element.block =
                        edited.blocks.addCopy(state.attributes[static_cast<std::size_t>(index)],
                                              session.blobs().read(element.block, "a block"));
        }
        return edited;
    };
    editTree(session, state, edit, {});
}

// Puts the values of all points into a definition of other codes or storage.
void convertValues(session::Session& session, session::State& state, const Attribute& from,
                   const Attribute& to, Conversion& conversion) {
    TreeEdit edit;
    edit.touches = [](const index::Node&) { return true; };
    edit.leaf = [&](const index::Node& leaf) {
        EditedLeaf edited(session.identity().settings.compressionLevel);
        edited.changed = true;
        edited.count = leaf.ownCount;
        edited.attributes = leaf.attributes;
        std::erase_if(edited.attributes,
                      [&](const index::AttributeData& data) { return data.uid == from.uid; });
        index::AttributeData data{to.uid, state.transaction.id, {}};
        for (std::uint32_t e = 0; e < to.record.length; ++e) {
            schema::Column column(to.grid.width(), leaf.ownCount);
            if (e < from.record.length)
                column = conversion.column(*readColumn(session, leaf, from, e));
            else
                for (std::size_t i = 0; i < column.size(); ++i)
                    column.set(i, to.defaultCode());
            data.elements.push_back(edited.blocks.add(to, column));
        }
        putAttribute(edited.attributes, std::move(data));
        return edited;
    };
    editTree(session, state, edit, {});
}

// The one value that all points have; throws where there are several.
std::vector<std::uint64_t> commonValue(session::Session& session, const session::State& state,
                                       const Attribute& from, const Attribute& to,
                                       Conversion& conversion) {
    const index::Node root = session.blobs().rootNode(state);
    std::vector<std::uint64_t> codes(to.record.length, to.defaultCode());
    for (std::uint32_t e = 0; e < from.record.length && e < to.record.length; ++e) {
        const schema::ElementStatistics s = index::statisticsOf(root, from, e);
        if (!isUniform(s))
            throw Failure(ErrorCode::Range,
                          "The point attribute \"" + from.record.name +
                              "\" can't become constant: points have different values.",
                          "Fill it with one value first, or choose another storage class.");
        codes[e] =
            conversion.code(s.hasValid ? s.minimum : from.grid.invalidCode(), state.pointCount);
    }
    return codes;
}

// The line of the changelog about values that are not what they were.
void noteChanges(session::Session& session, const session::State& state, const Attribute& from,
                 const Attribute& to, const Conversion& conversion) {
    std::uint64_t changed = conversion.changed();
    if (from.record.length > to.record.length)
        changed += state.pointCount * (from.record.length - to.record.length);
    if (changed > 0)
        session.changelog().notes().lines.push_back(
            "Attribute \"" + to.record.name + "\": redefined, " + numbers::groupedText(changed) +
            (changed == 1 ? " value changed" : " values changed"));
}

}  // namespace

void putAttribute(session::Session& session, const AttributeRecord& record) {
    session::State& pending = session.change();
    session.settle();
    schema::validate(record);
    schema::requireTexts(record);
    (void)schema::lodMethod(record);
    session::State state = pending;
    const std::size_t index = findAttribute(state, record.name);
    const Attribute from = state.attributes[index];
    // Which points stand for others is as it was, but no longer with which values.
    state.detailIsStale |= !sameMethod(from.record, record);
    Attribute to(record, from.uid);
    const bool constantBefore = from.is(schema::StorageClass::Constant);
    const bool constantNow = to.is(schema::StorageClass::Constant);
    if (!sameCodes(from.record, record) || constantNow)
        refuseForKeys(state, index, constantNow ? "constant" : "given other values");
    Attribute& slot = state.attributes.all()[index];
    state.attributesBlob = {};
    Conversion conversion(from, to);
    if (state.pointCount == 0) {
        slot = to;
    } else if (constantNow) {
        to.constant = constantBefore ? conversion.constant(state.pointCount)
                                     : commonValue(session, state, from, to, conversion);
        to.uid = state.nextUid++;
        slot = to;
        strip(session, state, from.uid);
    } else if (!constantBefore && sameCodes(from.record, record) &&
               from.defaultCode() == to.defaultCode()) {
        slot = to;
    } else {
        to.uid = state.nextUid++;
        slot = to;
        convertValues(session, state, from, to, conversion);
    }
    if (state.pointCount > 0)
        noteChanges(session, state, from, to, conversion);
    pending = std::move(state);
}

void duplicateAttribute(session::Session& session, const std::string& name,
                        const std::string& newName) {
    session::State& pending = session.change();
    session.settle();
    session::State state = pending;
    Attribute copy = state.attributes[findAttribute(state, name)];
    const std::uint32_t uid = copy.uid;
    copy.record.name = newName;
    schema::validate(copy.record);
    if (state.attributes.find(newName) >= 0)
        throw Failure(ErrorCode::Exists,
                      "The database has a point attribute \"" + newName + "\" already.");
    copy.uid = state.nextUid++;
    state.attributes.all().push_back(copy);
    state.attributesBlob = {};
    TreeEdit edit;
    edit.touches = [uid](const index::Node& node) { return node.find(uid) != nullptr; };
    edit.leaf = [&](const index::Node& leaf) {
        EditedLeaf edited(session.identity().settings.compressionLevel);
        edited.changed = true;
        edited.count = leaf.ownCount;
        edited.attributes = leaf.attributes;
        index::AttributeData data = *leaf.find(uid);
        data.uid = copy.uid;
        data.revision = state.transaction.id;
        putAttribute(edited.attributes, std::move(data));
        return edited;
    };
    editTree(session, state, edit, {});
    pending = std::move(state);
}

void discardAttribute(session::Session& session, const std::string& name) {
    session::State& pending = session.change();
    session.settle();
    session::State state = pending;
    const std::size_t index = findAttribute(state, name);
    refuseForKeys(state, index, "discarded");
    Attribute& attribute = state.attributes.all()[index];
    attribute.constant.clear();
    state.attributesBlob = {};
    strip(session, state, attribute.uid);
    session.changelog().notes().lines.push_back("Point attributes: discarded the values of " +
                                                name);
    pending = std::move(state);
}

void removeAttribute(session::Session& session, const std::string& name) {
    session::State& pending = session.change();
    session.settle();
    session::State state = pending;
    const std::size_t index = findAttribute(state, name);
    refuseForKeys(state, index, "removed");
    const std::uint32_t uid = state.attributes[index].uid;
    state.attributes.all().erase(state.attributes.all().begin() +
                                 static_cast<std::ptrdiff_t>(index));
    state.attributesBlob = {};
    strip(session, state, uid);
    pending = std::move(state);
}

}  // namespace tarvo::engine::query
