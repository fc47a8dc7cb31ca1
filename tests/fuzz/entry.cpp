// Puts a row's key path and value name together to an entry, and takes any text apart as one.
#include "repair/entry_rules.h"

#include <algorithm>

#include "registry/key_path_rules.h"
#include "registry/letter_case_rules.h"
#include "tests/fuzz/fuzz_support.h"
#include "tests/rules/exact_buffer.h"

namespace {

void CheckParts(std::string_view text, const Entry& entry) {
    const std::string front = "\\" + entry.rootName + "\\";
    Require(text.starts_with(front), "the root is the first name");
    const bool isRoot = std::ranges::any_of(kRootKeyTable, [&](const RootKeyRow& row) {
        return row.handle == entry.root && std::ranges::equal(row.name, entry.rootName, {}, {}, UpperCase);
    });
    Require(isRoot, "the root is the one that is named");
    const std::string_view behind = text.substr(front.size());
    Require(behind.starts_with(entry.subkeyPath), "the subkey path stands behind the root");
    Require(entry.subkeyPath.find("\\\"") == std::string::npos, "no value name is part of the path");
    if (!entry.valueName.has_value()) {
        Require(behind == entry.subkeyPath, "an entry about a key is all path");
        return;
    }
    Require(entry.valueName->find('"') == std::string::npos, "a value name ends at its quote");
    Require(text.find("\\\"" + *entry.valueName) != std::string_view::npos, "the value name is in the text");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    CFuzzInput input(bytes, size);
    const std::uint8_t choice = input.TakeByte();
    const std::string name = input.TakeText();
    std::string path(input.Rest());
    if (choice < std::size(kRootKeyTable))
        path = "\\" + std::string(kRootKeyTable[choice].name) + "\\" + path;

    const CExactBuffer block = CExactBuffer::Unterminated(EntryText(path, name));
    const std::optional<Entry> entry = ParseEntry(block.View());
    if (!entry.has_value()) {
        Require(choice >= std::size(kRootKeyTable), "an entry below a root is understood");
        return 0;
    }
    CheckParts(block.View(), *entry);
    if (path.find('"') != std::string::npos) return 0;  // a quote in a key's name can open a value name
    const std::string root = "\\" + entry->rootName;
    const bool isRootItself = entry->subkeyPath.empty() && path == root;  // an entry about a value of it
    Require(isRootItself || path == root + "\\" + entry->subkeyPath, "the path comes back");
    Require(entry->valueName.has_value() == !name.empty(), "an entry is about a value when it names one");
    if (!name.empty()) Require(*entry->valueName == name.substr(0, name.find('"')), "the name comes back");
    return 0;
}
