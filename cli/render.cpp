// qrbtool render: a picture of the points.

#include "cli/answer.h"
#include "cli/commands.h"
#include "cli/database.h"
#include "cli/errors.h"
#include "cli/number.h"
#include "cli/options.h"
#include "cli/output.h"
#include "cli/terminal.h"
#include "cli/texttable.h"
#include "numbers/numbertext.h"
#include "view/picture.h"

#include <CLI/CLI.hpp>

#include <charconv>
#include <cmath>
#include <map>
#include <memory>
#include <utility>

namespace tarvo::cli {

namespace {

const std::map<std::string, drawing::Side> sides{
    {"top", drawing::Side::Top},      {"bottom", drawing::Side::Bottom},
    {"front", drawing::Side::Front},  {"back", drawing::Side::Back},
    {"left", drawing::Side::Left},    {"right", drawing::Side::Right},
    {"corner", drawing::Side::Corner}};

const std::map<std::string, drawing::Colour> grounds{
    {"light", {255, 255, 255, 255}}, {"dark", {24, 26, 30, 255}}, {"none", {0, 0, 0, 0}}};

struct RenderOptions {
    std::string output;
    std::string filter;
    std::string colour;
    std::string from = "top";
    std::string size = "1600x1200";
    std::string range;
    std::string ground = "light";
    bool everyPoint = false;
};

// Two numbers with a mark between them.
template <typename Number>
std::pair<Number, Number> twoNumbers(const std::string& text, char mark, const char* option,
                                     const char* example) {
    std::pair<Number, Number> numbers{};
    const std::size_t place = text.find(mark);
    const auto read = [](std::string_view word, Number& number) {
        const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), number);
        return error == std::errc() && end == word.data() + word.size();
    };
    const std::string_view view = text;
    if (place == std::string::npos || !read(view.substr(0, place), numbers.first) ||
        !read(view.substr(place + 1), numbers.second)) {
        throw UsageError("The value \"" + text + "\" of " + option + " is not understood.",
                         std::string("Write two numbers, as in ") + option + " " + example + ".");
    }
    return numbers;
}

view::PictureSettings settingsOf(const Database& database, const RenderOptions& options) {
    view::PictureSettings settings;
    settings.from = sides.at(options.from);
    std::tie(settings.width, settings.height) =
        twoNumbers<unsigned>(options.size, 'x', "--size", "1600x1200");
    if (settings.width < 1 || settings.height < 1 ||
        std::uint64_t(settings.width) * settings.height > view::mostPixels) {
        throw UsageError("A picture of " + options.size + " pixels can't be drawn.",
                         "Each side has at least one pixel, and all of it at most " +
                             std::to_string(view::mostPixels) + ".");
    }
    settings.filter = options.filter;
    settings.everyPoint = options.everyPoint;
    settings.colour = options.colour.empty() ? view::colourChoices(database.cloud()).front()
                                             : view::readColour(database.cloud(), options.colour);
    if (!options.range.empty()) {
        const auto [low, high] = twoNumbers<double>(options.range, ':', "--range", "120:180");
        if (!(low < high) || !std::isfinite(high - low)) {
            throw UsageError("The range " + options.range + " holds no values.",
                             "The first number is the smaller one, and both are finite.");
        }
        if (settings.colour->by == view::ColourBy::TrueColour ||
            settings.colour->by == view::ColourBy::Class ||
            settings.colour->by == view::ColourBy::Transaction) {
            throw UsageError("The colours of \"" +
                                 view::colourText(database.cloud(), *settings.colour) +
                                 "\" stand for no range of numbers.",
                             "Leave --range out.");
        }
        settings.colour->range = drawing::Range{low, high};
    }
    return settings;
}

void runRender(const Database& database, const RenderOptions& options) {
    if (isStandardOutput(options.output) && manner().json) {
        throw UsageError("With --json the answer tells about the picture, which needs a file.",
                         "Name a file to write.");
    }
    Output output(database, options.output);
    const view::PictureSettings settings = settingsOf(database, options);
    ProgressLine line("Drawing");
    const view::Picture picture = view::drawPicture(
        database.cloud(), settings, [&line](double fraction) { line.update(fraction); });
    const std::vector<std::uint8_t> png =
        drawing::pngOf(view::onGround(picture.image, grounds.at(options.ground)));
    try {
        output.write({reinterpret_cast<const char*>(png.data()), png.size()});
        output.finish();
    } catch (const OutputClosed&) {
        // The reader has seen what it wanted.
    }
    if (isStandardOutput(options.output)) {
        return;
    }
    const std::string colour = view::colourText(database.cloud(), picture.colouring.choice());
    const drawing::Range& range = picture.colouring.range();
    std::string sentence = counted(picture.points, "point") + " drawn to \"" + options.output +
                           "\", coloured by " + colour;
    if (picture.colouring.isRamp()) {
        sentence += " from " + numbers::roundedText(range.low, 12) + " to " +
                    numbers::roundedText(range.high, 12);
    }
    answer(sentence + "; a pixel is " + numbers::roundedText(picture.unitsPerPixel, 4) + " wide.",
           [&](JsonText& json) {
               json.member("file", options.output);
               json.member("width", settings.width);
               json.member("height", settings.height);
               json.member("points", picture.points);
               json.member("color", colour);
               if (picture.colouring.isRamp()) {
                   json.key("range");
                   json.beginArray();
                   json.value(range.low);
                   json.value(range.high);
                   json.endArray();
               }
               json.member("pixel", picture.unitsPerPixel);
           });
}

template <typename Value>
std::vector<std::string> namesOf(const std::map<std::string, Value>& values) {
    std::vector<std::string> names;
    for (const auto& [name, value] : values) {
        names.push_back(name);
    }
    return names;
}

}  // namespace

void addRenderCommand(CLI::App& app, Invocation& invocation) {
    const auto options = std::make_shared<RenderOptions>();
    CLI::App* const command = app.add_subcommand("render", "Draw a picture of the points");
    addDatabaseFile(*command, invocation);
    command->add_option("output", options->output, "PNG file to write; - for standard output")
        ->type_name("FILE")
        ->required()
        ->check(notEmpty("Name a file, or write - for the standard output."));
    addFilter(*command, options->filter);
    command
        ->add_option("--color", options->colour,
                     "What colours the points: rgb, height, level, transaction, or an attribute "
                     "(default: rgb where they differ in colours, else height, else level)")
        ->type_name("WHAT");
    command->add_option("--range", options->range, "Values at the ends of the colours")
        ->type_name("LOW:HIGH");
    command->add_option("--from", options->from, "Side that is looked from (default: top)")
        ->check(CLI::IsMember(namesOf(sides)));
    command->add_option("--size", options->size, "Pixels of the picture (default: 1600x1200)")
        ->type_name("WIDTHxHEIGHT");
    command->add_option("--ground", options->ground, "What is behind the points (default: light)")
        ->check(CLI::IsMember(namesOf(grounds)));
    command->add_flag("--every-point", options->everyPoint,
                      "Read every point, also where the level of detail is as fine as the pixels");
    command->footer(
        "The whole extent of the points is seen in parallel, north up from the top, and what is\n"
        "nearest to the eye hides the rest. Where the database has a level of detail, nodes whose\n"
        "points lie as dense as the pixels stand for what is below them. Values of attributes\n"
        "that have names are told apart by a palette, other numbers by a ramp from dark blue to\n"
        "yellow between the smallest and the largest value of all points, or those of --range.\n"
        "\n"
        "Examples:\n"
        "  qrbtool render scan.qrbx scan.png\n"
        "  qrbtool render scan.qrbx ground.png --filter \"tarvo.class == 2\" --color height\n"
        "  qrbtool render scan.qrbx side.png --from front --size 3200x800 --range 120:180");
    command->callback([options, &invocation] {
        invocation.work = [options](Database& database) { runRender(database, *options); };
    });
}

}  // namespace tarvo::cli
