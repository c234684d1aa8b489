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
    using Ch = char;

    explicit JsonQuenzoStreamIn(SP<IDataInput> input) : input_(std::move(input)), size_(input_->GetSize()) {
        Advance();
    }

    Ch Peek() const noexcept { return current_; }

    Ch Take() {
        const Ch taken = current_;
        Advance();
        return taken;
    }

    /// The number of bytes taken from the input so far; the character at hand is the last of them.
    std::size_t Tell() const noexcept { return static_cast<std::size_t>(count_); }

    // A reader that parses in place would call these; they are here because its code mentions them.
    Ch* PutBegin() {
        assert(false);
        return nullptr;
    }
    void Put(Ch /*unused*/) { assert(false); }
    void Flush() { assert(false); }
    std::size_t PutEnd(Ch* /*unused*/) {
        assert(false);
        return 0;
    }

private:
    void Advance() {
        if (count_ >= size_) {
            current_ = '\0';
        } else if (input_->Read(&current_, 1) == 1) {
            ++count_;
        } else {
            current_ = '\0';
            size_ = count_;
        }
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
    using Ch = char;

    explicit JsonQuenzoStreamOut(SP<IDataOutput> output) : output_(std::move(output)) {}

    void Put(Ch character) { output_->Write(&character, 1); }
    void Flush() {}

private:
    SP<IDataOutput> output_;
};

}  // namespace Quenzo::Core
