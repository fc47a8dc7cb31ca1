// Rewrites value data the way the deep scan does, in the buffer that it has for them.
#include <array>
#include <cstring>

#include "analysis/deep_scan_rules.h"
#include "registry/file_reference_rules.h"
#include "tests/fuzz/fuzz_support.h"
#include "tests/rules/exact_buffer.h"

namespace {

constexpr std::size_t kDataBytes = 260;
constexpr std::size_t kBlockBytes = kDataBytes + 1;  // a last byte that stays zero

constexpr std::array<std::string_view, 11> kVariables = {
    "%SystemRoot%", "%SystemDrive%", "%systemroot%", "%SYSTEMROOT%",   "%USERPROFILE%", "%UserProfile%",
    "%WinDir%",     "%WINDIR%",      "%windir%",     "%ProgramFiles%", "%APPDATA%"};

constexpr std::array<std::string_view, 6> kPrefixes = {
    ",FileRenameShortToLong ", "[F00000000][", "file:///", "file://", R"(\??\)", "@"};

/// Gives every variable one of two folders, and checks that it is asked only for variables.
class CFuzzFolders : public CFolderSource {
public:
    CFuzzFolders(std::string windows, std::string other)
        : m_windows(std::move(windows)), m_other(std::move(other)) {}
    [[nodiscard]] std::string_view WindowsFolder() const override { return m_windows; }
    [[nodiscard]] std::string_view Expand(const char* variable) const override {
        bool known = false;
        for (const std::string_view name : kVariables) known = known || name == variable;
        Require(known, "only known variables are expanded");
        return m_other;
    }

private:
    std::string m_windows;
    std::string m_other;
};

void CheckDrop(std::string_view before, std::string_view after) {
    Require(before.ends_with(after), "only the start of the data is dropped");
    bool holdsPrefix = false;
    for (const std::string_view prefix : kPrefixes)
        holdsPrefix = holdsPrefix || before.find(prefix) != std::string_view::npos;
    Require(holdsPrefix || before == after, "data without a prefix stay");
    Require(before.size() - after.size() <= 23 + 31 + 8 + 7 + 4 + 1, "each prefix is dropped once");
    Require(after == before || after.size() < before.size(), "a drop makes the data shorter");
}

void CheckReplacement(std::string_view before, std::string_view after, const CFuzzFolders& folders) {
    if (before == after) return;
    bool startsWithVariable = false;
    for (const std::string_view variable : kVariables) {
        if (!before.starts_with(variable)) continue;
        startsWithVariable = true;
        // Where no folder begins with a variable, exactly one replacement can have happened.
        if (folders.WindowsFolder().starts_with('%') || folders.Expand("%windir%").starts_with('%')) continue;
        std::string folder(folders.Expand("%windir%"));
        if (variable == "%SystemRoot%") folder = folders.WindowsFolder();
        if (variable == "%SystemDrive%") folder = folders.WindowsFolder().substr(0, 2);
        Require(after == folder + std::string(before.substr(variable.size())),
                "the folder stands before the rest");
    }
    Require(startsWithVariable, "data that begin with no variable stay");
    Require(after.size() < kDataBytes, "a result fits with its terminator");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    CFuzzInput input(bytes, size);
    const std::size_t windowsLength = input.TakeByte();
    std::string windows = input.TakeText(300);
    std::string other = input.TakeText(300);
    if (!windows.empty()) windows.resize(windowsLength + 1, 'w');  // any length up to the data's own
    const CFuzzFolders folders(std::move(windows), std::move(other));
    CExactBuffer block = CExactBuffer::Sized(input.Rest().substr(0, kDataBytes), kBlockBytes);

    const std::string asRead = block.Text();
    DropPrefixes(block.Data());
    const std::string dropped = block.Text();
    CheckDrop(asRead, dropped);
    Require(block.View().back() == '\0', "dropping leaves the last byte zero");

    ReplaceFolderVariable(block.Room().first(kDataBytes), folders);
    const std::string replaced = block.Text();
    CheckReplacement(dropped, replaced, folders);
    Require(block.View().back() == '\0', "replacing leaves the last byte zero");

    CExactBuffer path = CExactBuffer::Sized("", kDataBytes);
    const bool found = ExtractFilePath(block.Data(), path.Room());
    Require(block.View().back() == '\0', "extracting leaves the last byte zero");
    Require(found || block.Text() == replaced, "data without a path stay");
    Require(replaced.starts_with(block.Text()), "extracting only cuts the data");
    return 0;
}
