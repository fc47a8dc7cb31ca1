#include "console/row_formats.h"

#include <algorithm>
#include <array>
#include <nlohmann/json.hpp>
#include <optional>

#include "console/code_page.h"
#include "console/csv_rules.h"

namespace {

using Json = nlohmann::ordered_json;
using Rows = std::vector<Row>;
using Fields = std::vector<std::string>;

/// A row's fields by their names in every format, in the order in which they are written.
struct FieldRow {
    const char* name;
    std::string Row::*text;
    bool isNeeded;  // without it the row names nothing that could be looked for
};
constexpr FieldRow kFields[] = {
    {"key", &Row::key, true},
    {"write_time", &Row::writeTime, false},
    {"value_name", &Row::valueName, true},
    {"data_reference", &Row::dataReference, true},
    {"check", &Row::check, true},
    {"reason", &Row::reason, false},
};

constexpr char kRowsName[] = "rows";
constexpr char kCompleteName[] = "complete";

/// Ends the reading of rows, with what is to be told.
[[noreturn]] void Refuse(const std::string& text) { throw RowsError{text}; }

std::string InRow(std::size_t number) { return "row " + std::to_string(number) + ": "; }

Json ToJson(const Row& row) {
    Json object;
    for (const FieldRow& field : kFields) object[field.name] = ToUtf8(row.*field.text);
    return object;
}

std::string WriteCsv(std::span<const Row> rows) {
    Fields names;
    for (const FieldRow& field : kFields) names.emplace_back(field.name);
    std::string text = CsvLine(names);
    for (const Row& row : rows) {
        Fields line;
        for (const FieldRow& field : kFields) line.push_back(ToUtf8(row.*field.text));
        text += CsvLine(line);
    }
    return text;
}

/// One row on each line, so that two analyses can be compared line by line.
std::string WriteJson(std::span<const Row> rows, bool isComplete) {
    std::string text = std::string("{\"") + kCompleteName + "\": " + (isComplete ? "true" : "false") +
                       ", \"" + kRowsName + "\": [";
    const char* separator = "\n";
    for (const Row& row : rows) {
        text.append(separator).append(ToJson(row).dump());
        separator = ",\n";
    }
    return text += "\n]}\n";
}

std::string WriteJsonLines(std::span<const Row> rows) {
    std::string text;
    for (const Row& row : rows) text.append(ToJson(row).dump()) += '\n';
    return text;
}

std::string ToCodePage(const std::string& utf8, std::size_t number, const char* name) {
    std::optional<std::string> text = FromUtf8(utf8);
    if (!text.has_value())
        Refuse(InRow(number) + name + " has a character that this machine's code page does not have");
    if (text->find('\0') != std::string::npos) Refuse(InRow(number) + name + " holds a zero character");
    return std::move(*text);
}

Row FromJson(const Json& object, std::size_t number) {
    if (!object.is_object()) Refuse(InRow(number) + "is no object");
    Row row;
    for (const FieldRow& field : kFields) {
        const auto member = object.find(field.name);
        if (member == object.end()) {
            if (field.isNeeded) Refuse(InRow(number) + field.name + " is missing");
            continue;
        }
        if (!member->is_string()) Refuse(InRow(number) + field.name + " is no text");
        row.*field.text = ToCodePage(member->get<std::string>(), number, field.name);
    }
    return row;
}

Json ParseJson(std::string_view text, const std::string& opening = "") {
    try {
        return Json::parse(text);
    } catch (const nlohmann::json::exception& error) {
        const std::string what = error.what();
        // Without the number of the error in the library's own list.
        Refuse(opening + "no whole json: " +
               what.substr(what.find("] ") == std::string::npos ? 0 : what.find("] ") + 2));
    }
}

Rows ReadJson(const Json& document) {
    const auto rows = document.find(kRowsName);
    if (rows == document.end() || !rows->is_array()) Refuse("the json object has no array \"rows\"");
    Rows read;
    for (const Json& object : *rows) read.push_back(FromJson(object, read.size() + 1));
    return read;
}

Rows ReadJsonLines(std::string_view text) {
    Rows read;
    while (!text.empty()) {
        const std::string_view line = text.substr(0, text.find('\n'));
        text.remove_prefix(std::min(line.size() + 1, text.size()));
        if (line.find_first_not_of(" \t\r") == std::string_view::npos) continue;
        const std::size_t number = read.size() + 1;
        read.push_back(FromJson(ParseJson(line, InRow(number)), number));
    }
    return read;
}

/// Where each field stands in the lines; nothing for one that is not there.
using Columns = std::array<std::optional<std::size_t>, std::size(kFields)>;

Columns FindColumns(const Fields& names) {
    Columns columns;
    for (std::size_t field = 0; field < columns.size(); ++field) {
        const auto found = std::ranges::find(names, kFields[field].name);
        if (found != names.end())
            columns[field] = static_cast<std::size_t>(found - names.begin());
        else if (kFields[field].isNeeded)
            Refuse(std::string("neither json nor csv with a column \"") + kFields[field].name + "\"");
    }
    return columns;
}

Rows ReadCsv(std::string_view text) {
    const std::optional<std::vector<Fields>> lines = ParseCsv(text);
    if (!lines.has_value()) Refuse("no whole csv: a double quote is missing, or one too many");
    if (lines->empty()) Refuse("the text is empty");
    const Columns columns = FindColumns(lines->front());
    Rows read;
    for (const Fields& line : std::span(*lines).subspan(1)) {
        if (line == Fields{""}) continue;  // a blank line, as a hand that edits leaves it
        const std::size_t number = read.size() + 1;
        if (line.size() != lines->front().size())
            Refuse(InRow(number) + "has " + std::to_string(line.size()) + " fields instead of " +
                   std::to_string(lines->front().size()));
        Row row;
        for (std::size_t field = 0; field < columns.size(); ++field)
            if (columns[field].has_value())
                row.*kFields[field].text = ToCodePage(line[*columns[field]], number, kFields[field].name);
        read.push_back(std::move(row));
    }
    return read;
}

Rows ReadAny(std::string_view text) {
    const std::size_t first = text.find_first_not_of(" \t\r\n");
    if (first == std::string_view::npos) Refuse("the text is empty");
    if (text[first] == '[') Refuse("the json is no object with an array \"rows\"");
    if (text[first] != '{') return ReadCsv(text);
    // Lines of rows, each an object, are no json document, and one line alone is told by its members.
    const Json document = Json::parse(text, nullptr, false);
    if (document.is_discarded() && text.find("\"rows\"") == std::string_view::npos)
        return ReadJsonLines(text);
    if (document.is_discarded()) return ReadJson(ParseJson(text));
    return document.contains(kRowsName) ? ReadJson(document) : ReadJsonLines(text);
}

std::string InUtf8(std::string_view bytes) {
    if (!bytes.starts_with("\xFF\xFE")) {
        if (!IsUtf8(bytes)) Refuse("no whole UTF-8 text: it was cut, or saved in another encoding");
        return std::string(bytes.substr(bytes.starts_with("\xEF\xBB\xBF") ? 3 : 0));
    }
    std::optional<std::string> utf8 = Utf16ToUtf8(bytes.substr(2));
    if (!utf8.has_value()) Refuse("no whole UTF-16 text");
    return std::move(*utf8);
}

}  // namespace

std::string WriteRows(std::span<const Row> rows, RowFormat format, bool isComplete) {
    switch (format) {
        case RowFormat::Csv:
            return WriteCsv(rows);
        case RowFormat::Json:
            return WriteJson(rows, isComplete);
        case RowFormat::JsonLines:
            return WriteJsonLines(rows);
    }
    return {};
}

std::variant<std::vector<Row>, RowsError> ReadRows(std::string_view bytes) {
    try {
        return ReadAny(InUtf8(bytes));
    } catch (const RowsError& error) {
        return error;
    }
}
