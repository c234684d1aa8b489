// Covers the exception classes: which derives from which, what they say, what they carry, and that a client catches
// them by class when they come out of, or through, the library.

#include <Conf/Interfaces/Exceptions.h>
#include <Conf/Interfaces/ITranscodingMetaGraph.h>
#include <foundation/Throw.h>
#include <tests/Conf/Failures.h>

#include <gtest/gtest.h>
#include <boost/exception/get_error_info.hpp>

#include <exception>
#include <functional>
#include <string>
#include <type_traits>
#include <typeinfo>
#include <utility>
#include <vector>

namespace Quenzo::Conf::Testing {
namespace {

static_assert(std::is_base_of_v<std::exception, Exception> && std::is_base_of_v<boost::exception, Exception>);
static_assert(std::is_base_of_v<Exception, ConfException>);
static_assert(std::is_base_of_v<ConfException, FormatException>);
static_assert(std::is_base_of_v<ConfException, ProfileException>);
static_assert(std::is_base_of_v<ProfileException, LinkExists>);
static_assert(std::is_base_of_v<ProfileException, LinkNotFound>);
static_assert(std::is_base_of_v<ProfileException, BadJson>);
static_assert(std::is_base_of_v<ProfileException, NodeNotFound>);
static_assert(std::is_base_of_v<ConfException, PresetException>);
static_assert(std::is_base_of_v<ConfException, ConstraintException>);
static_assert(std::is_base_of_v<ConstraintException, ConstraintIsNotApplicableForTypeException>);
static_assert(std::is_base_of_v<ConstraintException, CheckedPropertyHasDifferentTypeException>);
static_assert(std::is_base_of_v<ConfException, HelperException>);

// A pointer to a virtual base could not be turned back. None of these is one.
template <typename Base, typename Derived>
constexpr bool kIsPlainBase = requires(Base* base) {
    static_cast<Derived*>(base);
};
static_assert(kIsPlainBase<Exception, ConfException>);
static_assert(kIsPlainBase<ConfException, FormatException> && kIsPlainBase<ConfException, ProfileException>);
static_assert(kIsPlainBase<ProfileException, LinkExists> && kIsPlainBase<ProfileException, LinkNotFound>);
static_assert(kIsPlainBase<ProfileException, BadJson> && kIsPlainBase<ProfileException, NodeNotFound>);
static_assert(kIsPlainBase<ConfException, PresetException> && kIsPlainBase<ConfException, ConstraintException>);
static_assert(kIsPlainBase<ConstraintException, ConstraintIsNotApplicableForTypeException>);
static_assert(kIsPlainBase<ConstraintException, CheckedPropertyHasDifferentTypeException>);
static_assert(kIsPlainBase<ConfException, HelperException>);

// No class derives from one that it should not.
static_assert(!std::is_base_of_v<ProfileException, FormatException> && !std::is_base_of_v<LinkExists, LinkNotFound>);
static_assert(!std::is_base_of_v<Core::CoreException, ConfException>);

static_assert(std::is_same_v<ProfileException::TagRequestedLink::value_type, std::pair<long long, long long>>);
static_assert(std::is_same_v<ProfileException::TagRequestedNodeId::value_type, long long>);
static_assert(std::is_same_v<ProfileException::TagJsonBadStructure::value_type, std::string>);

template <typename E>
void ExpectName(const std::string& name) {
    EXPECT_EQ(E().what(), name);
    E described;
    described << Exception::TagDescription("what went wrong");
    EXPECT_STREQ(described.what(), "what went wrong");
}

TEST(ConfExceptionsTest, What_IsTheClassNameOrTheDescription) {
    ExpectName<ConfException>("Quenzo::Conf::ConfException");
    ExpectName<FormatException>("Quenzo::Conf::FormatException");
    ExpectName<ProfileException>("Quenzo::Conf::ProfileException");
    ExpectName<LinkExists>("Quenzo::Conf::LinkExists");
    ExpectName<LinkNotFound>("Quenzo::Conf::LinkNotFound");
    ExpectName<BadJson>("Quenzo::Conf::BadJson");
    ExpectName<NodeNotFound>("Quenzo::Conf::NodeNotFound");
    ExpectName<PresetException>("Quenzo::Conf::PresetException");
    ExpectName<ConstraintException>("Quenzo::Conf::ConstraintException");
    ExpectName<ConstraintIsNotApplicableForTypeException>("Quenzo::Conf::ConstraintIsNotApplicableForTypeException");
    ExpectName<CheckedPropertyHasDifferentTypeException>("Quenzo::Conf::CheckedPropertyHasDifferentTypeException");
    ExpectName<HelperException>("Quenzo::Conf::HelperException");
}

template <typename E>
void ExpectExported(const Exception& object, const std::string& name) {
    EXPECT_EQ(typeid(object), typeid(E));
    EXPECT_EQ(object.what(), name);
    EXPECT_EQ(boost::get_error_info<Exception::TagDescription>(object), nullptr);
    EXPECT_EQ(boost::get_error_info<Exception::TagCallStack>(object), nullptr);
}

TEST(ConfExceptionsTest, ExportedObjects_AreOneOfEachClass) {
    ExpectExported<ConfException>(exportDummyException, "Quenzo::Conf::ConfException");
    ExpectExported<FormatException>(exportDummyException1, "Quenzo::Conf::FormatException");
    ExpectExported<ProfileException>(exportDummyException2, "Quenzo::Conf::ProfileException");
    ExpectExported<LinkExists>(exportDummyException3, "Quenzo::Conf::LinkExists");
    ExpectExported<LinkNotFound>(exportDummyException4, "Quenzo::Conf::LinkNotFound");
    ExpectExported<BadJson>(exportDummyException5, "Quenzo::Conf::BadJson");
    ExpectExported<NodeNotFound>(exportDummyException6, "Quenzo::Conf::NodeNotFound");
    ExpectExported<PresetException>(exportDummyException7, "Quenzo::Conf::PresetException");
    ExpectExported<ConstraintException>(exportDummyException8, "Quenzo::Conf::ConstraintException");
    ExpectExported<ConstraintIsNotApplicableForTypeException>(
        exportDummyException9, "Quenzo::Conf::ConstraintIsNotApplicableForTypeException");
    ExpectExported<CheckedPropertyHasDifferentTypeException>(exportDummyException10,
                                                             "Quenzo::Conf::CheckedPropertyHasDifferentTypeException");
    ExpectExported<HelperException>(exportDummyException11, "Quenzo::Conf::HelperException");
}

SP<ITranscodingMetaGraph> LinkedGraph() {
    SP<ITranscodingMetaGraph> graph = ITranscodingMetaGraph::Create();
    graph->AddNode(Core::Property("a"));
    graph->AddNode(Core::Property("b"));
    graph->AddLink(1, 2, Core::Property("l"));
    return graph;
}

void LoadNothing() { ITranscodingMetaGraph::Create()->Load(Core::MemoryInput::Create("")); }

template <typename Caught>
void ExpectCaught(const std::function<void()>& call) {
    bool isCaught = false;
    try {
        call();
    } catch (const Caught&) {
        isCaught = true;
    } catch (...) {
    }
    EXPECT_TRUE(isCaught) << typeid(Caught).name();
}

template <typename... Caught>
void ExpectCaughtAsAll(const std::function<void()>& call) {
    (ExpectCaught<Caught>(call), ...);
}

TEST(ConfExceptionsTest, FailuresOfTheLibrary_AreCaughtByClass) {
    const SP<ITranscodingMetaGraph> graph = LinkedGraph();
    ExpectCaughtAsAll<NodeNotFound, ProfileException, ConfException, Exception, std::exception, boost::exception>(
        [&] { graph->RemoveNode(9); });
    ExpectCaughtAsAll<LinkExists, ProfileException, ConfException, Exception, std::exception, boost::exception>(
        [&] { graph->AddLink(1, 2, Core::Property("l")); });
    ExpectCaughtAsAll<LinkNotFound, ProfileException, ConfException, Exception, std::exception, boost::exception>(
        [&] { graph->RemoveLink(2, 1); });
    ExpectCaughtAsAll<BadJson, ProfileException, ConfException, Exception, std::exception, boost::exception>(
        &LoadNothing);
}

// A client's own failure, raised where the library calls back, comes out as what it is.
template <typename E, typename... Caught>
void ExpectThrough() {
    const SP<ITranscodingMetaGraph> graph = LinkedGraph();
    const auto call = [&graph] {
        graph->VisitNodes([](long long, const Core::Property&) {
            E failure;
            failure << Exception::TagDescription("from outside");
            QUENZO_THROW(failure);
        });
    };
    ExpectCaughtAsAll<boost::wrapexcept<E>, E, Caught..., ConfException, Exception, std::exception>(call);
    const auto failure = Raised<E>(call);
    EXPECT_EQ(TagOf<Exception::TagDescription>(failure), "from outside");
}

TEST(ConfExceptionsTest, FailuresOfClients_AreCaughtByClassAfterTheyPassedThroughTheLibrary) {
    ExpectThrough<FormatException>();
    ExpectThrough<PresetException>();
    ExpectThrough<ConstraintException>();
    ExpectThrough<ConstraintIsNotApplicableForTypeException, ConstraintException>();
    ExpectThrough<CheckedPropertyHasDifferentTypeException, ConstraintException>();
    ExpectThrough<HelperException>();
}

template <typename E, typename Call>
void ExpectOrigin(Call call, const std::string& file, const std::string& function) {
    const auto failure = Raised<E>(call);
    EXPECT_EQ(TagOf<boost::throw_file>(failure).value_or(""), "Conf/Interfaces/" + file);
    EXPECT_NE(Quenzo::Testing::FunctionOf(failure).find(function), std::string::npos)
        << Quenzo::Testing::FunctionOf(failure);
    EXPECT_GT(TagOf<boost::throw_line>(failure).value_or(0), 0);
    EXPECT_NE(TagOf<Exception::TagCallStack>(failure).value_or(""), "");
}

TEST(ConfExceptionsTest, Failures_SayWhereTheyWereRaised) {
    const SP<ITranscodingMetaGraph> graph = LinkedGraph();
    ExpectOrigin<NodeNotFound>([&] { graph->RemoveNode(9); }, "GrahpImpl.cpp", "VertexById");
    ExpectOrigin<LinkExists>([&] { graph->AddLink(1, 2, Core::Property("l")); }, "GrahpImpl.cpp", "AppendLink");
    ExpectOrigin<LinkNotFound>([&] { graph->RemoveLink(2, 1); }, "GrahpImpl.cpp", "ExitBetween");
    ExpectOrigin<BadJson>(&LoadNothing, "GraphDocument.cpp", "Load");
    EXPECT_STREQ(Raised<NodeNotFound>([&] { graph->RemoveNode(9); }).what(), "Quenzo::Conf::NodeNotFound");
}

}  // namespace
}  // namespace Quenzo::Conf::Testing
