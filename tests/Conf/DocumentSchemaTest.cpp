// The JSON Schema of the job document: what it takes and what it refuses. That every document which the tests save fits
// it is seen where they are saved.

#include <tests/Conf/DocumentSchema.h>
#include <tests/Conf/GraphSupport.h>

#include <gtest/gtest.h>

namespace Quenzo::Conf::Testing {
namespace {

std::string WithContent(const std::string& content) {
    return R"({"vertices":[{"id":1,"data":{"a":)" + content + R"(}}],"edges":[]})";
}

TEST(DocumentSchema, TakesWhatASaveCanWrite) {
    EXPECT_EQ(SchemaFault(R"({"vertices":[],"edges":[]})"), "");
    EXPECT_EQ(SchemaFault(R"({"vertices":[{"id":-1}],"edges":[{"id":1,"from":2,"to":3}]})"), "");
    for (const char* content :
         {"null", "true", "-9223372036854775808", R"("")", "[30000,1001]", "{}", R"({"b":{"c":[1,2]}})",
          R"([{"b":1},{"b":2}])", R"([{"b":1},{"b":[{"c":1},{"c":{}}]}])"}) {
        EXPECT_EQ(SchemaFault(WithContent(content)), "") << content;
    }
}

TEST(DocumentSchema, RefusesWhatNoSaveWrites) {
    for (const char* document :
         {"[]", "{}", R"({"vertices":[]})", R"({"vertices":[],"edges":[],"more":1})", R"({"vertices":[1],"edges":[]})",
          R"({"vertices":[{}],"edges":[]})", R"({"vertices":[{"id":1.5}],"edges":[]})",
          R"({"vertices":[{"id":1,"data":{}}],"edges":[]})",
          R"({"vertices":[{"id":1,"data":{"a":1,"b":2}}],"edges":[]})",
          R"({"vertices":[],"edges":[{"id":1,"from":1}]})", "no JSON"}) {
        EXPECT_NE(SchemaFault(document), "") << document;
    }
    for (const char* content : {"1.5", "[1]", "[1,2,3]", "[1,true]", R"([{"b":1}])", R"([{"b":1,"c":2},{"b":1}])"}) {
        EXPECT_NE(SchemaFault(WithContent(content)), "") << content;
    }
}

}  // namespace
}  // namespace Quenzo::Conf::Testing
