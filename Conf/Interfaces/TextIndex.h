#pragma once

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <string_view>
#include <utility>

namespace Quenzo::Detail {

/// The texts of a table: what stands in a member of its rows.
template <const auto& kRows, auto Member>
struct Column {
    static constexpr std::size_t kSize = kRows.size();
    static constexpr std::string_view At(std::size_t place) noexcept { return kRows[place].*Member; }
};

/// The texts of a table that has nothing else.
template <const auto& kTexts>
struct TextList {
    static constexpr std::size_t kSize = kTexts.size();
    static constexpr std::string_view At(std::size_t place) noexcept { return kTexts[place]; }
};

/// How an index tells texts apart: by their bytes.
struct ExactWords {
    static constexpr std::uint64_t Fold(std::uint64_t word) noexcept { return word; }
};

/// How an index tells texts apart: without regard to the case of A to Z.
struct CaselessWords {
    /// Lowers each of the eight bytes that is a capital letter. No byte carries into the next: the sums are of seven
    /// bits and set the eighth.
    static constexpr std::uint64_t Fold(std::uint64_t word) noexcept {
        constexpr std::uint64_t ones = 0x0101010101010101U;
        const std::uint64_t low = word & (0x7F * ones);
        const std::uint64_t fromA = low + (0x80 - 'A') * ones;
        const std::uint64_t behindZ = low + (0x7F - 'Z') * ones;
        return word + ((fromA & ~behindZ & ~word & (0x80 * ones)) >> 2);
    }
};

/// Tells at which place of a fixed table, a Column or a TextList, a text stands. Made by the compiler, as a perfect
/// hash: the texts are spread over buckets, and for each bucket a displacement is searched for that puts its texts into
/// free slots, so a look-up costs one hash, two loads and one comparison. The hash sees eight characters behind what
/// all texts begin with and the last eight; should that be too little to tell the texts apart, or should a text stand
/// there twice, the compiler reports it. The index holds neither texts nor addresses.
template <typename Table, typename Words = ExactWords>
class TextIndex {
    static constexpr std::size_t N = Table::kSize;
    static_assert(N > 1 && N <= 0x8000, "places and slots are kept in 16 bits, and a table of one text needs no index");

public:
    /// The texts must have at least two characters each.
    constexpr explicit TextIndex(const Table& table = {}) : table_(table), common_(CommonBeginning(table)) {
        for (int attempt = 0; !FillSlots(); ++attempt) {
            if (attempt == kAttempts) {
                throw std::logic_error("a text stands there twice, or the hash is too weak");
            }
            multiplier_ = multiplier_ * 6364136223846793005U + 1442695040888963407U;
        }
    }

    /// The place of the text, from 0, or N when it is not in the table.
    constexpr std::size_t Find(std::string_view text) const noexcept {
        if (text.size() < 2) {
            return N;
        }
        const std::uint64_t hash = HashOf(text);
        const std::size_t place = slots_[SlotOf(hash, displacements_[BucketOf(hash)])];
        return place < N && AreSame(text, table_.At(place)) ? place : N;
    }

    constexpr bool Contains(std::string_view text) const noexcept { return Find(text) < N; }

private:
    static constexpr int kAttempts = 100;
    static constexpr std::size_t kSlots = std::bit_ceil(2 * N);
    static constexpr std::size_t kBuckets = std::bit_ceil(N);

    static constexpr std::size_t CommonBeginning(const Table& table) {
        const std::string_view first = table.At(0);
        std::size_t length = first.size();
        for (std::size_t place = 1; place < N; ++place) {
            const std::string_view text = table.At(place);
            const auto differ = std::mismatch(text.begin(), text.end(), first.begin(), first.end());
            length = std::min(length, static_cast<std::size_t>(differ.first - text.begin()));
        }
        return length;
    }

    // One expression, which compilers turn into one load.
    template <std::size_t... I>
    static constexpr std::uint64_t Load(const char* from, std::index_sequence<I...>) noexcept {
        return ((std::uint64_t{static_cast<unsigned char>(from[I])} << (8 * I)) | ...);
    }

    template <std::size_t Width>
    static constexpr std::uint64_t WordAt(std::string_view text, std::size_t at) noexcept {
        return Words::Fold(Load(text.data() + at, std::make_index_sequence<Width>()));
    }

    // Word by word, from behind the common beginning; the last word overlaps the one before as the length demands.
    template <std::size_t Width>
    constexpr std::uint64_t HashOfWords(std::string_view text) const noexcept {
        const std::size_t last = text.size() - Width;
        std::uint64_t hash = text.size();
        for (std::size_t at = std::min(common_, last); at < last; at += Width) {
            hash = std::rotl((hash ^ WordAt<Width>(text, at)) * multiplier_, 32);
        }
        hash = (hash ^ WordAt<Width>(text, last)) * multiplier_;
        return hash ^ (hash >> 32);
    }

    constexpr std::uint64_t HashOf(std::string_view text) const noexcept {
        if (text.size() >= 8) {
            return HashOfWords<8>(text);
        }
        return text.size() >= 4 ? HashOfWords<4>(text) : HashOfWords<2>(text);
    }

    template <std::size_t Width>
    static constexpr bool AreSameWords(std::string_view one, std::string_view other) noexcept {
        const std::size_t last = one.size() - Width;
        for (std::size_t at = 0; at < last; at += Width) {
            if (WordAt<Width>(one, at) != WordAt<Width>(other, at)) {
                return false;
            }
        }
        return WordAt<Width>(one, last) == WordAt<Width>(other, last);
    }

    static constexpr bool AreSame(std::string_view one, std::string_view other) noexcept {
        if (one.size() != other.size()) {
            return false;
        }
        if (one.size() >= 8) {
            return AreSameWords<8>(one, other);
        }
        return one.size() >= 4 ? AreSameWords<4>(one, other) : AreSameWords<2>(one, other);
    }

    // The bucket comes from the top of the hash and the slot from below, so that the texts of a bucket differ in it.
    static constexpr std::size_t BucketOf(std::uint64_t hash) noexcept {
        return static_cast<std::size_t>(hash >> (64 - std::countr_zero(kBuckets)));
    }

    static constexpr std::size_t SlotOf(std::uint64_t hash, std::size_t displacement) noexcept {
        return (static_cast<std::size_t>(hash) ^ displacement) & (kSlots - 1);
    }

    constexpr bool FillSlots() {
        std::array<std::pair<std::uint64_t, std::uint16_t>, N> hashes = {};
        for (std::size_t place = 0; place < N; ++place) {
            hashes[place] = {HashOf(table_.At(place)), static_cast<std::uint16_t>(place)};
        }
        std::sort(hashes.begin(), hashes.end());
        slots_.fill(static_cast<std::uint16_t>(N));
        for (std::size_t begin = 0, end = 0; begin < N; begin = end) {
            const std::size_t bucket = BucketOf(hashes[begin].first);
            while (end < N && BucketOf(hashes[end].first) == bucket) {
                ++end;
            }
            if (!PlaceBucket(bucket, hashes, begin, end)) {
                return false;
            }
        }
        return true;
    }

    template <typename Hashes>
    constexpr bool PlaceBucket(std::size_t bucket, const Hashes& hashes, std::size_t begin, std::size_t end) {
        for (std::size_t displacement = 0; displacement < kSlots; ++displacement) {
            std::size_t placed = begin;
            while (placed < end && slots_[SlotOf(hashes[placed].first, displacement)] == N) {
                slots_[SlotOf(hashes[placed].first, displacement)] = hashes[placed].second;
                ++placed;
            }
            if (placed == end) {
                displacements_[bucket] = static_cast<std::uint16_t>(displacement);
                return true;
            }
            while (placed > begin) {
                --placed;
                slots_[SlotOf(hashes[placed].first, displacement)] = static_cast<std::uint16_t>(N);
            }
        }
        return false;
    }

    [[no_unique_address]] Table table_;
    std::size_t common_;
    std::array<std::uint16_t, kBuckets> displacements_ = {};
    std::array<std::uint16_t, kSlots> slots_ = {};
    std::uint64_t multiplier_ = 0x9E3779B97F4A7C15U;
};

}  // namespace Quenzo::Detail
