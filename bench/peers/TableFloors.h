#pragma once

#include <bench/Verify.h>

#include <Conf/Interfaces/PixelFormatDescription.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

namespace Quenzo::Bench {

/// The places of the pixel formats by their ids: one load, with the bounds checked.
class IdFloor {
public:
    IdFloor() {
        places_.fill(kNowhere);
        std::uint8_t place = 0;
        for (const PixFmtDescription& format : PixFmtDescription::s_list) {
            places_.at(static_cast<std::size_t>(format.id)) = place++;
        }
    }

    const PixFmtDescription* Find(PixFmt id) const {
        const auto index = static_cast<std::size_t>(id);
        const std::uint8_t place = index < places_.size() ? places_[index] : kNowhere;
        return place != kNowhere ? &PixFmtDescription::s_list[place] : nullptr;
    }

private:
    static constexpr std::uint8_t kNowhere = 0xFF;

    std::array<std::uint8_t, 256> places_ = {};
};

/// A perfect hash over the names of the pixel formats, all of which have four characters or more: three loads of four
/// characters (first, middle, last), one multiplication each, one comparison.
class NameFloor {
public:
    NameFloor() {
        for (std::uint32_t attempt = 1; !Fill(attempt * 0x9E3779B9U | 1U); ++attempt) {
            Verify(attempt < 10000, "a perfect hash over the names of the pixel formats");
        }
    }

    const PixFmtDescription* Find(std::string_view name) const {
        if (name.size() < 4) {
            return nullptr;
        }
        const Slot& slot = slots_[SlotOf(name)];
        return slot.name == name ? slot.format : nullptr;
    }

private:
    struct Slot {
        std::string_view name;
        const PixFmtDescription* format = nullptr;
    };

    static std::uint32_t Load(const char* from) {
        std::uint32_t word = 0;
        std::memcpy(&word, from, sizeof(word));
        return word;
    }

    std::size_t SlotOf(std::string_view name) const {
        const std::size_t last = name.size() - 4;
        const std::uint32_t hash = (Load(name.data()) * multiplier_ + Load(name.data() + last / 2)) * multiplier_ +
                                   Load(name.data() + last) * 0x85EBCA6BU;
        return (hash * multiplier_) >> 22;
    }

    bool Fill(std::uint32_t multiplier) {
        multiplier_ = multiplier;
        slots_.fill({});
        for (const PixFmtDescription& format : PixFmtDescription::s_list) {
            Slot& slot = slots_[SlotOf(format.name)];
            if (slot.format != nullptr) {
                return false;
            }
            slot = {format.name, &format};
        }
        return true;
    }

    std::uint32_t multiplier_ = 0;
    std::array<Slot, 1024> slots_;
};

using PlaneSizes = std::array<std::int64_t, 4>;

/// The sizes of a frame's planes by the formula alone, from a row of its own for each format: no plane is checked, and
/// nothing saturates.
class PlaneFloor {
public:
    explicit PlaneFloor(const PixFmtDescription& format) : planes_(format.planes) {
        for (std::uint8_t plane = 0; plane < planes_; ++plane) {
            const bool chroma = plane == 1 || plane == 2;
            const bool palette = format.id == PixFmt::PAL8 && plane == 1;
            rows_[plane].shiftW = chroma ? format.log2ChromaW : std::uint8_t{0};
            rows_[plane].shiftH = chroma ? format.log2ChromaH : std::uint8_t{0};
            rows_[plane].fixedSize = palette ? 256 * 4 : 0;
            rows_[plane].bytes = format.GetPlanWidthSize(64, plane) / format.GetPlanWidth(64, plane);
        }
    }

    PlaneSizes Sizes(std::int64_t width, std::int64_t height) const {
        PlaneSizes sizes = {};
        for (std::size_t plane = 0; plane < planes_; ++plane) {
            const Row& row = rows_[plane];
            const std::int64_t columns = (width + (std::int64_t{1} << row.shiftW) - 1) >> row.shiftW;
            const std::int64_t lines = (height + (std::int64_t{1} << row.shiftH) - 1) >> row.shiftH;
            sizes[plane] = row.fixedSize != 0 ? row.fixedSize : columns * lines * row.bytes;
        }
        return sizes;
    }

private:
    struct Row {
        std::int64_t bytes = 0;
        std::int64_t fixedSize = 0;
        std::uint8_t shiftW = 0;
        std::uint8_t shiftH = 0;
    };

    std::uint8_t planes_;
    std::array<Row, 4> rows_ = {};
};

/// Looks at one text after the other. Rows is a table whose rows have a textId.
template <typename Rows>
class ScanFloor {
public:
    explicit ScanFloor(const Rows& rows) {
        for (const auto& row : rows) {
            texts_.emplace_back(row.textId);
        }
    }

    /// The place of the text, or the number of texts when it is not there.
    std::size_t Find(std::string_view text) const {
        return static_cast<std::size_t>(std::find(texts_.begin(), texts_.end(), text) - texts_.begin());
    }

private:
    std::vector<std::string_view> texts_;
};

}  // namespace Quenzo::Bench
