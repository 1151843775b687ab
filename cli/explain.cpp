// qrbtool explain: what a filter means and costs, before it is run.

#include "cli/attributetext.h"
#include "cli/commands.h"
#include "cli/database.h"
#include "cli/filtercondition.h"
#include "cli/filterreach.h"
#include "cli/json.h"
#include "cli/manner.h"
#include "cli/number.h"
#include "cli/output.h"
#include "cli/terminal.h"
#include "cli/text.h"
#include "cli/texttable.h"
#include "core/filtertext.h"

#include <CLI/CLI.hpp>

#include <memory>
#include <optional>

namespace tarvo::cli {

namespace {

using qrb::pointcloud::PointAttribute;

// The index is walked for each; of more conditions nobody reads a line.
constexpr std::size_t mostWalks = 50;

struct ExplainedCondition {
    FilterCondition condition;
    std::optional<FilterReach> reach;  // none: one of too many
};

struct Explanation {
    std::string typed;
    std::string understood;
    std::vector<PointAttribute> attributes;
    std::vector<ExplainedCondition> conditions;
    LeafCount all;
    FilterReach reach;
};

Explanation explain(const Database& database, const std::string& filter) {
    const qrb::Pointcloud& cloud = database.cloud();
    // What is wrong is told of what was typed.
    (void)cloud.select(filter);
    Explanation result;
    result.typed = filter;
    const std::string numbers = database.recordedFilter(filter);
    result.understood = tidyFilter(numbers);
    for (const std::string& name : attributesIn(result.understood, cloud.pointAttributes())) {
        result.attributes.push_back(cloud.pointAttributes().get(name));
    }
    const IndexReach index(cloud);
    result.all = index.all();
    // Tidy ones may be longer than libraries take.
    result.reach = index.of(numbers);
    for (FilterCondition& condition : conditionsOf(numbers, cloud.pointAttributes())) {
        checkInterrupted();
        ExplainedCondition explained{std::move(condition), {}};
        if (result.conditions.size() < mostWalks) {
            explained.reach = index.of(explained.condition.written);
        }
        result.conditions.push_back(std::move(explained));
    }
    return result;
}

const char* passWord(const FilterReach& reach) {
    const bool canPass = reach.whole.points + reach.lookedAt.points > 0;
    const bool canFail = reach.skipped.points + reach.lookedAt.points > 0;
    return !canPass ? "none" : canFail ? "some" : "all";
}

std::string explanationText(const Explanation& explanation) {
    std::string text = labelled("Filter", explanation.typed) +
                       labelled("Understood", explanation.understood) + "\n";
    if (!explanation.attributes.empty()) {
        text += attributeTable(explanation.attributes) + "\n";
    }
    TextTable conditions({{"Condition"},
                          {"Pass"},
                          {"Skipped", true},
                          {"Whole", true},
                          {"Looked at", true},
                          {"Note"}});
    for (const ExplainedCondition& one : explanation.conditions) {
        std::string notes;
        for (const std::string& note : one.condition.notes) {
            notes += (notes.empty() ? "" : " ") + note;
        }
        if (!one.reach) {
            conditions.add({one.condition.expression, "", "", "", "", notes});
            continue;
        }
        conditions.add({one.condition.expression, passWord(*one.reach),
                        std::to_string(one.reach->skipped.leaves),
                        std::to_string(one.reach->whole.leaves),
                        std::to_string(one.reach->lookedAt.leaves), notes});
    }
    TextTable sums({{"All together"}, {"Leaves", true}, {"Points", true}});
    const auto add = [&sums](const char* name, const LeafCount& count) {
        sums.add({name, std::to_string(count.leaves), std::to_string(count.points)});
    };
    add("skipped", explanation.reach.skipped);
    add("whole", explanation.reach.whole);
    add("looked at", explanation.reach.lookedAt);
    add("in the database", explanation.all);
    return text + conditions.text() + "\n" + sums.text();
}

void putCount(JsonText& json, const char* name, const LeafCount& count) {
    json.key(name);
    json.beginObject();
    json.member("leaves", count.leaves);
    json.member("points", count.points);
    json.endObject();
}

void putReach(JsonText& json, const FilterReach& reach) {
    json.member("pass", passWord(reach));
    putCount(json, "skipped", reach.skipped);
    putCount(json, "whole", reach.whole);
    putCount(json, "looked_at", reach.lookedAt);
}

std::string explanationJson(const Explanation& explanation) {
    JsonText json;
    json.beginObject();
    json.member("filter", explanation.typed);
    json.member("understood", explanation.understood);
    json.key("attributes");
    json.beginArray();
    for (const PointAttribute& one : explanation.attributes) {
        json.beginObject();
        json.member("name", one.name);
        json.member("type", dataTypeName(one.dataType()));
        json.member("length", one.length);
        json.member("minimum", one.minimumValue);
        json.member("maximum", one.maximumValue);
        json.member("resolution", one.resolution);
        json.member("invalid", one.invalidValue);
        json.member("unit", one.unitSymbol);
        json.endObject();
    }
    json.endArray();
    json.key("conditions");
    json.beginArray();
    for (const ExplainedCondition& one : explanation.conditions) {
        json.beginObject();
        json.member("expression", one.condition.expression);
        json.member("notes", one.condition.notes);
        if (one.reach) {
            putReach(json, *one.reach);
        }
        json.endObject();
    }
    json.endArray();
    putReach(json, explanation.reach);
    putCount(json, "database", explanation.all);
    json.endObject();
    return json.text();
}

// "find fullest leaf" and the like.
void explainSearch(const Database& database, const std::string& filter) {
    qrb::pointcloud::IndexNode found;
    database.cloud().stat().index(found, filter);
    while (!found.children.empty()) {
        const qrb::pointcloud::IndexNode child = found.children.front();
        found = child;
    }
    const auto points = static_cast<std::uint64_t>(found.pointCountTotal);
    if (!manner().json) {
        print(labelled("Filter", filter) +
              labelled("Understood", "the points of one node, which the library finds") +
              labelled("Node", std::to_string(found.id)) +
              labelled("Points", std::to_string(points)));
        return;
    }
    JsonText json;
    json.beginObject();
    json.member("filter", filter);
    json.member("node", found.id);
    json.member("points", points);
    json.endObject();
    print(json.text());
}

void runExplain(const Database& database, const std::string& filter) {
    if (core::isNodeSearch(filter)) {
        explainSearch(database, filter);
        return;
    }
    const Explanation explanation = explain(database, filter);
    print(manner().json ? explanationJson(explanation) : explanationText(explanation));
}

}  // namespace

void addExplainCommand(CLI::App& app, Invocation& invocation) {
    const auto filter = std::make_shared<std::string>();
    CLI::App* const command =
        app.add_subcommand("explain", "Tell what a filter means and costs, before it is run");
    addDatabaseFile(*command, invocation);
    const char* const advice = "Write what points are to satisfy.";
    CLI::Option* const positional = command->add_option("filter", *filter, "The expression")
                                        ->type_name("EXPRESSION")
                                        ->check(notEmpty(advice));
    CLI::Option* const named =
        command->add_option("-f,--filter", *filter, "The expression, as other commands take it")
            ->type_name("EXPRESSION")
            ->check(notEmpty(advice))
            ->excludes(positional);
    command->footer(
        "No point is read: what is told is what the nodes of the index know. Leaves none of whose\n"
        "points pass are skipped, those all of whose points pass are taken whole, and the others\n"
        "looked at. Of each condition: whether none, some or all of the points in the database\n"
        "may pass it, and the leaves by themselves. An index of one leaf tells nothing.\n"
        "\n"
        "Examples:\n"
        "  qrbtool explain scan.qrbx \"tarvo.class == ground && tarvo.xyz[2] < 1\"\n"
        "  qrbtool --json explain scan.qrbx \"tarvo.xyz[0] > 100\"");
    command->callback([filter, positional, named, &invocation] {
        if (positional->count() + named->count() == 0) {
            throw CLI::RequiredError("filter");
        }
        invocation.work = [filter](Database& database) { runExplain(database, *filter); };
    });
}

}  // namespace tarvo::cli
