// Makes a large LAS file out of a small real one: lays copies of its points side by side in x and y
// until the wanted number is reached. Each copy lies beside the one before it and its times go on
// where that one's ended, as if the scanner had flown on; everything else is the points' own.
//
//   bench_tile_las SOURCE.las POINTS TARGET.las
#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

template <typename T>
T get(const char* from) {
    T value;
    std::memcpy(&value, from, sizeof value);
    return value;
}

template <typename T>
void put(char* to, T value) {
    std::memcpy(to, &value, sizeof value);
}

// The smallest and largest of a field of all records.
template <typename T>
struct Extent {
    T low, high;

    Extent(const std::vector<char>& records, std::size_t length, std::size_t field) {
        low = high = get<T>(records.data() + field);
        for (std::size_t at = 0; at < records.size(); at += length) {
            const T value = get<T>(records.data() + at + field);
            low = std::min(low, value);
            high = std::max(high, value);
        }
    }
};

class Tiler {
public:
    explicit Tiler(const std::string& file) {
        std::ifstream in(file, std::ios::binary);
        const std::vector<char> all{std::istreambuf_iterator<char>(in), {}};
        if (all.size() < 227 || std::memcmp(all.data(), "LASF", 4) != 0)
            throw std::runtime_error("no LAS file: " + file);
        const auto begin = get<std::uint32_t>(all.data() + 96);
        m_format = static_cast<std::uint8_t>(all[104]);
        m_length = get<std::uint16_t>(all.data() + 105);
        const std::size_t points = get<std::uint32_t>(all.data() + 107);
        if (m_format > 5)
            throw std::runtime_error("only the point formats 0 to 5 can be tiled: " + file);
        if (points == 0 || begin + points * m_length > all.size())
            throw std::runtime_error("no points, or fewer than announced: " + file);
        m_head.assign(all.begin(), all.begin() + begin);
        m_records.assign(all.begin() + begin, all.begin() + begin + points * m_length);
    }

    void write(std::uint64_t points, const std::string& file) {
        std::ofstream out(file, std::ios::binary);
        const std::uint64_t own = m_records.size() / m_length;
        const std::uint64_t tiles = (points + own - 1) / own;
        const auto columns = static_cast<std::int64_t>(std::ceil(std::sqrt(double(tiles))));
        const std::int64_t rows = (static_cast<std::int64_t>(tiles) + columns - 1) / columns;
        const Extent<std::int32_t> x(m_records, m_length, 0), y(m_records, m_length, 4);
        const std::int64_t width = std::int64_t{x.high} - x.low + 1;
        const std::int64_t height = std::int64_t{y.high} - y.low + 1;
        if (x.low + columns * width > INT32_MAX || y.low + rows * height > INT32_MAX)
            throw std::runtime_error("the tiles leave the range of the file's coordinates");
        const std::size_t time = timeField();
        const double flight = time ? flightTime(time) : 0;
        writeHead(out, points, columns * width, rows * height);
        for (std::uint64_t tile = 0; tile < tiles; ++tile) {
            std::vector<char> copy = m_records;
            copy.resize(std::min<std::uint64_t>(own, points - tile * own) * m_length);
            const auto column = static_cast<std::int64_t>(tile) % columns;
            const auto row = static_cast<std::int64_t>(tile) / columns;
            for (std::size_t at = 0; at < copy.size(); at += m_length) {
                char* record = copy.data() + at;
                shift<std::int32_t>(record, column * width);
                shift<std::int32_t>(record + 4, row * height);
                if (time)
                    shift<double>(record + time, static_cast<double>(tile) * flight);
            }
            out.write(copy.data(), static_cast<std::streamsize>(copy.size()));
        }
        out.close();
        if (!out)
            throw std::runtime_error("can't write " + file);
    }

private:
    template <typename T, typename Offset>
    static void shift(char* field, Offset offset) {
        put(field, static_cast<T>(get<T>(field) + offset));
    }

    std::size_t timeField() const { return m_format == 0 || m_format == 2 ? 0 : 20; }

    // How long a tile takes, with the pause of one pulse after it.
    double flightTime(std::size_t field) const {
        const Extent<double> time(m_records, m_length, field);
        return (time.high - time.low) * (1 + 1.0 / static_cast<double>(m_records.size()));
    }

    // The head of the source with the number of points, their returns and the box of the target.
    void writeHead(std::ofstream& out, std::uint64_t points, std::int64_t width,
                   std::int64_t height) {
        std::vector<char> head = m_head;
        const std::uint64_t own = m_records.size() / m_length;
        std::array<std::uint32_t, 5> returns{};
        for (std::uint64_t i = 0; i < own; ++i) {
            const int number = m_records[i * m_length + 14] & 7;
            if (number >= 1 && number <= 5)
                returns[number - 1] +=
                    static_cast<std::uint32_t>(points / own + (i < points % own ? 1 : 0));
        }
        put(head.data() + 107, static_cast<std::uint32_t>(points));
        put(head.data() + 111, returns);
        const Extent<std::int32_t> x(m_records, m_length, 0), y(m_records, m_length, 4);
        const auto place = [&](int axis, std::int64_t raw) {
            return static_cast<double>(raw) * get<double>(head.data() + 131 + 8 * axis) +
                   get<double>(head.data() + 155 + 8 * axis);
        };
        put(head.data() + 179, place(0, x.low + width - 1));
        put(head.data() + 187, place(0, x.low));
        put(head.data() + 195, place(1, y.low + height - 1));
        put(head.data() + 203, place(1, y.low));
        out.write(head.data(), static_cast<std::streamsize>(head.size()));
    }

    std::vector<char> m_head;
    std::vector<char> m_records;
    unsigned m_format = 0;
    std::size_t m_length = 0;
};

}  // namespace

int main(int argc, char** argv) {
    if (argc != 4) {
        std::fputs("usage: bench_tile_las SOURCE.las POINTS TARGET.las\n", stderr);
        return 2;
    }
    try {
        Tiler(argv[1]).write(std::stoull(argv[2]), argv[3]);
        return 0;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "bench_tile_las: %s\n", error.what());
        return 1;
    }
}
