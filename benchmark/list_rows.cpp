#include "benchmark/list_rows.h"

#include <windows.h>

#include <stdexcept>
#include <string>

#include "analysis/channel.h"
#include "app/vellumor_app.h"
#include "benchmark/series.h"
#include "platform/folder_tree.h"
#include "platform/host_services.h"
#include "platform/owners.h"
#include "platform/program_folder.h"
#include "resources/resource.h"
#include "ui/vellumor_view.h"

namespace {

constexpr std::size_t kValuesPerKey = 10;
constexpr char kCleaningKey[] = "Software\\VellumorBenchCleaning";

/// Agrees to everything.
class CAgreement : public CSystemActions {
public:
    CAgreement() { SetSystemActions(this); }
    ~CAgreement() override { SetSystemActions(nullptr); }
    int ShowMessage(HWND, const char*, const char*, UINT) override { return IDOK; }
};

/// The program's window with its list, on this thread.
class CWindow : public CVellumorApp {
public:
    CWindow() {
        if (!InitInstance()) throw std::runtime_error("no window");
        Pump();
    }
    ~CWindow() override {
        ::DestroyWindow(MainWnd()->GetSafeHwnd());
        MSG message;
        while (::PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE) != FALSE) {
        }
    }

    void AddRow(const std::string& key, const std::string& name) const {
        g_analysisChannel.pszInvalidKey = key.c_str();
        g_analysisChannel.pszWriteTime = "2009/03/05 07:08:09";
        g_analysisChannel.pszValueName = name.c_str();
        g_analysisChannel.pszDataReference = "C:\\Program Files\\Gone\\module.dll";
        ::SendMessageA(List(), WM_ANALYZE_ROW, 0, 0);
    }
    void Command(UINT id) const { ::SendMessageA(MainWnd()->GetSafeHwnd(), WM_COMMAND, id, 0); }
    /// Shows what is added, and brings the commands up to date.
    void Settle() const {
        ::SendMessageA(List(), WM_TIMER, 2, 0);
        Pump();
        MainWnd()->OnIdle();
    }
    [[nodiscard]] HWND List() const { return MainWnd()->ActiveView()->GetSafeHwnd(); }

private:
    static void Pump() {
        MSG message;
        while (::PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE) != FALSE) ::DispatchMessageA(&message);
    }
};

std::string KeyOf(std::size_t row) {
    return kCleaningKey + ("\\" + std::to_string(row / 1000)) + "\\" + std::to_string(row / kValuesPerKey);
}

std::string NameOf(std::size_t row) { return "Value" + std::to_string(row % kValuesPerKey); }

void MakeValues(std::size_t count) {
    CUniqueKey key;
    for (std::size_t row = 0; row < count; ++row) {
        if (row % kValuesPerKey == 0 &&
            ::RegCreateKeyA(HKEY_USERS, KeyOf(row).c_str(), key.Receive()) != ERROR_SUCCESS)
            throw std::runtime_error("cannot make a key to clean");
        ::RegSetValueExA(key.Get(), NameOf(row).c_str(), 0, REG_SZ, reinterpret_cast<const BYTE*>("x"), 2);
    }
}

}  // namespace

RowCosts TimeRows(std::size_t count) {
    const CAgreement agreement;
    const CWindow window;
    const auto rows = static_cast<double>(count);
    RowCosts costs{};
    costs.add = SecondsOf([&] {
                    for (std::size_t row = 0; row < count; ++row)
                        window.AddRow(R"(\HKEY_LOCAL_MACHINE\Software\Vendor\Product)", "Value");
                    window.Settle();
                }) /
                rows;
    costs.checkAll = SecondsOf([&] { window.Command(ID_CHECK_ALL); }) / rows;
    costs.uncheck = SecondsOf([&] { window.Command(ID_UNCHECK); }) / rows;
    return costs;
}

double TimeCleaning(std::size_t count) {
    MakeValues(count);
    const CAgreement agreement;
    const CWindow window;
    for (std::size_t row = 0; row < count; ++row) window.AddRow("\\HKEY_USERS\\" + KeyOf(row), NameOf(row));
    window.Settle();
    window.Command(ID_CHECK_ALL);
    const double seconds = SecondsOf([&] { window.Command(ID_CLEAN); });
    if (::SendMessageA(window.List(), LVM_GETITEMCOUNT, 0, 0) != 0) throw std::runtime_error("rows are left");
    DeleteFolderContents(ProgramFolder() + "\\Undo");
    return seconds / static_cast<double>(count);
}
