// Replacing a folder variable never writes more than the data's room, and never half of a result.
#include <doctest/doctest.h>

#include "analysis/deep_scan_rules.h"
#include "tests/rules/exact_buffer.h"

namespace {

constexpr std::size_t kDataBytes = 260;   // what the rule is given
constexpr std::size_t kBlockBytes = 261;  // what there is: a last byte that stays zero

/// Gives every variable the same folder.
class COneFolder : public CFolderSource {
public:
    explicit COneFolder(std::string folder) : m_folder(std::move(folder)) {}
    [[nodiscard]] std::string_view WindowsFolder() const override { return m_folder; }
    [[nodiscard]] std::string_view Expand(const char*) const override { return m_folder; }

private:
    std::string m_folder;
};

/// Data in a block of exactly the room that the rule is told of.
std::string Replace(std::string_view data, const std::string& folder, std::size_t room = kDataBytes) {
    CExactBuffer block = CExactBuffer::Sized(data, room);
    ReplaceFolderVariable(block.Room(), COneFolder(folder));
    return block.Text();
}

/// Data of up to 260 bytes with only the block's spare byte behind them.
std::string ReplaceInFullBlock(std::string_view data, const std::string& folder) {
    CExactBuffer block = CExactBuffer::Sized(data, kBlockBytes);
    ReplaceFolderVariable(block.Room().first(kDataBytes), COneFolder(folder));
    CHECK(block.View().back() == '\0');
    return block.Text();
}

constexpr std::string_view kVariables[] = {"%SystemRoot%",   "%systemroot%", "%SYSTEMROOT%", "%USERPROFILE%",
                                           "%UserProfile%",  "%WinDir%",     "%WINDIR%",     "%windir%",
                                           "%ProgramFiles%", "%APPDATA%"};

}  // namespace

TEST_CASE("a result of 259 characters fits, and one of 260 leaves the data as they were") {
    const std::string rest = Letters(200, 'r');
    for (const std::string_view variable : kVariables) {
        CAPTURE(variable);
        const std::string data = std::string(variable) + rest;
        CHECK(Replace(data, Letters(58, 'F')) == Letters(58, 'F') + rest);
        CHECK(Replace(data, Letters(59, 'F')) == Letters(59, 'F') + rest);
        CHECK(Replace(data, Letters(60, 'F')) == data);
        CHECK(Replace(data, Letters(61, 'F')) == data);
        CHECK(Replace(data, Letters(259, 'F')) == data);
    }
}

TEST_CASE("a variable alone may become a folder of 259 characters, not of 260") {
    for (const std::string_view variable : kVariables) {
        CAPTURE(variable);
        CHECK(Replace(variable, Letters(259, 'F')) == Letters(259, 'F'));
        CHECK(Replace(variable, Letters(260, 'F')) == variable);
        CHECK(Replace(variable, Letters(1000, 'F')) == variable);
    }
}

TEST_CASE("a result as long as the data, a shorter and a longer one keep what stands behind the variable") {
    CHECK(Replace(R"(%SystemRoot%\a b.dll)", "C:\\WINDOWS12") == R"(C:\WINDOWS12\a b.dll)");
    CHECK(Replace(R"(%SystemRoot%\a b.dll)", "W:") == R"(W:\a b.dll)");
    CHECK(Replace(R"(%SystemRoot%\a b.dll)", R"(C:\WINDOWS-LONGER-THAN-ITS-NAME)") ==
          R"(C:\WINDOWS-LONGER-THAN-ITS-NAME\a b.dll)");
    CHECK(Replace(R"(%SystemDrive%\a b.dll)", R"(C:\WINDOWS)") == R"(C:\a b.dll)");
}

TEST_CASE("the room is the data's own size") {
    CHECK(Replace("%SystemRoot%", "C:\\WINDOWS12", 13) == R"(C:\WINDOWS12)");
    CHECK(Replace("%SystemRoot%", "C:\\WINDOWS123", 13) == "%SystemRoot%");
    CHECK(Replace("%SystemRoot%", "C:\\WINDOWS123", 14) == R"(C:\WINDOWS123)");
}

TEST_CASE("data that fill their 260 bytes without a terminator take a folder that leaves room for one") {
    const std::string data = "%SystemRoot%" + Letters(248, 'r');
    CHECK(ReplaceInFullBlock(data, R"(C:\WINDOWS)") == R"(C:\WINDOWS)" + Letters(248, 'r'));
    CHECK(ReplaceInFullBlock(data, R"(C:\WINDOWS1)") == R"(C:\WINDOWS1)" + Letters(248, 'r'));
    // Twelve characters are no longer than the variable, but the terminator would need the spare byte.
    CHECK(ReplaceInFullBlock(data, R"(C:\WINDOWS12)") == data);
    CHECK(ReplaceInFullBlock(data, R"(C:\WINDOWS123)") == data);
}

TEST_CASE("data that fill their 260 bytes without any variable stay as they are") {
    CHECK(ReplaceInFullBlock(Letters(260, 'r'), R"(C:\WINDOWS)") == Letters(260, 'r'));
    CHECK(ReplaceInFullBlock(R"(%UserProfile%)" + Letters(234, 'r') + "%USERPROFILE%", "P:") ==
          R"(%UserProfile%)" + Letters(234, 'r') + "%USERPROFILE%");
    CHECK(ReplaceInFullBlock("%SystemDrive%" + Letters(247, 'r'), R"(C:\WINDOWS)") ==
          "C:" + Letters(247, 'r'));
}
