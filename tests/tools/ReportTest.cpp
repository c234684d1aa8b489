// What look-ups print: the layout for people, and the JSON for scripts.

#include <tools/Report.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>

namespace Quenzo::Tools {
namespace {

Report Sample() {
    Report report;
    report.Add("name", "x");
    report.Add("longer name", std::int64_t{-5});
    report.Add("share", 0.5);
    report.Add("set", true);
    report.Add("missing", "");
    report.Add("list", Report::Texts{"a", "b"});
    report.Add("no list", Report::Texts{});
    report.Add({"rows",
                {"id", "count", "all of them"},
                {{"first", std::int64_t{1}, Report::Texts{"a", "b"}}, {"2nd", std::int64_t{12345}, Report::Texts{}}}});
    return report;
}

TEST(Report, AlignsForPeople) {
    EXPECT_EQ(Sample().ToText(),
              "name:         x\n"
              "longer name:  -5\n"
              "share:        0.5\n"
              "set:          yes\n"
              "missing:      -\n"
              "list:         a, b\n"
              "no list:      -\n"
              "\n"
              "id     count  all of them\n"
              "first      1  a, b\n"
              "2nd    12345  -\n");
}

TEST(Report, WritesJsonForScripts) {
    EXPECT_EQ(Sample().ToJson(), R"({
  "name": "x",
  "longerName": -5,
  "share": 0.5,
  "set": true,
  "missing": "",
  "list": [
    "a",
    "b"
  ],
  "noList": [],
  "rows": [
    {
      "id": "first",
      "count": 1,
      "allOfThem": [
        "a",
        "b"
      ]
    },
    {
      "id": "2nd",
      "count": 12345,
      "allOfThem": []
    }
  ]
}
)");
}

TEST(Report, NamesItsTablesWhenThereAreSeveral) {
    Report report;
    report.Add({"first table", {"a"}, {{"x"}}});
    report.Add({"second", {"b"}, {}});
    EXPECT_EQ(report.ToText(), "first table:\na\nx\n\nsecond:\nb\n");
    EXPECT_EQ(report.ToJson(), "{\n  \"firstTable\": [\n    {\n      \"a\": \"x\"\n    }\n  ],\n  \"second\": []\n}\n");
}

TEST(Report, BreaksLongLists) {
    Report report;
    report.Add("list", Report::Texts(30, "word"));
    EXPECT_EQ(report.ToText(),
              "list:  word, word, word, word, word, word, word, word, word, word, word, word, word, word, word, word, "
              "word, word, word,\n"
              "       word, word, word, word, word, word, word, word, word, word, word\n");
}

TEST(Report, EscapesInJson) {
    Report report;
    report.Add("text", "a\"\\\n");
    EXPECT_EQ(report.ToJson(), "{\n  \"text\": \"a\\\"\\\\\\n\"\n}\n");
}

TEST(Report, WritesNumbersThatJsonDoesNotKnowAsNull) {
    Report report;
    report.Add("much", std::numeric_limits<double>::infinity());
    EXPECT_EQ(report.ToJson(), "{\n  \"much\": null\n}\n");
    EXPECT_EQ(report.ToText(), "much:  inf\n");
}

}  // namespace
}  // namespace Quenzo::Tools
