// Writes and reads branches of any names, and reads any text as a companion.
#include "repair/branch_list_rules.h"
#include "tests/fuzz/fuzz_support.h"
#include "tests/rules/exact_buffer.h"

namespace {

std::string Same(std::string_view text) { return std::string(text); }

void CheckBranch(std::string_view branch) {
    const std::string line = BranchLine(branch);
    Require(line.ends_with("\r\n"), "a branch is a line");
    const std::string_view inside = std::string_view(line).substr(0, line.size() - 2);
    for (const char byte : inside) Require(byte >= ' ' && byte <= '~', "a line is printable");
    Require(branch.empty() || BranchOfLine(inside) == branch, "a branch comes back from its line");
}

void CheckLine(std::string_view line) {
    const std::optional<std::string> branch = BranchOfLine(line);
    if (branch.has_value())
        Require(BranchLine(*branch) == std::string(line) + "\r\n", "each branch has one line");
}

void CheckHolds(const CBranchList& branches, const std::string& path) {
    const bool holds = branches.Holds(path);
    Require(!holds || branches.Holds(path + "\\x"), "what is below a held key is held");
    if (holds) return;
    const std::size_t parent = path.rfind('\\');
    Require(parent == std::string::npos || !branches.Holds(path.substr(0, parent)),
            "a key that is not held is below none that is");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    CFuzzInput input(bytes, size);
    const std::string path = input.TakeText();
    const std::string companion(input.Rest());
    CheckBranch(path);
    CheckBranch(companion);
    CheckLine(path);
    CheckLine(companion);

    const CExactBuffer block = CExactBuffer::Unterminated(companion);
    CBranchList branches(Same);
    if (branches.Read(block.View())) CheckHolds(branches, path);
    if (path.empty()) return 0;
    CBranchList one(Same);
    Require(one.Read(BranchLine(path)) && one.Holds(path), "a branch that is listed is held");
    CheckHolds(one, companion);
    return 0;
}
