#include "tests/e2e/planted_values.h"

#include <sddl.h>
#include <shlwapi.h>

#include <cstdio>

#include "platform/owners.h"
#include "tests/driver/wait.h"

namespace {

// Sorts before every other key of "Software", so that its rows come early in an analysis.
constexpr char kOwnKey[] = R"(Software\!VellumorE2E)";
constexpr char kOwnName[] = R"(\!VellumorE2E\)";

struct Planted {
    const char* subkey;
    const char* name;
    DWORD type;
    const char* data;
    std::vector<std::pair<std::string, std::string>> rows;  // value name and reference, as shown
};

std::string WindowsFolder() {
    char folder[MAX_PATH] = "";
    ::GetWindowsDirectoryA(folder, sizeof folder);
    return folder;
}

const std::vector<Planted>& PlantedTable() {
    static const std::vector<Planted> table = {
        {"01 quoted, with arguments", "x", REG_SZ, R"("C:\gone\app.exe" /s)", {{"x", R"(C:\gone\app.exe)"}}},
        {"02 in the name alone",
         R"(C:\gone\lib.dll)",
         REG_SZ,
         "",
         {{R"(C:\gone\lib.dll)", R"(C:\gone\lib.dll)"}}},
        {"03 folder variable",
         "x",
         REG_EXPAND_SZ,
         R"(%SystemRoot%\system32\gone.dll)",
         {{"x", WindowsFolder() + R"(\system32\gone.dll)"}}},
        {"04 variable behind the start", "x", REG_SZ, R"(x %SystemRoot%\gone.dll)", {}},
        {"05 address with slashes", "x", REG_SZ, "file:///C:/gone.htm", {}},
        {"06 resource", "x", REG_SZ, R"(@C:\gone\res.dll,-101)", {{"x", R"(C:\gone\res.dll)"}}},
        {"07 Memory Management", "x", REG_SZ, R"(C:\gone\app.exe)", {}},
        {R"(07 Memory Management\deeper)", "x", REG_SZ, R"(C:\gone\app.exe)", {}},
        {"08 service host", "x", REG_SZ, R"(C:\gone\svchost.exe)", {}},
        {"09 page file", "PagingFiles", REG_SZ, R"(C:\gone\pagefile.sys)", {}},
        {"10 name and data",
         R"(C:\gone\one.dll)",
         REG_SZ,
         R"(C:\gone\two.dll)",
         {{R"(C:\gone\one.dll)", R"(C:\gone\two.dll)"}, {R"(C:\gone\one.dll)", R"(C:\gone\one.dll)"}}},
        {"11 living file", "x", REG_EXPAND_SZ, R"(%SystemRoot%\regedit.exe)", {}},
        {"12 binary data", "x", REG_BINARY, R"(C:\gone\bytes.dat)", {{"x", R"(C:\gone\bytes.dat)"}}},
    };
    return table;
}

void Plant(HKEY root) {
    for (const Planted& planted : PlantedTable()) {
        CUniqueKey key;
        const std::string path = std::string(kOwnKey) + "\\" + planted.subkey;
        const auto size = static_cast<DWORD>(std::string(planted.data).size() + 1);
        if (::RegCreateKeyA(root, path.c_str(), key.Receive()) != ERROR_SUCCESS ||
            ::RegSetValueExA(key.Get(), planted.name, 0, planted.type,
                             reinterpret_cast<const BYTE*>(planted.data), size) != ERROR_SUCCESS)
            throw CDriverError("cannot plant " + path);
    }
}

std::string Format(const FILETIME& time) {
    SYSTEMTIME parts{};
    ::FileTimeToSystemTime(&time, &parts);
    char text[32] = "";
    std::snprintf(text, sizeof text, "%04d/%02d/%02d %02d:%02d:%02d", parts.wYear, parts.wMonth, parts.wDay,
                  parts.wHour, parts.wMinute, parts.wSecond);
    return text;
}

/// @param shownRoot  the start of the key texts, up to the key that holds "Software".
void AddRows(HKEY root, const std::string& shownRoot, std::vector<ListRow>& rows) {
    const std::string ownKey = SpellingOf(root, "Software") + std::string(kOwnName);
    for (const Planted& planted : PlantedTable()) {
        const std::string subkey = ownKey + planted.subkey;
        for (const auto& [name, reference] : planted.rows)
            rows.push_back({shownRoot + "\\" + subkey, WriteTimesOf(root, subkey).utc, name, reference});
    }
}

}  // namespace

CPlantedValues::CPlantedValues() {
    Plant(HKEY_LOCAL_MACHINE);
    Plant(HKEY_CURRENT_USER);
}

CPlantedValues::~CPlantedValues() {
    ::SHDeleteKeyA(HKEY_LOCAL_MACHINE, kOwnKey);
    ::SHDeleteKeyA(HKEY_CURRENT_USER, kOwnKey);
}

std::vector<ListRow> CPlantedValues::ExpectedRows() const {
    std::vector<ListRow> rows;
    AddRows(HKEY_LOCAL_MACHINE, R"(\HKEY_LOCAL_MACHINE)", rows);
    AddRows(HKEY_CURRENT_USER, R"(\HKEY_CURRENT_USER)", rows);
    AddRows(HKEY_CURRENT_USER, R"(\HKEY_USERS\)" + SpellingOf(HKEY_USERS, UserName()), rows);
    return rows;
}

int CPlantedValues::RowsPerHive() {
    std::size_t count = 0;
    for (const Planted& planted : PlantedTable()) count += planted.rows.size();
    return static_cast<int>(count);
}

const CPlantedValues& PlantedValues() {
    static const CPlantedValues values;
    return values;
}

bool IsPlanted(const ListRow& row) { return row.key.find(kOwnName) != std::string::npos; }

WriteTimes WriteTimesOf(HKEY root, const std::string& subkey) {
    CUniqueKey key;
    FILETIME utc{};
    FILETIME local{};
    if (::RegOpenKeyExA(root, subkey.c_str(), 0, KEY_READ, key.Receive()) != ERROR_SUCCESS ||
        ::RegQueryInfoKeyA(key.Get(), nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                           nullptr, nullptr, &utc) != ERROR_SUCCESS)
        throw CDriverError("no write time of " + subkey);
    ::FileTimeToLocalFileTime(&utc, &local);
    return {Format(utc), Format(local)};
}

std::string SpellingOf(HKEY key, const std::string& name) {
    char subkey[256] = "";
    for (DWORD index = 0; ::RegEnumKeyA(key, index, subkey, sizeof subkey) == ERROR_SUCCESS; ++index)
        if (::lstrcmpiA(subkey, name.c_str()) == 0) return subkey;
    throw CDriverError("there is no key " + name);
}

std::string UserName() {
    CUniqueHandle token;
    ::OpenProcessToken(::GetCurrentProcess(), TOKEN_QUERY, token.Receive());
    alignas(TOKEN_USER) char buffer[256];
    DWORD bytes = 0;
    if (::GetTokenInformation(token.Get(), TokenUser, buffer, sizeof buffer, &bytes) == FALSE)
        throw CDriverError("the user is unknown");
    char* text = nullptr;
    ::ConvertSidToStringSidA(reinterpret_cast<const TOKEN_USER*>(buffer)->User.Sid, &text);
    const std::string name = text;
    ::LocalFree(text);
    return name;
}
