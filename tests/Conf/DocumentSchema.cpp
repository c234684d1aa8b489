#include <tests/Conf/DocumentSchema.h>

#include <rapidjson/document.h>
#include <rapidjson/schema.h>
#include <rapidjson/stringbuffer.h>

#include <fstream>
#include <iterator>
#include <stdexcept>

namespace Quenzo::Conf::Testing {

namespace {

const rapidjson::SchemaDocument& Schema() {
    static const rapidjson::SchemaDocument schema = [] {
        std::ifstream file(QUENZO_TEST_SCHEMA, std::ios::binary);
        const std::string text(std::istreambuf_iterator<char>(file), {});
        rapidjson::Document document;
        if (document.Parse(text.c_str()).HasParseError()) {
            throw std::runtime_error("the schema is no JSON");
        }
        return rapidjson::SchemaDocument(document);
    }();
    return schema;
}

}  // namespace

std::string SchemaFault(const std::string& document) {
    rapidjson::Document parsed;
    if (parsed.Parse<rapidjson::kParseIterativeFlag>(document.data(), document.size()).HasParseError()) {
        return "no JSON";
    }
    rapidjson::SchemaValidator validator(Schema());
    if (parsed.Accept(validator)) {
        return {};
    }
    rapidjson::StringBuffer where;
    validator.GetInvalidDocumentPointer().StringifyUriFragment(where);
    return std::string(where.GetString()) + ": " + validator.GetInvalidSchemaKeyword();
}

}  // namespace Quenzo::Conf::Testing
