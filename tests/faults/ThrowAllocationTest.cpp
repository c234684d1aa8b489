// Covers failures that are reported while memory is out, at each allocation of the report: what arrives is the class
// that the header names, or bad_alloc, and never the end of the program.

#include <Conf/Interfaces/BitrateCalculator.h>
#include <Conf/Interfaces/Exceptions.h>
#include <Conf/Interfaces/IFormatCodec.h>
#include <Conf/Interfaces/ITranscodingMetaGraph.h>
#include <Conf/Interfaces/MediaTypeUtils.h>
#include <Conf/Interfaces/Stub.h>
#include <Conf/Interfaces/TreePreset.h>
#include <foundation/DataStream.h>
#include <foundation/PropertySerializer.h>
#include <tests/faults/EveryAllocation.h>

#include <boost/throw_exception.hpp>

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

namespace Quenzo::Conf {
namespace {

using Core::MethodIsNotApplicable;
using Core::Property;
using Core::PropertyException;
using Core::StreamException;
using Quenzo::Testing::FailEveryAllocation;

struct Report {
    bool hasArrived = false;
    std::string text;
};

/// The call raises an E, and with a failing allocation an E or bad_alloc.
template <typename E, typename Call>
void ExpectReport(const std::string& text, Call call) {
    SCOPED_TRACE(text);
    const long failures = FailEveryAllocation(
        [&text] {
            Report report;
            report.text.reserve(2 * text.size());
            return report;
        },
        [&call](Report& report) {
            try {
                call();
            } catch (const boost::wrapexcept<E>& failure) {
                report.hasArrived = true;
                report.text = failure.what();
            }
        },
        [&text](const Report& report, bool hasFailed) {
            EXPECT_NE(report.hasArrived, hasFailed);
            EXPECT_EQ(report.text, hasFailed ? "" : text);
        });
    EXPECT_GT(failures, 5);
}

TEST(ThrowAllocationTest, Properties) {
    Property tree("tree");
    Property leaf("leaf", 7);
    ExpectReport<PropertyException>(R"("tree" has no child "a name that is not there at all")",
                                    [&] { tree["a name that is not there at all"]; });
    ExpectReport<PropertyException>(R"("tree" has no child at position 3: it has 0)", [&] { tree[3]; });
    ExpectReport<PropertyException>(R"(GetString does not apply to "leaf", which holds another type)",
                                    [&] { static_cast<void>(leaf.GetString()); });
    ExpectReport<MethodIsNotApplicable>("Quenzo::Core::MethodIsNotApplicable", [&] { leaf.Add(Property()); });
    ExpectReport<MethodIsNotApplicable>("Quenzo::Core::MethodIsNotApplicable",
                                        [&] { leaf.SetChildT<bool>("child", true); });
    EXPECT_EQ(tree, Property("tree"));
    EXPECT_EQ(leaf, Property("leaf", 7));
}

TEST(ThrowAllocationTest, Graphs) {
    const auto graph = ITranscodingMetaGraph::Create();
    const auto node = graph->AddNode(Property("node"));
    graph->AddLink(node, node, Property("link"));
    ExpectReport<NodeNotFound>("Quenzo::Conf::NodeNotFound", [&] { graph->AddLink(node, 9, Property()); });
    ExpectReport<LinkExists>("Quenzo::Conf::LinkExists", [&] { graph->AddLink(node, node, Property()); });
    ExpectReport<LinkExists>("Quenzo::Conf::LinkExists", [&] { graph->RemoveNode(node); });
    ExpectReport<BadJson>("Quenzo::Conf::BadJson",
                          [&] { graph->Load(Core::MemoryInput::Create("no JSON, and long enough to take memory")); });
    graph->RemoveLink(node, node);
    ExpectReport<LinkNotFound>("Quenzo::Conf::LinkNotFound", [&] { graph->RemoveLink(node, node); });
}

TEST(ThrowAllocationTest, Tables) {
    ExpectReport<FormatException>("Provided audio codec id is not found in list:a codec that nobody knows",
                                  [] { IsAudioBitrateRequired("a codec that nobody knows"); });
    ExpectReport<std::invalid_argument>("Unknown group id",
                                        [] { GetSupportedFormatExtensions("a group that nobody knows"); });
    ExpectReport<ConfException>("Incompatible type of IFormatCodec structure",
                                [] { GetDefaultVideoBitrate(SP<const IFormatCodec>()); });
}

TEST(ThrowAllocationTest, StreamsAndPresets) {
    ExpectReport<StreamException>("cannot read \"/nowhere/and/further/on\": No such file or directory",
                                  [] { Core::FileInput::Create("/nowhere/and/further/on"); });
    ExpectReport<StreamException>("cannot write \"/nowhere/and/further/on\": No such file or directory",
                                  [] { Core::FileOutput::Create("/nowhere/and/further/on"); });
    ExpectReport<PresetException>("a preset is a tree with named children, and \"leaf\" is a single value",
                                  [] { TreePreset::Create(Property("leaf", 7)); });
    Property tree("tree");
    ExpectReport<PropertyException>("no JSON at byte 2: Invalid value.", [&tree] {
        Core::PropertySerializer::Read(tree, Core::MemoryInput::Create("no JSON, and long enough to take memory"));
    });
}

TEST(ThrowAllocationTest, CallStack_IsWholeOrNotThere) {
    const long failures = FailEveryAllocation(
        [] { return std::string(); }, [](std::string& text) { text = GetCallStack(); },
        [](const std::string& text, bool hasFailed) {
            EXPECT_TRUE(text.empty() || (!hasFailed && text.starts_with("0# ") && text.ends_with('\n'))) << text;
        });
    EXPECT_GT(failures, 2);
}

}  // namespace
}  // namespace Quenzo::Conf
