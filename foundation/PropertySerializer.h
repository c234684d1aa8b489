#pragma once

#include <foundation/DataStream.h>
#include <foundation/Export.h>
#include <foundation/Property.h>

#include <rapidjson/fwd.h>

namespace Quenzo::Core {

/// Property trees as JSON. Whoever has RapidJSON values includes <rapidjson/document.h>, which this header does
/// without. The value of a property, without its own name, becomes:
///
///   type     JSON
///   None     null
///   Bool     true or false
///   Int64    an integer
///   Ratio    an array of two integers, numerator and denominator: [30000,1001]
///   String   a string, its bytes kept as they are
///   Node     an object with one member per child, in order; when two children share a name, an array of one-member
///            objects, so that no reader loses a child: [{"a":1},{"a":2}]
///
/// What is loaded equals what was saved, save for a tree that is itself of type None: null leaves the property that is
/// to be filled as it is. A child that is null is of type None. Everything else (a fraction, an integer beyond 64 bits,
/// a zero denominator, an array of another shape) raises PropertyException with a description that says what was met
/// and under which name.
class QUENZO_API PropertySerializer {
public:
    /// How deep the arrays and objects of a document may stand in one another, the outermost being level 1.
    static constexpr int MAX_DEPTH = 1000;

    /// Fills a JSON value with the content of a tree. Raises PropertyException, and leaves `out` alone, when the tree
    /// is deeper than a document may be or a text is longer than JSON values can hold (2^32 - 1 bytes). RapidJSON's own
    /// allocator, which the caller brings, does not report that memory has run out: the program then ends.
    static void Save(const Property& tree, rapidjson::Value& out,
                     rapidjson::MemoryPoolAllocator<rapidjson::CrtAllocator>& allocator);

    /// Fills a property with the content of a JSON value; its name stays. null leaves it as it is. A failure leaves it
    /// as it was.
    static void CoreLoad(Property& tree, const rapidjson::Value& in);

    /// Writes the content of a tree as a compact JSON text. Raises as Save does, before anything is written; what the
    /// output throws comes through as it is. Raises std::invalid_argument when the output is null.
    static void Write(const Property& tree, const SP<IDataOutput>& output);

    /// Fills a property with the content of a JSON text, as CoreLoad does. Raises PropertyException with the byte
    /// offset when the text is no JSON, or nests deeper than MAX_DEPTH; what the input throws comes through as it is.
    /// Raises std::invalid_argument when the input is null. A failure leaves the property as it was.
    static void Read(Property& tree, const SP<IDataInput>& input);
};

}  // namespace Quenzo::Core
