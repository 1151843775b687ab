#include "exchange/e57/source.h"

#include "exchange/las/wkt.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace tarvo::exchange::e57 {

E57Source::E57Source(const std::string& fileName)
    : m_file(fileName), m_document(readDocument(m_file)), m_plan(m_document, fileName) {
    checkSections();
    m_buffers.reserve(m_plan.columns(), m_recordCount);
    const std::uint32_t capacity = m_buffers.capacity();
    for (std::vector<double>& numbers : m_numbers) {
        numbers.resize(capacity);
    }
    m_whole.resize(capacity);
    m_flags.resize(capacity);
}

// Scans that shared their records would take more time than the size of the file tells.
void E57Source::checkSections() {
    std::uint64_t length = 0;
    for (const Scan& scan : m_document.scans) {
        if (scan.recordCount > 0 && geometryOf(scan) != Geometry::None) {
            length += VectorReader(m_file, scan).length();
            m_recordCount += scan.recordCount;
        }
        if (length > m_file.size()) {
            m_file.fail("the sections of its scans overlap");
        }
    }
}

double E57Source::progress() const {
    return m_recordCount == 0 ? 1.0
                              : static_cast<double>(m_done) / static_cast<double>(m_recordCount);
}

void E57Source::rewind() {
    m_reader.reset();
    m_scan = 0;
    m_done = 0;
    m_invalid = 0;
    m_cut = 0;
    m_blurred = 0;
    m_longer = 0;
}

bool E57Source::nextScan() {
    m_longer += m_reader && m_reader->holdsMore() ? 1 : 0;
    m_reader.reset();
    while (m_scan < m_document.scans.size()) {
        const Scan& scan = m_document.scans[m_scan++];
        if (scan.recordCount > 0 && geometryOf(scan) != Geometry::None) {
            m_reader = std::make_unique<VectorReader>(m_file, scan);
            m_fillings = m_plan.fillings(scan);
            return true;
        }
    }
    return false;
}

std::uint32_t E57Source::next() {
    std::uint32_t row = 0;
    while (row < m_buffers.capacity()) {
        const std::uint32_t count = m_reader ? m_reader->prepare(m_buffers.capacity() - row) : 0;
        if (count == 0) {
            if (!nextScan()) {
                break;
            }
            continue;
        }
        findValid(count);
        takeCoordinates(count, row);
        for (const Filling& filling : m_fillings) {
            filling.colour ? takeColours(filling, count, row) : take(filling, count, row);
        }
        m_reader->take(count);
        m_done += count;
        m_invalid += count - m_valid.size();
        row += static_cast<std::uint32_t>(m_valid.size());
    }
    return row;
}

void E57Source::findValid(std::uint32_t count) {
    const Scan& scan = m_document.scans[m_scan - 1];
    const auto state = scan.find(geometryOf(scan) == Geometry::Cartesian ? "cartesianInvalidState"
                                                                         : "sphericalInvalidState");
    if (state && scan.fields[*state].kind == Field::Kind::Integer) {
        m_reader->wholeNumbers(*state, count, m_flags.data());
    } else {
        std::fill_n(m_flags.begin(), count, 0);
    }
    m_valid.clear();
    for (std::uint32_t i = 0; i < count; ++i) {
        if (m_flags[i] == 0) {
            m_valid.push_back(i);
        }
    }
}

void E57Source::takeCoordinates(std::uint32_t count, std::uint32_t row) {
    const Scan& scan = m_document.scans[m_scan - 1];
    const bool isSpherical = geometryOf(scan) == Geometry::Spherical;
    const char* const names[2][3] = {{"cartesianX", "cartesianY", "cartesianZ"},
                                     {"sphericalRange", "sphericalAzimuth", "sphericalElevation"}};
    for (std::size_t i = 0; i < 3; ++i) {
        m_blurred += m_reader->numbers(*scan.find(names[isSpherical ? 1 : 0][i]), count,
                                       m_numbers[i].data());
    }
    const bool isPosed = !scan.pose.isIdentity();
    const bool isSingle = m_plan.columns()[Coordinates].type == DataType::SINGLE;
    for (const std::uint32_t at : m_valid) {
        std::array<double, 3> point = {m_numbers[0][at], m_numbers[1][at], m_numbers[2][at]};
        if (isSpherical) {
            const auto [range, azimuth, elevation] = point;
            const double flat = range * std::cos(elevation);
            point = {flat * std::cos(azimuth), flat * std::sin(azimuth),
                     range * std::sin(elevation)};
            point = isPosed ? point : roundedAsPosed(point);
        }
        point = isPosed ? scan.pose(point) : point;
        for (std::size_t i = 0; i < 3; ++i) {
            if (isSingle) {
                m_buffers.typed<float>(Coordinates + i)[row] = static_cast<float>(point[i]);
            } else {
                m_buffers.typed<double>(Coordinates + i)[row] = point[i];
            }
        }
        m_buffers.typed<std::int64_t>(ScanNumber)[row] = static_cast<std::int64_t>(m_scan);
        ++row;
    }
}

void E57Source::take(const Filling& filling, std::uint32_t count, std::uint32_t row) {
    const Column& column = m_plan.columns()[filling.column];
    if (filling.flag) {
        m_reader->numbers(*filling.flag, count, m_numbers[1].data());
    }
    const auto isMissing = [&](std::uint32_t at) {
        return !filling.field || (filling.flag && m_numbers[1][at] != 0);
    };
    if (column.type == DataType::INT64) {
        if (filling.field) {
            m_reader->wholeNumbers(*filling.field, count, m_whole.data());
        }
        std::int64_t* to = m_buffers.typed<std::int64_t>(filling.column) + row;
        const auto none = static_cast<std::int64_t>(column.invalidValue);
        for (const std::uint32_t at : m_valid) {
            // In unsigned numbers, which hostile ones can't overflow.
            *to++ = isMissing(at) ? none
                                  : static_cast<std::int64_t>(
                                        static_cast<std::uint64_t>(m_whole[at]) + filling.added);
        }
        return;
    }
    if (filling.field) {
        m_blurred += m_reader->numbers(*filling.field, count, m_numbers[0].data());
    }
    for (const std::uint32_t at : m_valid) {
        const double value = isMissing(at) ? std::numeric_limits<double>::quiet_NaN()
                                           : m_numbers[0][at] + filling.added;
        m_buffers.set(filling.column, row++, value);
    }
}

void E57Source::takeColours(const Filling& filling, std::uint32_t count, std::uint32_t row) {
    const double brightest = m_plan.brightest();
    const Limits limits = *filling.colour;
    m_reader->numbers(*filling.field, count, m_numbers[0].data());
    if (filling.flag) {
        m_reader->numbers(*filling.flag, count, m_numbers[1].data());
    }
    std::int64_t* to = m_buffers.typed<std::int64_t>(filling.column) + row;
    for (const std::uint32_t at : m_valid) {
        if (filling.flag && m_numbers[1][at] != 0) {
            *to++ = -1;
            continue;
        }
        const double value = std::nearbyint((m_numbers[0][at] - limits.low) /
                                            (limits.high - limits.low) * brightest);
        const bool isWithin = value >= 0 && value <= brightest;
        m_cut += isWithin ? 0 : 1;
        *to++ = isWithin ? static_cast<std::int64_t>(value)
                         : static_cast<std::int64_t>(value > brightest ? brightest : 0);
    }
}

Origin E57Source::origin() const {
    Origin origin;
    origin.system = las::systemOfWkt(m_document.coordinateSystem);
    return origin;
}

std::vector<std::pair<std::string, std::string>> E57Source::metaData() const {
    return {{"e57.file", m_document.fileJson}, {"e57.scans", m_document.scansJson}};
}

std::vector<std::string> E57Source::notes() const {
    std::vector<std::string> notes;
    const auto add = [&](std::uint64_t count, const char* text) {
        if (count > 0) {
            notes.push_back(std::to_string(count) + text);
        }
    };
    add(m_invalid, " points that their scans call invalid were left out.");
    add(m_document.imageCount, " images were passed over.");
    add(m_cut, " colours beyond the limits of their scan became those limits.");
    add(m_longer, m_longer == 1 ? " scan holds more records than it tells, which are left out."
                                : " scans hold more records than they tell, which are left out.");
    if (m_blurred > 0) {
        notes.push_back(blurredNote(m_blurred));
    }
    std::uint64_t without = 0;
    std::uint64_t withTexts = 0;
    bool isComputed = false;
    for (const Scan& scan : m_document.scans) {
        const Geometry geometry = geometryOf(scan);
        without += geometry == Geometry::None ? 1 : 0;
        withTexts += static_cast<std::uint64_t>(
            std::ranges::count(scan.fields, Field::Kind::Text, &Field::kind));
        isComputed |= geometry == Geometry::Spherical ||
                      (geometry == Geometry::Cartesian && !scan.pose.isIdentity());
    }
    add(without, without == 1 ? " scan without coordinates was passed over."
                              : " scans without coordinates were passed over.");
    add(withTexts, " fields of texts were passed over.");
    if (isComputed) {
        notes.emplace_back(posedNote);
    }
    return notes;
}

}  // namespace tarvo::exchange::e57
