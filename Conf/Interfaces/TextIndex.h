#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <utility>

namespace Quenzo::Detail {

/// Tells at which place of a fixed table a text stands. Made by the compiler: the multiplier of the hash is searched
/// for until no two texts of the table share a slot, so a look-up costs one hash and one comparison. The hash sees the
/// first eight and the last eight characters; should that be too little to tell the texts apart, or should a text stand
/// there twice, the search never ends, which the compiler reports.
template <std::size_t N>
class TextIndex {
    static_assert(N < 255, "places are kept in bytes");

public:
    /// The texts must have at least two characters each and outlive the index.
    constexpr explicit TextIndex(const std::array<std::string_view, N>& texts) : texts_(texts) {
        while (!FillSlots()) {
            multiplier_ = multiplier_ * 6364136223846793005U + 1442695040888963407U;
        }
    }

    /// The place of the text, from 0, or N when it is not in the table.
    constexpr std::size_t Find(std::string_view text) const noexcept {
        if (text.size() < 2) {
            return N;
        }
        const std::size_t place = slots_[SlotOf(text)];
        return place < N && texts_[place] == text ? place : N;
    }

private:
    // With eight slots for a text, one multiplier in some thirty keeps the texts apart.
    static constexpr std::size_t kSlots = std::bit_ceil(8 * N);

    // One expression, which compilers turn into one load.
    template <std::size_t... I>
    static constexpr std::uint64_t Load(const char* from, std::index_sequence<I...>) noexcept {
        return ((std::uint64_t{static_cast<unsigned char>(from[I])} << (8 * I)) | ...);
    }

    // The two words overlap when the text is shorter than both.
    template <std::size_t Width>
    constexpr std::size_t SlotOfWords(std::string_view text) const noexcept {
        constexpr auto characters = std::make_index_sequence<Width>();
        const std::uint64_t head = Load(text.data(), characters);
        const std::uint64_t tail = Load(text.data() + (text.size() - Width), characters);
        const std::uint64_t hash = head * multiplier_ + tail * std::rotl(multiplier_, 32);
        return static_cast<std::size_t>(hash >> (64 - std::countr_zero(kSlots)));
    }

    constexpr std::size_t SlotOf(std::string_view text) const noexcept {
        if (text.size() >= 8) {
            return SlotOfWords<8>(text);
        }
        return text.size() >= 4 ? SlotOfWords<4>(text) : SlotOfWords<2>(text);
    }

    constexpr bool FillSlots() {
        slots_.fill(static_cast<std::uint8_t>(N));
        for (std::size_t place = 0; place < N; ++place) {
            std::uint8_t& slot = slots_[SlotOf(texts_[place])];
            if (slot != N) {
                return false;
            }
            slot = static_cast<std::uint8_t>(place);
        }
        return true;
    }

    std::array<std::string_view, N> texts_;
    std::array<std::uint8_t, kSlots> slots_ = {};
    std::uint64_t multiplier_ = 0x9E3779B97F4A7C15U;
};

}  // namespace Quenzo::Detail
