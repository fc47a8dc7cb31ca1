// Compares any pattern with any path, and the outcome with that of another way to compare.
#include "console/glob_rules.h"

#include <vector>

#include "tests/fuzz/fuzz_support.h"
#include "tests/rules/exact_buffer.h"

namespace {

char Lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; }

/// By a table: whether so many characters of the pattern are of so many of the text.
bool Matches(std::string_view pattern, std::string_view text) {
    std::vector<bool> before(text.size() + 1);
    before[0] = true;
    for (const char wanted : pattern) {
        std::vector<bool> after(text.size() + 1);
        for (std::size_t count = 0; count <= text.size(); ++count) {
            if (wanted == '*') {
                after[count] = before[count] || (count > 0 && after[count - 1]);
            } else if (count > 0) {
                after[count] =
                    before[count - 1] && (wanted == '?' || Lower(wanted) == Lower(text[count - 1]));
            }
        }
        before = after;
    }
    return before[text.size()];
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    CFuzzInput input(bytes, size);
    const CExactBuffer pattern = CExactBuffer::Unterminated(input.TakeText(60));
    const CExactBuffer path = CExactBuffer::Unterminated(input.Rest().substr(0, 200));
    std::string_view compared = path.View();
    if (!pattern.View().starts_with('\\') && compared.starts_with('\\')) compared.remove_prefix(1);
    Require(KeyMatches(pattern.View(), path.View()) == Matches(pattern.View(), compared),
            "a path is of a pattern when the table says so");
    Require(KeyMatches("*", path.View()), "an asterisk is any path");
    return 0;
}
