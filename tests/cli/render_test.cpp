// Pictures of databases: against kept ones, and what the command says.

#include "tests/cli/commandtest.h"

#include <png.h>

#include <algorithm>
#include <array>

namespace {

using namespace tarvo::cli::tests;

struct Png {
    unsigned width = 0;
    unsigned height = 0;
    std::vector<std::array<unsigned char, 4>> pixels;
};

Png pngOf(const std::string& bytes) {
    png_image header{};
    header.version = PNG_IMAGE_VERSION;
    if (!png_image_begin_read_from_memory(&header, bytes.data(), bytes.size())) {
        ADD_FAILURE() << "no PNG file";
        return {};
    }
    header.format = PNG_FORMAT_RGBA;
    Png png{header.width, header.height, {}};
    png.pixels.resize(std::size_t(png.width) * png.height);
    png_image_finish_read(&header, nullptr, png.pixels.data(), 0, nullptr);
    return png;
}

class Render : public CommandTest {
protected:
    // Compares with the picture that is kept. Where they differ the new one is left beside the
    // programs: look at both, and take it over if that is what is meant.
    void expectKept(const std::string& name, const std::string& options) {
        const std::string drawn = folder.file(name);
        expectSuccess("-q render " + file + " " + drawn + " --size 320x240 " + options);
        const Png now = pngOf(read(drawn));
        const Png kept = pngOf(read(QRB_GOLDEN "/pictures/" + name));
        if (now.width == kept.width && now.height == kept.height && now.pixels == kept.pixels) {
            return;
        }
        const std::string left = std::filesystem::path(QRBTOOL_FILE).parent_path() / name;
        std::filesystem::copy_file(drawn, left, std::filesystem::copy_options::overwrite_existing);
        ADD_FAILURE() << "another picture than " QRB_GOLDEN "/pictures/" << name << ": " << left;
    }
};

TEST_F(Render, DrawsASampleAsItAlwaysDid) {
    expectSuccess("-q sample -n 30000 " + file);
    expectKept("sample-top.png", "--color height");
    expectKept("sample-corner.png", "--color tarvo.class --from corner --ground dark");
    expectKept("sample-ground.png",
               "--color tarvo.reflectance --filter 'tarvo.class == ground' --from front "
               "--ground none --range -20:0");
}

TEST_F(Render, DrawsRealCloudsAsItAlwaysDid) {
    forEachRealCloud([&](const std::filesystem::path& path) {
        const std::string name = path.stem().string();
        if (name != "autzen_trim" && name != "4_6_crop") {
            return;
        }
        std::filesystem::remove(file);
        expectSuccess("-q import " + path.string() + " " + file);
        expectKept(name + "-top.png", "");
        expectKept(name + "-corner.png", "--color height --from corner");
    });
}

TEST_F(Render, StandsForEveryPointByTheLevelOfDetailWhereThatIsFineEnough) {
    expectSuccess("-q sample -n 200000 " + file);
    expectSuccess("-q lod " + file + " set --mode combine --size 6");
    const auto points = [this](const std::string& options) {
        return json("--json render " + file + " " + folder.file("a.png") + " " + options)["points"]
            .GetUint64();
    };
    EXPECT_LT(points("--size 60x40"), 100'000U);
    EXPECT_EQ(points("--size 60x40 --every-point"), 200'000U);
}

TEST_F(Render, DrawsPointsHoweverFarTheyLie) {
    for (const std::string far : {"1e12", "1e40", "1e99"}) {
        folder.write("far.csv", "x,y,z\n-" + far + ",0,0\n" + far + ",1,1\n0," + far + ",2\n");
        expectSuccess("-q import " + folder.file("far.csv") + " " + file + " --overwrite");
        expectSuccess("-q render " + file + " " + folder.file("a.png") +
                      " --size 40x40 --ground none");
        const Png drawn = pngOf(read(folder.file("a.png")));
        EXPECT_GT(std::count_if(drawn.pixels.begin(), drawn.pixels.end(),
                                [](const auto& pixel) { return pixel[3] != 0; }),
                  2)
            << far;
    }
    folder.write("far.csv", "x,y,z\n-1e300,0,0\n1e300,1,1\n");
    expectSuccess("-q import " + folder.file("far.csv") + " " + file + " --overwrite");
    expectFailure(1, "render " + file + " " + folder.file("b.png"), "1e100");
}

TEST_F(Render, TellsWhatItDrewAndWhatItCannotDraw) {
    expectSuccess("-q sample -n 2000 " + file);
    const std::string picture = folder.file("a.png");
    const rapidjson::Document told =
        json("--json render " + file + " " + picture + " --color height --range 0:2 --size 64x48");
    EXPECT_EQ(told["points"].GetUint64(), 2000U);
    EXPECT_EQ(told["width"].GetUint(), 64U);
    EXPECT_EQ(told["range"][1].GetDouble(), 2);
    EXPECT_EQ(read(picture).substr(0, 8), "\x89PNG\r\n\x1a\n");
    // The same bytes on standard output.
    EXPECT_EQ(runShell(std::string(QRBTOOL_FILE) + " render " + file +
                       " - --color height --range 0:2 --size 64x48 | cmp - " + picture)
                  .code,
              0);
    const std::string before = read(picture);
    const auto refused = [&](int code, const std::string& options, const std::string& text) {
        expectFailure(code, "render " + file + " " + picture + " " + options, text);
        EXPECT_EQ(read(picture), before) << options;
    };
    refused(2, "--size 64", "--size 1600x1200");
    refused(2, "--size 0x10", "at least one pixel");
    refused(2, "--size -3x10", "--size 1600x1200");
    refused(2, "--size 100000x100000", "can't be drawn");
    refused(2, "--range 5:1", "holds no values");
    refused(2, "--range nan:nan", "holds no values");
    refused(2, "--range=-inf:inf", "both are finite");
    refused(2, "--range 1", "--range 120:180");
    refused(2, "--color tarvo.class --range 1:2", "Leave --range out");
    refused(1, "--color tarvo.clas", "Did you mean \"tarvo.class\"?");
    refused(1, "--color 'tarvo.xyz[3]'", "no \"tarvo.xyz[3]\"");
    refused(1, "--filter 'tarvo.clas == 2'", "tarvo.clas");
    refused(2, "--from above", "top");
    expectFailure(2, "render " + file + " \"\"", "Name a file");
    // A reader that has seen enough is no failure.
    const Result early = runShell(std::string(QRBTOOL_FILE) + " render " + file + " - | head -c 5");
    EXPECT_EQ(early.output, "\x89PNG\r");
    expectFailure(1, "render " + file + " " + file, "being read");
    expectFailure(1, "render " + file + " " + folder.file("none/a.png"), "folder");
    // A filter that nothing passes is a picture of nothing.
    EXPECT_EQ(json("--json render " + file + " " + picture + " --filter 'tarvo.id < 0'")["points"]
                  .GetUint64(),
              0U);
}

}  // namespace
