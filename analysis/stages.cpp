#include "analysis/stages.h"

#include <array>
#include <cstddef>
#include <utility>

#include "analysis/category_driver.h"
#include "analysis/com/com_checks.h"
#include "analysis/deep_scan.h"
#include "analysis/report.h"

namespace {

constexpr Check kChecks[] = {
    {"dead-files-of-the-machine", "HKEY_LOCAL_MACHINE, every key",
     "Values of the machine that name a file or folder which does not exist.", &ScanLocalMachine},
    {"dead-files-of-the-current-user", "HKEY_CURRENT_USER, every key",
     "Values of the current user that name a file or folder which does not exist.", &ScanCurrentUser},
    {"dead-files-of-all-users", "HKEY_USERS, every key",
     "Values of all loaded users that name a file or folder which does not exist.", &ScanUsers},
    {"class-modules-and-icons", "CLSID, subkeys of every class",
     "Server, handler and icon keys of classes that are empty or lead to no file.", &CheckClassSubkeys},
    {"class-links", "CLSID, program and application links of every class",
     "Classes that are empty, or whose program or application identifier is not registered.",
     &CheckClassLinks},
    {"type-libraries", "TypeLib", "Type libraries that are empty, or whose file or help folder is gone.",
     &CheckTypeLibraries},
    {"top-level-classes", "HKEY_CLASSES_ROOT, top-level keys and their class links",
     "Top-level classes without content, or whose class identifier is not registered.",
     &CheckClassesRootKeys},
    {"type-library-links", "CLSID, type library link of every class",
     "Classes whose type library is not registered.", &CheckClassTypeLibLinks},
    {"interfaces", "Interface", "Interfaces that name a type library or class which is not registered.",
     &CheckInterfaces},
};
constexpr std::size_t kStageCount = std::size(kChecks) + 1;  // the last one runs the categories
static_assert(WM_STAGE1_DONE + kStageCount - 1 == WM_ANALYZE_DONE);

constexpr AnalysisMessage DoneMessage(std::size_t index) {
    return static_cast<AnalysisMessage>(WM_STAGE1_DONE + index);
}

constexpr const Check* CheckOfStage(std::size_t index) {
    return index < std::size(kChecks) ? &kChecks[index] : nullptr;
}

constexpr DWORD kPostPatience = 10'000;  // milliseconds
constexpr DWORD kPostPeriod = 20;        // milliseconds

/// Posts a done message. A host that is busy may have no room for it just now; one that never takes it would
/// wait without end, so it is told that the analysis ends here.
void PostDone(AnalysisMessage message) {
    for (DWORD waited = 0; waited < kPostPatience; waited += kPostPeriod) {
        if (::PostMessageA(g_analysisChannel.hViewWnd, message, 0, 0) != FALSE) return;
        if (::IsWindow(g_analysisChannel.hViewWnd) == FALSE) return;
        ::Sleep(kPostPeriod);
    }
    ::SendMessageA(g_analysisChannel.hViewWnd, WM_ANALYZE_CANCELED, 0, 0);
}

template <std::size_t Index>
UINT RunStage(void*) {
    try {
        if (const Check* check = CheckOfStage(Index); check != nullptr)
            RunCheck(*check);
        else
            RunCategoryChecks();
    } catch (const CAnalysisCanceled&) {
        return 0;  // the host knows already; without a done message no later stage starts
    }
    PostDone(DoneMessage(Index));
    return 0;
}

template <std::size_t Index>
constexpr AnalysisStage MakeStage() {
    const Check* check = CheckOfStage(Index);
    return {check, check != nullptr ? check->run : &RunCategoryChecks, DoneMessage(Index), &RunStage<Index>};
}

template <std::size_t... Index>
constexpr auto MakeStages(std::index_sequence<Index...>) {
    return std::array<AnalysisStage, sizeof...(Index)>{MakeStage<Index>()...};
}

constexpr auto kStages = MakeStages(std::make_index_sequence<kStageCount>());

}  // namespace

std::span<const AnalysisStage> AnalysisStages() { return kStages; }
