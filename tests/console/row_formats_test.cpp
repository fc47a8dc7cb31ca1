#include "console/row_formats.h"

#include <doctest/doctest.h>

#include <fstream>
#include <nlohmann/json.hpp>
#include <sstream>

#include "platform/program_folder.h"

namespace {

const Row kRow{R"(\HKEY_USERS\a)", "2009/03/05 07:08:09", "name", R"(C:\gone.exe)", "fonts", "It is a test."};
const Row kHostile{
    "\\HKEY_USERS\\\"a\",\r\n[b]\x1B", "", "x,\"y\"\t", "\x80\x81\xE4\xFF{}", "wallpapers", ""};

std::vector<Row> Read(const std::string& text) {
    const auto read = ReadRows(text);
    if (const auto* error = std::get_if<RowsError>(&read)) FAIL(error->text);
    return std::get<std::vector<Row>>(read);
}

std::string ErrorOf(const std::string& text) {
    const auto read = ReadRows(text);
    const auto* error = std::get_if<RowsError>(&read);
    return error != nullptr ? error->text : "";
}

std::string OneRow(const std::string& members) { return R"({"rows": [{)" + members + "}]}"; }

constexpr char kNeeded[] = R"("key":"k","value_name":"v","data_reference":"d","check":"fonts")";

}  // namespace

TEST_CASE("csv has a line of names, and then a line for each row") {
    CHECK(WriteRows({}, RowFormat::Csv, true) == "key,write_time,value_name,data_reference,check,reason\r\n");
    CHECK(WriteRows(std::vector{kRow}, RowFormat::Csv, true) ==
          "key,write_time,value_name,data_reference,check,reason\r\n"
          "\\HKEY_USERS\\a,2009/03/05 07:08:09,name,C:\\gone.exe,fonts,It is a test.\r\n");
}

TEST_CASE("json is an object with the rows, one on each line") {
    CHECK(WriteRows({}, RowFormat::Json, true) == "{\"complete\": true, \"rows\": [\n]}\n");
    CHECK(WriteRows(std::vector{kRow, kRow}, RowFormat::Json, false) ==
          "{\"complete\": false, \"rows\": [\n"
          R"({"key":"\\HKEY_USERS\\a","write_time":"2009/03/05 07:08:09","value_name":"name",)"
          R"("data_reference":"C:\\gone.exe","check":"fonts","reason":"It is a test."})"
          ",\n"
          R"({"key":"\\HKEY_USERS\\a","write_time":"2009/03/05 07:08:09","value_name":"name",)"
          R"("data_reference":"C:\\gone.exe","check":"fonts","reason":"It is a test."})"
          "\n]}\n");
}

TEST_CASE("json lines are the rows alone") {
    CHECK(WriteRows({}, RowFormat::JsonLines, true).empty());
    CHECK(WriteRows(std::vector{kRow}, RowFormat::JsonLines, true) ==
          R"({"key":"\\HKEY_USERS\\a","write_time":"2009/03/05 07:08:09","value_name":"name",)"
          R"("data_reference":"C:\\gone.exe","check":"fonts","reason":"It is a test."})"
          "\n");
}

TEST_CASE("rows come back from every format as they were") {
    for (const RowFormat format : {RowFormat::Csv, RowFormat::Json, RowFormat::JsonLines}) {
        const std::vector<Row> rows{kRow, kHostile, Row{}};
        CHECK(Read(WriteRows(rows, format, true)) == rows);
        CHECK(Read("\xEF\xBB\xBF" + WriteRows(rows, format, true)) == rows);
        CHECK(Read(WriteRows(std::vector{kRow}, format, true)) == std::vector{kRow});
    }
    CHECK(Read(WriteRows({}, RowFormat::Csv, true)).empty());
    CHECK(Read(WriteRows({}, RowFormat::Json, true)).empty());
}

TEST_CASE("rows are read from UTF-16 too") {
    std::string wide("\xFF\xFE");
    for (const char c : WriteRows(std::vector{kRow}, RowFormat::Json, true)) wide += {c, '\0'};
    CHECK(Read(wide) == std::vector{kRow});
    CHECK(ErrorOf(wide.substr(0, wide.size() - 1)) == "no whole UTF-16 text");
}

TEST_CASE("time and reason may be missing, and other members are passed over") {
    const std::vector<Row> rows{{"k", "", "v", "d", "fonts", ""}};
    CHECK(Read(OneRow(kNeeded)) == rows);
    CHECK(Read(OneRow(kNeeded + std::string(R"(,"reviewed_by":{"name":"x"})"))) == rows);
    CHECK(Read("check,data_reference,note,value_name,key\nfonts,d,ok,v,k\n") == rows);
    CHECK(Read("{" + std::string(kNeeded) + "}") == rows);
    CHECK(Read("{" + std::string(kNeeded) + "}\r\n\r\n{" + kNeeded + "}") ==
          std::vector{rows.front(), rows.front()});
}

TEST_CASE("a text that is no list of rows is refused as a whole, with its reason") {
    const std::string row = "{" + std::string(kNeeded) + "}";
    const struct {
        std::string text;
        const char* reason;
    } rows[] = {
        {"", "the text is empty"},
        {" \r\n", "the text is empty"},
        {"[1]", "the json is no object with an array \"rows\""},
        {R"({"rows": 1})", "the json object has no array \"rows\""},
        {R"({"rows": [1]})", "row 1: is no object"},
        {R"({"x": 1})", "row 1: key is missing"},
        {OneRow(R"("key":"k","value_name":"v","data_reference":"d")"), "row 1: check is missing"},
        {OneRow(R"("key":7,"value_name":"v","data_reference":"d","check":"c")"), "row 1: key is no text"},
        {R"({"rows": [)" + row + R"(,{"key":"k"}]})", "row 2: value_name is missing"},
        {OneRow(R"("key":"\u4e2d","value_name":"v","data_reference":"d","check":"c")"),
         "row 1: key has a character that this machine's code page does not have"},
        {OneRow(R"("key":"a\u0000b","value_name":"v","data_reference":"d","check":"c")"),
         "row 1: key holds a zero character"},
        {"key,value_name,data_reference,check\r\n\xE4,b,c,d\r\n",
         "no whole UTF-8 text: it was cut, or saved in another encoding"},
        {OneRow("\"key\":\"\xE4\""), "no whole UTF-8 text: it was cut, or saved in another encoding"},
        {"hello", "neither json nor csv with a column \"key\""},
        {"key,value_name,check\r\n", "neither json nor csv with a column \"data_reference\""},
        {"key,value_name,data_reference,check\r\na,b,c\r\n", "row 1: has 3 fields instead of 4"},
        {"key,value_name,data_reference,check\r\na,b,c,\"d\r\n",
         "no whole csv: a double quote is missing, or one too many"},
    };
    for (const auto& bad : rows) {
        CAPTURE(bad.text);
        CHECK(ErrorOf(bad.text) == bad.reason);
    }
}

TEST_CASE("json that was cut anywhere is refused") {
    const std::string text = WriteRows(std::vector{kRow, kHostile}, RowFormat::Json, true);
    for (std::size_t length = 1; length + 1 < text.size(); ++length) {
        CAPTURE(length);
        CHECK_FALSE(ErrorOf(text.substr(0, length)).empty());
    }
    CHECK(ErrorOf(text.substr(0, 100)).substr(0, 40) == "no whole json: parse error at line 2, co");
}

TEST_CASE("a broken line of json lines is told by its row's number") {
    const std::string row = "{" + std::string(kNeeded) + "}\n";
    CHECK(ErrorOf(row + "\n" + row + row.substr(0, 20) + "\n" + row)
              .starts_with("row 3: no whole json: parse error at line 1, column "));
}

TEST_CASE("csv and json lines that were cut are refused, or give the rows in front of the cut") {
    const std::vector<Row> rows{kRow, kHostile};
    for (const RowFormat format : {RowFormat::Csv, RowFormat::JsonLines}) {
        const std::string text = WriteRows(rows, format, true);
        for (std::size_t length = 1; length < text.size(); ++length) {
            CAPTURE(length);
            const auto read = ReadRows(text.substr(0, length));
            const auto* some = std::get_if<std::vector<Row>>(&read);
            if (some == nullptr) continue;
            REQUIRE(some->size() <= rows.size());
            for (std::size_t index = 0; index < some->size(); ++index) {
                Row cut = rows[index];
                cut.reason = (*some)[index].reason;  // the last field of csv, on which nothing depends
                CHECK((*some)[index] == cut);
            }
        }
    }
}

TEST_CASE("blank lines in csv are passed over") {
    const std::vector<Row> rows{{"k", "", "v", "d", "fonts", ""}, {"l", "", "", "", "fonts", ""}};
    CHECK(Read("key,value_name,data_reference,check\r\n\r\nk,v,d,fonts\r\n\nl,,,fonts\r\n\r\n") == rows);
}

TEST_CASE("the documented schema names the members that are written") {
    std::ifstream file(ProgramFolder() + "\\..\\..\\docs\\rows.schema.json", std::ios::binary);
    std::stringstream text;
    text << file.rdbuf();
    const auto schema = nlohmann::json::parse(text.str());
    const auto document = nlohmann::json::parse(WriteRows(std::vector{kRow}, RowFormat::Json, true));
    const auto checkMembers = [](const nlohmann::json& described, const nlohmann::json& written) {
        CHECK(described["properties"].size() == written.size());
        for (const auto& [name, value] : written.items()) {
            CAPTURE(name);
            REQUIRE(described["properties"].contains(name));
            const std::string type = described["properties"][name]["type"];
            CHECK(type == (value.is_string() ? "string" : value.is_array() ? "array" : "boolean"));
        }
    };
    checkMembers(schema, document);
    checkMembers(schema["properties"]["rows"]["items"], document["rows"][0]);
}
