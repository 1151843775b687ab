// Records that are copied, assigned, and sent through the library: no member is forgotten and none
// takes another's place.
#include "tests/qrb/library.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <utility>
#include <vector>

namespace {

using namespace tarvo;
using namespace tarvo::qrb::pointcloud;

class Records : public LibraryTest {
protected:
    const qrb::Context m_context{"OFF", ""};
};

template <typename Record>
struct Member {
    const char* name;
    std::function<void(Record&)> change;
    std::function<bool(const Record&, const Record&)> isSame;
};
#define MEMBER(Record, name, value)                                                            \
    Member<Record> {                                                                           \
#name, [](Record &                                                                     \
                  r) { r.name = value; }, [](const Record& a,                                  \
                                             const Record& b) { return same(a.name, b.name); } \
    }

template <typename T>
bool same(const T& a, const T& b) {
    if constexpr (std::is_floating_point_v<T>)
        return a == b || (std::isnan(a) && std::isnan(b));
    else
        return a == b;
}
bool same(const PointAttribute& a, const PointAttribute& b) {
    return a.toJson() == b.toJson();
}

PointAttribute primary() {
    PointAttribute result;
    result.name = "own.position";
    result.length = 2;
    result.maximumValue = 5;
    result.storageClass = PointAttribute::VARIABLE;
    return result;
}

const std::vector<Member<CreateSettings>>& creationMembers() {
    static const std::vector<Member<CreateSettings>> members{
        MEMBER(CreateSettings, primaryAttribute, primary()),
        MEMBER(CreateSettings, chunkMode, 2),
        MEMBER(CreateSettings, chunkSize, 1234),
        MEMBER(CreateSettings, lodMode, 2),
        MEMBER(CreateSettings, chunkSizeLOD, 15),
        MEMBER(CreateSettings, cacheSize, 5'000'000'000),
        MEMBER(CreateSettings, compressionLevel, 77),
        MEMBER(CreateSettings, optimizePointID, !r.optimizePointID),
        MEMBER(CreateSettings, pointInsertMode, "multi-pass"),
    };
    return members;
}

const std::vector<Member<PointAttribute>>& attributeMembers() {
    static const std::vector<Member<PointAttribute>> members{
        MEMBER(PointAttribute, name, "own.name"),
        MEMBER(PointAttribute, title, "Title"),
        MEMBER(PointAttribute, tags, "direction"),
        MEMBER(PointAttribute, description, "Description"),
        MEMBER(PointAttribute, unitSymbol, "m"),
        MEMBER(PointAttribute, length, 3),
        MEMBER(PointAttribute, resolution, 0.5),
        MEMBER(PointAttribute, minimumValue, -8),
        MEMBER(PointAttribute, maximumValue, 150),
        MEMBER(PointAttribute, defaultValue, 3),
        MEMBER(PointAttribute, invalidValue, 99),
        MEMBER(PointAttribute, namedValues, "1=one"),
        MEMBER(PointAttribute, storageClass, PointAttribute::DYNAMIC),
        MEMBER(PointAttribute, compressionOptions, PointAttribute::SHUFFLE),
        MEMBER(PointAttribute, lodSettings, "{}"),
        MEMBER(PointAttribute, scaleFactor, 0.25),
    };
    return members;
}

// Each member changed by itself: it arrives, and no other is touched.
template <typename Record>
void expectEachArrives(const std::vector<Member<Record>>& members, const Record& plain,
                       const std::function<Record(const Record&)>& send, const char* way) {
    for (const Member<Record>& changed : members) {
        Record record = plain;
        changed.change(record);
        EXPECT_FALSE(changed.isSame(record, plain)) << changed.name << " was that before";
        const Record sent = send(record);
        for (const Member<Record>& member : members)
            EXPECT_TRUE(member.isSame(sent, record))
                << way << ": " << changed.name << " is changed, " << member.name << " differs";
    }
}

TEST_F(Records, OfCreationSettingsArriveMemberByMember) {
    const auto& members = creationMembers();
    const CreateSettings plain(m_context);
    using Send = std::function<CreateSettings(const CreateSettings&)>;
    const Send copied = [](const CreateSettings& from) { return CreateSettings(from); };
    const Send assigned = [&](const CreateSettings& from) {
        CreateSettings to(m_context);
        to = from;
        return to;
    };
    const Send assignedOver = [&](const CreateSettings& from) {
        CreateSettings to(m_context);
        for (const auto& member : members)
            member.change(to);
        to = from;
        return to;
    };
    const Send throughJson = [&](const CreateSettings& from) {
        CreateSettings to(m_context);
        to.fromJson(from.toJson());
        return to;
    };
    // What a copy gives to the library is its own, too.
    const Send copiedJson = [&](const CreateSettings& from) {
        CreateSettings to(m_context);
        to.fromJson(CreateSettings(from).toJson());
        return to;
    };
    // The library's object keeps nothing of what it was given before.
    const Send givenAgain = [&](const CreateSettings& from) {
        CreateSettings to(m_context);
        for (const auto& member : members)
            member.change(to);
        (void)to.toJson();
        to = from;
        return throughJson(to);
    };
    expectEachArrives(members, plain, copied, "copied");
    expectEachArrives(members, plain, assigned, "assigned");
    expectEachArrives(members, plain, givenAgain, "given again");
    expectEachArrives(members, plain, assignedOver, "assigned over others");
    expectEachArrives(members, plain, throughJson, "through JSON");
    expectEachArrives(members, plain, copiedJson, "copied, through JSON");
    CreateSettings itself(m_context);
    for (const auto& member : members)
        member.change(itself);
    const CreateSettings before = itself;
    const CreateSettings& alias = itself;
    itself = alias;
    for (const auto& member : members)
        EXPECT_TRUE(member.isSame(itself, before)) << member.name;
}

// A file of settings of which only some are told.
TEST_F(Records, KeepWhatAJsonTextDoesNotName) {
    const auto expectKept = [](const auto& members, auto record) {
        for (const auto& member : members)
            member.change(record);
        const auto before = record;
        record.fromJson("{}");
        EXPECT_THROW(record.fromJson("{\"length\": 1"), qrb::Error);
        for (const auto& member : members)
            EXPECT_TRUE(member.isSame(record, before)) << member.name;
    };
    expectKept(creationMembers(), CreateSettings(m_context));
    expectKept(attributeMembers(), PointAttribute());
    OpenSettings open(m_context);
    open.cacheSize = 6'000'000'000;
    open.transaction = 3;
    open.fromJson("{\"readOnly\": true}");
    EXPECT_THROW(open.fromJson("{\"readOnly\": false, \"transaction\": -1}"), qrb::Error);
    EXPECT_EQ(open.cacheSize, 6'000'000'000);
    EXPECT_EQ(open.transaction, 3u);
    EXPECT_TRUE(open.readOnly);
}

TEST_F(Records, TellTheTypeOfTheirValues) {
    const std::tuple<double, double, double, DataType> cases[] = {
        {0, 255, 1, DataType::UINT8},      {-1, 255, 1, DataType::INT16},
        {0, 1, 0, DataType::DOUBLE},       {-1e4, 1e4, 0.01, DataType::SINGLE},
        {-1e6, 1, 0.01, DataType::DOUBLE}, {-1, 1e6, 0.01, DataType::DOUBLE}};
    for (const auto& [minimum, maximum, resolution, type] : cases)
        EXPECT_EQ(attribute("a", minimum, maximum, resolution).dataType(), type) << maximum;
}

TEST_F(Records, OfCreationSettingsAreIndependentOfTheirCopies) {
    for (const auto& changed : creationMembers()) {
        const CreateSettings plain(m_context);
        CreateSettings from = plain;
        CreateSettings to(m_context);
        to = from;
        const CreateSettings copy = from;
        changed.change(from);
        (void)from.toJson();
        EXPECT_TRUE(changed.isSame(to, plain)) << changed.name;
        EXPECT_TRUE(changed.isSame(copy, plain)) << changed.name;
        EXPECT_EQ(to.toJson(), plain.toJson()) << changed.name;
        EXPECT_EQ(copy.toJson(), plain.toJson()) << changed.name;
    }
}

TEST_F(Records, OfOpenSettingsArriveMemberByMember) {
    const std::vector<Member<OpenSettings>> members{
        MEMBER(OpenSettings, cacheSize, 6'000'000'000),
        MEMBER(OpenSettings, transaction, 7),
        MEMBER(OpenSettings, readOnly, true),
    };
    const OpenSettings plain(m_context);
    expectEachArrives<OpenSettings>(
        members, plain, [](const OpenSettings& from) { return OpenSettings(from); }, "copied");
    expectEachArrives<OpenSettings>(
        members, plain,
        [&](const OpenSettings& from) {
            OpenSettings to(m_context);
            to = from;
            return to;
        },
        "assigned");
    expectEachArrives<OpenSettings>(
        members, plain,
        [&](const OpenSettings& from) {
            OpenSettings to(m_context);
            to.fromJson(OpenSettings(from).toJson());
            return to;
        },
        "through JSON");
}

// The older pair of functions: what does not fit is told as the most that fits.
TEST_F(Records, NumbersTheOlderFunctionsHaveNoRoomForAreToldAsTheMost) {
    const auto& f = qrb::functions();
    qrb_context* context = nullptr;
    ASSERT_EQ(f.qrb_context_new(&context, "OFF", ""), QRB_SUCCESS);
    qrb_create_settings* create = nullptr;
    qrb_open_settings* open = nullptr;
    ASSERT_EQ(f.qrb_pointcloud_create_settings_new(context, &create), QRB_SUCCESS);
    ASSERT_EQ(f.qrb_pointcloud_open_settings_new(context, &open), QRB_SUCCESS);
    for (const std::uint64_t size :
         {std::uint64_t(7), std::uint64_t(UINT32_MAX), std::uint64_t(UINT32_MAX) + 1,
          std::uint64_t(5) << 32, std::uint64_t(UINT64_MAX)}) {
        const auto expected = static_cast<std::uint32_t>(std::min<std::uint64_t>(size, UINT32_MAX));
        std::uint32_t told[4] = {};
        f.qrb_pointcloud_create_settings_set_cache_size_64(context, create, size);
        f.qrb_pointcloud_open_settings_set_cache_size_64(context, open, size);
        f.qrb_pointcloud_create_settings_get_cache_size(context, create, &told[0]);
        f.qrb_pointcloud_open_settings_get_cache_size(context, open, &told[1]);
        f.qrb_pointcloud_create_settings_get_cache_size_cf(create, &told[2]);
        f.qrb_pointcloud_open_settings_get_cache_size_cf(open, &told[3]);
        for (const std::uint32_t each : told)
            EXPECT_EQ(each, expected) << size;
    }
    qrb_point_attribute* attribute = nullptr;
    ASSERT_EQ(f.qrb_pointcloud_point_attribute_new(context, &attribute), QRB_SUCCESS);
    for (const std::uint32_t length : {255u, 256u, 300u, 4096u}) {
        std::uint8_t told[2] = {};
        f.qrb_pointcloud_point_attribute_set_length_u32(context, attribute, length);
        f.qrb_pointcloud_point_attribute_get_length(context, attribute, &told[0]);
        f.qrb_pointcloud_point_attribute_get_length_cf(attribute, &told[1]);
        EXPECT_EQ(told[0], 255) << length;
        EXPECT_EQ(told[1], 255) << length;
    }
    f.qrb_pointcloud_point_attribute_delete(context, attribute);
    f.qrb_pointcloud_create_settings_delete(context, create);
    f.qrb_pointcloud_open_settings_delete(context, open);
    f.qrb_context_delete(context);
}

TEST_F(Records, OfAttributesArriveMemberByMember) {
    const auto& members = attributeMembers();
    const PointAttribute plain = attribute("plain", 0, 100, 1);
    using Send = std::function<PointAttribute(const PointAttribute&)>;
    const Send throughHandle = [](const PointAttribute& from) {
        return AttributeHandle(from).read();
    };
    const Send overHandle = [&](const PointAttribute& from) {
        PointAttribute other;
        for (const auto& member : members)
            member.change(other);
        AttributeHandle handle(other);
        handle.write(from);
        return handle.read();
    };
    const Send throughJson = [](const PointAttribute& from) {
        PointAttribute to;
        to.fromJson(from.toJson());
        return to;
    };
    const Send asPrimary = [&](const PointAttribute& from) {
        CreateSettings settings(m_context);
        settings.primaryAttribute = from;
        CreateSettings to(m_context);
        to.fromJson(settings.toJson());
        return to.primaryAttribute;
    };
    expectEachArrives(members, plain, throughHandle, "through a handle");
    expectEachArrives(members, plain, overHandle, "over another one's handle");
    expectEachArrives(members, plain, throughJson, "through JSON");
    expectEachArrives(members, plain, asPrimary, "in settings");

    qrb::Pointcloud cloud(m_context);
    CreateSettings settings(m_context);
    settings.primaryAttribute = attribute("p", -10, 10, 1);
    cloud.create(file("a.qrbx"), settings);
    const auto stored = [&](const PointAttribute& from, bool replaced) {
        TransactionGuard transaction(cloud.transactions(), "Stored", "tests");
        auto& attributes = cloud.pointAttributes();
        if (replaced) {
            PointAttribute first = plain;
            first.name = from.name;
            attributes.add(first);
            attributes.put(from);
        } else {
            attributes.add(from);
        }
        return attributes.get(from.name);
    };
    expectEachArrives<PointAttribute>(
        members, plain, [&](const auto& from) { return stored(from, false); }, "added to a file");
    expectEachArrives<PointAttribute>(
        members, plain, [&](const auto& from) { return stored(from, true); }, "put into a file");
}

}  // namespace
