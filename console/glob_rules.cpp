#include "console/glob_rules.h"

#include "registry/letter_case_rules.h"

namespace {

/// Goes back to the last "*" only: one that stands before it need never take more, so the time is at most the
/// product of the lengths.
bool Matches(std::string_view pattern, std::string_view text) {
    std::size_t at = 0;
    std::size_t next = 0;
    std::size_t star = std::string_view::npos;
    std::size_t starredTo = 0;
    while (at < text.size()) {
        if (next < pattern.size() && pattern[next] == '*') {
            star = next++;
            starredTo = at;
        } else if (next < pattern.size() &&
                   (pattern[next] == '?' || LowerCase(pattern[next]) == LowerCase(text[at]))) {
            ++next;
            ++at;
        } else if (star != std::string_view::npos) {
            next = star + 1;
            at = ++starredTo;
        } else {
            return false;
        }
    }
    return pattern.find_first_not_of('*', next) == std::string_view::npos;
}

}  // namespace

bool KeyMatches(std::string_view pattern, std::string_view keyPath) {
    if (!pattern.starts_with('\\') && keyPath.starts_with('\\')) keyPath.remove_prefix(1);
    return Matches(pattern, keyPath);
}
