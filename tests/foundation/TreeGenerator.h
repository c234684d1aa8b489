#pragma once

// Random property trees for tests that state a law. They hold what breaks careless code: repeated and empty names,
// control characters, zero bytes, bytes that are no UTF-8, integers and rationals at the ends of their ranges, nodes
// without children, properties of type None.

#include <foundation/Property.h>
#include <tests/foundation/PrintProperty.h>

#include <boost/rational.hpp>

#include <rapidcheck.h>

#include <limits>
#include <string>
#include <utility>
#include <vector>

namespace Quenzo::Testing {

/// Text that looks like a key, so that names repeat among siblings often, and text of any bytes.
inline rc::Gen<std::string> AnyText() {
    using namespace std::string_literals;
    const auto anyByte = rc::gen::cast<char>(rc::gen::inRange(0, 256));
    return rc::gen::weightedOneOf<std::string>(
        {{4, rc::gen::element(""s, "a"s, "b"s, "metadata"s)},
         {2, rc::gen::element("\"\\/\b\f\n\r\t\x1F\x7F"s, "\0"s, "a\0b\0"s, "\xC3\xA4\xE2\x82\xAC\xF0\x9F\x8E\xAC"s,
                              "\xFF"s, "\xC3"s, "\xE2\x82"s, "\xC0\x80"s, "\xED\xA0\x80"s, "\xF4\x90\x80\x80"s,
                              "[1,2]"s, "{}"s, "null"s, std::string(300, 'x'))},
         {2, rc::gen::container<std::string>(anyByte)}});
}

/// The ends of the range, the numbers around zero, and others.
inline rc::Gen<long long> AnyInteger() {
    using Limits = std::numeric_limits<long long>;
    return rc::gen::weightedOneOf<long long>(
        {{1, rc::gen::element(Limits::min(), Limits::min() + 1, -1LL, 0LL, 1LL, Limits::max() - 1, Limits::max())},
         {2, rc::gen::arbitrary<long long>()}});
}

/// Rationals of every size. Denominators are positive: with a negative one, boost::rational overflows when the
/// numerator is the smallest integer.
inline rc::Gen<boost::rational<long long>> AnyRatio() {
    using Limits = std::numeric_limits<long long>;
    const auto denominator =
        rc::gen::weightedOneOf<long long>({{1, rc::gen::element(1LL, 2LL, 1001LL, Limits::max() - 1, Limits::max())},
                                           {1, rc::gen::inRange(1LL, Limits::max())}});
    return rc::gen::apply([](long long top, long long bottom) { return boost::rational<long long>(top, bottom); },
                          AnyInteger(), denominator);
}

/// A property without children: of any type, a node included, and of any name.
inline rc::Gen<Core::Property> AnyLeaf() {
    using Core::Property;
    const auto none = [](std::string name) {
        // Only an assigned tree brings both its type and its name.
        Property parent("parent");
        Property& child = parent.SetChild(name, Property());
        return Property(std::move(child));
    };
    const auto leaf = [](std::string name, const auto& value) { return Property(std::move(name), value); };
    return rc::gen::oneOf(rc::gen::map(AnyText(), none),
                          rc::gen::map(AnyText(), [](std::string name) { return Property(std::move(name)); }),
                          rc::gen::apply(leaf, AnyText(), rc::gen::arbitrary<bool>()),
                          rc::gen::apply(leaf, AnyText(), AnyInteger()), rc::gen::apply(leaf, AnyText(), AnyRatio()),
                          rc::gen::apply(leaf, AnyText(), AnyText()));
}

/// A node of any name with up to about 40 children and at most `depth` levels below it.
inline rc::Gen<Core::Property> AnyNode(int depth) {
    using Core::Property;
    const auto assemble = [](std::string name, std::vector<Property> children) {
        Property node(std::move(name));
        for (Property& child : children) {
            node.Add(std::move(child));
        }
        return node;
    };
    constexpr double fewerPerLevel = 0.4;
    const auto child = depth > 1 ? rc::gen::weightedOneOf<Property>(
                                       {{3, AnyLeaf()}, {1, rc::gen::lazy([depth] { return AnyNode(depth - 1); })}})
                                 : AnyLeaf();
    return rc::gen::apply(assemble, AnyText(),
                          rc::gen::scale(fewerPerLevel, rc::gen::container<std::vector<Property>>(child)));
}

/// A leaf or a node.
inline rc::Gen<Core::Property> AnyTree() {
    constexpr int depth = 4;
    return rc::gen::weightedOneOf<Core::Property>({{1, AnyLeaf()}, {5, AnyNode(depth)}});
}

}  // namespace Quenzo::Testing

/// Makes rc::check and RC_GTEST_PROP draw trees for arguments of this type.
template <>
struct rc::Arbitrary<Quenzo::Core::Property> {
    static Gen<Quenzo::Core::Property> arbitrary() { return Quenzo::Testing::AnyTree(); }
};
