#include "exchange/las/chunklist.h"

#include "exchange/bytes.h"
#include "exchange/laz/chunkdecoder.h"
#include "exchange/laz/chunktable.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string>

namespace tarvo::exchange::las {

namespace {

constexpr std::uint64_t tablePlaceSize = 8;

class Lister {
public:
    Lister(RawFile& file, const Header& header, const laz::Description& description)
        : m_file(file), m_header(header), m_description(description) {
        m_list.begin = header.pointOffset;
        m_list.end = header.evlrCount != 0 ? std::min(header.evlrOffset, file.size()) : file.size();
    }

    ChunkList list() {
        if (m_header.pointCount == 0) {
            return m_list;
        }
        if (!m_description.isChunked) {
            m_list.isListed = false;
            m_list.chunkPoints = m_header.pointCount;
            return m_list;
        }
        m_list.begin += tablePlaceSize;
        if (const std::optional<std::uint64_t> place = tablePlace()) {
            listTable(*place);
        } else if (isVariable()) {
            m_file.fail("it has no chunk table, and its chunks are of different sizes");
        } else if (m_description.layout.isLayered()) {
            listHeads();
        } else {
            m_list.isListed = false;
            m_list.chunkPoints = m_description.chunkSize;
        }
        return m_list;
    }

private:
    bool isVariable() const { return m_description.chunkSize == laz::variableChunkSize; }

    template <typename T>
    T number(std::uint64_t position, const char* what) {
        std::array<std::uint8_t, sizeof(T)> bytes;
        m_file.read(position, bytes.data(), bytes.size(), what);
        return get<T>(bytes.data());
    }

    bool hasRoomForTable(std::uint64_t place) const {
        return place >= m_list.begin && place <= m_file.size() &&
               m_file.size() - place >= laz::chunkTableHead;
    }

    // Nothing: the writer was interrupted, or the file's end is missing.
    std::optional<std::uint64_t> tablePlace() {
        const char* const what = "place of the chunk table";
        auto place = number<std::uint64_t>(m_header.pointOffset, what);
        if (place == ~std::uint64_t{0}) {  // the writer could not go back to tell it
            place = number<std::uint64_t>(m_file.size() - tablePlaceSize, what);
        } else if (place < m_list.begin && place != m_header.pointOffset) {
            m_file.fail("the chunk table is at byte " + std::to_string(place) +
                        ", before the points");
        }
        return hasRoomForTable(place) ? std::optional(place) : std::nullopt;
    }

    void listTable(std::uint64_t place) {
        m_list.end = place;
        const auto version = number<std::uint32_t>(place, "chunk table");
        const auto count = number<std::uint32_t>(place + 4, "chunk table");
        if (version != 0) {
            m_file.fail("the chunk table has version " + std::to_string(version) + "; 0 is known");
        }
        // Every chunk begins with a whole record.
        if (count > (place - m_list.begin) / m_header.recordLength) {
            m_file.fail("the chunk table tells of " + std::to_string(count) +
                        " chunks, but there is no room for them");
        }
        const std::uint64_t size =
            std::min(laz::largestChunkTable(count), m_file.size() - place) - laz::chunkTableHead;
        std::vector<std::uint8_t> bytes(size);
        m_file.read(place + laz::chunkTableHead, bytes.data(), bytes.size(), "chunk table");
        try {
            addChunks(laz::readChunkTable(bytes, count, isVariable()));
        } catch (const laz::Damage& damage) {
            m_file.fail(std::string("the chunk table: ") + damage.what());
        }
    }

    void addChunks(const std::vector<laz::ChunkSize>& sizes) {
        std::uint64_t points = 0;
        std::uint64_t position = m_list.begin;
        m_list.chunks.reserve(sizes.size());
        for (const laz::ChunkSize& size : sizes) {
            const std::uint64_t left = m_header.pointCount - std::min(m_header.pointCount, points);
            Chunk chunk{position, size.bytes, size.points};
            if (!isVariable()) {
                chunk.points = static_cast<std::uint32_t>(
                    std::min<std::uint64_t>(m_description.chunkSize, left));
            }
            points += chunk.points;
            position += chunk.size;
            check(chunk);
            if (chunk.points != 0) {
                m_list.chunks.push_back(chunk);
            }
        }
        const bool isTooMany = !isVariable() && m_list.chunks.size() != sizes.size();
        if (points != m_header.pointCount || isTooMany) {
            m_file.fail("the number of point records is " + std::to_string(m_header.pointCount) +
                        ", but the chunk table's " + std::to_string(sizes.size()) +
                        " chunks hold " + (isTooMany ? "more" : std::to_string(points)));
        }
    }

    void check(const Chunk& chunk) const {
        // Far above what any symbols can take.
        const std::uint64_t most =
            (chunk.points + 1) * (8 * std::uint64_t{m_header.recordLength} + 64);
        const std::uint64_t room = m_list.end - std::min(m_list.end, chunk.begin);
        if (chunk.size > room || (chunk.points != 0 && chunk.size > most)) {
            m_file.fail("the chunk at byte " + std::to_string(chunk.begin) + " has " +
                        std::to_string(chunk.points) + " points in " + std::to_string(chunk.size) +
                        " bytes, of which " + std::to_string(room) + " are there");
        }
    }

    // Layered chunks tell their lengths.
    void listHeads() {
        std::vector<std::uint8_t> head(laz::LayeredChunk::headSize(m_description.layout));
        std::uint64_t position = m_list.begin;
        for (std::uint64_t left = m_header.pointCount; left != 0;) {
            m_file.read(position, head.data(), head.size(), "chunk");
            const auto told = laz::LayeredChunk::read(m_description.layout, head.data());
            const Chunk chunk{
                position, told.size,
                static_cast<std::uint32_t>(std::min<std::uint64_t>(m_description.chunkSize, left))};
            check(chunk);
            m_list.chunks.push_back(chunk);
            left -= chunk.points;
            position += chunk.size;
        }
    }

    RawFile& m_file;
    const Header& m_header;
    const laz::Description& m_description;
    ChunkList m_list;
};

}  // namespace

ChunkList ChunkList::read(RawFile& file, const Header& header,
                          const laz::Description& description) {
    return Lister(file, header, description).list();
}

}  // namespace tarvo::exchange::las
