#include "repair/entry_rules.h"

#include <algorithm>

#include "registry/key_path_rules.h"
#include "registry/letter_case_rules.h"

namespace {

constexpr std::string_view kValueNameOpening = "\\\"";
constexpr char kValueNameEnd = '"';

std::optional<std::uint32_t> FindRoot(std::string_view name) {
    for (const RootKeyRow& row : kRootKeyTable)
        if (std::ranges::equal(row.name, name, {}, {}, UpperCase)) return row.handle;
    return std::nullopt;
}

}  // namespace

std::string EntryText(std::string_view keyPath, std::string_view valueName) {
    std::string text(keyPath);
    if (valueName.empty()) return text;
    return text.append(kValueNameOpening).append(valueName) += kValueNameEnd;
}

std::optional<Entry> ParseEntry(std::string_view entryText) {
    if (entryText.empty() || entryText.front() != '\\') return std::nullopt;
    const std::size_t rootEnd = entryText.find('\\', 1);
    if (rootEnd == std::string_view::npos) return std::nullopt;
    const std::string_view rootName = entryText.substr(1, rootEnd - 1);
    const std::optional<std::uint32_t> root = FindRoot(rootName);
    if (!root.has_value()) return std::nullopt;

    // From the backslash behind the root name on, so that a value of the root itself is found as well.
    const std::size_t opening = entryText.find(kValueNameOpening, rootEnd);
    const std::size_t pathEnd = std::min(opening, entryText.size());
    const std::size_t pathStart = std::min(rootEnd + 1, pathEnd);
    Entry entry{
        *root, std::string(rootName), std::string(entryText.substr(pathStart, pathEnd - pathStart)), {}};
    if (opening != std::string_view::npos) {
        // Deliberate: a value name that itself holds a double quote is cut there.
        const std::string_view name = entryText.substr(opening + kValueNameOpening.size());
        entry.valueName = name.substr(0, name.find(kValueNameEnd));
    }
    return entry;
}
