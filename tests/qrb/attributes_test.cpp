// The attribute family on the library itself: groups, filters and merged definitions.
#include "tests/qrb/library.h"

#include <cmath>
#include <limits>
#include <vector>

namespace {

using namespace tarvo;
using namespace tarvo::qrb::pointcloud;
using Names = std::vector<std::string>;

class Attributes : public LibraryTest {
protected:
    // An open file over "p" with these attributes.
    void create(qrb::Pointcloud& cloud, const std::string& name,
                const std::vector<PointAttribute>& attributes) {
        CreateSettings settings(cloud.context());
        settings.primaryAttribute = attribute("p", 0, 100, 1);
        cloud.create(file(name), settings);
        TransactionGuard transaction(cloud.transactions(), "Add", "tests");
        for (const PointAttribute& one : attributes)
            cloud.pointAttributes().add(one);
        transaction.commit();
    }
    // The definition of "a" for two files that have these.
    PointAttribute merged(const PointAttribute& first, const PointAttribute& second) {
        const qrb::Context context("OFF", "");
        qrb::Pointcloud one(context), two(context);
        create(one, "one" + std::to_string(++m_files), {first});
        create(two, "two" + std::to_string(m_files), {second});
        return one.pointAttributes().getMerged({&two.pointAttributes()}, "a");
    }
    int m_files = 0;
};

TEST_F(Attributes, NumbersThatNoFileCanHoldAreRefused) {
    const qrb::Context context("OFF", "");
    qrb::Pointcloud cloud(context);
    create(cloud, "a.qrbx", {});
    const double infinite = std::numeric_limits<double>::infinity();
    const double none = std::numeric_limits<double>::quiet_NaN();
    TransactionGuard transaction(cloud.transactions(), "Refused", "tests");
    for (double PointAttribute::*field :
         {&PointAttribute::minimumValue, &PointAttribute::maximumValue, &PointAttribute::resolution,
          &PointAttribute::defaultValue, &PointAttribute::invalidValue,
          &PointAttribute::scaleFactor}) {
        for (const double value : {infinite, -infinite, none}) {
            if (field == &PointAttribute::invalidValue && std::isnan(value))
                continue;  // no invalid value
            auto record = attribute("refused", 0, 10, 1);
            record.*field = value;
            EXPECT_THROW(cloud.pointAttributes().add(record), qrb::Error);
        }
    }
    cloud.pointAttributes().add(attribute("taken", 0, 10, 1));
    transaction.commit();
    cloud.close();
    cloud.open(file("a.qrbx"), OpenSettings(context));
    EXPECT_TRUE(cloud.pointAttributes().exists("taken"));
}

TEST_F(Attributes, GroupsFollowTheCatalogueThenTagsAndRanksTheFilesOrder) {
    const qrb::Context context("OFF", "");
    qrb::Pointcloud cloud(context);
    PointAttribute tagged = attribute("own.normal", -1, 1, 0.01, 3);
    tagged.tags = " direction ,boolean";
    PointAttribute matrix = attribute("own.matrix", -1, 1, 0.01, 9);
    matrix.tags = "transform";
    create(cloud, "groups",
           {attribute("own.b", 0, 1, 1), tagged, attribute("own.a", 0, 1, 1), matrix});
    PointAttributes& attributes = cloud.pointAttributes();
    {
        TransactionGuard transaction(cloud.transactions(), "Add", "tests");
        for (const char* name : {"tarvo.surface_normal", "tarvo.range", "tarvo.visible"})
            attributes.addDefault(name);
        transaction.commit();
    }
    const auto group = [&](const char* name) {
        const auto found = attributes.group(name);
        return found.name + " " + std::to_string(found.rank);
    };
    EXPECT_EQ(group("tarvo.range"), "Coordinates/Vectors 0");
    EXPECT_EQ(group("tarvo.surface_normal"), "Coordinates/Vectors 1");
    EXPECT_EQ(group("own.normal"), "Coordinates/Vectors 2");
    EXPECT_EQ(group("own.matrix"), "Coordinates/Vectors 3");
    EXPECT_EQ(group("tarvo.id"), "Other Attributes 0");
    EXPECT_EQ(group("tarvo.visible"), "Other Attributes 1");
    EXPECT_EQ(group("p"), "Other Attributes 2");
    EXPECT_EQ(group("own.b"), "Other Attributes 3");
    EXPECT_EQ(group("own.a"), "Other Attributes 4");
    EXPECT_EQ(attributes.groupDefault("tarvo.xyz").rank, 0u);
    EXPECT_EQ(attributes.groupDefault("tarvo.xyz_socs").rank, 1u);
    EXPECT_EQ(attributes.groupDefault("tarvo.shot_timestamp_hr").name, "Time");
    EXPECT_EQ(attributes.groupDefault("tarvo.shot_timestamp_hr").rank, 0u);
    failure([&] { (void)attributes.group("tarvo.xyz"); }, QRB_ERROR_NOT_FOUND);
    failure([&] { (void)attributes.groupDefault("own.a"); }, QRB_ERROR_NOT_FOUND);
}

TEST_F(Attributes, AreListedByPatternAndTag) {
    const qrb::Context context("OFF", "");
    qrb::Pointcloud cloud(context);
    PointAttribute tagged = attribute("ab.c", 0, 1, 1);
    tagged.tags = "boolean, own tag";
    create(cloud, "filters", {attribute("abc", 0, 1, 1), tagged, attribute("aXbXc", 0, 1, 1)});
    const PointAttributes& attributes = cloud.pointAttributes();
    EXPECT_EQ(attributes.listFiltered(""), attributes.list());
    EXPECT_EQ(attributes.listFiltered("*"), attributes.list());
    EXPECT_EQ(attributes.listFiltered("ab?c"), Names{"ab.c"});
    EXPECT_EQ(attributes.listFiltered("a*b*c"), (Names{"abc", "ab.c", "aXbXc"}));
    EXPECT_EQ(attributes.listFiltered("b*"), Names{});
    EXPECT_EQ(attributes.listFiltered("ABC"), Names{});
    EXPECT_EQ(attributes.listFiltered("#boolean"), Names{"ab.c"});
    EXPECT_EQ(attributes.listFiltered("#own tag"), Names{"ab.c"});
    EXPECT_EQ(attributes.listFiltered("#bool"), Names{});
    // Backtracking over every star would take for ever.
    std::string stars;
    for (int i = 0; i < 1000; ++i)
        stars += "*a";
    EXPECT_EQ(attributes.listFiltered(stars + "!"), Names{});
}

TEST_F(Attributes, MergedDefinitionsHoldTheValuesOfAll) {
    struct Expected {
        PointAttribute first, second;
        double minimum, maximum, resolution;
    };
    const Expected cases[] = {
        {attribute("a", -1, 1, 0.01), attribute("a", 0, 5, 0.01), -1, 5, 0.01},
        {attribute("a", 0, 1, 0.02), attribute("a", 0, 1, 0.05), 0, 1, 0.01},
        {attribute("a", 0, 1, 0.1), attribute("a", 0.25, 1.25, 0.1), 0, 1.25, 0.05},
        {attribute("a", 0.00025, 1.00025, 0.001), attribute("a", 0, 1, 0.001), 0, 1.00025, 0.00025},
        {attribute("a", 0, 255, 1), attribute("a", -1000, 70000, 1), -1000, 70000, 1},
        {attribute("a", 0, 18446744073709551615.0, 1), attribute("a", 5, 10, 1), 0,
         18446744073709551616.0, 1},
        {attribute("a", 0, 100, 5), attribute("a", 1, 11, 10), 0, 100, 1},
        {attribute("a", 0, 1e6, 1), attribute("a", 0, 1e6, 0), 0, 1e6, 0},
        // No grid of 2^53 steps holds both.
        {attribute("a", 0, 1e9, 1e-6), attribute("a", 0.123456789012, 1, 0.1), 0, 1e9, 0},
        {attribute("a", 0, 1, 1 / 3.0), attribute("a", 0, 1, 1 / 7.0), 0, 1, 0}};
    for (const Expected& expected : cases) {
        for (const bool swapped : {false, true}) {
            const PointAttribute& first = swapped ? expected.second : expected.first;
            const PointAttribute& second = swapped ? expected.first : expected.second;
            const PointAttribute result = merged(first, second);
            SCOPED_TRACE("case " + std::to_string(&expected - cases));
            EXPECT_EQ(result.minimumValue, expected.minimum);
            EXPECT_EQ(result.maximumValue, expected.maximum);
            EXPECT_EQ(result.resolution, expected.resolution);
            EXPECT_EQ(result.defaultValue, first.defaultValue);
        }
    }
}

TEST_F(Attributes, MergeTextsAndRefuseWhatCanNotBeMixed) {
    PointAttribute first = attribute("a", 0, 100, 1);
    PointAttribute second = attribute("a", 200, 250, 1);
    first.title = "First";
    first.namedValues = "0=no\n1=yes";
    second.namedValues = "1=Yes\n2=maybe";
    second.invalidValue = 255;
    second.storageClass = PointAttribute::DYNAMIC;
    const PointAttribute result = merged(first, second);
    EXPECT_EQ(result.title, "First");
    EXPECT_EQ(result.namedValues, "0=no\n1=yes\n2=maybe");
    EXPECT_EQ(result.invalidValue, 255);
    EXPECT_EQ(result.storageClass, PointAttribute::DYNAMIC);
    first.storageClass = second.storageClass = PointAttribute::CONSTANT;
    EXPECT_EQ(merged(first, second).storageClass, PointAttribute::VARIABLE);

    const auto refused = [&](const PointAttribute& other) {
        return failure([&] { (void)merged(first, other); }, QRB_ERROR_ARGUMENT);
    };
    PointAttribute other = first;
    other.unitSymbol = "m";
    EXPECT_NE(refused(other).find("units are \"\" and \"m\""), std::string::npos);
    other = first;
    other.length = 2;
    EXPECT_NE(refused(other).find("lengths are 1 and 2"), std::string::npos);
    other = first;
    other.scaleFactor = 2;
    EXPECT_NE(refused(other).find("scale factors"), std::string::npos);
    // Values of the first, the extremes, too.
    other = first;
    for (const double invalid : {0, 100, 50}) {
        other.invalidValue = invalid;
        EXPECT_NE(refused(other).find("is a value of another"), std::string::npos) << invalid;
    }
    first.invalidValue = -1;
    EXPECT_NE(refused(other).find("invalid values are -1 and 50"), std::string::npos);
    // Whole numbers of 64 bits are not exact beside fractions, nor do both signs fit.
    first = attribute("a", 0, 18446744073709551615.0, 1);
    EXPECT_NE(refused(attribute("a", 0, 1, 0.5)).find("2^53"), std::string::npos);
    EXPECT_NE(refused(attribute("a", -5, 5, 1)).find("64 bits"), std::string::npos);
}

TEST_F(Attributes, MergedListsHaveEveryNameOnce) {
    const qrb::Context context("OFF", "");
    qrb::Pointcloud one(context), two(context), closed(context);
    create(one, "one", {attribute("a", 0, 1, 1), attribute("b", 0, 1, 1)});
    create(two, "two", {attribute("c", 0, 1, 1), attribute("b", 0, 9, 1)});
    const PointAttributes& attributes = one.pointAttributes();
    EXPECT_EQ(attributes.listMerged({&two.pointAttributes()}),
              (Names{"p", "tarvo.id", "a", "b", "c"}));
    EXPECT_EQ(attributes.listMerged({}), attributes.list());
    // Only another one has it; nobody has it.
    EXPECT_EQ(attributes.getMerged({&two.pointAttributes()}, "c").name, "c");
    failure([&] { (void)attributes.getMerged({&two.pointAttributes()}, "x"); },
            QRB_ERROR_NOT_FOUND);
    failure([&] { (void)attributes.listMerged({nullptr}); }, QRB_ERROR_ARGUMENT);
    failure([&] { (void)attributes.getMerged({&closed.pointAttributes()}, "a"); }, QRB_ERROR_STATE);
}

TEST_F(Attributes, DefaultsAreAddedDuplicatedAndDiscarded) {
    const qrb::Context context("OFF", "");
    qrb::Pointcloud cloud(context);
    create(cloud, "defaults", {});
    PointAttributes& attributes = cloud.pointAttributes();
    EXPECT_EQ(attributes.getDefault("tarvo.class").storageClass, PointAttribute::DYNAMIC);
    EXPECT_EQ(attributes.pointIdType(), attributes.getDefault("tarvo.id").dataType());
    EXPECT_EQ(attributes.pointIdUnit(), "");
    TransactionGuard transaction(cloud.transactions(), "Change", "tests");
    attributes.addDefault("tarvo.class");
    // Lists of what is pending.
    EXPECT_EQ(attributes.list(), (Names{"p", "tarvo.id", "tarvo.class"}));
    EXPECT_EQ(attributes.listFiltered("*class"), Names{"tarvo.class"});
    cloud.metaData().set("own", "1");
    EXPECT_EQ(cloud.metaData().list(), Names{"own"});
    failure([&] { attributes.addDefault("tarvo.class"); }, QRB_ERROR_EXISTS);
    failure([&] { attributes.addDefault("own"); }, QRB_ERROR_NOT_FOUND);
    const std::uint8_t values[][2] = {{1, 6}, {2, 9}};
    auto query = cloud.insert();
    query.bind("p", DataType::UINT8, &values[0][0], 2);
    query.bind("tarvo.class", DataType::UINT8, &values[0][1], 2);
    ASSERT_EQ(query.next(2), 2u);
    query.close();
    attributes.duplicate("tarvo.class", "own.copy");
    attributes.discard("tarvo.class");
    transaction.commit();

    std::uint8_t read[2][2] = {};
    auto select = cloud.select("");
    select.bind("tarvo.class", DataType::UINT8, &read[0][0], 2);
    select.bind("own.copy", DataType::UINT8, &read[0][1], 2);
    ASSERT_EQ(select.next(10), 2u);
    const auto usual = static_cast<std::uint8_t>(attributes.get("tarvo.class").defaultValue);
    EXPECT_EQ(read[0][0], usual);
    EXPECT_EQ(read[1][0], usual);
    EXPECT_EQ(read[0][1], 6);
    EXPECT_EQ(read[1][1], 9);
}

}  // namespace
