// Which keys and values the deep scan leaves out.
#include <doctest/doctest.h>

#include "analysis/deep_scan_rules.h"
#include "tests/rules/exact_buffer.h"

namespace {

void CheckKeys(bool skipped, std::initializer_list<std::string_view> paths) {
    for (const std::string_view path : paths) {
        CAPTURE(path);
        const CExactBuffer block = CExactBuffer::Unterminated(path);
        CHECK(KeyIsSkipped(block.View()) == skipped);
    }
}

bool IsSkipped(std::string_view name, std::string_view data) {
    const CExactBuffer nameBlock = CExactBuffer::Unterminated(name);
    const CExactBuffer dataBlock = CExactBuffer::Unterminated(data);
    return ValueIsSkipped(nameBlock.View(), dataBlock.View());
}

}  // namespace

TEST_CASE("a key below or at \"Memory Management\" is left out at any depth") {
    CheckKeys(true,
              {
                  R"(\HKEY_LOCAL_MACHINE\SYSTEM\CurrentControlSet\Control\Session Manager\Memory Management)",
                  R"(\HKEY_LOCAL_MACHINE\SYSTEM\X\Memory Management\PrefetchParameters)",
                  R"(\HKEY_USERS\Memory Management\a\b\c\d\e)",
                  R"(\HKEY_USERS\My Memory Management Tool)",
                  "Memory Management",
              });
}

TEST_CASE("another letter case or spelling of \"Memory Management\" is scanned") {
    CheckKeys(false, {
                         R"(\HKEY_USERS\memory management)",
                         R"(\HKEY_USERS\Memory management)",
                         R"(\HKEY_USERS\MEMORY MANAGEMENT)",
                         R"(\HKEY_USERS\MemoryManagement)",
                         R"(\HKEY_USERS\Memory  Management)",
                         R"(\HKEY_USERS\Memory\Management)",
                         R"(\HKEY_USERS\Memory Managemen)",
                         R"(\HKEY_USERS)",
                         "",
                     });
}

TEST_CASE("one key is left out by its exact path, and none that resembles it") {
    CheckKeys(true, {R"(\HKEY_LOCAL_MACHINE\SOFTWARE\McAfee)"});
    CheckKeys(false, {
                         R"(\HKEY_LOCAL_MACHINE\Software\McAfee)",
                         R"(\HKEY_LOCAL_MACHINE\SOFTWARE\mcafee)",
                         R"(\HKEY_LOCAL_MACHINE\SOFTWARE\McAfee2)",
                         R"(\HKEY_LOCAL_MACHINE\SOFTWARE\McAfe)",
                         R"(\HKEY_LOCAL_MACHINE\SOFTWARE\McAfee\)",
                         R"(\HKEY_LOCAL_MACHINE\SOFTWARE\McAfee\x)",
                         R"(\HKEY_LOCAL_MACHINE\SOFTWARE\x\McAfee)",
                         R"(\HKEY_CURRENT_USER\SOFTWARE\McAfee)",
                         R"(HKEY_LOCAL_MACHINE\SOFTWARE\McAfee)",
                         R"(x\HKEY_LOCAL_MACHINE\SOFTWARE\McAfee)",
                     });
}

TEST_CASE("one uninstall key is left out by its exact path, and none that resembles it") {
    const std::string uninstall = R"(\Microsoft\Windows\CurrentVersion\Uninstall)";
    const std::string guid = R"(\{FEF2C100-2CA4-4A6A-A535-07B46117B323})";
    const std::string machine = R"(\HKEY_LOCAL_MACHINE\SOFTWARE)" + uninstall;
    const std::string otherCase = R"(\HKEY_LOCAL_MACHINE\Software)" + uninstall;
    const std::string user = R"(\HKEY_CURRENT_USER\SOFTWARE)" + uninstall;
    CheckKeys(true, {machine + guid});
    CheckKeys(false, {
                         machine,
                         otherCase + guid,
                         user + guid,
                         machine + guid + R"(\x)",
                         machine + guid + "_2",
                         machine + R"(\{fef2c100-2ca4-4a6a-a535-07b46117b323})",
                         machine + R"(\FEF2C100-2CA4-4A6A-A535-07B46117B323)",
                         machine + R"(\{FEF2C100-2CA4-4A6A-A535-07B46117B324})",
                     });
}

TEST_CASE("the list of page files is left out by its exact name, whatever its data") {
    CHECK(IsSkipped("PagingFiles", R"(C:\pagefile.sys 0 0)"));
    CHECK(IsSkipped("PagingFiles", ""));
    for (const std::string_view name : {"pagingfiles", "PAGINGFILES", "PagingFile", "PagingFiles2",
                                        "xPagingFiles", "PagingFiles ", "ExistingPageFiles", ""}) {
        CAPTURE(name);
        CHECK_FALSE(IsSkipped(name, R"(C:\pagefile.sys 0 0)"));
    }
    CHECK_FALSE(IsSkipped("x", "PagingFiles"));
}

TEST_CASE("a service host's command line is left out, wherever the word stands in the data") {
    CHECK(IsSkipped("ImagePath", R"(%SystemRoot%\system32\svchost.exe -k netsvcs)"));
    CHECK(IsSkipped("", "svchost"));
    CHECK(IsSkipped("x", R"(C:\gone\mysvchosting\a.exe)"));
    CHECK(IsSkipped("x", R"(C:\gone\svchost)"));
    for (const std::string_view data :
         {R"(C:\gone\SvcHost.exe)", R"(C:\gone\SVCHOST.EXE)", R"(C:\gone\Svchost.exe)",
          R"(C:\gone\svc host.exe)", R"(C:\gone\svchos)", ""}) {
        CAPTURE(data);
        CHECK_FALSE(IsSkipped("ImagePath", data));
    }
    CHECK_FALSE(IsSkipped("svchost", R"(C:\gone\a.exe)"));
}

TEST_CASE("the path of a key that the scan enters has room for 1000 bytes") { CHECK(kScanPathBytes == 1000); }
