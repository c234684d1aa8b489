// Covers documents that were damaged or made to do harm: whatever they are, loading either succeeds or raises one of
// its failures, and the graph can be used afterwards. Nothing is timed; it is enough that all of this ends.

#include <tests/Conf/GraphSupport.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <limits>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace Quenzo::Conf::Testing {
namespace {

using namespace std::string_literals;
using Core::Property;

const std::string& RealisticDocument() {
    static const std::string document =
        R"({"vertices":[)"
        R"({"id":1,"data":{"source":{"$$TYPE_ID$$":"sourceFile","filePath":"/media/\u00fcber \"1\".mov"}}},)"
        R"({"id":2,"data":{"streamRaw":{"id":0,"rate":[30000,1001],"list":[{"a":1},{"a":null}]}}},)"
        R"({"id":4,"data":{"decoder":{}}},{"id":10,"data":{"web":{"container":"mp4","fast":true,"q":-5}}}],)"
        R"("edges":[{"id":1,"from":1,"to":2},{"id":2,"from":2,"to":4,"data":{"$$CONTROLLED_BY$$":)"
        R"({"$$CONTROLLED_BY$$":3}}},{"id":7,"from":4,"to":10}]})";
    return document;
}

std::string Repeat(std::string_view text, std::size_t count) {
    std::string result;
    result.reserve(text.size() * count);
    for (std::size_t i = 0; i < count; ++i) {
        result += text;
    }
    return result;
}

// Loads the text and says how that ended. Any failure but those of a graph or a tree ends the test.
std::string OutcomeOfLoading(const Graph& graph, std::string text) {
    try {
        LoadText(graph, std::move(text));
    } catch (const ProfileException& failure) {
        return failure.what();
    } catch (const Core::PropertyException&) {
        return "PropertyException";
    }
    return "loaded";
}

// A whole number in the document may have become so large that there is no next one; the graph is as sound then.
void ExpectSound(const Graph& graph) {
    if (graph->GetNodesCount() < 1000000) {
        ExpectUsable(graph);
    }
    graph->TopologyIsValid();
    EXPECT_NE(Drawn(graph), "");
}

TEST(GraphHostileDocumentTest, Load_OfTheWholeDocumentSucceeds) {
    const Graph graph = Loaded(RealisticDocument());
    EXPECT_EQ(NodesOf(graph).size(), 4U);
    EXPECT_EQ(EndsOf(graph), (std::vector<Pair>{{1, 2}, {2, 4}, {4, 10}}));
    EXPECT_EQ((*graph)[1]["filePath"].GetString(),
              "/media/\xC3\xBC"
              "ber \"1\".mov");
}

TEST(GraphHostileDocumentTest, Load_OfEveryTruncatedDocumentThrowsBadJson) {
    for (std::size_t length = 0; length < RealisticDocument().size(); ++length) {
        ExpectBadJson(RealisticDocument().substr(0, length), kRootMessage);
    }
}

TEST(GraphHostileDocumentTest, Load_OfADocumentWithOneByteReplacedIsAnsweredAndTheGraphStaysUsable) {
    const std::string bytes("\0 \"{}[],:09-.e\\nt\x80\xFF"s);
    std::size_t loaded = 0;
    for (std::size_t position = 0; position < RealisticDocument().size(); ++position) {
        for (const char byte : bytes) {
            std::string text = RealisticDocument();
            text[position] = byte;
            const Graph graph = ITranscodingMetaGraph::Create();
            loaded += OutcomeOfLoading(graph, std::move(text)) == "loaded" ? 1 : 0;
            ExpectSound(graph);
        }
    }
    // Bytes inside of texts, at least, can be replaced by others.
    EXPECT_GT(loaded, 1000U);
}

TEST(GraphHostileDocumentTest, Load_OfADocumentWithOneByteLessOrMoreIsAnsweredAndTheGraphStaysUsable) {
    for (std::size_t position = 0; position < RealisticDocument().size(); ++position) {
        std::string less = RealisticDocument();
        less.erase(position, 1);
        std::string more = RealisticDocument();
        more.insert(position, 1, more[position]);
        for (const std::string& text : {less, more}) {
            const Graph graph = ITranscodingMetaGraph::Create();
            OutcomeOfLoading(graph, text);
            ExpectSound(graph);
        }
    }
}

TEST(GraphHostileDocumentTest, Load_OfFiveMillionLevelsThrowsBadJson) {
    constexpr std::size_t levels = 5000000;
    const std::string arrays = Repeat("[", levels);
    const std::string objects = Repeat(R"({"a":)", levels);
    for (const std::string& nested : {arrays, objects}) {
        ExpectBadJson(nested, kDepthMessage);
        ExpectBadJson(R"({"vertices":[],"edges":[],"ignored":)" + nested, kDepthMessage);
        ExpectBadJson(R"({"vertices":[{"id":1,"data":)" + nested, kDepthMessage);
        ExpectBadJson(R"({"vertices":[{"id":)" + nested, kDepthMessage);
        ExpectBadJson(R"({"vertices":)" + nested, kDepthMessage);
    }
}

TEST(GraphHostileDocumentTest, Load_OfFiveMillionLevelsThatAreAllClosedThrowsBadJson) {
    constexpr std::size_t levels = 5000000;
    const std::string arrays = Repeat("[", levels) + Repeat("]", levels);
    const std::string objects = Repeat(R"({"a":)", levels) + "{}" + Repeat("}", levels);
    for (const std::string& nested : {arrays, objects}) {
        ExpectBadJson(nested, kDepthMessage);
        ExpectBadJson(R"({"vertices":[],"ignored":)" + nested + R"(,"edges":[]})", kDepthMessage);
        ExpectBadJson(R"({"vertices":[{"data":)" + nested + R"(}],"edges":[]})", kDepthMessage);
    }
}

// The root is level 1, so an ignored member may nest 999 levels of its own.
TEST(GraphHostileDocumentTest, Load_OfAnIgnoredMemberCountsItsLevels) {
    const auto document = [](std::size_t levels) {
        return R"({"ignored":)" + Repeat("[", levels) + Repeat("]", levels) + R"(,"vertices":[],"edges":[]})";
    };
    EXPECT_EQ(NodesOf(Loaded(document(999))), std::vector<Node>());
    ExpectBadJson(document(1000), kDepthMessage);
}

// "data" stands on level 4: the root, an array and an element are above it.
TEST(GraphHostileDocumentTest, Load_OfATreeCountsItsLevels) {
    const auto document = [](std::size_t levels) {
        return R"({"vertices":[{"id":1,"data":)" + Repeat(R"({"n":)", levels - 1) + "{}" + Repeat("}", levels - 1) +
               R"(}],"edges":[]})";
    };
    const Graph graph = Loaded(document(997));
    EXPECT_EQ(Saved(graph), document(997));
    const Property tree = (*graph)[1];
    std::size_t depth = 0;
    for (const Property* node = &tree; node->Count() != 0; node = &(*node)[0U]) {
        ++depth;
    }
    EXPECT_EQ(depth, 995U);
    ExpectBadJson(document(998), kDepthMessage);
}

TEST(GraphHostileDocumentTest, Load_ClosedLevelsDoNotCount) {
    const Graph graph = Loaded(R"({"vertices":[)" + Repeat("{},", 5000) + R"({}],"edges":[]})");
    EXPECT_EQ(NodesOf(graph).size(), 5001U);
}

// The number is shown as it is written.
void ExpectNoId(const std::string& number) {
    const std::string nodes = R"({"vertices":[{"id":1},{"id":2}],"edges":[)";
    ExpectBadJson(R"({"vertices":[{"id":)" + number + R"(}],"edges":[]})",
                  "The value of id does not fit in 64 bits: " + number);
    for (const auto& [name, element] : std::vector<std::pair<std::string, std::string>>{
             {"id", R"({"from":1,"to":2,"id":)"}, {"from", R"({"to":2,"from":)"}, {"to", R"({"from":1,"to":)"}}) {
        const Graph graph = ITranscodingMetaGraph::Create();
        ExpectTag<BadJson, ProfileException::TagJsonBadStructure>(
            [&, text = element] { LoadText(graph, nodes + text + number + "}]}"); },
            "The value of " + name + " does not fit in 64 bits: " + number);
        EXPECT_EQ(NodesOf(graph).size(), 2U);
        EXPECT_EQ(LinksOf(graph), std::vector<Link>());
        ExpectUsable(graph);
    }
}

TEST(GraphHostileDocumentTest, Load_OfANumberThatNoIdCanBeThrowsBadJson) {
    for (const char* number :
         {"9223372036854775808", "9223372036854775809", "-9223372036854775809", "18446744073709551615",
          "18446744073709551616", "-36893488147419103232", "1e20", "-1E+20", "1e19", "9223372036854775808.0",
          "922337203685477580.8e1", "12345678901234567890.000", "-1.7976931348623157e308"}) {
        ExpectNoId(number);
    }
}

TEST(GraphHostileDocumentTest, Load_ShowsTheBeginningOfALongNumber) {
    const std::string number = "1" + Repeat("0", 63);
    ExpectNoId(number);
    ExpectBadJson(R"({"vertices":[{"id":)" + number + R"(0}],"edges":[]})",
                  "The value of id does not fit in 64 bits: " + number + "...");
}

TEST(GraphHostileDocumentTest, Load_ReadsAWholeNumberToItsLastDigitHoweverItIsWritten) {
    const std::vector<std::pair<std::string, long long>> cases = {
        {"9007199254740993.0", 9007199254740993},
        {"123456789012345678e1", 1234567890123456780},
        {"9223372036854775807.0", 9223372036854775807},
        {"9223372036854775806.000", 9223372036854775806},
        {"0.9223372036854775807e+19", 9223372036854775807},
        {"-9223372036854775808.0", std::numeric_limits<long long>::min()},
        {"-9.223372036854775808e18", std::numeric_limits<long long>::min()},
        {"-922337203685477580800E-2", std::numeric_limits<long long>::min()},
        {"1000000000000000000000000000000e-30", 1},
        {"12e0", 12},
        {"-7.0", -7},
        {"0e25", 0},
        {"-0.0e-5", 0},
        {"1" + Repeat("0", 300) + "e-300", 1},
    };
    for (const auto& [number, id] : cases) {
        const Graph graph = Loaded(R"({"vertices":[{"id":)" + number + R"(}],"edges":[]})");
        std::vector<ITranscodingMetaGraph::NodeId> ids;
        graph->VisitNodes(
            [&ids](ITranscodingMetaGraph::NodeId node, const Property& /*tree*/) { ids.push_back(node); });
        EXPECT_EQ(ids, (std::vector<ITranscodingMetaGraph::NodeId>{id})) << number;
    }
}

// A number beside the one that is meant must not be taken for it.
TEST(GraphHostileDocumentTest, Load_LinksTheNodeOfTheExactNumber) {
    const Graph graph = Loaded(R"({"vertices":[{"id":9007199254740992},{"id":9007199254740993},{"id":1}],)"
                               R"("edges":[{"from":9007199254740993.0,"to":1.0}]})");
    std::vector<ITranscodingMetaGraph::NodeId> targets;
    graph->Outputs(9007199254740993, targets);
    EXPECT_EQ(targets, (std::vector<ITranscodingMetaGraph::NodeId>{1}));
    targets.clear();
    graph->Outputs(9007199254740992, targets);
    EXPECT_TRUE(targets.empty());
}

TEST(GraphHostileDocumentTest, Load_OfANumberBeyondFloatingPointThrowsBadJson) {
    for (const std::string& number : {"1e309"s, "-1e309"s, "1e99999999999999999999"s, "1" + Repeat("0", 100000)}) {
        ExpectBadJson(R"({"vertices":[{"id":)" + number + R"(}],"edges":[]})", kRootMessage);
    }
}

TEST(GraphHostileDocumentTest, Load_OfAFractionAsAnIdTakesItForZero) {
    for (const std::string& number : {"1e-400"s, "1e-99999999999999999999"s, "0." + Repeat("0", 100000) + "1",
                                      "1." + Repeat("3", 100000), "-0.0000000001e-300"s, "0.9999999999999999999999"s,
                                      "1.00000000000000000001"s, "9007199254740993.5"s, "25e-1"s}) {
        const Graph graph = Loaded(R"({"vertices":[{"id":)" + number + R"(}],"edges":[]})");
        EXPECT_EQ(NodesOf(graph).front().id, 0) << number.substr(0, 30);
    }
}

// The sum of the exponent and of the digits behind the point is beyond 32 bits.
TEST(GraphHostileDocumentTest, Load_OfANumberWhoseExponentsAddUpBeyondAnIntegerTakesItForZero) {
    for (const char* number :
         {"0.0000000000e-2147483639", "0.00000000000000000001e-2147483639", "-1.00000000000000000000e-2147483639"}) {
        const Graph graph = ITranscodingMetaGraph::Create();
        EXPECT_EQ(OutcomeOfLoading(graph, R"({"vertices":[{"id":)"s + number + R"(}],"edges":[]})"), "loaded");
        EXPECT_EQ(NodesOf(graph), (std::vector<Node>{{0, Property("data")}})) << number;
    }
}

TEST(GraphHostileDocumentTest, Load_OfAnyKindOfValueAnywhereIsAnsweredAndTheGraphStaysUsable) {
    const std::vector<std::string> values = {"null",
                                             "true",
                                             "false",
                                             "0",
                                             "-1",
                                             "1.5",
                                             "1e300",
                                             R"("")",
                                             R"("text")",
                                             "[]",
                                             "[1]",
                                             "[1,2]",
                                             "[1,0]",
                                             "[[]]",
                                             "{}",
                                             R"({"a":1})",
                                             R"([{"a":1},{"a":2}])",
                                             R"({"id":1,"from":1,"to":1,"data":{}})"};
    const std::vector<std::pair<std::string, std::string>> places = {
        {"", ""},
        {R"({"edges":[],"vertices":)", "}"},
        {R"({"vertices":[],"edges":)", "}"},
        {R"({"edges":[],"vertices":[)", "]}"},
        {R"({"edges":[],"vertices":[{"id":)", "}]}"},
        {R"({"edges":[],"vertices":[{"data":)", "}]}"},
        {R"({"edges":[],"vertices":[{"data":{"n":)", "}}]}"},
        {R"({"edges":[],"vertices":[{"data":{"n":{"m":)", "}}}]}"},
        {R"({"vertices":[{"id":1}],"edges":[)", "]}"},
        {R"({"vertices":[{"id":1}],"edges":[{"id":)", R"(,"from":1,"to":1}]})"},
        {R"({"vertices":[{"id":1}],"edges":[{"from":)", R"(,"to":1}]})"},
        {R"({"vertices":[{"id":1}],"edges":[{"to":)", R"(,"from":1}]})"},
        {R"({"vertices":[{"id":1}],"edges":[{"from":1,"to":1,"data":)", "}]}"},
    };
    std::vector<std::string> outcomes;
    for (const auto& [before, after] : places) {
        for (const std::string& value : values) {
            const Graph graph = ITranscodingMetaGraph::Create();
            outcomes.push_back(OutcomeOfLoading(graph, before + value + after));
            ExpectSound(graph);
        }
    }
    for (const char* outcome : {"loaded", "Quenzo::Conf::BadJson", "Quenzo::Conf::NodeNotFound", "PropertyException"}) {
        EXPECT_NE(std::find(outcomes.begin(), outcomes.end(), outcome), outcomes.end()) << outcome;
    }
}

TEST(GraphHostileDocumentTest, Load_KeepsBytesThatAreNoUtf8) {
    const std::string name = "\xC3(\xFF";
    const std::string value = "\xED\xA0\x80\xF8\x88\xC0\x80";
    const std::string document = R"({"vertices":[{"id":1,"data":{")" + name + R"(":")" + value + R"("}}],"edges":[]})";
    const Graph graph = Loaded(document);
    EXPECT_EQ((*graph)[1], Property(name, value));
    EXPECT_EQ(Saved(graph), document);
}

TEST(GraphHostileDocumentTest, Load_KeepsZeroBytesThatAreEscaped) {
    const std::string document = R"({"vertices":[{"id":1,"data":{"a\u0000b":"\u0000c"}}],"edges":[]})";
    const Graph graph = Loaded(document);
    EXPECT_EQ((*graph)[1], Property("a\0b"s, "\0c"s));
    EXPECT_EQ(Saved(graph), document);
}

TEST(GraphHostileDocumentTest, Load_TakesAZeroByteForTheEnd) {
    const std::string document = R"({"vertices":[{"id":1}],"edges":[]})";
    EXPECT_EQ(NodesOf(Loaded(document + "\0rest"s)).size(), 1U);
    ExpectBadJson("\0"s + document, kRootMessage);
    ExpectBadJson(R"({"vertices":[{"id":1,"data":{"a":"b)"
                  "\0"s +
                      R"("}}],"edges":[]})",
                  kRootMessage);
}

// Takes the graph through what walks all nodes and links. It is usable afterwards, and its document loads again.
void Exercise(const Graph& graph) {
    graph->TopologyIsValid();
    graph->ExamineTopology();
    EXPECT_NE(Drawn(graph), "");
    ExpectUsable(graph);
}

TEST(GraphHostileDocumentTest, Load_OfAStarOfManyLinksEnds) {
    constexpr int count = 100000;
    std::string vertices = R"({"id":1})";
    std::string outward;
    std::string inward;
    for (int id = 2; id <= count; ++id) {
        const std::string text = std::to_string(id);
        vertices += R"(,{"id":)" + text + "}";
        outward += (outward.empty() ? "" : ",") + (R"({"from":1,"to":)" + text) + "}";
        inward += (inward.empty() ? "" : ",") + (R"({"to":1,"from":)" + text) + "}";
    }
    const auto load = [&vertices](const std::string& edges) {
        return Loaded(R"({"vertices":[)" + vertices + R"(],"edges":[)" + edges + "]}");
    };
    EXPECT_TRUE(load(outward)->TopologyIsValid());
    EXPECT_TRUE(load(inward)->TopologyIsValid());
    const Graph both = load(outward + "," + inward);
    EXPECT_EQ(LinksOf(both).size(), 2U * (count - 1));
    EXPECT_FALSE(both->TopologyIsValid());
    Exercise(both);
}

TEST(GraphHostileDocumentTest, Load_OfManyNodesWithDescendingIdsAndLinksAmongThemEnds) {
    constexpr int count = 100000;
    std::string vertices;
    std::string edges;
    for (int id = count; id >= 1; --id) {
        const std::string text = std::to_string(id);
        vertices += (vertices.empty() ? "" : ",") + (R"({"id":)" + text) + "}";
        if (id > 1) {
            edges += (edges.empty() ? "" : ",") + (R"({"from":)" + text) + R"(,"to":)" + std::to_string(id - 1) + "}";
        }
    }
    const Graph graph = Loaded(R"({"vertices":[)" + vertices + R"(],"edges":[)" + edges + "]}");
    EXPECT_TRUE(graph->TopologyIsValid());
    const Ids path = graph->FindPath(count, 1);
    EXPECT_EQ(path.size(), 1U * count);
    EXPECT_EQ(graph->FindPath(1, count), Ids());
    Exercise(graph);
}

TEST(GraphHostileDocumentTest, Load_OfManyNodesOfOneIdEnds) {
    constexpr std::size_t count = 100000;
    const std::string vertices = Repeat(R"({"id":7},)", count) + R"({"id":8})";
    const Graph graph = Loaded(R"({"vertices":[)" + vertices + R"(],"edges":[{"from":8,"to":7},{"from":7,"to":7}]})");
    EXPECT_EQ(NodesOf(graph).size(), count + 1);
    EXPECT_EQ(graph->FindPath(8, 7), (Ids{8, 7}));
    EXPECT_EQ(graph->FindPath(7, 8), Ids());
    Exercise(graph);
    const Graph refused = ITranscodingMetaGraph::Create();
    ExpectLinkExists(
        [&] {
            LoadText(refused, R"({"vertices":[)" + vertices + R"(],"edges":[{"from":7,"to":7},{"from":7,"to":7}]})");
        },
        7, 7);
    ExpectUsable(refused);
}

TEST(GraphHostileDocumentTest, Load_OfATreeWithManyChildrenOfOneNameEnds) {
    constexpr std::size_t count = 100000;
    const std::string children = Repeat(R"("a":1,)", count) + R"("a":2)";
    const Graph graph = Loaded(R"({"vertices":[{"id":1,"data":{"n":{)" + children + R"(}}}],"edges":[]})");
    EXPECT_EQ((*graph)[1].Count(), count + 1);
    const Graph copy = Loaded(Saved(graph));
    EXPECT_EQ((*copy)[1], (*graph)[1]);
    Exercise(graph);
}

TEST(GraphHostileDocumentTest, Load_OfALongTextAndALongNameEnds) {
    const std::string text(10000000, 'x');
    const Graph graph = Loaded(R"({"vertices":[{"id":1,"data":{")" + text + R"(":")" + text + R"("}}],"edges":[]})");
    EXPECT_EQ((*graph)[1], Property(text, text));
    ExpectBadJson(R"({"vertices":[{"id":1,"data":{")" + text, kRootMessage);
}

}  // namespace
}  // namespace Quenzo::Conf::Testing
