#include "benchmarks/condition.h"

#include <algorithm>
#include <cmath>
#include <sstream>
#include <utility>

namespace bench {

namespace {

constexpr std::size_t sampleSize = 200'000;

// A comparison of a column with a number of steps, and what joins them.
class Builder {
public:
    explicit Builder(const StoredPoints& points) : m_points(points) {}

    Condition compare(const std::string& column, const char* sign, double steps) const {
        const StoredColumn& stored = m_points.column(column);
        const std::string number = stored.text(std::llround(steps));
        const std::string sqlSign = std::string(sign) == "==" ? "=" : sign;
        std::string sqlNumber = number;
        if (stored.places > 0)
            sqlNumber = "CAST(" + number + " AS DECIMAL(" +
                        (stored.type == ColumnType::Signed32 ? "9," : "18,") +
                        std::to_string(stored.places) + "))";
        return {"", column + " " + sign + " " + number,
                "\"" + column + "\" " + sqlSign + " " + sqlNumber};
    }
    static Condition all(const Condition& a, const Condition& b) {
        return {"", a.filter + " && " + b.filter, a.sql + " AND " + b.sql};
    }
    static Condition any(const Condition& a, const Condition& b) {
        return {"", "(" + a.filter + ") || (" + b.filter + ")",
                "(" + a.sql + ") OR (" + b.sql + ")"};
    }
    Condition between(const std::string& column, double low, double high) const {
        return low == high ? compare(column, "==", low)
                           : all(compare(column, ">=", low), compare(column, "<=", high));
    }

private:
    const StoredPoints& m_points;
};

double quantile(std::vector<double> values, double part) {
    const auto at = static_cast<std::ptrdiff_t>(part * static_cast<double>(values.size() - 1));
    std::nth_element(values.begin(), values.begin() + at, values.end());
    return values[static_cast<std::size_t>(at)];
}

// A square around the middle point of the file that holds this part of all points.
Condition box(const StoredPoints& points, const Builder& builder, double part) {
    const std::vector<double> x = points.sample("tarvo.xyz[0]", sampleSize);
    const std::vector<double> y = points.sample("tarvo.xyz[1]", sampleSize);
    const std::size_t middle = x.size() / 2;
    std::vector<double> distances;
    for (std::size_t i = 0; i < x.size(); ++i)
        distances.push_back(std::max(std::fabs(x[i] - x[middle]), std::fabs(y[i] - y[middle])));
    const double half = std::ceil(quantile(distances, part));
    return Builder::all(builder.between("tarvo.xyz[0]", x[middle] - half, x[middle] + half),
                        builder.between("tarvo.xyz[1]", y[middle] - half, y[middle] + half));
}

// The range of a column's numbers that passes a part nearest to the wanted one: from some number up
// to the first with which the part is reached.
std::pair<double, double> rangeOf(std::vector<double> values, double part) {
    std::sort(values.begin(), values.end());
    const auto wanted = static_cast<std::size_t>(part * static_cast<double>(values.size()));
    std::pair<double, double> best{values.front(), values.back()};
    std::size_t least = values.size();
    for (std::size_t begin = 0; begin + wanted < values.size();) {
        const auto end = static_cast<std::size_t>(
            std::upper_bound(values.begin(), values.end(), values[begin + wanted - 1]) -
            values.begin());
        if (end - begin < least) {
            least = end - begin;
            best = {values[begin], values[end - 1]};
        }
        begin = static_cast<std::size_t>(
            std::upper_bound(values.begin(), values.end(), values[begin]) - values.begin());
    }
    return best;
}

}  // namespace

std::vector<Condition> chooseConditions(const StoredPoints& points) {
    const Builder builder(points);
    const auto named = [](const char* name, Condition condition) {
        condition.name = name;
        return condition;
    };
    const std::vector<double> intensity = points.sample("tarvo.intensity", sampleSize);
    const std::vector<double> z = points.sample("tarvo.xyz[2]", sampleSize);
    const auto [low, high] = rangeOf(intensity, 0.001);
    return {
        named("no filter", {}),
        named("box 0.1 %", box(points, builder, 0.001)),
        named("box 10 % and a range",
              Builder::all(box(points, builder, 0.1),
                           builder.between("tarvo.intensity", quantile(intensity, 0.25),
                                           quantile(intensity, 0.75)))),
        named("non-spatial, 0.1 %", builder.between("tarvo.intensity", low, high)),
        named("class or height and return",
              Builder::any(builder.compare("tarvo.class", "==", 2),
                           Builder::all(builder.compare("tarvo.xyz[2]", ">", quantile(z, 0.5)),
                                        builder.compare("tarvo.target_index", "==", 1)))),
    };
}

std::string textOf(const std::vector<Condition>& conditions) {
    std::string text;
    for (const Condition& condition : conditions)
        text += condition.name + "\n" + condition.filter + "\n" + condition.sql + "\n";
    return text;
}

std::vector<Condition> conditionsOf(const std::string& text) {
    std::vector<Condition> conditions;
    std::istringstream lines(text);
    Condition next;
    while (std::getline(lines, next.name) && std::getline(lines, next.filter) &&
           std::getline(lines, next.sql))
        conditions.push_back(next);
    return conditions;
}

}  // namespace bench
