#pragma once

// What the tests of the catalogues share: the expected catalogues, every identifier that there is, texts that only
// resemble one, and a look at what a call raised.

#include <foundation/Exception.h>
#include <tests/foundation/Failures.h>

#include <boost/core/demangle.hpp>
#include <boost/throw_exception.hpp>

#include <gtest/gtest.h>

#include <exception>
#include <string>
#include <typeinfo>
#include <utility>
#include <vector>

namespace Quenzo::Conf::Testing {

using Strings = std::vector<std::string>;

/// The catalogues as they must be, written out in CatalogueRows/.
Strings ExpectedVideoCodecs();
Strings ExpectedAudioCodecs();
Strings ExpectedSubtitleCodecs();
Strings ExpectedCodecsOfNoKind();
Strings ExpectedRawPhotographs();
Strings ExpectedAudioContainers();
Strings ExpectedImplementations();
Strings ExpectedProprietaryCodecs();
Strings ExpectedStillPictures();
std::vector<std::pair<std::string, std::string>> ExpectedFormatExtensions();

/// The two lists, one behind the other.
Strings Joined(Strings first, const Strings& second);

/// The values of the constants of the vocabulary, written out in VocabularyRows/, sorted and each once: of all, of the
/// codec ids and of the containers.
const Strings& AllIdentifiers();
const Strings& AllCodecConstants();
const Strings& AllContainerConstants();

/// Texts made from another that are not the same: in the other case, with blanks, with the zero character, each
/// beginning of it, and with one character changed, left out or written twice.
Strings Lookalikes(const std::string& text);

/// All identifiers, what looks like each of them, the empty text and a very long one.
const Strings& Probes();

std::string InUpperCase(std::string text);
std::string InLowerCase(std::string text);

/// The failure must tell the source and a function where it was raised, and carry a call stack.
template <typename Failure>
void ExpectOrigin(const Failure& failure, const std::string& file, const std::string& function) {
    using Quenzo::Testing::TagOf;
    EXPECT_NE(TagOf<Exception::TagCallStack>(failure).value_or(""), "");
    EXPECT_EQ(std::string(TagOf<boost::throw_file>(failure).value_or("")), file);
    EXPECT_GT(TagOf<boost::throw_line>(failure).value_or(0), 0);
    EXPECT_NE(Quenzo::Testing::FunctionOf(failure).find(function), std::string::npos)
        << Quenzo::Testing::FunctionOf(failure);
}

/// The call must raise exactly a `Failure`, one of the standard library's included, that shows this text and its
/// origin.
template <typename Failure, typename Call>
void ExpectRaised(const Call& call, const std::string& text, const std::string& file, const std::string& function) {
    try {
        call();
        ADD_FAILURE() << "nothing was raised instead of: " << text;
    } catch (const boost::wrapexcept<Failure>& failure) {
        EXPECT_EQ(failure.what(), text);
        ExpectOrigin(failure, file, function);
    } catch (const std::exception& other) {
        ADD_FAILURE() << "raised a " << boost::core::demangle(typeid(other).name()) << ": " << other.what();
    }
}

}  // namespace Quenzo::Conf::Testing
