// docs/pictures: every picture shows the job document beside it, and the guide's example makes the document.

#include <tests/docs/Guide.h>

#include <Conf/Interfaces/ITranscodingMetaGraph.h>
#include <foundation/DataStream.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <sstream>

namespace Quenzo::Docs {
namespace {

using Conf::ITranscodingMetaGraph;

// The names of the files with an extension, without it.
std::set<std::string> Pictures(const std::string& extension) {
    std::set<std::string> names;
    for (const auto& file : std::filesystem::directory_iterator(InRepository("docs/pictures"))) {
        if (file.path().extension() == extension) {
            names.insert(file.path().stem().string());
        }
    }
    return names;
}

SP<ITranscodingMetaGraph> LoadJob(const std::string& name) {
    auto job = ITranscodingMetaGraph::Create();
    job->Load(Core::FileInput::Create(InRepository("docs/pictures/" + name + ".json")));
    return job;
}

std::size_t Occurrences(const std::string& text, const std::string& part) {
    std::size_t count = 0;
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) {
        ++count;
    }
    return count;
}

// As Graphviz writes a text into an SVG picture.
std::string InSvg(const std::string& text) {
    std::string svg;
    for (const char c : text) {
        switch (c) {
            case '&': svg += "&amp;"; break;
            case '<': svg += "&lt;"; break;
            case '>': svg += "&gt;"; break;
            case '-': svg += "&#45;"; break;
            default: svg += c;
        }
    }
    return svg;
}

// The lines of the dump of a tree, without their indentation.
std::vector<std::string> LinesOf(const Core::Property& tree) {
    std::ostringstream dump;
    Core::PrintCorePropertyValue(tree, 0, dump, true, true);
    std::istringstream text(dump.str());
    std::vector<std::string> lines;
    for (std::string line; std::getline(text, line);) {
        lines.push_back(line.substr(line.find_first_not_of(' ')));
    }
    return lines;
}

TEST(Pictures, EveryPicture_HasItsDocument) {
    EXPECT_EQ(Pictures(".svg"), Pictures(".json"));
    EXPECT_GE(Pictures(".svg").size(), 2u);
}

void ExpectShown(const std::string& svg, const Core::Property& tree) {
    for (const std::string& line : LinesOf(tree)) {
        EXPECT_NE(svg.find(InSvg(line) + "</text>"), std::string::npos) << "not in the picture: " << line;
    }
}

TEST(Pictures, EveryPicture_ShowsTheNodesAndLinksOfItsDocument) {
    for (const std::string& name : Pictures(".json")) {
        SCOPED_TRACE(name);
        const auto job = LoadJob(name);
        const std::string svg = ReadFile(InRepository("docs/pictures/" + name + ".svg"));
        std::size_t nodes = 0;
        std::size_t links = 0;
        job->VisitNodes([&](auto /*node*/, const Core::Property& tree) {
            ++nodes;
            ExpectShown(svg, tree);
        });
        job->VisitLinks([&](auto /*link*/, auto /*from*/, auto /*to*/, const Core::Property& tree) {
            ++links;
            // A link that says nothing has no label.
            if (!(tree == Core::Property("data"))) {
                ExpectShown(svg, tree);
            }
        });
        EXPECT_EQ(Occurrences(svg, "class=\"node\""), nodes);
        EXPECT_EQ(Occurrences(svg, "class=\"edge\""), links);
    }
}

TEST(Pictures, TheGuidesExampleMakesTheDocument) {
    const GuideFolder folder;
    ASSERT_EQ(RunBuilt({QUENZO_TEST_GUIDE "/build-check-draw-a-job"}).status, 0);
    EXPECT_EQ(folder.Files().Read("job.json"), ReadFile(InRepository("docs/pictures/job.json")));
    EXPECT_EQ(folder.Files().Read("merge.json"), ReadFile(InRepository("docs/pictures/merge.json")));
}

}  // namespace
}  // namespace Quenzo::Docs
