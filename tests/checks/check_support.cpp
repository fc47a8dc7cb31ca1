#include "check_support.h"

#include <doctest/doctest.h>

#include <algorithm>

#include "tests/support/native_calls.h"

namespace {

bool IsAtOrBelow(const std::string& key, const std::string& top) {
    return key.starts_with(top) && (key.size() == top.size() || key[top.size()] == '\\');
}

std::string LinesOf(const std::vector<ViewEvent>& rows, std::initializer_list<std::string> under,
                    bool showsTimes) {
    std::string lines;
    for (const ViewEvent& row : rows) {
        REQUIRE(row.key);
        REQUIRE(row.writeTime);
        CHECK(row.sent);
        const auto isAbove = [&row](const std::string& top) { return IsAtOrBelow(*row.key, top); };
        if (under.size() != 0 && std::none_of(under.begin(), under.end(), isAbove)) continue;
        const std::string time = showsTimes || row.writeTime->empty() ? *row.writeTime : "timed";
        lines +=
            *row.key + "|" + time + "|" + row.valueName.value_or("") + "|" + row.data.value_or("") + "\n";
    }
    return lines;
}

std::string Run(Check check, std::initializer_list<std::string> under, bool showsTimes) {
    CRecordingView view;
    const WorkerEnd end = view.Run(check);
    CHECK(end.inTime);
    CHECK_FALSE(end.canceled);
    CHECK(view.Count(kCanceledMessage) == 0);
    return LinesOf(view.Rows(), under, showsTimes);
}

}  // namespace

CScratchRegistry::CScratchRegistry()
    : m_user(m_key.Add("User")),
      m_machine(m_key.Add("Machine")),
      m_classes(m_key.Add("Machine\\Software\\Classes")) {
    REQUIRE(::RegOverridePredefKey(HKEY_CLASSES_ROOT, m_classes) == ERROR_SUCCESS);
    REQUIRE(::RegOverridePredefKey(HKEY_LOCAL_MACHINE, m_machine) == ERROR_SUCCESS);
    REQUIRE(::RegOverridePredefKey(HKEY_CURRENT_USER, m_user) == ERROR_SUCCESS);
}

CScratchRegistry::~CScratchRegistry() {
    for (HKEY root : {HKEY_CLASSES_ROOT, HKEY_LOCAL_MACHINE, HKEY_CURRENT_USER})
        ::RegOverridePredefKey(root, nullptr);
}

HKEY CScratchRegistry::Add(HKEY root, const std::string& path) {
    if (path.empty())
        return root == HKEY_CLASSES_ROOT ? m_classes : root == HKEY_CURRENT_USER ? m_user : m_machine;
    return m_key.Add(Add(root, ""), path);
}

HKEY CScratchRegistry::AddText(HKEY root, const std::string& path, const std::string& name,
                               const std::string& text) {
    const HKEY key = Add(root, path);
    SetText(key, name, text);
    return key;
}

CAreaKey::CAreaKey(HKEY root, const std::string& subkey) {
    for (std::size_t end = 0; end != std::string::npos;) {
        end = subkey.find('\\', end + 1);
        DWORD disposition = 0;
        CUniqueKey key;
        REQUIRE(::RegCreateKeyExA(root, subkey.substr(0, end).c_str(), 0, nullptr, 0, KEY_ALL_ACCESS, nullptr,
                                  key.Receive(), &disposition) == ERROR_SUCCESS);
        if (disposition == REG_CREATED_NEW_KEY && !m_created) m_created = std::move(key);
    }
    REQUIRE(::RegOpenKeyExA(root, subkey.c_str(), 0, KEY_ALL_ACCESS, m_key.Receive()) == ERROR_SUCCESS);
}

CAreaKey::~CAreaKey() {
    for (const std::string& name : m_values) ::RegDeleteValueA(Get(), name.c_str());
    for (const CUniqueKey& key : m_subkeys) CScratchKey::DeleteTree(key.Get());
    if (m_created) CScratchKey::DeleteTree(m_created.Get());
}

HKEY CAreaKey::Add(const std::string& name) {
    DWORD disposition = 0;
    CUniqueKey key;
    REQUIRE(::RegCreateKeyExA(Get(), name.c_str(), 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, key.Receive(),
                              &disposition) == ERROR_SUCCESS);
    REQUIRE(disposition == REG_CREATED_NEW_KEY);
    return m_subkeys.emplace_back(std::move(key)).Get();
}

void CAreaKey::AddText(const std::string& name, const std::string& text) {
    REQUIRE(::RegQueryValueExA(Get(), name.c_str(), nullptr, nullptr, nullptr, nullptr) ==
            ERROR_FILE_NOT_FOUND);
    m_values.push_back(name);
    SetText(Get(), name, text);
}

std::string RowsOf(Check check, std::initializer_list<std::string> under) { return Run(check, under, false); }

std::string TimedRowsOf(Check check, std::initializer_list<std::string> under) {
    return Run(check, under, true);
}

std::string RowLines(const CRecordingView& view) { return LinesOf(view.Rows(), {}, false); }

std::string Lines(std::initializer_list<std::string> lines) {
    std::string text;
    for (const std::string& line : lines) text += line + "\n";
    return text;
}

std::string RowsWhenCanceledAtFirstRow(Check check) {
    CRecordingView view;
    view.onEvent = [&view](const ViewEvent& event) {
        if (event.message == kRowMessage) view.Cancel();
    };
    const WorkerEnd end = view.Run(check);
    CHECK(end.inTime);
    CHECK(end.canceled);
    CHECK(view.Count(kCanceledMessage) == 1);
    REQUIRE_FALSE(view.Events().empty());
    CHECK(view.Events().back().message == kCanceledMessage);
    return RowLines(view);
}

void DemandNothingAfterCancel(Check check) {
    CRecordingView view;
    view.Cancel();
    const WorkerEnd end = view.Run(check);
    CHECK(end.inTime);
    CHECK(end.canceled);
    CHECK(view.Rows().empty());
    CHECK(view.Count(kCanceledMessage) == 1);
    REQUIRE_FALSE(view.Events().empty());
    CHECK(view.Events().back().message == kCanceledMessage);
}
