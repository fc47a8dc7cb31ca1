#include "tests/support/write_times.h"

#include <doctest/doctest.h>

#include <cstdio>

#include "platform/owners.h"
#include "tests/support/scratch_folder.h"

namespace {

constexpr const char* kLoadedKey = "VellumorTestHive";

void EnableRestorePrivilege() {
    CUniqueHandle token;
    REQUIRE(::OpenProcessToken(::GetCurrentProcess(), TOKEN_ADJUST_PRIVILEGES, token.Receive()) != FALSE);
    TOKEN_PRIVILEGES privileges{};
    privileges.PrivilegeCount = 1;
    privileges.Privileges[0].Attributes = SE_PRIVILEGE_ENABLED;
    REQUIRE(::LookupPrivilegeValueA(nullptr, "SeRestorePrivilege", &privileges.Privileges[0].Luid) != FALSE);
    ::AdjustTokenPrivileges(token.Get(), FALSE, &privileges, 0, nullptr, nullptr);
    REQUIRE(::GetLastError() == ERROR_SUCCESS);
}

std::string HiveText(std::uint64_t fileTime) {
    char time[32];
    std::snprintf(time, sizeof time, "#time=%lx%08lx\n", static_cast<unsigned long>(fileTime >> 32),
                  static_cast<unsigned long>(fileTime & 0xFFFFFFFF));
    const std::string architecture = sizeof(void*) == 8 ? "#arch=win64\n" : "#arch=win32\n";
    return "WINE REGISTRY Version 2\n;; All keys relative to \\\\Machine\\\\" + std::string(kLoadedKey) +
           "\n\n" + architecture + "\n[Sub] 1\n" + time;
}

}  // namespace

std::uint64_t KeyWriteTime(HKEY key) {
    FILETIME time{};
    REQUIRE(::RegQueryInfoKeyW(key, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                               nullptr, nullptr, &time) == ERROR_SUCCESS);
    return static_cast<std::uint64_t>(time.dwHighDateTime) << 32 | time.dwLowDateTime;
}

std::string UtcText(std::uint64_t fileTime) {
    const std::uint64_t seconds = fileTime / 10'000'000;
    std::uint64_t days = seconds / 86'400;
    const auto isLeap = [](unsigned year) { return (year % 4 == 0 && year % 100 != 0) || year % 400 == 0; };
    unsigned year = 1601;
    for (; days >= (isLeap(year) ? 366U : 365U); ++year) days -= isLeap(year) ? 366U : 365U;
    const unsigned lengths[] = {31, isLeap(year) ? 29U : 28U, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    unsigned month = 0;
    for (; days >= lengths[month]; ++month) days -= lengths[month];
    const auto ofDay = static_cast<unsigned>(seconds % 86'400);
    char text[64];
    std::snprintf(text, sizeof text, "%04u/%02u/%02u %02u:%02u:%02u", year, month + 1,
                  static_cast<unsigned>(days) + 1, ofDay / 3600, ofDay / 60 % 60, ofDay % 60);
    return text;
}

CLoadedHive::CLoadedHive(std::uint64_t fileTime) {
    EnableRestorePrivilege();
    const CScratchFolder folder;
    const std::string path = folder.Path() + "\\hive";
    const std::string text = HiveText(fileTime);
    {
        const CUniqueFile file(
            ::CreateFileA(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, 0, nullptr));
        DWORD written = 0;
        ::WriteFile(file.Get(), text.data(), static_cast<DWORD>(text.size()), &written, nullptr);
        REQUIRE(written == text.size());
    }
    REQUIRE(::RegLoadKeyA(HKEY_LOCAL_MACHINE, kLoadedKey, path.c_str()) == ERROR_SUCCESS);
}

CLoadedHive::~CLoadedHive() { ::RegUnLoadKeyA(HKEY_LOCAL_MACHINE, kLoadedKey); }

std::string CLoadedHive::SubkeyPath() { return "\\HKEY_LOCAL_MACHINE\\" + std::string(kLoadedKey) + "\\Sub"; }
