#include "cli/metadatasignature.h"

#include "cli/actions.h"
#include "cli/answer.h"
#include "cli/commands.h"
#include "cli/database.h"
#include "cli/errors.h"
#include "cli/key.h"
#include "core/utf8.h"

#include <CLI/CLI.hpp>

#include <memory>

namespace tarvo::cli {

namespace {

struct SignatureOptions {
    std::string name;
    KeyOptions key;
    bool overwrite = false;
};

void signItem(Database& database, const SignatureOptions& options) {
    auto& metaData = database.cloud().metaData();
    const std::vector<std::uint8_t> key = options.key.bytes();
    database.change({"Sign metadata item " + core::validUtf8(options.name)}, [&] {
        if (!options.overwrite && metaData.verifySignature(options.name, 0, {})) {
            throw Failure("The item is already signed.",
                          "Give --overwrite to replace its signature.");
        }
        metaData.createSignature(options.name, KeyOptions::method, key);
    });
    answer("Signature successfully created.", [](JsonText& json) { json.member("signed", true); });
}

void unsignItem(Database& database, const std::string& name) {
    auto& metaData = database.cloud().metaData();
    database.change({"Remove the signature of metadata item " + core::validUtf8(name)}, [&] {
        if (!metaData.verifySignature(name, 0, {})) {
            throw Failure("The item is not signed.");
        }
        metaData.createSignature(name, 0, {});
    });
    answer("Signature successfully deleted.", [](JsonText& json) { json.member("signed", false); });
}

void verifyItem(const Database& database, const SignatureOptions& options) {
    const bool valid = database.cloud().metaData().verifySignature(options.name, KeyOptions::method,
                                                                   options.key.bytes());
    answer(
        valid ? "Signature successfully verified." : "No valid signature found or wrong key given.",
        [&](JsonText& json) { json.member("valid", valid); });
    if (!valid) {
        throw NegativeAnswer();
    }
}

}  // namespace

void addMetaDataSignatureCommands(CLI::App& command, Invocation& invocation) {
    const Actions<SignatureOptions> actions(command, invocation);
    const auto addSubcommand = [&](const char* name, const char* description, auto work) {
        CLI::App* const action = actions.add(name, description, work);
        action->add_option("name", actions->name, "Name of the item")
            ->type_name("ITEM")
            ->required();
        return action;
    };
    CLI::App* const sign = addSubcommand("sign", "Sign an item", signItem);
    actions->key.add(*sign, true);
    sign->add_flag("--overwrite", actions->overwrite, "Replace an existing signature");
    addSubcommand("unsign", "Remove the signature of an item",
                  [](Database& database, const SignatureOptions& given) {
                      unsignItem(database, given.name);
                  });
    actions->key.add(
        *addSubcommand("verify", "Tell whether an item's signature is valid", verifyItem), true);
}

}  // namespace tarvo::cli
