#include "repair/undo_name_rules.h"

#include <algorithm>

#include "registry/letter_case_rules.h"

namespace {

constexpr std::string_view kSeparators = "///::";
constexpr char kCompanionEnding[] = ".branches";

std::string_view WithoutEnding(std::string_view name) {
    constexpr std::string_view kEnding = kUndoFileEnding;
    if (name.size() < kEnding.size()) return name;
    const std::string_view last = name.substr(name.size() - kEnding.size());
    // File names keep the letter case that somebody gave them, and are found in any.
    const bool ends = std::ranges::equal(last, kEnding, {}, LowerCase);
    return ends ? name.substr(0, name.size() - kEnding.size()) : name;
}

}  // namespace

std::string CompanionName(std::string_view undoFile) {
    const std::string_view name = WithoutEnding(undoFile);
    return name.size() == undoFile.size() ? std::string() : std::string(name) + kCompanionEnding;
}

std::string DottedTimeAsDate(std::string_view name) {
    std::string date(name);
    std::size_t next = 0;
    for (char& c : date) {
        if (next == kSeparators.size()) break;
        if (c == '.') c = kSeparators[next++];
    }
    return date;
}

std::optional<std::string> ShownUndoDate(std::string_view name) {
    const std::string_view time = WithoutEnding(name);
    if (time.find('.') == std::string_view::npos) return std::nullopt;
    return DottedTimeAsDate(time);
}
