#include "tests/ui/dialog_bench.h"

#include <commctrl.h>

#include <doctest/doctest.h>

DialogBench::DialogBench(UINT command, const char* title, int list)
    : m_command(command), m_title(title), m_list(list) {
    actions.answer = [this](const CRecordingActions::Message&) { return reply; };
}

void DialogBench::Show(const std::function<void()>& act) {
    bool shown = false;
    After(50, [&] {
        shown = Dialog() != nullptr;
        if (shown) act();
        if (Dialog() != nullptr) Press(IDCANCEL);
    });
    shell.Command(m_command);
    CHECK(shown);
    CHECK(Dialog() == nullptr);
}

int DialogBench::Rows() const { return static_cast<int>(::SendMessageA(List(), LVM_GETITEMCOUNT, 0, 0)); }

std::string DialogBench::Cell(int row, int column) const {
    char text[512] = "";
    LVITEMA item{};
    item.iSubItem = column;
    item.pszText = text;
    item.cchTextMax = sizeof text;
    ::SendMessageA(List(), LVM_GETITEMTEXTA, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
    return text;
}

std::string DialogBench::Heading(int column) const {
    char text[512] = "";
    LVCOLUMNA description{};
    description.mask = LVCF_TEXT;
    description.pszText = text;
    description.cchTextMax = sizeof text;
    ::SendMessageA(List(), LVM_GETCOLUMNA, static_cast<WPARAM>(column),
                   reinterpret_cast<LPARAM>(&description));
    return text;
}

void DialogBench::Check(const std::vector<int>& rows) const {
    for (const int row : rows) {
        LVITEMA item{};
        item.stateMask = LVIS_STATEIMAGEMASK;
        item.state = 2 << 12;
        ::SendMessageA(List(), LVM_SETITEMSTATE, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
    }
}

void DialogBench::CheckOnlyMessage(const char* text, UINT flags) const {
    REQUIRE(actions.messages.size() == 1);
    CHECK(actions.messages[0].text == text);
    CHECK(actions.messages[0].caption == "Vellumor v4.55");
    CHECK(actions.messages[0].flags == flags);
}
