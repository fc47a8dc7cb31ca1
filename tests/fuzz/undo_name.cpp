// Shows any file name as a date, and names its companion.
#include <algorithm>

#include "repair/undo_name_rules.h"
#include "tests/fuzz/fuzz_support.h"
#include "tests/rules/exact_buffer.h"

namespace {

void CheckDate(std::string_view name, std::string_view date) {
    Require(date.size() == name.size(), "a date is as long as its name");
    int changed = 0;
    for (std::size_t at = 0; at < name.size(); ++at) {
        if (name[at] == date[at]) continue;
        Require(name[at] == '.' && changed < 5, "the first five dots change");
        Require(date[at] == (changed < 3 ? '/' : ':'), "three dots become slashes, two become colons");
        ++changed;
    }
    Require(changed == std::min<std::ptrdiff_t>(5, std::ranges::count(name, '.')), "every one of them does");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    const CExactBuffer block = CExactBuffer::Unterminated(CFuzzInput(bytes, size).Rest());
    const std::string_view name = block.View();
    CheckDate(name, DottedTimeAsDate(name));

    const std::string companion = CompanionName(name);
    const std::optional<std::string> shown = ShownUndoDate(name);
    const bool isUndoFile = !companion.empty();
    const std::string_view time = name.substr(0, name.size() - (isUndoFile ? 4 : 0));
    Require(shown.has_value() == (time.find('.') != std::string_view::npos), "a name with dots is a date");
    if (shown.has_value()) CheckDate(time, *shown);
    if (isUndoFile) Require(companion == std::string(time) + ".branches", "a companion has another ending");
    if (isUndoFile) Require(name.substr(time.size(), 1) == ".", "an ending begins with a dot");
    return 0;
}
