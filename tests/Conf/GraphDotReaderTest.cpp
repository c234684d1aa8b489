// Covers that Graphviz takes the DOT text of every graph, whatever its trees hold, and without a complaint.

#include <tests/Conf/GraphSupport.h>
#include <tests/RunProgram.h>
#include <tests/foundation/TreeGenerator.h>

#include <gtest/gtest.h>
#include <rapidcheck.h>
#include <rapidcheck/gtest.h>
#include <boost/locale/utf.hpp>

#include <cstddef>
#include <string>
#include <vector>

namespace Quenzo::Conf::Testing {
namespace {

using namespace std::string_literals;
using Core::Property;

// Lays the graph out and writes it in both forms, one after the other.
Quenzo::Testing::ProgramResult RunDot(const std::string& text) {
    return Quenzo::Testing::RunProgram({QUENZO_DOT, "-Tdot", "-Tsvg"}, text);
}

std::size_t CountOf(const std::string& text, const std::string& part) {
    std::size_t count = 0;
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + part.size())) {
        ++count;
    }
    return count;
}

// XML has no place for most control characters and for two code points without a meaning, not even escaped.
bool IsXmlText(const std::string& text) {
    for (auto position = text.begin(); position != text.end();) {
        const auto codePoint = boost::locale::utf::utf_traits<char>::decode(position, text.end());
        const bool isControl = codePoint < ' ' && codePoint != '\t' && codePoint != '\n' && codePoint != '\r';
        if (!boost::locale::utf::is_valid_codepoint(codePoint) || isControl || codePoint == 0xFFFE ||
            codePoint == 0xFFFF) {
            return false;
        }
    }
    return true;
}

// The picture shows as many nodes and links as the graph has.
void ExpectDrawable(const Graph& graph) {
    const std::string text = Drawn(graph);
    const auto result = RunDot(text);
    EXPECT_EQ(result.status, 0) << text;
    EXPECT_EQ(result.messages, "") << text;
    EXPECT_TRUE(IsXmlText(result.output)) << text;
    EXPECT_EQ(CountOf(result.output, "class=\"node\""), NodesOf(graph).size()) << text;
    EXPECT_EQ(CountOf(result.output, "class=\"edge\""), LinksOf(graph).size()) << text;
}

// One picture with each of the texts as a name, as a value and on a link.
void ExpectDrawable(const std::vector<std::string>& texts) {
    const Graph graph = ITranscodingMetaGraph::Create();
    for (const std::string& text : texts) {
        Property tree(text);
        tree.SetChildT<std::string>(text, text);
        const long long node = graph->AddNode(tree);
        graph->AddLink(node, 1, Property(text, text));
    }
    ExpectDrawable(graph);
}

TEST(GraphDotReaderTest, Dot_IsNotEasilySatisfied) {
    const auto broken = RunDot("digraph G {\n0[label=\"a\" b\"];\n}\n");
    EXPECT_NE(broken.status, 0);
    EXPECT_NE(broken.messages, "");
    EXPECT_NE(RunDot("digraph G {\n0[label=\"\xFF\"];\n}\n").messages, "");
}

TEST(GraphDotReaderTest, Dot_TakesAnEmptyGraph) { ExpectDrawable(ITranscodingMetaGraph::Create()); }

TEST(GraphDotReaderTest, Dot_TakesAJob) {
    const Graph graph = ITranscodingMetaGraph::Create();
    graph->AddNode(ITranscodingMetaGraph::MakeInFileDescription(ioPath("C:\\media\\\"clip\".mov")));
    graph->AddNode(ITranscodingMetaGraph::MakeRawStreamDescription(0));
    graph->AddNode(ITranscodingMetaGraph::GetControlledBy(1));
    graph->AddLink(1, 2, Property("data"));
    graph->AddLink(2, 3, Property());
    ExpectDrawable(graph);
}

TEST(GraphDotReaderTest, Dot_TakesQuotesAndBackslashes) {
    ExpectDrawable({"\"", "\\", "\\\\", "\\\"", "\"\\", "a\\", "\\\n", "\"];}", "\"+\"", "'"});
}

TEST(GraphDotReaderTest, Dot_TakesItsOwnEscapes) {
    ExpectDrawable({"\\N", "\\G", "\\E", "\\T", "\\H", "\\L", "\\l", "\\r", "\\n", "\\x", "\\0"});
}

TEST(GraphDotReaderTest, Dot_TakesControlCharacters) {
    std::string all;
    for (char character = 0; character < ' '; ++character) {
        all += character;
    }
    ExpectDrawable({"\0"s, "a\0b"s, "\n", "\r\n", "\t", "\x01", "\x1B[0m", "\x7F", all});
}

TEST(GraphDotReaderTest, Dot_TakesBytesThatAreNoUtf8) {
    ExpectDrawable({"\xFF", "\xC3", "\xC3(", "\xE2\x82", "\xF0\x9F\x8E", "\xC0\x80", "\xED\xA0\x80", "\xF4\x90\x80\x80",
                    "\xF8\x88\x80\x80\x80", "\x80", "a\xFE"});
}

TEST(GraphDotReaderTest, Dot_TakesOtherScripts) {
    ExpectDrawable({"\xC3\xA4", "\xE6\x98\xA0\xE7\x94\xBB", "\xF0\x9F\x8E\xAC", "\xEF\xBB\xBF", "\xC2\x85", "\xC2\xA0",
                    "\xE2\x80\xA8", "\xE2\x80\xAE", "\xEF\xBF\xBE", "\xEF\xBF\xBF", "\xF4\x8F\xBF\xBF"});
}

TEST(GraphDotReaderTest, Dot_TakesWhatLooksLikeMarkup) {
    ExpectDrawable({"<b>", "<", ">", "</b>", "<<b>x</b>>", "<html", "&", "&&", "&amp;", "&lt", "&nosuch;", "&;", "&#;",
                    "]]>", "<!--", "<?xml"});
}

TEST(GraphDotReaderTest, Dot_TakesReferencesToCharacters) {
    ExpectDrawable(
        {"&#65;", "&#0;", "&#x0;", "&#1;", "&#27;", "&#127;", "&#65534;", "&#1114112;", "&#99999999999999999999;"});
    for (const char* surrogate : {"&#xD800;", "&#xDFFF;", "&#55296;"}) {
        ExpectDrawable(std::vector<std::string>{surrogate});
    }
}

TEST(GraphDotReaderTest, Dot_TakesItsKeywordsAndRecords) {
    ExpectDrawable({"graph", "digraph", "strict", "subgraph", "node", "edge", "->", "--", "{",        "}", "|",
                    "{a|b}", "[",       "]",      ";",        "//",   "/*",   "*/", "#",  "#include", ""});
}

TEST(GraphDotReaderTest, Dot_TakesALineThatStartsWithAHash) {
    const Graph graph = MakeGraph(1, {});
    graph->AddNode(Property("# 1 \"file\""));
    graph->AddNode(Property("#line 5"));
    ExpectDrawable(graph);
}

TEST(GraphDotReaderTest, Dot_TakesALinkHandedOnToTheNextNode) {
    const Graph graph = MakeGraph(5, {{1, 2}, {3, 4}, {4, 4}, {2, 2}});
    graph->RemoveNode(2);
    graph->RemoveNode(4);
    ExpectDrawable(graph);
}

// One graph of many random trees costs one run of the program.
Graph GraphOfRandomTrees() {
    const Graph graph = ITranscodingMetaGraph::Create();
    for (int i = 0; i < 6; ++i) {
        const long long node = graph->AddNode(*Quenzo::Testing::AnyTree());
        graph->AddLink(node, *rc::gen::inRange(1LL, node + 1), *Quenzo::Testing::AnyTree());
    }
    return graph;
}

RC_GTEST_PROP(GraphDotReaderTest, Dot_TakesWhateverTreesHold, ()) {
    const auto result = RunDot(Drawn(GraphOfRandomTrees()));
    RC_ASSERT(result.messages == "");
    RC_ASSERT(result.status == 0);
    RC_ASSERT(IsXmlText(result.output));
}

}  // namespace
}  // namespace Quenzo::Conf::Testing
