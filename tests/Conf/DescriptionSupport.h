#pragma once

// What the tests of the descriptions share: trees made from short lists, keys written as a client does that got its
// tree from elsewhere, and the failures of reads.

#include <Conf/Interfaces/IFormat.h>
#include <Conf/Interfaces/IFormatCodec.h>
#include <Conf/Interfaces/IFormatCodecVideo.h>
#include <foundation/Property.h>
#include <tests/foundation/Failures.h>
#include <tests/foundation/PrintProperty.h>

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace Quenzo::Conf::Testing {

inline Core::Property Tree(const std::string& name, std::vector<Core::Property> children) {
    Core::Property tree(name);
    for (Core::Property& child : children) {
        tree.Add(std::move(child));
    }
    return tree;
}

/// The tree that a new stream description starts with, and more children behind it.
inline Core::Property StreamTree(const std::string& name, const std::vector<Core::Property>& more = {}) {
    using Core::Property;
    std::vector<Property> children = {Property("metadata"), Property("codec.options.encode"), Property("stream_id", -1),
                                      Property("stream_metadata")};
    children.insert(children.end(), more.begin(), more.end());
    return Tree(name, std::move(children));
}

/// The tree of a new video description, and more children behind it.
inline Core::Property VideoTree(const std::vector<Core::Property>& more) {
    std::vector<Core::Property> children = {Core::Property("cover_flag", false)};
    children.insert(children.end(), more.begin(), more.end());
    return StreamTree("format_codec_video", children);
}

inline SP<IFormatCodecVideo> VideoWith(const std::vector<Core::Property>& more) {
    const SP<IFormatCodecVideo> video = IFormatCodecVideo::Create();
    video->SetProperty(VideoTree(more));
    return video;
}

/// A child of type None.
inline Core::Property Nothing(const std::string& name) {
    Core::Property parent("parent");
    return parent.SetChild(name, Core::Property());
}

inline void Put(IFormat& description, const Core::Property& child) {
    Core::Property tree = description.GetProperty();
    tree.SetChild(child.GetName(), child);
    description.SetProperty(tree);
}

inline void Drop(IFormat& description, const std::string& child) {
    Core::Property tree = description.GetProperty();
    tree.RemoveChild(child);
    description.SetProperty(tree);
}

/// The call must report that a node, or a property of another type, has no such child.
template <typename Call>
void ExpectMissing(const Call& call, const std::string& parent, const std::string& child,
                   PropertyTypes parentType = PropertyTypes::Node) {
    Quenzo::Testing::ExpectPropertyFailure<Core::PropertyException>(
        call, {child, parentType, "operator[]", "\"" + parent + "\" has no child \"" + child + "\""});
}

/// The call must report that a property of this type was asked by a getter of another.
template <typename Call>
void ExpectWrongType(const Call& call, const std::string& name, PropertyTypes type, const std::string& getter) {
    Quenzo::Testing::ExpectPropertyFailure<Core::PropertyException>(
        call, {name, type, getter, getter + " does not apply to \"" + name + "\", which holds another type"});
}

}  // namespace Quenzo::Conf::Testing
