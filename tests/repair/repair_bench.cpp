#include "tests/repair/repair_bench.h"

#include <doctest/doctest.h>

#include "platform/owners.h"
#include "registry/key_path.h"
#include "repair/key_deletion.h"
#include "repair/repair_entry.h"
#include "tests/driver/wait.h"
#include "tests/support/file_text.h"
#include "tests/support/scratch_key.h"

namespace {

constexpr char kHeader[] = "Windows Registry Editor Version 5.00\r\n\r\n";

void DeleteTree(HKEY root, const std::string& path) {
    CUniqueKey key;
    if (::RegOpenKeyExA(root, path.c_str(), 0, KEY_ALL_ACCESS, key.Receive()) == ERROR_SUCCESS)
        CScratchKey::DeleteTree(key.Get());
}

std::string ParentOf(const std::string& path) { return path.substr(0, path.rfind('\\')); }

/// The first key of a path that is not there yet; the path itself when all those above it are.
std::string TopmostMissing(HKEY root, const std::string& path) {
    for (std::size_t end = path.find('\\'); end != std::string::npos; end = path.find('\\', end + 1))
        if (!KeyExists(root, path.substr(0, end))) return path.substr(0, end);
    return path;
}

}  // namespace

HKEY RootNamed(const std::string& name) {
    const auto location = SplitKeyPath("\\" + name);
    REQUIRE(location.has_value());
    return location->root;
}

bool KeyExists(HKEY root, const std::string& path) {
    CUniqueKey key;
    return ::RegOpenKeyExA(root, path.c_str(), 0, KEY_QUERY_VALUE, key.Receive()) != ERROR_FILE_NOT_FOUND;
}

void MakeKey(HKEY root, const std::string& path) {
    CUniqueKey key;
    REQUIRE(::RegCreateKeyExA(root, path.c_str(), 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, key.Receive(),
                              nullptr) == ERROR_SUCCESS);
}

void SetValue(HKEY root, const std::string& path, const std::string& name, const std::string& text) {
    MakeKey(root, path);
    CUniqueKey key;
    REQUIRE(::RegOpenKeyExA(root, path.c_str(), 0, KEY_ALL_ACCESS, key.Receive()) == ERROR_SUCCESS);
    SetText(key.Get(), name, text);
}

bool ValueExists(HKEY root, const std::string& path, const std::string& name) {
    CUniqueKey key;
    return ::RegOpenKeyExA(root, path.c_str(), 0, KEY_QUERY_VALUE, key.Receive()) == ERROR_SUCCESS &&
           ::RegQueryValueExA(key.Get(), name.c_str(), nullptr, nullptr, nullptr, nullptr) == ERROR_SUCCESS;
}

LSTATUS DeleteBelow(const CScratchKey& scratch, const std::string& name) {
    CUniqueKey parent;
    REQUIRE(::RegOpenKeyExA(scratch.Get(), "", 0, kDeletionAccess, parent.Receive()) == ERROR_SUCCESS);
    return DeleteKeyRecursive({parent.Get(), HKEY_CURRENT_USER, scratch.Subkey()}, name);
}

bool ExistsBelow(const CScratchKey& scratch, const std::string& name) {
    return KeyExists(HKEY_CURRENT_USER, scratch.Subkey() + "\\" + name);
}

CPlantedUnit::CPlantedUnit(const std::string& rootName, const std::string& path)
    : m_rootName(rootName),
      m_root(RootNamed(rootName)),
      m_path(path),
      m_topmost(TopmostMissing(m_root, path)) {
    SetValue(m_root, m_path, "", "default");
    SetValue(m_root, m_path, "named", "text");
    SetValue(m_root, m_path + R"(\sub)", "deep", "text");
    SetValue(m_root, m_path + "-beside", "kept", "text");
    SetValue(m_root, ParentOf(m_path), "kept", "text");
}

void ReplayByEditor(const std::string& file) {
    std::string command = R"(C:\windows\regedit.exe /s ")" + file + "\"";
    STARTUPINFOA startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process{};
    // On a busy machine, a start fails now and then under Wine.
    WaitFor("the start of the registry editor", [&] {
        return ::CreateProcessA(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                                &startup, &process) != FALSE;
    });
    const CUniqueHandle thread(process.hThread);
    const CUniqueHandle editor(process.hProcess);
    REQUIRE(::WaitForSingleObject(editor.Get(), 60'000) == WAIT_OBJECT_0);
}

CPlantedUnit::~CPlantedUnit() {
    DeleteTree(m_root, m_path);
    DeleteTree(m_root, m_path + "-beside");
    DeleteTree(m_root, m_topmost);
    CUniqueKey parent;
    if (::RegOpenKeyExA(m_root, ParentOf(m_path).c_str(), 0, KEY_SET_VALUE, parent.Receive()) ==
        ERROR_SUCCESS)
        ::RegDeleteValueA(parent.Get(), "kept");
}

bool CPlantedUnit::SurroundingsAreWhole() const {
    return ValueExists(m_root, m_path + "-beside", "kept") && ValueExists(m_root, ParentOf(m_path), "kept");
}

bool CRepairBench::Repair(const std::string& entryText) const {
    return static_cast<bool>(RepairEntry(entryText, m_undo));
}

std::string CRepairBench::UndoText() const { return FileText(UndoFile()); }

std::vector<std::string> CRepairBench::Exports() const {
    std::vector<std::string> keys;
    const std::string text = UndoText();
    if (text.empty()) return keys;
    CHECK(text.starts_with(kHeader));
    CHECK(text.rfind(kHeader) == 0);
    const auto addKeyAt = [&](std::size_t bracket) {
        keys.push_back(text.substr(bracket + 1, text.find("]\r\n", bracket) - bracket - 1));
    };
    addKeyAt(sizeof kHeader - 1);
    // Two blank lines stand between exports, one between the keys of an export.
    for (std::size_t at = text.find("\r\n\r\n\r\n["); at != std::string::npos;
         at = text.find("\r\n\r\n\r\n[", at + 1))
        addKeyAt(at + 6);
    return keys;
}
