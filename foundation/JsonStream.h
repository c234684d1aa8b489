#pragma once

#include <foundation/DataStream.h>

#include <cassert>
#include <cstddef>
#include <cstdint>
#include <utility>

namespace Quenzo::Core {

/// Lets a JSON reader pull characters from an input, one read of one byte at a time. The end of the input shows as the
/// character 0, and so does the point where an input breaks off before its stated size.
class JsonQuenzoStreamIn {
public:
    /// A character is a byte.
    using Ch = char;

    /// Reads the first character. The input must not be null.
    explicit JsonQuenzoStreamIn(SP<IDataInput> input) : input_(std::move(input)), size_(input_->GetSize()) {
        Advance();
    }

    /// The character at hand, 0 at the end.
    Ch Peek() const noexcept { return current_; }

    /// The character at hand, 0 at the end; goes on to the next one.
    [[gnu::always_inline]] Ch Take() {
        const Ch taken = current_;
        Advance();
        return taken;
    }

    /// The number of bytes taken from the input so far; the character at hand is the last of them.
    std::size_t Tell() const noexcept { return static_cast<std::size_t>(count_); }

    /// A reader that parses in place would call these; they are here because its code mentions them.
    Ch* PutBegin() {
        assert(false);
        return nullptr;
    }
    /// See PutBegin.
    void Put(Ch /*unused*/) { assert(false); }
    void Flush() { assert(false); }
    /// See PutBegin.
    std::size_t PutEnd(Ch* /*unused*/) {
        assert(false);
        return 0;
    }

private:
    // Called for every character: left to itself, g++ puts it in place in the smaller of a parser's functions only.
    [[gnu::always_inline]] void Advance() {
        if (count_ < size_ && input_->Read(&current_, 1) == 1) {
            ++count_;
            return;
        }
        current_ = '\0';
        size_ = count_;
    }

    SP<IDataInput> input_;
    std::uint64_t size_;
    std::uint64_t count_ = 0;
    Ch current_ = '\0';
};

/// Lets a JSON writer push characters into an output, one write of one byte each. Neither flushes nor closes the
/// output.
class JsonQuenzoStreamOut {
public:
    /// A character is a byte.
    using Ch = char;

    /// The output must not be null.
    explicit JsonQuenzoStreamOut(SP<IDataOutput> output) : output_(std::move(output)) {}

    /// Writes the character.
    void Put(Ch character) { output_->Write(&character, 1); }
    /// Does nothing.
    void Flush() {}

private:
    SP<IDataOutput> output_;
};

}  // namespace Quenzo::Core
