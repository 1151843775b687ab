#include "core/pointdiff.h"

#include "core/heldpoints.h"
#include "core/leafpairs.h"
#include "core/valuecomparison.h"

#include <algorithm>
#include <map>

namespace tarvo::core {

namespace {

using qrb::pointcloud::PointAttribute;

// The examples with the smallest ids.
template <typename Example>
class FirstFew {
public:
    explicit FirstFew(std::size_t most) : m_most(most) {}
    bool wants(std::uint64_t id) const {
        return m_examples.size() < m_most || (m_most > 0 && id < m_examples.rbegin()->first);
    }
    void put(Example example) {
        m_examples.emplace(example.id, std::move(example));
        if (m_examples.size() > m_most)
            m_examples.erase(std::prev(m_examples.end()));
    }
    std::vector<Example> take() {
        std::vector<Example> all;
        for (auto& [id, example] : m_examples)
            all.push_back(std::move(example));
        return all;
    }

private:
    std::size_t m_most;
    std::map<std::uint64_t, Example> m_examples;
};

// The primary attribute of a side, for the places of points.
struct Place {
    explicit Place(const qrb::Pointcloud& database)
        : attribute(
              database.pointAttributes().get(database.pointAttributes().primaryAttributeName())),
          format(attribute) {}
    ReadColumn column() const {
        return {attribute.name, format.narrowType(),
                dataTypeSize(format.narrowType()) * attribute.length};
    }
    PointExample example(std::uint64_t id, const std::uint8_t* values) const {
        return {id, valueTexts(format, attribute.length, values)};
    }

    PointAttribute attribute;
    ValueFormat format;
};

// Points that are compared with each other, and the attributes that are.
struct Share {
    PointSelection before;
    PointSelection after;
    std::uint64_t pointsBefore = 0;
    std::uint64_t pointsAfter = 0;
    std::vector<std::size_t> attributes;
};

class Comparison {
public:
    Comparison(const qrb::Pointcloud& before, const qrb::Pointcloud& after,
               const DiffOptions& options, const qrb::pointcloud::Progress& progress)
        : m_before(before),
          m_after(after),
          m_options(options),
          m_progress(progress),
          m_placeBefore(before),
          m_placeAfter(after),
          m_firstAdded(options.first),
          m_firstRemoved(options.first) {
        chooseAttributes();
    }

    PointsDiff run(bool ofOneFile) {
        m_diff.before = pointsIn(m_before);
        m_diff.after = pointsIn(m_after);
        const std::vector<Share> shares = sharesOf(ofOneFile);
        for (const Share& share : shares)
            m_points += share.pointsBefore + share.pointsAfter;
        for (const Share& share : shares)
            compare(share);
        m_diff.firstAdded = m_firstAdded.take();
        m_diff.firstRemoved = m_firstRemoved.take();
        for (std::size_t i = 0; i < m_values.size(); ++i)
            m_diff.values[i].first = m_firstValues[i].take();
        return std::move(m_diff);
    }

private:
    static std::uint64_t pointsIn(const qrb::Pointcloud& database) {
        return static_cast<std::uint64_t>(database.stat().root().pointCountTotal);
    }

    void chooseAttributes() {
        const auto& old = m_before.pointAttributes();
        const auto& now = m_after.pointAttributes();
        const std::string idName = old.pointIdName();
        const auto& wanted = m_options.attributes;
        for (const std::string& name : old.list()) {
            if (name == idName || !now.exists(name) ||
                (!wanted.empty() && std::find(wanted.begin(), wanted.end(), name) == wanted.end()))
                continue;
            const PointAttribute before = old.get(name);
            const PointAttribute after = now.get(name);
            if (before.length != after.length) {
                m_diff.notCompared.push_back(name);
                continue;
            }
            m_values.emplace_back(before, after);
            m_firstValues.emplace_back(m_options.first);
            m_diff.values.push_back({name, m_values.back().asNumbers(), 0, {}});
        }
    }

    std::vector<Share> sharesOf(bool ofOneFile) const {
        std::vector<std::size_t> all(m_values.size());
        for (std::size_t i = 0; i < all.size(); ++i)
            all[i] = i;
        if (!ofOneFile)
            return {{{}, {}, m_diff.before, m_diff.after, all}};
        LeafPairs leaves = pairLeaves(m_before, m_after);
        std::vector<std::size_t> doubtful;
        if (!leaves.common.empty())
            for (const std::size_t i : all)
                if (!sameInCommonLeaves(m_before, m_after, m_values[i].attribute()))
                    doubtful.push_back(i);
        std::vector<Share> shares;
        shares.push_back({{{}, std::move(leaves.before)},
                          {{}, std::move(leaves.after)},
                          leaves.pointsBefore,
                          leaves.pointsAfter,
                          all});
        if (!doubtful.empty())
            shares.push_back({{{}, leaves.common},
                              {{}, leaves.common},
                              leaves.pointsCommon,
                              leaves.pointsCommon,
                              doubtful});
        return shares;
    }

    // The place is among them.
    std::vector<ReadColumn> columnsOf(const Share& share, bool before) const {
        std::vector<ReadColumn> columns;
        for (const std::size_t i : share.attributes)
            columns.push_back(before ? ReadColumn{m_values[i].attribute(), m_values[i].typeBefore(),
                                                  m_values[i].strideBefore()}
                                     : ReadColumn{m_values[i].attribute(), m_values[i].typeAfter(),
                                                  m_values[i].strideAfter()});
        const Place& place = before ? m_placeBefore : m_placeAfter;
        if (placeIn(columns, place) == columns.size())
            columns.push_back(place.column());
        return columns;
    }
    static std::size_t placeIn(const std::vector<ReadColumn>& columns, const Place& place) {
        return static_cast<std::size_t>(std::find_if(columns.begin(), columns.end(),
                                                     [&](const ReadColumn& each) {
                                                         return each.attribute ==
                                                                place.attribute.name;
                                                     }) -
                                        columns.begin());
    }

    void compare(const Share& share) {
        const std::vector<ReadColumn> columns = columnsOf(share, true);
        const std::uint64_t most = std::clamp<std::uint64_t>(
            m_options.memory / HeldPoints::bytesOf(columns), 1, UINT32_MAX);
        for (const IdRange& range :
             divideIds(m_before, share.before, share.pointsBefore, most, [this] { tell(); }))
            compare(share, columns, range);
    }

    void compare(const Share& share, const std::vector<ReadColumn>& columns, const IdRange& range) {
        HeldPoints held(columns, range.points);
        PointSelection selection = share.before;
        selection.filter = filterOf(range, m_before.pointAttributes().pointIdName());
        {
            PointBatches batches(m_before, selection, columns);
            while (const std::uint32_t count = batches.next()) {
                held.add(batches, count);
                m_passed += count;
                tell();
            }
        }
        held.sort();
        selection = share.after;
        selection.filter = filterOf(range, m_after.pointAttributes().pointIdName());
        const std::vector<ReadColumn> columnsAfter = columnsOf(share, false);
        const std::size_t placeAfter = placeIn(columnsAfter, m_placeAfter);
        PointBatches batches(m_after, selection, columnsAfter);
        while (const std::uint32_t count = batches.next()) {
            for (std::uint32_t row = 0; row < count; ++row)
                compare(share, held, batches, row, placeAfter);
            m_passed += count;
            tell();
        }
        const std::size_t placeBefore = placeIn(columns, m_placeBefore);
        held.forEachMissed([&](std::uint64_t id, std::uint32_t row) {
            ++m_diff.removed;
            if (m_firstRemoved.wants(id))
                m_firstRemoved.put(m_placeBefore.example(id, held.values(placeBefore, row)));
        });
    }

    void compare(const Share& share, HeldPoints& held, const PointBatches& after, std::uint32_t row,
                 std::size_t place) {
        const std::uint64_t id = after.id(row);
        const std::optional<std::uint32_t> found = held.find(id);
        if (!found) {
            ++m_diff.added;
            if (m_firstAdded.wants(id))
                m_firstAdded.put(m_placeAfter.example(id, after.values(place, row)));
            return;
        }
        bool changed = false;
        for (std::size_t column = 0; column < share.attributes.size(); ++column) {
            const std::size_t i = share.attributes[column];
            const std::uint8_t* const old = held.values(column, *found);
            const std::uint8_t* const now = after.values(column, row);
            if (m_values[i].equal(old, now))
                continue;
            changed = true;
            ++m_diff.values[i].points;
            if (m_firstValues[i].wants(id))
                m_firstValues[i].put(
                    {id, m_values[i].textsBefore(old), m_values[i].textsAfter(now)});
        }
        m_diff.changed += changed ? 1 : 0;
    }

    void tell() const {
        if (m_progress)
            m_progress(m_points == 0 ? 0
                                     : static_cast<int>(std::min<std::uint64_t>(
                                           100, m_passed * 100 / m_points)));
    }

    const qrb::Pointcloud& m_before;
    const qrb::Pointcloud& m_after;
    const DiffOptions& m_options;
    const qrb::pointcloud::Progress& m_progress;
    Place m_placeBefore;
    Place m_placeAfter;
    PointsDiff m_diff;
    std::vector<ValueComparison> m_values;  // those of m_diff.values
    std::vector<FirstFew<ValueExample>> m_firstValues;
    FirstFew<PointExample> m_firstAdded;
    FirstFew<PointExample> m_firstRemoved;
    std::uint64_t m_points = 0;  // to be read, of both
    std::uint64_t m_passed = 0;
};

}  // namespace

PointsDiff comparePoints(const qrb::Pointcloud& before, const qrb::Pointcloud& after,
                         bool ofOneFile, const DiffOptions& options,
                         const qrb::pointcloud::Progress& progress) {
    return Comparison(before, after, options, progress).run(ofOneFile);
}

}  // namespace tarvo::core
