#pragma once

#include <bench/Verify.h>

#include <boost/rational.hpp>

#include <gst/gst.h>

#include <memory>
#include <string>
#include <utility>

namespace Quenzo::Bench {

/// GStreamer's GstStructure: fields by interned name, values as GValue. Fractions are of 32 bits. gst_init must have
/// been called.
struct StructureColumn {
    struct Free {
        void operator()(GstStructure* structure) const { gst_structure_free(structure); }
    };

    using Tree = std::unique_ptr<GstStructure, Free>;

    static Tree Make(const std::string& name) { return Tree(gst_structure_new_empty(name.c_str())); }

    static void Set(Tree& node, const std::string& key, const std::string& value) {
        gst_structure_set(node.get(), key.c_str(), G_TYPE_STRING, value.c_str(), nullptr);
    }

    static void Set(Tree& node, const std::string& key, const long long& value) {
        gst_structure_set(node.get(), key.c_str(), G_TYPE_INT64, gint64{value}, nullptr);
    }

    static void Set(Tree& node, const std::string& key, const bool& value) {
        gst_structure_set(node.get(), key.c_str(), G_TYPE_BOOLEAN, value ? TRUE : FALSE, nullptr);
    }

    static void Set(Tree& node, const std::string& key, const boost::rational<long long>& value) {
        gst_structure_set(node.get(), key.c_str(), GST_TYPE_FRACTION, static_cast<gint>(value.numerator()),
                          static_cast<gint>(value.denominator()), nullptr);
    }

    // The nested structure is handed over: setting it would copy it.
    template <typename Fill>
    static void SetNode(Tree& node, const std::string& key, Fill fill) {
        Tree child = Make(key);
        fill(child);
        GValue value = G_VALUE_INIT;
        g_value_init(&value, GST_TYPE_STRUCTURE);
        g_value_take_boxed(&value, child.release());
        gst_structure_take_value(node.get(), key.c_str(), &value);
    }

    template <typename T>
    static auto Get(const Tree& node, const std::string& key) {
        return Get(node.get(), key.c_str(), static_cast<const T*>(nullptr));
    }

    template <typename T>
    static auto Get(const GstStructure* node, const std::string& key) {
        return Get(node, key.c_str(), static_cast<const T*>(nullptr));
    }

    static const GstStructure* GetNode(const Tree& node, const std::string& key) {
        return gst_value_get_structure(gst_structure_get_value(node.get(), key.c_str()));
    }

    static Tree Copy(const Tree& tree) { return Tree(gst_structure_copy(tree.get())); }

    static bool Equal(const Tree& left, const Tree& right) {
        return gst_structure_is_equal(left.get(), right.get()) != FALSE;
    }

private:
    static const char* Get(const GstStructure* node, const char* key, const std::string* /*kind*/) {
        const char* value = gst_structure_get_string(node, key);
        Verify(value != nullptr, key);
        return value;
    }

    static long long Get(const GstStructure* node, const char* key, const long long* /*kind*/) {
        gint64 value = 0;
        Verify(gst_structure_get_int64(node, key, &value) != FALSE, key);
        return value;
    }

    static bool Get(const GstStructure* node, const char* key, const bool* /*kind*/) {
        gboolean value = FALSE;
        Verify(gst_structure_get_boolean(node, key, &value) != FALSE, key);
        return value != FALSE;
    }

    static std::pair<long long, long long> Get(const GstStructure* node, const char* key,
                                               const boost::rational<long long>* /*kind*/) {
        gint numerator = 0;
        gint denominator = 0;
        Verify(gst_structure_get_fraction(node, key, &numerator, &denominator) != FALSE, key);
        return {numerator, denominator};
    }
};

}  // namespace Quenzo::Bench
