#pragma once

#include <bench/Verify.h>

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <vector>

namespace Quenzo::Bench {

/// A perfect hash over texts of at least one character: each word of eight characters, the last one overlapping, and
/// one comparison. Folding takes the small and the large letters of ASCII for the same, and may take some other
/// characters for the same as well.
template <bool kFolds = false>
class PerfectHash {
public:
    /// No two of the texts may be the same; they have to outlive this.
    explicit PerfectHash(const std::vector<std::string_view>& texts)
        : shift_(64U - static_cast<unsigned>(std::bit_width(64 * texts.size()))) {
        for (std::uint64_t attempt = 1; !Fill(texts, attempt * 0x9E3779B97F4A7C15U); ++attempt) {
            Verify(attempt < 100000, "a perfect hash");
        }
    }

    /// The place of the text, or the number of texts when it is not there.
    std::size_t Find(std::string_view text) const {
        const Slot& slot = slots_[SlotOf(text)];
        return slot.text.size() == text.size() && IsSame(slot.text.data(), text.data(), text.size()) ? slot.place
                                                                                                     : count_;
    }

private:
    struct Slot {
        std::string_view text;
        std::size_t place = 0;
    };

    template <typename Word>
    static std::uint64_t Load(const char* from) {
        Word word = 0;
        std::memcpy(&word, from, sizeof(Word));
        return word | (kFolds ? static_cast<Word>(0x2020202020202020U) : Word{0});
    }

    // Shorter texts than a word, of one character or more.
    static std::uint64_t LoadShort(const char* text, std::size_t size) {
        if (size >= 4) {
            return Load<std::uint32_t>(text) | Load<std::uint32_t>(text + size - 4) << 32U;
        }
        return Load<std::uint8_t>(text) | Load<std::uint8_t>(text + size / 2) << 8U |
               Load<std::uint8_t>(text + size - 1) << 16U;
    }

    static bool IsSame(const char* one, const char* other, std::size_t size) {
        if (size < 8) {
            return size == 0 || LoadShort(one, size) == LoadShort(other, size);
        }
        for (std::size_t at = 0; at + 8 < size; at += 8) {
            if (Load<std::uint64_t>(one + at) != Load<std::uint64_t>(other + at)) {
                return false;
            }
        }
        return Load<std::uint64_t>(one + size - 8) == Load<std::uint64_t>(other + size - 8);
    }

    std::size_t SlotOf(std::string_view text) const {
        const std::size_t size = text.size();
        std::uint64_t hash = size;
        if (size < 8) {
            hash = size == 0 ? 0 : LoadShort(text.data(), size) * multiplier_ + size;
            hash ^= hash >> 32U;
        } else {
            for (std::size_t at = 0; at + 8 < size; at += 8) {
                hash = (hash ^ Load<std::uint64_t>(text.data() + at)) * multiplier_;
                hash ^= hash >> 32U;
            }
            hash ^= Load<std::uint64_t>(text.data() + size - 8);
        }
        return (hash * multiplier_) >> shift_;
    }

    bool Fill(const std::vector<std::string_view>& texts, std::uint64_t multiplier) {
        multiplier_ = multiplier | 1U;
        count_ = texts.size();
        slots_.assign(std::size_t{1} << (64U - shift_), {});
        for (std::size_t place = 0; place < texts.size(); ++place) {
            Slot& slot = slots_[SlotOf(texts[place])];
            if (!slot.text.empty()) {
                return false;
            }
            slot = {texts[place], place};
        }
        return true;
    }

    unsigned shift_;
    std::uint64_t multiplier_ = 0;
    std::size_t count_ = 0;
    std::vector<Slot> slots_;
};

}  // namespace Quenzo::Bench
