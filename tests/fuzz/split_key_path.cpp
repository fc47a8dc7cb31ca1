// Takes any text apart as a key path, and puts it together again.
#include "registry/key_path_rules.h"
#include "tests/fuzz/fuzz_support.h"
#include "tests/rules/exact_buffer.h"

namespace {

const RootKeyRow* RowOf(std::uint32_t handle) {
    for (const RootKeyRow& row : kRootKeyTable)
        if (row.handle == handle) return &row;
    return nullptr;
}

bool IsRootName(std::string_view name) {
    for (const RootKeyRow& row : kRootKeyTable)
        if (row.name == name) return true;
    return false;
}

/// The root's name: what stands between the first backslash and the next.
std::string_view RootNameIn(std::string_view path) {
    if (const std::size_t first = path.find('\\'); first != std::string_view::npos)
        path.remove_prefix(first + 1);
    return path.substr(0, path.find('\\'));
}

void CheckSplit(std::string_view path, const SplitPath& split) {
    const std::string_view rootName = RootNameIn(path);
    Require(split.root.has_value() == IsRootName(rootName), "exactly the seven long names are roots");
    if (!split.root) return;
    const RootKeyRow* row = RowOf(*split.root);
    Require(row != nullptr && row->name == rootName, "the root is the one that the path names");
    std::string rebuilt(row->name);
    if (split.subkey) rebuilt = JoinKeyPath(rebuilt, *split.subkey);
    Require(path.ends_with(rebuilt), "root and subkey are the end of the path");
    const std::string_view before = path.substr(0, path.size() - rebuilt.size());
    Require(before.find('\\') == std::string_view::npos || before.find('\\') + 1 == before.size(),
            "no backslash before the root but its own");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    CFuzzInput input(bytes, size);
    const std::uint8_t choice = input.TakeByte();
    const std::string child = input.TakeText();
    std::string path(input.Rest());
    // A root at the front of most paths, since chance alone spells none.
    if (choice < std::size(kRootKeyTable)) path = "\\" + std::string(kRootKeyTable[choice].name) + path;

    const CExactBuffer block = CExactBuffer::Unterminated(path);
    const SplitPath split = SplitKeyPathText(block.View());
    CheckSplit(path, split);

    const std::string joined = JoinKeyPath(block.View(), child);
    Require(joined.size() == path.size() + 1 + child.size(), "a joined path has one backslash more");
    if (!split.root || !path.starts_with('\\')) return 0;
    const SplitPath joinedSplit = SplitKeyPathText(joined);
    Require(joinedSplit.root == split.root, "a child is below its parent's root");
    Require(joinedSplit.subkey == (split.subkey ? JoinKeyPath(*split.subkey, child) : child),
            "a child's subkey is its parent's and its name");
    return 0;
}
