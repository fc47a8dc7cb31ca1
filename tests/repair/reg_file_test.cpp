#include "repair/reg_file.h"

#include <doctest/doctest.h>

#include "tests/support/call_hook.h"
#include "tests/support/file_text.h"
#include "tests/support/native_calls.h"
#include "tests/support/scratch_folder.h"
#include "tests/support/scratch_key.h"

namespace {

constexpr char kHeader[] = "Windows Registry Editor Version 5.00\r\n\r\n";

/// A scratch key, a file beside it, and what an export of the key writes there.
class CExportBench {
public:
    [[nodiscard]] std::string KeyText() const { return m_key.Path().substr(1); }
    [[nodiscard]] std::string FileName() const { return m_folder.Path() + "\\out.reg"; }
    [[nodiscard]] DWORD Export(const std::string& below = "") const {
        return CRegFile().ExportKey(FileName().c_str(), (KeyText() + below).c_str());
    }
    /// The file's text with the scratch key's own path shortened to "~".
    [[nodiscard]] std::string Text() const {
        std::string text = FileText(FileName());
        for (std::size_t at = text.find(KeyText()); at != std::string::npos; at = text.find(KeyText()))
            text.replace(at, KeyText().size(), "~");
        return text;
    }
    [[nodiscard]] CScratchKey& Key() { return m_key; }
    [[nodiscard]] const CScratchFolder& Folder() const { return m_folder; }

private:
    CScratchKey m_key;
    CScratchFolder m_folder;
};

std::string LittleEndian(std::initializer_list<int> bytes) {
    std::string text;
    for (const int byte : bytes) text += static_cast<char>(byte);
    return text;
}

}  // namespace

TEST_CASE("a key without values and subkeys gives its key line and a blank line") {
    CExportBench bench;
    CHECK(bench.Export() == 0);
    CHECK(bench.Text() == kHeader + std::string("[~]\r\n\r\n"));
}

TEST_CASE("a second export into a file follows after a further blank line, without a header") {
    CExportBench bench;
    bench.Key().Add("a");
    CHECK(bench.Export() == 0);
    CHECK(bench.Export("\\a") == 0);
    CHECK(bench.Text() == kHeader + std::string("[~]\r\n\r\n[~\\a]\r\n\r\n\r\n[~\\a]\r\n\r\n"));
}

TEST_CASE("every type of value has its form") {
    CExportBench bench;
    const HKEY key = bench.Key().Get();
    const std::string data = LittleEndian({0x1A, 0, 0, 0});
    SetText(key, "", "default");
    SetBytes(key, "t00", REG_NONE, data);
    SetText(key, "t01", R"(C:\a "b")");
    SetText(key, "t02", R"(%SystemRoot%\x)", REG_EXPAND_SZ);
    SetBytes(key, "t03", REG_BINARY, data);
    SetBytes(key, "t04", REG_DWORD, data);
    SetBytes(key, "t05", REG_DWORD_BIG_ENDIAN, data);
    SetBytes(key, "t06", REG_LINK, data);
    SetBytes(key, "t07", REG_MULTI_SZ, std::string("a\0b\0\0", 5));
    SetBytes(key, "t08", REG_RESOURCE_LIST, data);
    SetBytes(key, "t09", REG_FULL_RESOURCE_DESCRIPTOR, data);
    SetBytes(key, "t10", REG_RESOURCE_REQUIREMENTS_LIST, data);
    SetBytes(key, "t11", REG_QWORD, data + data);
    SetBytes(key, "t12", 0xFFFFFFFF, data);
    SetBytes(key, "t13", REG_DWORD, "ab");
    CHECK(bench.Export() == 0);
    CHECK(bench.Text() == kHeader + std::string("[~]\r\n"
                                                "@=\"default\"\r\n"
                                                "\"t00\"=hex(0):1a,00,00,00\r\n"
                                                "\"t01\"=\"C:\\\\a \\\"b\\\"\"\r\n"
                                                "\"t02\"=\"%SystemRoot%\\\\x\"\r\n"
                                                "\"t03\"=hex:1a,00,00,00\r\n"
                                                "\"t04\"=dword:0000001a\r\n"
                                                "\"t05\"=hex(5):1a,00,00,00\r\n"
                                                "\"t06\"=hex(6):1a,00,00,00\r\n"
                                                "\"t07\"=hex(7):61,00,62,00,00\r\n"
                                                "\"t08\"=hex(8):1a,00,00,00\r\n"
                                                "\"t09\"=hex(9):1a,00,00,00\r\n"
                                                "\"t10\"=hex(a):1a,00,00,00\r\n"
                                                "\"t11\"=hex(b):1a,00,00,00,1a,00,00,00\r\n"
                                                "\"t12\"=hex(ffffffff):1a,00,00,00\r\n"
                                                "\"t13\"=hex(4):61,62\r\n"
                                                "\r\n"));
}

TEST_CASE("empty values of every kind are exported") {
    CExportBench bench;
    const HKEY key = bench.Key().Get();
    SetBytes(key, "a", REG_SZ, "");
    SetBytes(key, "b", REG_BINARY, "");
    SetBytes(key, "c", REG_DWORD, "");
    SetBytes(key, "d", REG_MULTI_SZ, "");
    CHECK(bench.Export() == 0);
    CHECK(bench.Text() == kHeader + std::string("[~]\r\n\"a\"=\"\"\r\n\"b\"=hex:\r\n\"c\"=hex(4):\r\n"
                                                "\"d\"=hex(7):\r\n\r\n"));
}

TEST_CASE("names and data full of quotes, backslashes, line feeds and bytes from 0x80 are written raw") {
    CExportBench bench;
    SetText(bench.Key().Get(), "a\"b\\c", "\\\"\\");
    SetText(bench.Key().Get(), "line\nfeed\xE4", "one\ntwo\x80\xFF");
    bench.Key().Add("k\"e\xF6y]\n");
    CHECK(bench.Export() == 0);
    CHECK(bench.Text() == kHeader + std::string("[~]\r\n\"a\\\"b\\\\c\"=\"\\\\\\\"\\\\\"\r\n"
                                                "\"line\r\nfeed\xE4\"=\"one\r\ntwo\x80\xFF\"\r\n\r\n"
                                                "[~\\k\"e\xF6y]\r\n]\r\n\r\n"));
}

TEST_CASE("subkeys come depth first, each behind its parent's values") {
    CExportBench bench;
    bench.Key().Add("b");
    bench.Key().Add("a\\x");
    SetText(bench.Key().Add("a"), "v", "1");
    SetText(bench.Key().Get(), "v", "0");
    CHECK(bench.Export() == 0);
    CHECK(bench.Text() == kHeader + std::string("[~]\r\n\"v\"=\"0\"\r\n\r\n[~\\a]\r\n\"v\"=\"1\"\r\n\r\n"
                                                "[~\\a\\x]\r\n\r\n[~\\b]\r\n\r\n"));
}

TEST_CASE("data of 16384 bytes are written whole, one byte more ends the key's block without its subkeys") {
    CExportBench bench;
    bench.Key().Add("below");
    const std::string text(16383, 'x');  // and its terminator
    SetText(bench.Key().Get(), "a", text);
    SetText(bench.Key().Get(), "c", "behind");
    CHECK(bench.Export() == 0);
    const bool isWhole = bench.Text() == kHeader + ("[~]\r\n\"a\"=\"" + text +
                                                    "\"\r\n\"c\"=\"behind\"\r\n\r\n[~\\below]\r\n\r\n");
    CHECK(isWhole);
    ::DeleteFileA(bench.FileName().c_str());
    SetBytes(bench.Key().Get(), "b", REG_BINARY, std::string(16385, 'x'));
    CHECK(bench.Export() == 0);
    const bool isCut = bench.Text() == kHeader + ("[~]\r\n\"a\"=\"" + text + "\"\r\n\r\n");
    CHECK(isCut);
}

TEST_CASE("a value name of 255 characters is written, one of 256 ends the key's block without its subkeys") {
    CExportBench bench;
    bench.Key().Add("below");
    SetText(bench.Key().Get(), std::string(255, 'a'), "1");
    SetText(bench.Key().Get(), "c", "behind");
    CHECK(bench.Export() == 0);
    CHECK(bench.Text() == kHeader + ("[~]\r\n\"" + std::string(255, 'a') +
                                     "\"=\"1\"\r\n\"c\"=\"behind\"\r\n\r\n[~\\below]\r\n\r\n"));
    ::DeleteFileA(bench.FileName().c_str());
    SetText(bench.Key().Get(), std::string(256, 'b'), "2");
    CHECK(bench.Export() == 0);
    CHECK(bench.Text() == kHeader + ("[~]\r\n\"" + std::string(255, 'a') + "\"=\"1\"\r\n\r\n"));
}

TEST_CASE("a key name of 255 characters is exported") {
    CExportBench bench;
    const std::string name(255, 'k');
    CUniqueKey key;
    REQUIRE(::RegCreateKeyExA(bench.Key().Get(), name.c_str(), 0, nullptr, 0, KEY_ALL_ACCESS, nullptr,
                              key.Receive(), nullptr) == ERROR_SUCCESS);
    CHECK(bench.Export() == 0);
    CHECK(bench.Text() == kHeader + ("[~]\r\n\r\n[~\\" + name + "]\r\n\r\n"));
}

TEST_CASE("a subkey that does not open is left out without a mark, and the next one follows") {
    CExportBench bench;
    bench.Key().Add("a");
    bench.Key().Restrict(bench.Key().Add("b"), 0);
    bench.Key().Add("c");
    CHECK(bench.Export() == 0);
    CHECK(bench.Text() == kHeader + std::string("[~]\r\n\r\n[~\\a]\r\n\r\n[~\\c]\r\n\r\n"));
}

TEST_CASE("a link below the key is exported as the link, and left out of a branch that stays") {
    CExportBench bench;
    SetText(bench.Key().Add("target"), "v", "x");
    bench.Key().AddLink("alink", ObjectName(bench.Key().Add("target")));
    CHECK(bench.Export() == 0);
    // A replay would follow the link, which is still there, and write the value into its target, or make
    // that.
    CHECK(bench.Text() == kHeader + std::string("[~]\r\n\r\n[~\\target]\r\n\"v\"=\"x\"\r\n\r\n"));
    ::DeleteFileA(bench.FileName().c_str());
    CHECK(CRegFile().ExportKey(bench.FileName().c_str(), bench.KeyText().c_str(), ExportedLink::Itself) == 0);
    const std::string text = bench.Text();
    CHECK(text.find("[~\\alink]\r\n\"SymbolicLinkValue\"=hex(6):") != std::string::npos);
    CHECK(text.find("\"v\"=\"x\"") == text.rfind("\"v\"=\"x\""));
}

TEST_CASE("a key that is a link is followed, unless it is to be exported itself") {
    CExportBench bench;
    SetText(bench.Key().Add("target"), "v", "x");
    bench.Key().AddLink("link", ObjectName(bench.Key().Add("target")));
    CHECK(bench.Export("\\link") == 0);
    CHECK(bench.Text() == kHeader + std::string("[~\\link]\r\n\"v\"=\"x\"\r\n\r\n"));
    ::DeleteFileA(bench.FileName().c_str());
    CHECK(CRegFile().ExportKey(bench.FileName().c_str(), (bench.KeyText() + "\\link").c_str(),
                               ExportedLink::Itself) == 0);
    CHECK(bench.Text().find("SymbolicLinkValue") != std::string::npos);
}

TEST_CASE("an unknown root name is 1010, and no file is made") {
    const CScratchFolder folder;
    const std::string file = folder.Path() + "\\out.reg";
    for (const char* text : {"HKCU\\Software", "HKEY_PERFORMANCE_DATA\\x", "HKEY_CURRENT_USERX\\x", "", "\\",
                             "\\HKEY_CURRENT_USER\\Software", "HKCR", "HKLM", "HKU", "HKCC"})
        CHECK(CRegFile().ExportKey(file.c_str(), text) == 1010);
    CHECK_FALSE(Exists(file));
}

TEST_CASE("a key that does not open is 1011, and the file is not touched") {
    CExportBench bench;
    CHECK(bench.Export("\\absent") == 1011);
    CHECK_FALSE(Exists(bench.FileName()));
    CHECK(bench.Export() == 0);
    const std::string before = bench.Text();
    CHECK(bench.Export("\\absent") == 1011);
    CHECK(bench.Text() == before);
}

TEST_CASE("root names are taken in any letter case, and the path is written as it was given") {
    CExportBench bench;
    std::string text = bench.KeyText();
    text.replace(0, 17, "hkey_Current_user");
    CHECK(CRegFile().ExportKey(bench.FileName().c_str(), text.c_str()) == 0);
    CHECK(FileText(bench.FileName()) == kHeader + ("[" + text + "]\r\n\r\n"));
}

TEST_CASE("every root of the table opens, with or without a subkey") {
    for (const char* root : {"HKEY_CLASSES_ROOT", "HKEY_CURRENT_USER", "HKEY_LOCAL_MACHINE", "HKEY_USERS",
                             "HKEY_CURRENT_CONFIG"}) {
        CUniqueKey key;
        CHECK(CRegFile().OpenKeyByText(root, CRegFile::kReadMode, key) == 0);
    }
    CUniqueKey key;
    // A root of systems long gone: known by name, not to be opened.
    CHECK(CRegFile().OpenKeyByText("HKEY_DYN_DATA\\x", CRegFile::kReadMode, key) == 1011);
    CHECK(CRegFile().OpenKeyByText("HKEY_USERS\\.Default", CRegFile::kReadMode, key) == 0);
}

TEST_CASE("an opened key allows reading values and subkeys, and nothing else") {
    CExportBench bench;
    CUniqueKey key;
    REQUIRE(CRegFile().OpenKeyByText(bench.KeyText().c_str(), CRegFile::kReadMode, key) == 0);
    CHECK(::RegSetValueExA(key.Get(), "v", 0, REG_SZ, nullptr, 0) == ERROR_ACCESS_DENIED);
    char name[8];
    CHECK(::RegEnumKeyA(key.Get(), 0, name, sizeof name) == ERROR_NO_MORE_ITEMS);
}

TEST_CASE("a file that cannot be made or written is no failure of the export") {
    CExportBench bench;
    CHECK(CRegFile().ExportKey((bench.Folder().Path() + "\\absent\\out.reg").c_str(),
                               bench.KeyText().c_str()) == 0);
    const std::string locked = bench.Folder().AddFile("locked.reg");
    const CUniqueFile lock(
        ::CreateFileA(locked.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr));
    REQUIRE(lock);
    CHECK(CRegFile().ExportKey(locked.c_str(), bench.KeyText().c_str()) == 0);
    CHECK(FileText(locked).empty());
    SetBytes(bench.Key().Get(), "large", REG_BINARY, std::string(16384, 'x'));
    CHECK(CRegFile().ExportKey("Z:\\dev\\full", bench.KeyText().c_str()) == 0);
}

TEST_CASE("without a key the whole of the machine and of all users is written, in this order") {
    CExportBench bench;
    CHECK(CRegFile().ExportKey(bench.FileName().c_str(), nullptr) == 0);
    const std::string text = FileText(bench.FileName());
    CHECK(text.starts_with(kHeader + std::string("[HKEY_LOCAL_MACHINE]\r\n\r\n[HKEY_LOCAL_MACHINE\\")));
    const std::size_t users = text.find("\r\n\r\n[HKEY_USERS]\r\n");
    REQUIRE(users != std::string::npos);
    CHECK(text.find("[HKEY_LOCAL_MACHINE", users) == std::string::npos);
    CHECK(text.find("\r\n[HKEY_USERS\\") > users);
    CHECK(text.ends_with("\r\n\r\n"));
}

namespace {

long g_sizesAsked = 0;
LSTATUS g_sizeAnswer = ERROR_SUCCESS;

/// Tells too few values and subkeys.
LSTATUS WINAPI TellNone(HKEY, LPSTR, LPDWORD, LPDWORD, LPDWORD subkeys, LPDWORD, LPDWORD, LPDWORD values,
                        LPDWORD, LPDWORD, LPDWORD, PFILETIME) {
    ++g_sizesAsked;
    *subkeys = *values = 0;
    return g_sizeAnswer;
}

/// Exports a key of a root while the system tells too few.
std::string TextWithoutSizes(HKEY root, LSTATUS answer) {
    CScratchKey key(root);
    SetText(key.Add("below"), "v", "x");
    const CScratchFolder folder;
    const std::string file = folder.Path() + "\\out.reg";
    g_sizesAsked = 0;
    g_sizeAnswer = answer;
    const CCallHook hook("RegQueryInfoKeyA", reinterpret_cast<FARPROC>(reinterpret_cast<void*>(&TellNone)));
    CHECK(CRegFile().ExportKey(file.c_str(), key.Path().substr(1).c_str()) == 0);
    return FileText(file);
}

}  // namespace

TEST_CASE("a key whose size the system does not tell is exported to its end") {
    CHECK(TextWithoutSizes(HKEY_CURRENT_USER, ERROR_ACCESS_DENIED).find(R"("v"="x")") != std::string::npos);
    CHECK(g_sizesAsked == 2);
}

TEST_CASE("below the merged root of the classes, what the system tells of sizes does not count") {
    CHECK(TextWithoutSizes(HKEY_CLASSES_ROOT, ERROR_SUCCESS).find(R"("v"="x")") != std::string::npos);
    CHECK(g_sizesAsked == 0);
}

TEST_CASE("a hidden value whose name begins with a zero byte does not come out as the default value") {
    CExportBench bench;
    SetText(bench.Key().Get(), "", "default");
    REQUIRE(SetTextByCountedName(bench.Key().Get(), std::wstring(L"\0x", 2), L"hidden"));
    SetText(bench.Key().Get(), "z", "last");
    CHECK(bench.Export() == 0);
    CHECK(bench.Text() == kHeader + std::string("[~]\r\n@=\"default\"\r\n\"z\"=\"last\"\r\n\r\n"));
}
