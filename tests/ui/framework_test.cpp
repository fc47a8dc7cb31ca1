#include <doctest/doctest.h>

#include "framework/dialog.h"
#include "framework/static.h"
#include "framework/wait_cursor.h"
#include "platform/worker_thread.h"
#include "tests/ui/shell.h"

namespace {

class CColoredStatic : public CStatic {
public:
    HBRUSH brush = nullptr;

protected:
    [[nodiscard]] std::span<const MessageRow> Messages() const override {
        static constexpr MessageRow kRows[] = {{OCM_CTLCOLORSTATIC, Handle<&CColoredStatic::OnColor>}};
        return kRows;
    }

private:
    LRESULT OnColor(WPARAM, LPARAM) { return reinterpret_cast<LRESULT>(brush); }
};

}  // namespace

TEST_CASE("a label is asked for its own colour") {
    class CLabelDialog : public CDialog {
    public:
        CLabelDialog() : CDialog(101) {}
        CColoredStatic label;

    protected:
        [[nodiscard]] bool OnInitDialog() override {
            label.SubclassWindow(GetDlgItem(1013));
            return true;
        }
    };
    CLabelDialog dialog;
    After(50, [&dialog] {
        const HDC dc = ::GetDC(dialog.GetSafeHwnd());
        const auto ask = [&](int id) {
            return reinterpret_cast<HBRUSH>(::SendMessageA(dialog.GetSafeHwnd(), WM_CTLCOLORSTATIC,
                                                           reinterpret_cast<WPARAM>(dc),
                                                           reinterpret_cast<LPARAM>(dialog.GetDlgItem(id))));
        };
        const HBRUSH usual = ask(1013);
        CHECK(usual == ask(1010));  // a label that gives no brush gets what every control gets
        dialog.label.brush = static_cast<HBRUSH>(::GetStockObject(HOLLOW_BRUSH));
        CHECK(ask(1013) == dialog.label.brush);
        CHECK(ask(1010) == usual);
        ::ReleaseDC(dialog.GetSafeHwnd(), dc);
        ::SendMessageA(dialog.GetSafeHwnd(), WM_COMMAND, IDOK, 0);
    });
    CHECK(dialog.DoModal(nullptr) == IDOK);
    CHECK(dialog.GetSafeHwnd() == nullptr);
    CHECK(dialog.label.GetSafeHwnd() == nullptr);
}

TEST_CASE("a dialog that cannot be made says so") {
    CDialog dialog(9999);
    CHECK(dialog.DoModal(nullptr) == -1);
}

TEST_CASE("a worker thread runs at the priority it was started with and gives its exit code") {
    static int priority;
    int parameter = 7;
    const CUniqueHandle thread = BeginThread(
        [](void* value) -> UINT {
            priority = ::GetThreadPriority(::GetCurrentThread());
            return static_cast<UINT>(*static_cast<int*>(value));
        },
        &parameter, THREAD_PRIORITY_BELOW_NORMAL);
    REQUIRE(thread);
    REQUIRE(::WaitForSingleObject(thread.Get(), 5000) == WAIT_OBJECT_0);
    DWORD exitCode = 0;
    ::GetExitCodeThread(thread.Get(), &exitCode);
    CHECK(exitCode == 7);
    CHECK(priority == THREAD_PRIORITY_BELOW_NORMAL);
}

TEST_CASE("the wait cursor lasts as long as the work") {
    const HCURSOR arrow = ::LoadCursorA(nullptr, IDC_ARROW);
    ::SetCursor(arrow);
    {
        const CWaitCursor wait;
        CHECK(::GetCursor() == ::LoadCursorA(nullptr, IDC_WAIT));
    }
    CHECK(::GetCursor() == arrow);
}

TEST_CASE("only our own windows lead to objects") {
    CShell shell;
    CHECK(CWnd::FromHandle(shell.ListWindow()) == &shell.View());
    CHECK(CWnd::FromHandle(::GetDesktopWindow()) == nullptr);
    CHECK(CWnd::FromHandle(nullptr) == nullptr);
}

namespace {

/// Remembers which messages came.
class CRangeWnd : public CWnd {
public:
    CRangeWnd() {
        REQUIRE(Create(RegisterWindowClass("VellumorRange", nullptr, nullptr), "", 0, 0, {}, HWND_MESSAGE,
                       nullptr));
    }
    std::vector<UINT> messages;

protected:
    [[nodiscard]] std::span<const MessageRow> Messages() const override {
        static constexpr MessageRow kRows[] = {{WM_APP + 9, Handle<&CRangeWnd::OnOther>},
                                               {WM_APP + 2, Handle<&CRangeWnd::OnRange>, WM_APP + 4}};
        return kRows;
    }

private:
    LRESULT OnRange(WPARAM, LPARAM) {
        messages.push_back(CurrentMessage());
        return 1;
    }
    LRESULT OnOther(WPARAM, LPARAM) { return 2; }
};

}  // namespace

TEST_CASE("one handler takes a range of messages, and can tell which one came") {
    CRangeWnd window;
    const auto send = [&window](UINT offset) {
        return ::SendMessageA(window.GetSafeHwnd(), WM_APP + offset, 0, 0);
    };
    for (const UINT offset : {2U, 3U, 4U}) CHECK(send(offset) == 1);
    for (const UINT offset : {1U, 5U, 8U, 10U}) CHECK(send(offset) == 0);
    CHECK(send(9) == 2);
    CHECK(window.messages == std::vector<UINT>{WM_APP + 2, WM_APP + 3, WM_APP + 4});
}
