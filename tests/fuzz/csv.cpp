// Writes lines of any fields and reads them back, and reads any text as comma-separated values.
#include "console/csv_rules.h"

#include "tests/fuzz/fuzz_support.h"
#include "tests/rules/exact_buffer.h"

namespace {

using Lines = std::vector<std::vector<std::string>>;

Lines TakeLines(CFuzzInput& input) {
    Lines lines;
    for (int count = input.TakeByte() % 4; count > 0; --count) {
        std::vector<std::string>& line = lines.emplace_back();
        for (int fields = 1 + input.TakeByte() % 5; fields > 0; --fields) line.push_back(input.TakeText());
    }
    return lines;
}

std::string Text(const Lines& lines) {
    std::string text;
    for (const std::vector<std::string>& line : lines) text += CsvLine(line);
    return text;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    CFuzzInput input(bytes, size);
    const Lines lines = TakeLines(input);
    const CExactBuffer written = CExactBuffer::Unterminated(Text(lines));
    Require(ParseCsv(written.View()) == lines, "lines come back as they were written");

    const CExactBuffer any = CExactBuffer::Unterminated(input.Rest());
    const std::optional<Lines> read = ParseCsv(any.View());
    if (!read.has_value()) {
        Require(any.View().find('"') != std::string_view::npos, "only a quoted field can be malformed");
        return 0;
    }
    for (const std::vector<std::string>& line : *read) Require(!line.empty(), "a line has a field");
    Require(read->empty() == any.View().empty(), "a text has a line");
    Require(ParseCsv(Text(*read)) == read, "what is read can be written");
    return 0;
}
