#include "console/named_rows.h"

#include "console/check_selection.h"
#include "console/code_page.h"
#include "console/output_file.h"
#include "console/row_formats.h"

namespace {

std::optional<std::string> ReadBytes(CTerminal& terminal, const std::string& file) {
    if (file == "-") {
        std::optional<std::string> input = terminal.ReadInput();
        if (!input.has_value()) WriteErrorLine(terminal, "Standard input cannot be read.");
        return input;
    }
    std::string bytes;
    if (ReadWholeFile(file, bytes)) return bytes;
    WriteErrorLine(terminal, "The rows file " + ToUtf8(file) + " cannot be read.");
    return std::nullopt;
}

}  // namespace

std::optional<std::vector<Row>> ReadNamedRows(CTerminal& terminal, const std::string& file) {
    const std::optional<std::string> bytes = ReadBytes(terminal, file);
    if (!bytes.has_value()) return std::nullopt;
    const auto refuse = [&terminal](const std::string& reason) {
        WriteErrorLine(terminal, "The rows cannot be read: " + reason + ".");
        return std::nullopt;
    };
    std::variant<std::vector<Row>, RowsError> read = ReadRows(*bytes);
    if (const auto* error = std::get_if<RowsError>(&read)) return refuse(error->text);
    auto& rows = std::get<std::vector<Row>>(read);
    for (std::size_t index = 0; index < rows.size(); ++index)
        if (!IsCheck(rows[index].check))
            return refuse("row " + std::to_string(index + 1) + ": no check is named \"" +
                          ToUtf8(rows[index].check) + "\"");
    return std::move(rows);
}
