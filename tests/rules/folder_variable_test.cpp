// The folder variables that the deep scan replaces at the start of data.
#include <doctest/doctest.h>

#include <map>

#include "analysis/deep_scan_rules.h"
#include "tests/rules/exact_buffer.h"

namespace {

constexpr std::size_t kDataBytes = 260;

/// Answers as told, and writes down what it was asked.
class CFakeFolders : public CFolderSource {
public:
    std::string m_windows = R"(C:\WINDOWS)";
    std::map<std::string, std::string> m_expansions;
    mutable std::vector<std::string> m_asked;

    [[nodiscard]] std::string_view WindowsFolder() const override {
        m_asked.emplace_back("(Windows folder)");
        return m_windows;
    }
    [[nodiscard]] std::string_view Expand(const char* variable) const override {
        m_asked.emplace_back(variable);
        const auto found = m_expansions.find(variable);
        return found == m_expansions.end() ? std::string_view() : found->second;
    }
};

/// Data in a block of exactly the room that the rule is told of.
std::string Replace(std::string_view data, const CFolderSource& folders, std::size_t room = kDataBytes) {
    CExactBuffer block = CExactBuffer::Sized(data, room);
    ReplaceFolderVariable(block.Room(), folders);
    return block.Text();
}

/// Every variable that is answered by the system's expansion, in the order in which they are looked for.
constexpr const char* kExpanded[] = {"%systemroot%",  "%SYSTEMROOT%",   "%USERPROFILE%",
                                     "%UserProfile%", "%WinDir%",       "%WINDIR%",
                                     "%windir%",      "%ProgramFiles%", "%APPDATA%"};

/// Every variable there is.
constexpr const char* kAll[] = {"%SystemRoot%",  "%SystemDrive%",  "%systemroot%", "%SYSTEMROOT%",
                                "%USERPROFILE%", "%UserProfile%",  "%WinDir%",     "%WINDIR%",
                                "%windir%",      "%ProgramFiles%", "%APPDATA%"};

/// Expands each variable to a folder of its own: "%windir%" to "E:\windir".
CFakeFolders OwnFolders() {
    CFakeFolders folders;
    for (const std::string variable : kExpanded)
        folders.m_expansions[variable] = R"(E:\)" + variable.substr(1, variable.size() - 2);
    return folders;
}

}  // namespace

TEST_CASE("\"%SystemRoot%\" at the start stands for the Windows folder") {
    const CFakeFolders folders = OwnFolders();
    CHECK(Replace(R"(%SystemRoot%\system32\gone.dll)", folders) == R"(C:\WINDOWS\system32\gone.dll)");
    CHECK(folders.m_asked == std::vector<std::string>{"(Windows folder)"});
    CHECK(Replace("%SystemRoot%", folders) == R"(C:\WINDOWS)");
    CHECK(Replace("%SystemRoot%x", folders) == R"(C:\WINDOWSx)");
    CHECK(Replace(R"(%SystemRoot%\%SystemRoot%)", folders) == R"(C:\WINDOWS\%SystemRoot%)");
}

TEST_CASE("\"%SystemDrive%\" at the start stands for the first two characters of the Windows folder") {
    CFakeFolders folders = OwnFolders();
    folders.m_windows = R"(Q:\Win)";
    CHECK(Replace(R"(%SystemDrive%\gone.dll)", folders) == R"(Q:\gone.dll)");
    CHECK(folders.m_asked == std::vector<std::string>{"(Windows folder)"});
    CHECK(Replace("%SystemDrive%", folders) == "Q:");
}

TEST_CASE("\"%SystemDrive%\" stays when \"%SystemRoot%\" occurs anywhere in the data") {
    const CFakeFolders folders = OwnFolders();
    CHECK(Replace(R"(%SystemDrive%\a;%SystemRoot%\b)", folders) == R"(%SystemDrive%\a;%SystemRoot%\b)");
    CHECK(Replace(R"(%SystemDrive%\a;%systemroot%\b)", folders) == R"(C:\a;%systemroot%\b)");
    CHECK(Replace(R"(%SystemDrive%\a;%SystemRoot\b)", folders) == R"(C:\a;%SystemRoot\b)");
}

TEST_CASE("the other folder variables at the start stand for what the system expands them to") {
    struct Row {
        std::string_view data;
        std::string_view result;
        const char* asked;
    };
    constexpr Row kRows[] = {
        {R"(%systemroot%\x)", R"(E:\systemroot\x)", "%systemroot%"},
        {R"(%SYSTEMROOT%\x)", R"(E:\SYSTEMROOT\x)", "%SYSTEMROOT%"},
        {R"(%USERPROFILE%\x)", R"(E:\USERPROFILE\x)", "%USERPROFILE%"},
        {R"(%UserProfile%\x)", R"(E:\UserProfile\x)", "%UserProfile%"},
        {R"(%WinDir%\x)", R"(E:\WinDir\x)", "%WinDir%"},
        {R"(%WINDIR%\x)", R"(E:\WINDIR\x)", "%WINDIR%"},
        {R"(%windir%\x)", R"(E:\windir\x)", "%windir%"},
        {R"(%ProgramFiles%\x)", R"(E:\ProgramFiles\x)", "%ProgramFiles%"},
        {R"(%APPDATA%\x)", R"(E:\APPDATA\x)", "%APPDATA%"},
    };
    for (const Row& row : kRows) {
        CAPTURE(row.data);
        const CFakeFolders folders = OwnFolders();
        CHECK(Replace(row.data, folders) == row.result);
        CHECK(folders.m_asked == std::vector<std::string>{row.asked});
    }
}

TEST_CASE("\"%UserProfile%\" stays when \"%USERPROFILE%\" occurs anywhere in the data") {
    const CFakeFolders folders = OwnFolders();
    CHECK(Replace(R"(%UserProfile%\a;%USERPROFILE%\b)", folders) == R"(%UserProfile%\a;%USERPROFILE%\b)");
    CHECK(Replace(R"(%UserProfile%\a;%userprofile%\b)", folders) == R"(E:\UserProfile\a;%userprofile%\b)");
    CHECK(Replace(R"(%USERPROFILE%\a;%UserProfile%\b)", folders) == R"(E:\USERPROFILE\a;%UserProfile%\b)");
}

TEST_CASE("no other variable stays because of another one behind it") {
    const CFakeFolders folders = OwnFolders();
    for (const std::string first : kAll) {
        const std::string folder = Replace(first, folders);
        REQUIRE(folder != first);
        for (const std::string second : kAll) {
            if (first == "%SystemDrive%" && second == "%SystemRoot%") continue;
            if (first == "%UserProfile%" && second == "%USERPROFILE%") continue;
            CAPTURE(first);
            CAPTURE(second);
            const std::string rest = R"(\a;)" + second;
            CHECK(Replace(first + rest, folders) == folder + rest);
        }
    }
}

TEST_CASE("another spelling of a variable, or another variable, stays") {
    for (const std::string_view variable : {"%Systemroot%",
                                            "%systemRoot%",
                                            "%SYSTEMDRIVE%",
                                            "%systemdrive%",
                                            "%Systemdrive%",
                                            "%userprofile%",
                                            "%Userprofile%",
                                            "%Windir%",
                                            "%winDir%",
                                            "%WinDIR%",
                                            "%programfiles%",
                                            "%PROGRAMFILES%",
                                            "%Programfiles%",
                                            "%ProgramFiles(x86)%",
                                            "%CommonProgramFiles%",
                                            "%appdata%",
                                            "%AppData%",
                                            "%Appdata%",
                                            "%TEMP%",
                                            "%HOMEDRIVE%",
                                            "%SystemRoot",
                                            "SystemRoot%",
                                            "%SystemRoot %",
                                            "%%",
                                            "%",
                                            ""}) {
        CAPTURE(variable);
        const CFakeFolders folders = OwnFolders();
        const std::string data = std::string(variable) + R"(\x)";
        CHECK(Replace(data, folders) == data);
        CHECK(folders.m_asked.empty());
    }
}

TEST_CASE("a variable that does not stand at the very start stays") {
    for (const std::string variable : kAll) {
        CAPTURE(variable);
        const CFakeFolders folders = OwnFolders();
        for (const std::string before : {" ", "x ", "\"", R"(C:\)", "%"}) {
            CHECK(Replace(before + variable + R"(\x)", folders) == before + variable + R"(\x)");
        }
        CHECK(folders.m_asked.empty());
    }
}

TEST_CASE("a variable whose folder cannot be told stays") {
    CFakeFolders folders;
    folders.m_windows.clear();
    for (const std::string data : {R"(%SystemRoot%\x)", R"(%SystemDrive%\x)"})
        CHECK(Replace(data, folders) == data);
    for (const std::string variable : kExpanded) {
        CAPTURE(variable);
        CHECK(Replace(variable + R"(\x)", folders) == variable + R"(\x)");
    }
}

TEST_CASE("a replacement that begins with a later variable is replaced in its turn") {
    CFakeFolders folders;
    folders.m_windows = "%systemroot%1";
    folders.m_expansions = {
        {"%systemroot%", "%SYSTEMROOT%2"}, {"%SYSTEMROOT%", "%USERPROFILE%3"}, {"%USERPROFILE%", "%WinDir%4"},
        {"%UserProfile%", "%WinDir%5"},    {"%WinDir%", "%WINDIR%6"},          {"%WINDIR%", "%windir%7"},
        {"%windir%", "%ProgramFiles%8"},   {"%ProgramFiles%", "%APPDATA%9"},   {"%APPDATA%", "E:"},
    };
    CHECK(Replace(R"(%SystemRoot%\x)", folders) == R"(E:98764321\x)");
    CHECK(Replace(R"(%UserProfile%\x)", folders) == R"(E:98765\x)");
    folders.m_expansions["%SYSTEMROOT%"] = "%UserProfile%3";
    CHECK(Replace(R"(%SystemRoot%\x)", folders) == R"(E:98765321\x)");
}

TEST_CASE("a replacement that begins with an earlier variable is not looked at again") {
    CFakeFolders folders;
    folders.m_expansions = {
        {"%systemroot%", "%SystemRoot%"},  {"%SYSTEMROOT%", "%systemroot%"},
        {"%USERPROFILE%", "%SYSTEMROOT%"}, {"%UserProfile%", "%USERPROFILE%"},
        {"%WinDir%", "%UserProfile%"},     {"%WINDIR%", "%WinDir%"},
        {"%windir%", "%WINDIR%"},          {"%ProgramFiles%", "%windir%"},
        {"%APPDATA%", "%ProgramFiles%"},
    };
    for (const auto& expansion : folders.m_expansions) {
        CAPTURE(expansion.first);
        CHECK(Replace(expansion.first + R"(\x)", folders) == expansion.second + R"(\x)");
    }
    folders.m_expansions["%systemroot%"] = "%SystemDrive%";
    CHECK(Replace(R"(%systemroot%\x)", folders) == R"(%SystemDrive%\x)");
}
