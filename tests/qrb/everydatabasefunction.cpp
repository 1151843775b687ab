// The functions on what a database holds beside its points: definitions, metadata and history.
#include "tests/qrb/everyfunction.h"

#include <fstream>
#include <string>
#include <vector>

void EveryFunction::walkDefinitions(qrb_pointcloud* p) {
    qrb_point_attribute* attribute = nullptr;
    ok(t.qrb_pointcloud_point_attribute_new(c, &attribute));
    ok(t.qrb_pointcloud_point_attributes_get_default(c, p, "tarvo.class", attribute));
    no(t.qrb_pointcloud_point_attributes_add(c, p, attribute), QRB_ERROR_STATE);
    begin(p);
    ok(t.qrb_pointcloud_point_attributes_add(c, p, attribute));
    no(t.qrb_pointcloud_point_attributes_add(c, p, attribute), QRB_ERROR_EXISTS);
    ok(t.qrb_pointcloud_point_attributes_add_default(c, p, "tarvo.reflectance"));
    ok(t.qrb_pointcloud_point_attributes_add_default(c, p, "tarvo.selected"));
    no(t.qrb_pointcloud_point_attributes_add_default(c, p, "tarvo.nonsense"), QRB_ERROR_NOT_FOUND);
    ok(t.qrb_pointcloud_point_attribute_set_title(c, attribute, "Another title"));
    ok(t.qrb_pointcloud_point_attributes_put(c, p, attribute));
    ok(t.qrb_pointcloud_point_attributes_get(c, p, "tarvo.class", attribute));
    const char* text = nullptr;
    ok(t.qrb_pointcloud_point_attribute_get_title(c, attribute, &text));
    EXPECT_STREQ(text, "Another title");
    ok(t.qrb_pointcloud_point_attributes_duplicate(c, p, "tarvo.class", "own.class"));
    ok(t.qrb_pointcloud_point_attributes_discard(c, p, "own.class"));
    ok(t.qrb_pointcloud_point_attributes_remove(c, p, "own.class"));
    no(t.qrb_pointcloud_point_attributes_remove(c, p, "own.class"), QRB_ERROR_NOT_FOUND);
    ok(t.qrb_pointcloud_transaction_commit(c, p));

    std::uint32_t count = 0;
    std::uint32_t rank = 0;
    std::uint32_t type = 0;
    std::uint8_t exists = 0;
    ok(t.qrb_pointcloud_point_attributes_list(c, p, &count, &text));
    EXPECT_EQ(count, 5u);
    ok(t.qrb_pointcloud_point_attributes_list_default(c, p, &count, &text));
    EXPECT_EQ(count, 247u);
    ok(t.qrb_pointcloud_point_attributes_list_filtered(c, p, "tarvo.*s*", &count, &text));
    EXPECT_EQ(count, 2u);
    ok(t.qrb_pointcloud_point_attributes_exists(c, p, "tarvo.class", &exists));
    EXPECT_EQ(exists, 1);
    ok(t.qrb_pointcloud_point_attributes_group(c, p, "tarvo.xyz", &text, &rank));
    EXPECT_STREQ(text, "Coordinates/Vectors");
    ok(t.qrb_pointcloud_point_attributes_group_default(c, p, "tarvo.xyz", &text, &rank));
    EXPECT_EQ(rank, 0u);
    ok(t.qrb_pointcloud_point_attributes_point_id_name(c, p, &text));
    EXPECT_STREQ(text, "tarvo.id");
    ok(t.qrb_pointcloud_point_attributes_point_id_type(c, p, &type));
    ok(t.qrb_pointcloud_point_attributes_point_id_unit(c, p, &text));
    ok(t.qrb_pointcloud_point_attributes_primary_attribute_name(c, p, &text));
    EXPECT_STREQ(text, "tarvo.xyz");
    ok(t.qrb_pointcloud_point_attributes_get_merged(c, p, &p, 1, "tarvo.class", attribute));
    ok(t.qrb_pointcloud_point_attributes_get_merged_all(c, p, &p, 1, &count, &text));
    EXPECT_EQ(count, 5u);
    ok(t.qrb_pointcloud_point_attribute_delete(c, attribute));
}

void EveryFunction::walkMetaData(qrb_pointcloud* p) {
    const std::uint8_t key[] = {1, 2, 3};
    std::uint8_t is = 0;
    const char* text = nullptr;
    std::uint32_t count = 0;
    ok(t.qrb_factory_set_authentication_function(
        c,
        [](const std::uint8_t* challenge, std::uint32_t size, std::uint8_t* answer, std::uint32_t,
           void*) -> std::uint8_t {
            for (std::uint32_t i = 0; i < size; ++i)
                answer[i] = static_cast<std::uint8_t>(challenge[i] + 1);
            return 1;
        },
        nullptr));
    begin(p);
    ok(t.qrb_pointcloud_meta_data_set(c, p, "own.item", "{\"a\": 5}"));
    no(t.qrb_pointcloud_meta_data_set(c, p, "", "{}"), QRB_ERROR_ARGUMENT);
    ok(t.qrb_pointcloud_meta_data_list(c, p, &count, &text));
    EXPECT_EQ(count, 1u);
    ok(t.qrb_pointcloud_meta_data_exists(c, p, "own.item", &is));
    EXPECT_EQ(is, 1);
    ok(t.qrb_pointcloud_meta_data_get(c, p, "absent", &text, "default"));
    EXPECT_STREQ(text, "default");
    const char* schema = "{\"properties\": {\"a\": {\"type\": \"integer\"}}}";
    ok(t.qrb_pointcloud_meta_data_validate(c, p, "own.item", schema));
    ok(t.qrb_pointcloud_meta_data_validate_json(c, p, "{\"a\": 1}", schema));
    no(t.qrb_pointcloud_meta_data_validate_json(c, p, "{\"a\": \"b\"}", schema),
       QRB_ERROR_VALIDATION);
    for (const std::uint32_t method : {1, 2}) {
        ok(t.qrb_pointcloud_meta_data_create_signature(c, p, "own.item", method, 3, key));
        ok(t.qrb_pointcloud_meta_data_verify_signature(c, p, "own.item", method, 3, key, &is));
        EXPECT_EQ(is, 1);
        ok(t.qrb_pointcloud_meta_data_verify_signature(c, p, "own.item", 3 - method, 3, key, &is));
        EXPECT_EQ(is, 0);
    }
    ok(t.qrb_pointcloud_meta_data_remove(c, p, "own.item"));
    no(t.qrb_pointcloud_meta_data_remove(c, p, "own.item"), QRB_ERROR_NOT_FOUND);

    ok(t.qrb_pointcloud_changelog_append_log_message(c, p, "a message"));
    no(t.qrb_pointcloud_changelog_import_from_database(c, p, file("absent").c_str()),
       QRB_ERROR_NOT_FOUND);
    ok(t.qrb_pointcloud_transaction_commit_with_signature(c, p, nullptr, nullptr, 1, 3, key));
    const std::string log = file("log.txt");
    ok(t.qrb_pointcloud_changelog_export_to_textfile(c, p, log.c_str()));
    no(t.qrb_pointcloud_changelog_export_to_textfile(c, p, (file("no") + "/log").c_str()),
       QRB_ERROR_FILE);
    std::ifstream stream(log);
    std::string entry;
    for (std::string line; std::getline(stream, line);)
        entry = line.rfind("[#", 0) == 0 ? line + "\n" : entry + line + "\n";
    EXPECT_NE(entry.find("Message: a message\n"), std::string::npos) << entry;
    EXPECT_EQ(t.qrb_pointcloud_changelog_verify_log_entry_cf(entry.c_str(), 1, 3, key, &is),
              nullptr);
    EXPECT_EQ(is, 1);
    EXPECT_EQ(t.qrb_pointcloud_changelog_verify_log_entry_cf(entry.c_str(), 1, 2, key, &is),
              nullptr);
    EXPECT_EQ(is, 0);
}

void EveryFunction::walkHistory(qrb_pointcloud* p) {
    std::uint32_t number = 0;
    std::uint8_t is = 0;
    begin(p);
    ok(t.qrb_pointcloud_transaction_pending(c, p, &is));
    EXPECT_EQ(is, 1);
    no(t.qrb_pointcloud_management_set_lod_mode(c, p, 7), QRB_ERROR_ARGUMENT);
    ok(t.qrb_pointcloud_management_set_lod_mode(c, p, 2));
    ok(t.qrb_pointcloud_management_set_chunk_size_lod(c, p, 3));
    ok(t.qrb_pointcloud_transaction_commit(c, p));
    ok(t.qrb_pointcloud_management_get_lod_mode(c, p, &number));
    EXPECT_EQ(number, 2u);
    ok(t.qrb_pointcloud_management_get_chunk_size_lod(c, p, &number));
    EXPECT_EQ(number, 3u);
    const char* schema =
        R"({"identifier":"own","extension":"own","attributes":["tarvo.xyz*"],"metadata":[]})";
    ok(t.qrb_pointcloud_management_validate(c, p, schema, 0));
    no(t.qrb_pointcloud_management_validate(c, p, schema, 1), QRB_ERROR_VALIDATION);

    std::uint32_t count = 0;
    ok(t.qrb_pointcloud_transaction_list(c, p, &count, nullptr));
    std::vector<std::uint32_t> ids(count);
    ok(t.qrb_pointcloud_transaction_list(c, p, &count, ids.data()));
    qrb_transaction* record = nullptr;
    ok(t.qrb_pointcloud_transaction_new(c, &record));
    ok(t.qrb_pointcloud_transaction_details(c, p, ids[1], record));
    ok(t.qrb_pointcloud_transaction_get_id(c, record, &number));
    EXPECT_EQ(number, ids[1]);
    const char* text = nullptr;
    for (const auto getter :
         {t.qrb_pointcloud_transaction_get_qrb, t.qrb_pointcloud_transaction_get_title,
          t.qrb_pointcloud_transaction_get_agent, t.qrb_pointcloud_transaction_get_comments,
          t.qrb_pointcloud_transaction_get_settings, t.qrb_pointcloud_transaction_get_start,
          t.qrb_pointcloud_transaction_get_stop}) {
        ok(getter(c, record, &text));
        EXPECT_STRNE(text, "");
    }
    ok(t.qrb_pointcloud_transaction_delete(c, record));
    std::uint64_t bytes = 0;
    ok(t.qrb_pointcloud_transaction_size(c, p, 1, &ids[1], &bytes));
    EXPECT_GT(bytes, 0u);
    ok(t.qrb_pointcloud_transaction_restore(c, p, ids[2]));
    no(t.qrb_pointcloud_transaction_restore(c, p, 777), QRB_ERROR_NOT_FOUND);
    no(t.qrb_pointcloud_transaction_discard(c, p, 1, &ids[0]), QRB_ERROR_ARGUMENT);
    ok(t.qrb_pointcloud_transaction_discard(c, p, 1, &ids[1]));
    ok(t.qrb_pointcloud_management_finalize(c, p));
    ok(t.qrb_pointcloud_management_vacuum(c, p, nullptr, nullptr));
    no(t.qrb_pointcloud_management_vacuum(
           c, p, [](std::uint8_t, void*) -> std::uint8_t { return 0; }, nullptr),
       QRB_ERROR_CANCELLED);
    ok(t.qrb_pointcloud_transaction_list(c, p, &count, nullptr));
    EXPECT_EQ(count, 2u);
}
