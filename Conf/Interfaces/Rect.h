#pragma once

namespace Quenzo::Proc {

/// A rectangle with sides along the axes; the y axis points down.
template <typename Position, typename Size>
struct RectT {
    Position left{};  ///< the x of the left edge
    Position top{};   ///< the y of the top edge
    Size width{};     ///< the distance from the left edge to the right one
    Size height{};    ///< the distance from the top edge to the bottom one

    bool operator==(const RectT& other) const = default;
};

}  // namespace Quenzo::Proc
