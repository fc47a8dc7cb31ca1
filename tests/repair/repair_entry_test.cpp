#include "repair/repair_entry.h"

#include <doctest/doctest.h>

#include "tests/support/file_text.h"
#include "tests/support/scratch_folder.h"
#include "tests/support/scratch_key.h"

namespace {

bool KeyExists(const std::string& subkey) {
    CUniqueKey key;
    return ::RegOpenKeyExA(HKEY_CURRENT_USER, subkey.c_str(), 0, KEY_READ, key.Receive()) == ERROR_SUCCESS;
}

}  // namespace

TEST_CASE("a key entry under the user's Software goes with its branch, after an export of it") {
    CScratchKey scratch;
    const CScratchFolder folder;
    const std::string undoFile = folder.Path() + "\\undo.reg";
    SetText(scratch.Add("dead"), "", "text");
    scratch.Add("dead\\below");
    scratch.Add("alive");
    CHECK(RepairEntry(scratch.Path() + "\\dead", undoFile));
    CHECK_FALSE(KeyExists(scratch.Subkey() + "\\dead"));
    CHECK(KeyExists(scratch.Subkey() + "\\alive"));
    const std::string path = scratch.Path().substr(1);
    CHECK(FileText(undoFile) == "Windows Registry Editor Version 5.00\r\n\r\n[" + path +
                                    "\\dead]\r\n@=\"text\"\r\n\r\n[" + path + "\\dead\\below]\r\n\r\n");
}

TEST_CASE("a value entry of no kind loses its value and nothing else") {
    CScratchKey scratch;
    const CScratchFolder folder;
    const std::string undoFile = folder.Path() + "\\undo.reg";
    SetText(scratch.Get(), "dead", "x");
    SetText(scratch.Get(), "alive", "y");
    CHECK(RepairEntry(scratch.Path() + "\\\"dead\"", undoFile));
    CHECK(::RegQueryValueExA(scratch.Get(), "dead", nullptr, nullptr, nullptr, nullptr) ==
          ERROR_FILE_NOT_FOUND);
    CHECK(::RegQueryValueExA(scratch.Get(), "alive", nullptr, nullptr, nullptr, nullptr) == ERROR_SUCCESS);
    CHECK(FileText(undoFile) == "Windows Registry Editor Version 5.00\r\n\r\n[" + scratch.Path().substr(1) +
                                    "]\r\n\"alive\"=\"y\"\r\n\"dead\"=\"x\"\r\n\r\n");
}
